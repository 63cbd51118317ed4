#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy/lib_nr_prach_resource_manager.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_deviation.h"
#include "phy_common/lib_nr_prach_preamble.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Generates the random access preamble of one burst, TS 38.211 clauses 6.3.3 and 5.3.2: sequence, place in the PRACH
/// grid, and the prefixes that the modulator puts in front of its rows. Nothing is written outside the grid: a preamble
/// that is wider than the carrier, or begins too high, is cut.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_prach_process_t : public lib_nr_ruled_t, public lib_nr_explaining_t
{
public:
    /// Takes a burst of a carrier, for the pass of a numerology. Always true.
    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int burst,
                             const lib_nr_waveform_configure_manager_t& waveform);
    /// Corrects what does not go together, writes the preamble into the PRACH grid, and leaves there what the modulator
    /// has to know. False and a printed line where no root sequence has the preamble.
    bool prach_process();
    /// Notes the burst's band for the view, mode `LIB_NR_REMAPP_MODE_UI_VIEW_MAP`, and what the modulator has to know.
    /// Always true.
    bool nr_ul_phy_prach_re_map(lib_nr_remap_mode_t mode);

private:
    bool _nr_ul_phy_prach_sequence_gen();
    void _nr_ul_phy_prach_encode_map();
    void _explain() const;
    void _nr_ul_phy_prach_freq_map();
    double _get_first_subcarrier() const;
    std::size_t _get_first_column() const { return static_cast<std::size_t>(_get_first_subcarrier()); }
    double _get_frequency_shift(unsigned int columns) const;
    void _get_prach_general_ofdm_info(prach_ofdm_info_param_t& info) const;
    std::vector<double> _get_prefixes(unsigned int rows) const;
    double _get_prefix(unsigned int occasion) const;
    unsigned int _get_half_subframes_within(unsigned int occasion) const;
    double _get_scs_hz() const;
    unsigned int _scaled(double samples) const;

    // The burst and its carrier, plain values.
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_channel_bw_type_t m_bandwidth = LIB_NR_CHANNEL_FR1_100M;
    double m_point_a_hz = 0.0;
    unsigned int m_carrier_scs_hz = 30000;
    unsigned int m_max_rb_number = 273;
    unsigned int m_slot_symbols = 14;
    double m_sample_rate_hz = 0.0;
    double m_power_boosting = 0.0;
    prach_preamble_setting_t m_preamble;
    prach_config_table_type_t m_configuration_table = FR1_FDD_SUL;
    unsigned int m_configuration_idx = 16;
    prach_scs_type_t m_prach_scs = PRACH_SCS_1P25K;
    unsigned int m_rb_offset = 0;
    unsigned int m_n_RA_start = 0;
    unsigned int m_n_RA_f = 0;
    unsigned int m_n_RA_t = 0;
    unsigned int m_n_RA_slot = 0;
    unsigned int m_slot_index = 0;

    std::vector<std::complex<double>> m_sequence;
};

} // namespace vek::nr_mod_lib
