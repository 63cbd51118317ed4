#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"
#include "phy_common/lib_nr_phy_common.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' PRACH bursts, which a carrier of type `LIB_NR_PRACH` sends.
///
/// Row, spacing, sequence length, restricted set and carrier go together (TS 38.211 clause 6.3.3): a setter stores what
/// is asked for, then corrects it and its neighbours by the checks of `lib_nr_phy_common_t`, each with a printed line.
/// A burst is sent in the frames that its row's period and `frame_offset` name, if its subframe or slot is one of the
/// row's; one that is disabled or not sent keeps those behind it in the list out of the frame too.
class NR_MOD_LIB_EXPORT cfg_nr_prach_t : public cfg_nr_list_cursor_t<lib_nr_ul_prach_configure_manager_t>
{
public:
    explicit cfg_nr_prach_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_prach_index(unsigned int carrier, unsigned int prach) { return set_current_index(carrier, prach); }
    /// The entry under the cursor.
    lib_nr_ul_prach_configure_manager_t& _get_prach_manager() { return _target(); }

    /// Always false, whether or not it changed; stays off at 240 kHz.
    bool set_enable(bool enable) { return _target().set_enable(enable, _numerology()); }
    bool get_enable() const { return _target().get_enable(); }
    /// dB, limited to -40 to 40.
    bool set_power_boosting(double boosting) { return _target().set_power_boosting(boosting); }
    double get_power_boosting() const { return _target().get_power_boosting(); }
    /// Seconds, at most 0.001; the burst moves within its frame, round its end. NaN changes nothing.
    bool set_timeoffset(double seconds) { return _target().set_timeoffset(seconds); }
    double get_timeoffet() const { return _target().get_timeoffset(); }

    /// Table of the configurations; its frequency range is not held against the carrier's. Takes the index anew.
    bool set_configuration_table(prach_config_table_type_t table)
    {
        return _target().set_configuration_table(table, _numerology());
    }
    prach_config_table_type_t get_configuration_table() const { return _target().get_configuration_table(); }
    /// Row of the table, at most 255, or 262 for FR1_TDD. Takes the row's first y, subframe and slot, and brings
    /// length, spacing, slot and restricted set in line with its format.
    bool set_configuration_idx(unsigned int index) { return _target().set_configuration_idx(index, _numerology()); }
    unsigned int get_configuration_idx() const { return _target().get_configuration_idx(); }
    /// Spacing of the preamble: of the format, the frequency range and the carrier's spacing.
    bool set_prach_scs(prach_scs_type_t scs)
    {
        return _target().set_prach_scs(scs, _carrier().get_bandwidth(), _numerology());
    }
    prach_scs_type_t get_prach_scs() const { return _target().get_prach_scs(); }
    /// Length of the sequence, L_RA: 839 for the long formats; of the spacing for the short ones, else 139.
    bool set_lra(prach_lra_type_t lra) { return _target().set_lra(lra, _numerology()); }
    prach_lra_type_t get_lra() const { return _target().get_lra(); }
    /// Set of cyclic shifts; the short formats are unrestricted.
    bool set_restrictedset(prach_restricted_set_type_t set) { return _target().set_restrictedset(set); }
    prach_restricted_set_type_t get_restrictedset() const { return _target().get_restrictedset(); }
    /// zeroCorrelationZoneConfig, 0 to 15 and what the restricted set has.
    bool set_zeroCorrelation_zone(unsigned int zone) { return _target().set_zeroCorrelation_zone(zone); }
    unsigned int get_ZeroCorrelationZone() const { return _target().get_ZeroCorrelationZone(); }
    /// Logical index of the first root sequence, at most L_RA - 2.
    bool set_sequence_index(unsigned int index) { return _target().set_root_sequence_index(index); }
    unsigned int get_sequence_index() const { return _target().get_sequence_index(); }
    /// 0 to 63.
    bool set_premable_index(unsigned int index) { return _target().set_premable_index(index); }
    unsigned int get_premable_index() const { return _target().get_premable_index(); }

    /// y of the frames n_f with n_f mod x = y; no check against the row.
    bool set_frame_offset(unsigned int offset) { return _target().set_frame_offset(offset); }
    unsigned int get_frame_offset_config() const { return _target().get_frame_offset(); }
    /// Subframe of the burst, for the FR1 tables; no check against the row.
    bool set_subframe_index(unsigned int index) { return _target().set_subframe_index(index); }
    unsigned int get_subframe_index_config() const { return _target().get_subframe_index(); }
    /// 60 kHz slot of the burst, for the FR2 table; no check against the row.
    bool set_slot_index(unsigned int index) { return _target().set_slot_index(index); }
    unsigned int get_slot_index_config() const { return _target().get_slot_index(); }
    /// PRACH slot within the subframe or 60 kHz slot, at most 15: 0 where the spacing has one alone, the last where the
    /// row has.
    bool set_n_RA_slot(unsigned int slot) { return _target().set_n_RA_slot(slot); }
    unsigned int get_n_RA_slot() const { return _target().get_n_RA_slot(); }
    /// Occasion in time within the slot, below the row's number; 0 at length 839.
    bool set_n_RA_t(unsigned int occasion) { return _target().set_n_RA_t(occasion); }
    unsigned int get_n_RA_t() const { return _target().get_n_RA_t(); }
    /// Occasions side by side in frequency; limits `n_RA_f`.
    bool set_msg1_fdm(prach_msg1_fdm_type_t fdm) { return _target().set_msg1_fdm(fdm); }
    prach_msg1_fdm_type_t get_msg1_fdm() const { return _target().get_msg1_fdm(); }
    /// Occasion in frequency, below `msg1_fdm`. In FR1 the lengths 571 and 1151 have one place alone.
    bool set_n_RA_f(unsigned int occasion) { return _target().set_n_RA_f(occasion); }
    unsigned int get_n_RA_f() const { return _target().get_n_RA_f(); }
    /// First resource block of the lowest occasion, from the BWP's first, at most the BWP's width.
    bool set_n_RA_start(unsigned int start) { return _target().set_n_RA_start(start); }
    unsigned int get_n_RA_start() const { return _target().get_n_RA_start(); }
    /// Width of uplink BWP 0, as `cfg_nr_ul_bwp_t` limits it; all channels of the BWP follow.
    bool set_rb_num(unsigned int rb_num);
    unsigned int get_rb_num() const { return _target().get_rb_num(); }
    /// First resource block of uplink BWP 0, as `cfg_nr_ul_bwp_t` limits it; all channels of the BWP follow.
    bool set_rb_offset(unsigned int rb_offset);
    unsigned int get_rb_offset() const { return _target().get_rb_offset(); }

    // What follows from the row of the configuration table.

    prach_format_t get_format() const { return _target().get_Format(); }
    /// x, in frames.
    unsigned int get_frame_period() const { return _target().get_frame_period(); }
    unsigned int get_first_symbol() const { return _target().get_first_symbol(); }
    /// 255 where the row has none.
    unsigned int get_prach_slot_per_subframe_and_60khz() const
    {
        return _target().get_prach_slot_per_subframe_and_60khz();
    }
    /// Occasions in time within a slot.
    unsigned int get_n_RA_slot_t() const { return _target().get_n_RA_slot_t(); }
    /// Symbols of an occasion, after a printed line; of a long format its repetitions.
    unsigned int get_prach_duration() const { return _target().get_prach_duration(); }
    /// Logical index of the root that the preamble came to lie on, which is also printed.
    unsigned int get_logical_root_sequence_index() const;
    /// The root u of the larger of sequence index and logical index.
    unsigned int get_sequence_number();

    // What a user interface may offer.

    std::vector<unsigned int> get_frame_offset() const { return get_frame_offset_for_ui(); }
    std::vector<unsigned int> get_subframe_index() const { return get_subframe_index_for_ui(); }
    std::vector<unsigned int> get_slot_index() const { return get_slot_index_for_ui(); }
    std::vector<prach_config_table_type_t> get_config_table_for_ui() const
    {
        return _target().get_config_table_for_ui(_carrier().get_bandwidth());
    }
    std::vector<prach_scs_type_t> get_prach_scs_for_ui() const
    {
        return _target().get_prach_scs_for_ui(get_format(), _carrier().get_bandwidth());
    }
    std::vector<prach_msg1_fdm_type_t> get_msg1_fdm_for_ui() const { return _target().get_msg1_fdm_for_ui(); }
    std::vector<unsigned int> get_frame_offset_for_ui() const { return _target().get_frame_offset_for_ui(); }
    std::vector<unsigned int> get_subframe_index_for_ui() const { return _target().get_subframe_index_for_ui(); }
    std::vector<unsigned int> get_slot_index_for_ui() const { return _target().get_slot_index_for_ui(); }
    std::vector<prach_lra_type_t> get_lra_for_ui() const
    {
        return _target().get_lra_for_ui(get_format(), get_prach_scs());
    }
    std::vector<unsigned int> get_n_RA_slot_for_ui() const { return _target().get_n_RA_slot_for_ui(get_prach_scs()); }
    std::vector<unsigned int> get_n_RA_t_for_ui() const { return _target().get_n_RA_t_for_ui(); }

private:
    lib_nr_numerology_type_t _numerology() const;
};

} // namespace vek::nr_mod_lib
