#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_ul_srs_configure_manager.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_deviation.h"

#include <complex>
#include <map>
#include <utility>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Generates a sounding reference signal, TS 38.211 clause 6.4.1.4; the part of the band that partial sounding takes
/// does not hop. By the own rule the amplitude is multiplied by the square root of the number of ports, sequence
/// hopping begins by the length that the whole band has, and n_shift counts from the grid's first subcarrier. A symbol
/// ahead of its slot and cells outside the grid are left out in the view as in the signal.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_srs_process_t : public lib_nr_ruled_t, public lib_nr_explaining_t
{
public:
    /// Takes an entry of a carrier's list, for a frame and the pass of a numerology. Always true.
    bool set_waveform_config(unsigned int carrier, unsigned int frame, unsigned int numerology, unsigned int srs,
                             const lib_nr_waveform_configure_manager_t& waveform);
    /// The slots of the frame that are sent: those of the list, by the own rule also where there is a period, that
    /// begin one, TS 38.211 clause 6.4.1.4.4.
    const std::vector<unsigned int>& get_slots() const { return m_sent_slots; }
    /// Writes one slot of the frame. False and a printed line where the SRS is disabled.
    bool srs_process(unsigned int slot);
    /// Marks or writes a slot of the frame. False where a mark conflicts or lies outside the grid and, with a printed
    /// line, where the SRS is disabled.
    bool nr_ul_phy_srs_re_map(unsigned int slot, lib_nr_remap_mode_t mode);
    /// The two modes by their names.
    bool nr_ul_phy_srs_ui_view_map(unsigned int slot);
    bool nr_ul_phy_srs_encode_map(unsigned int slot);
    /// Writes "../srs_result.csv" anew: group, number and values of each symbol's sequence as they were in the slot
    /// written last, one value a line, complex ones as real,imaginary. Where no slot was written the file stays as it
    /// is. A file that cannot be written is told on the error stream.
    void write_trace_file() const;

private:
    /// A symbol of the SRS, as it is sent.
    struct symbol_t
    {
        lib_nr_resource_run_t run;
        unsigned int u = 0; ///< group of the sequence
        unsigned int v = 0; ///< number within the group
    };

    void _srs_slots_init(const std::vector<int>& listed);
    void _srs_k_offset_lp_init();
    bool _is_enabled() const;
    void _list_symbols(unsigned int slot);
    void _explain(unsigned int slot) const;
    std::pair<unsigned int, unsigned int> _get_sequence_uv(unsigned int symbol_in_frame) const;
    const std::vector<std::complex<double>>& _nr_ul_phy_srs_sequence_gen(unsigned int u, unsigned int v);
    double _cyclic_shift() const;
    double _amplitude() const;
    unsigned int _nr_ul_srs_cal_k0_bar(unsigned int l) const;
    unsigned int _nr_ul_srs_cal_n_FH_offset(unsigned int slot, unsigned int l) const;
    unsigned int _nr_ul_srs_cal_n_RPFS_offset() const;
    unsigned int _hop_counter(unsigned int slot, unsigned int l) const;

    // The signal, plain values.
    bool m_enable = false;
    double m_power_boosting = 0.0;
    unsigned int m_port = 0; ///< p_i
    bool m_has_port = false;
    unsigned int m_port_number = 1;
    bool m_pos_resource = false;
    unsigned int m_periodicity = 0;
    unsigned int m_t_offset = 0;
    unsigned int m_l_offset = 5;
    unsigned int m_N_symb = 1;
    unsigned int m_repetition_factor = 1;
    unsigned int m_K_TC = 2;
    unsigned int m_cs_max = 8;
    unsigned int m_ktc_offset = 0;
    unsigned int m_b_srs = 0;
    unsigned int m_c_srs = 0;
    unsigned int m_b_hop = 0;
    unsigned int m_n_shift = 0;
    unsigned int m_n_RRC = 0;
    unsigned int m_GroupOrSeqHop = SRS_NEITHER_TYPE;
    unsigned int m_n_SRS_cs = 0;
    unsigned int m_n_ID_SRS = 0;
    unsigned int m_p_f = 1;
    unsigned int m_k_f = 0;
    T_SRS_RESOUR_TYPE m_resource_type = SRS_APERIOD_TYPE;
    unsigned int m_frame = 0;
    unsigned int m_slots = 20; ///< of a frame
    unsigned int m_slot_symbols = 14;
    unsigned int m_bwp_start = 0;

    // What follows from them.
    std::vector<unsigned int> m_sent_slots;
    std::vector<unsigned char> m_k_offset; ///< comb offset of a positioning SRS, by symbol
    unsigned int m_subcarriers = 48;       ///< of the band that is sounded at a time, 12 m_SRS
    std::map<std::pair<unsigned int, unsigned int>, std::vector<std::complex<double>>> m_sequences; ///< by u and v
    std::vector<symbol_t> m_symbols;                                                                ///< of a slot
};

} // namespace vek::nr_mod_lib
