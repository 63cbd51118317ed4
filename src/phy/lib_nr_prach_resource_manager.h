#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_resource_type.h"
#include "phy_common/lib_nr_new_prach_ofdm_modulator.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_prach_type.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Carrier and burst that the PRACH grid stands for.
struct prach_resource_param_t
{
    lib_nr_numerology_type_t numerology = LIB_NR_SCS_30K;
    lib_nr_channel_bw_type_t bandwidth = LIB_NR_CHANNEL_FR1_100M;
    unsigned int subcarrier_total_number = 0; ///< derived
    unsigned int row_number = 1;              ///< symbols of the preamble format
    double ratio = 1.0;                       ///< spacing of the carrier over that of the PRACH
};

/// Band of a burst, in hertz from the carrier's centre.
struct prach_resource_freq_param_t
{
    double start_frequency_hz = 0.0;
    double end_frequency_hz = 0.0;
};

/// Where the bursts lie, one entry per burst: milliseconds in the frame, hertz from the carrier's centre. A burst that
/// passes the frame's end ends early in the frame.
struct lib_nr_prach_resource_mapping_t
{
    std::vector<double> start_times_ms;
    std::vector<double> end_times_ms;
    std::vector<double> start_frequencies_hz;
    std::vector<double> end_frequencies_hz;
};

/// The grid of one PRACH burst, a row per preamble symbol and a column per PRACH subcarrier, and the view of where the
/// bursts lie. One for the process, shared by all engines.
class NR_MOD_LIB_EXPORT lib_nr_prach_resource_manager_t
{
public:
    static lib_nr_prach_resource_manager_t& get_inst();

    /// Takes effect on the maps with their next initialisation.
    void set_resource_param(const prach_resource_param_t& param) { m_param = param; }
    /// Derives the subcarrier number and empties the view.
    void init_resource_mapping();
    /// Derives the subcarrier number and makes a grid of zeros.
    void init_payload_mapping();

    /// Appends the band of a burst to the view.
    void set_resource_freq_param(const prach_resource_freq_param_t& param);
    /// Appends the times of a burst to the view.
    void set_resource_time_param(const prach_resource_time_param_t& param);

    const lib_nr_prach_resource_mapping_t& get_resource_mapping() const { return m_resource_mapping; }
    std::vector<std::vector<std::complex<double>>>& get_prach_payload_mapping() { return m_payload_mapping; }
    /// What the burst's process wrote, and what it found out for the modulator.
    void set_written_cells(const lib_nr_cell_count_t& cells) { m_written_cells = cells; }
    const lib_nr_cell_count_t& get_written_cells() const { return m_written_cells; }
    prach_ofdm_info_param_t& get_prach_ofdm_info() { return m_ofdm_info; }

private:
    lib_nr_prach_resource_manager_t() = default;

    void _update_numbers();

    prach_resource_param_t m_param;
    lib_nr_prach_resource_mapping_t m_resource_mapping;
    std::vector<std::vector<std::complex<double>>> m_payload_mapping;
    lib_nr_cell_count_t m_written_cells;
    prach_ofdm_info_param_t m_ofdm_info;
};

} // namespace vek::nr_mod_lib
