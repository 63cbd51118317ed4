#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' positioning reference signals, TS 38.211 clause 7.4.1.7. One is tied to a spacing of the
/// carrier, not to a BWP, and is sent in the pass of its spacing, in every frame the slots that it has in the first. It
/// steps round whole symbols that hold an SS/PBCH block.
class NR_MOD_LIB_EXPORT cfg_nr_dl_prs_t : public cfg_nr_list_cursor_t<lib_nr_dl_prs_configure_manager_t>
{
public:
    explicit cfg_nr_dl_prs_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_prs_index(unsigned int carrier, unsigned int prs) { return set_current_index(carrier, prs); }

    /// Stays off above 120 kHz and below 24 resource blocks.
    bool set_enable(bool enable) { return _target().set_enable(enable); }
    bool get_enable() const { return _target().get_enable(); }
    /// dB, limited to -40 to 40.
    bool set_power(double power) { return _target().set_power(power); }
    double get_power() const { return _target().get_power(); }
    /// Spacing; the resource blocks of the carrier's numerology stay as they were.
    bool set_numerology(lib_nr_numerology_type_t numerology) { return _target().set_numerology(numerology); }
    lib_nr_numerology_type_t get_numerology() const { return _target().get_numerology(); }
    /// Cyclic prefix; one that gives a slot other symbols than the grid has is not sent.
    bool set_cp_type(lib_nr_cyclic_prefix_type_t cp_type) { return _target().set_cp_type(cp_type); }
    lib_nr_cyclic_prefix_type_t get_cp_type() const { return _target().get_cp_type(); }
    /// Sequence identity of clause 7.4.1.7.2, at most 4095.
    bool set_n_id(unsigned int n_id) { return _target().set_n_id(n_id); }
    unsigned int get_n_id() const { return _target().get_n_id(); }
    /// Width in resource blocks, limited to what lies above the offset, then to 272; below 24 it switches off.
    bool set_rb_number(unsigned int rb_number) { return _target().set_rb_number(rb_number); }
    unsigned int get_rb_number() const { return _target().get_rb_number(); }
    /// First resource block of the grid, within the numerology and 24 below its end; cuts the width.
    bool set_rb_offset(unsigned int rb_offset) { return _target().set_rb_offset(rb_offset); }
    unsigned int get_rb_offset() const { return _target().get_rb_offset(); }
    /// Limits the RE offset and the number of symbols.
    bool set_comb_size(lib_nr_prs_comb_size_t comb_size) { return _target().set_comb_size(comb_size); }
    lib_nr_prs_comb_size_t get_comb_size() const { return _target().get_comb_size(); }
    /// Slots; what the list has not becomes its first. Limits both slot offsets.
    bool set_periodicity(unsigned int periodicity) { return _target().set_periodicity(periodicity); }
    unsigned int get_periodicity() const { return _target().get_periodicity(); }
    std::vector<unsigned int> get_periodicity_list() const { return _target().get_periodicity_list(); }
    /// Slots, below the periodicity; limits the slot offset.
    bool set_set_slot_offset(unsigned int offset) { return _target().set_set_slot_offset(offset); }
    unsigned int get_set_slot_offset() const { return _target().get_set_slot_offset(); }
    /// Repetitions within a period. With the time gap it gives the slots of a period, from the first repetition to the
    /// last without a break. Fits the bits of muting option 2.
    bool set_reptition_factor(lib_nr_prs_reptition_factor_t factor) { return _target().set_reptition_factor(factor); }
    lib_nr_prs_reptition_factor_t get_reptition_factor() const { return _target().get_reptition_factor(); }
    /// Slots from one repetition to the next.
    bool set_time_gap(lib_nr_prs_time_gap_t gap) { return _target().set_time_gap(gap); }
    lib_nr_prs_time_gap_t get_time_gap() const { return _target().get_time_gap(); }
    /// Periods that a bit of muting option 1 stands for.
    bool set_muting_factor(lib_nr_prs_muting_factor_t factor) { return _target().set_muting_factor(factor); }
    lib_nr_prs_muting_factor_t get_muting_factor() const { return _target().get_muting_factor(); }
    /// Bits, an even number of at most 32, padded with 0; a slot with bit 0 is muted. None: not used.
    bool set_muting_option_1(const std::string& text) { return _target().set_muting_option_1(text); }
    std::string get_muting_option_1() const { return _target().get_muting_option_1(); }
    /// A bit for each repetition, padded with 0 or cut; counts where option 1 is not used.
    bool set_muting_option_2(const std::string& text) { return _target().set_muting_option_2(text); }
    std::string get_muting_option_2() const { return _target().get_muting_option_2(); }
    /// Subcarriers, below the comb size.
    bool set_re_offset(unsigned int re_offset) { return _target().set_re_offset(re_offset); }
    unsigned int get_re_offset() const { return _target().get_re_offset(); }
    /// Slots behind the set's offset, below the periodicity.
    bool set_slot_offset(unsigned int offset) { return _target().set_slot_offset(offset); }
    unsigned int get_slot_offset() const { return _target().get_slot_offset(); }
    /// First symbol of a slot, so that all symbols fit.
    bool set_symbol_offset(unsigned int offset) { return _target().set_symbol_offset(offset); }
    unsigned int get_symbol_offset() const { return _target().get_symbol_offset(); }
    /// Symbols of a slot; a number that the comb has not becomes the next that it has. Limits the symbol offset.
    bool set_symbol_number(lib_nr_prs_symbol_number number) { return _target().set_symbol_number(number); }
    lib_nr_prs_symbol_number get_symbol_number() const { return _target().get_symbol_number(); }
};

} // namespace vek::nr_mod_lib
