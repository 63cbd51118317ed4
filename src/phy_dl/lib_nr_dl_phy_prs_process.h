#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_dl_prs_configure_manager.h"
#include "phy/lib_nr_phy_observer.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_deviation.h"

#include <complex>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Generates a positioning reference signal, TS 38.211 clause 7.4.1.7. By the own rules the sequence of a symbol counts
/// the symbol within its slot, so that all slots are alike, a period's slots run from the first repetition to the last
/// without a break, and each frame begins a period anew. The view marks whole resource blocks, the signal fills the
/// comb. A symbol that holds a cell of an SS/PBCH block is left out, wherever the block lies.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_prs_process_t : public lib_nr_ruled_t, public lib_nr_explaining_t
{
public:
    /// Takes an entry of a carrier's list, for the pass of a numerology. Always true.
    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int prs,
                             const lib_nr_waveform_configure_manager_t& waveform);
    /// The frame of the waveform that is in work.
    void set_frame(unsigned int frame) { m_frame = frame; }
    /// Writes one slot of the frame. Reads the marks of SS/PBCH blocks, so it comes behind the view. Always true.
    bool prs_encode_process(unsigned int slot);
    /// Marks or writes a slot of the frame; slots past the frame do nothing. False and a printed line for a mode that
    /// is none.
    bool dl_phy_prs_remap(unsigned int slot, lib_nr_remap_mode_t mode);
    /// Whether a slot of the frame has an occasion of the resource.
    bool _is_exist_prs(unsigned int slot) const;

private:
    bool _is_own_occasion(unsigned int slot) const;
    bool _is_standard_occasion(unsigned int slot) const;
    std::vector<unsigned int> _symbols_without_ssb(unsigned int slot) const;
    void _phy_prs_view_re_map(unsigned int slot);
    void _phy_prs_encode_re_map(unsigned int slot);
    void _phy_prs_rs_generation(unsigned int slot, unsigned int symbol);

    // The resource, plain values.
    double m_amplitude = 1.0;
    unsigned int m_slot_symbols = 14;
    unsigned int m_slots_per_frame = 20;
    unsigned int m_frame = 0;
    unsigned int m_n_id = 0;
    unsigned int m_rb_number = 0;
    unsigned int m_rb_offset = 0;
    lib_nr_prs_comb_size_t m_comb_size = LIB_NR_PRS_COMB_SIZE_2;
    unsigned int m_comb = 2;
    unsigned int m_periodicity = 10;
    unsigned int m_offset = 0; ///< set slot offset and slot offset together
    unsigned int m_repetitions = 1;
    unsigned int m_time_gap = 1;
    unsigned int m_muting_factor = 1;
    std::vector<unsigned char> m_muting_option_1;
    std::vector<unsigned char> m_muting_option_2;
    unsigned int m_re_offset = 0;
    unsigned int m_symbol_offset = 0;
    unsigned int m_symbol_number = 2;

    std::vector<lib_nr_resource_run_t> m_runs;
    std::vector<std::complex<double>> m_sequence;
};

} // namespace vek::nr_mod_lib
