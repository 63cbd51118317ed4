#include "config/cfg_nr_prach.h"
#include "config/leaves/cfg_nr_leaf_rows.h"
#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using prach_t = cfg_nr_prach_t;
using row = rows_of_t<prach_t>;

// The settings tree holds none of it. Each row is corrected by those before it alone, so that a listing, taken as
// steps, gives the same burst.
constexpr auto k_leaves = row::leaves(
    row::leaf<&prach_t::get_configuration_table, &prach_t::set_configuration_table>(
        "configuration_table", "FR1 paired or unpaired, or FR2; takes configuration_idx anew")
        .outside_tree(),
    row::leaf<&prach_t::get_configuration_idx, &prach_t::set_configuration_idx>(
        "configuration_idx", "row of the table, 0 to 255, or 262 for FR1_TDD; resets what hangs on its format")
        .outside_tree(),
    row::leaf<&prach_t::get_prach_scs, &prach_t::set_prach_scs>("prach_scs",
                                                                "spacing, of format, frequency range and carrier")
        .outside_tree(),
    row::leaf<&prach_t::get_lra, &prach_t::set_lra>("lra", "length of the sequence, of format and spacing")
        .outside_tree(),
    row::leaf<&prach_t::get_restrictedset, &prach_t::set_restrictedset>("restrictedset",
                                                                        "set of cyclic shifts; long formats alone")
        .outside_tree(),
    row::leaf<&prach_t::get_ZeroCorrelationZone, &prach_t::set_zeroCorrelation_zone>(
        "zeroCorrelation_zone", "zeroCorrelationZoneConfig, 0 to 15 and what the restricted set has")
        .outside_tree(),
    row::leaf<&prach_t::get_sequence_index, &prach_t::set_sequence_index>(
        "sequence_index", "logical index of the first root, 0 to lra - 2")
        .outside_tree(),
    row::leaf<&prach_t::get_premable_index, &prach_t::set_premable_index>("premable_index", "preamble, 0 to 63")
        .outside_tree(),
    row::leaf<&prach_t::get_frame_offset_config, &prach_t::set_frame_offset>("frame_offset",
                                                                             "y: sent in frames n mod x = y")
        .outside_tree(),
    row::leaf<&prach_t::get_subframe_index_config, &prach_t::set_subframe_index>(
        "subframe_index", "subframe, of the row's, for the FR1 tables")
        .outside_tree(),
    row::leaf<&prach_t::get_slot_index_config, &prach_t::set_slot_index>("slot_index",
                                                                         "60 kHz slot, of the row's, for FR2_TDD")
        .outside_tree(),
    row::leaf<&prach_t::get_n_RA_slot, &prach_t::set_n_RA_slot>(
        "n_RA_slot", "PRACH slot within the subframe or 60 kHz slot, 0 to 15")
        .outside_tree(),
    row::leaf<&prach_t::get_n_RA_t, &prach_t::set_n_RA_t>("n_RA_t", "occasion in time, below n_RA_slot_t; 0 at 839")
        .outside_tree(),
    row::leaf<&prach_t::get_msg1_fdm, &prach_t::set_msg1_fdm, &prach_t::get_msg1_fdm_for_ui>(
        "msg1_fdm", "occasions side by side in frequency; limits n_RA_f")
        .outside_tree(),
    row::leaf<&prach_t::get_n_RA_f, &prach_t::set_n_RA_f>("n_RA_f", "occasion in frequency, below msg1_fdm")
        .outside_tree(),
    row::leaf<&prach_t::get_rb_offset, &prach_t::set_rb_offset>("rb_offset",
                                                                "first resource block of uplink BWP 0, which follows")
        .outside_tree(),
    row::leaf<&prach_t::get_rb_num, &prach_t::set_rb_num>("rb_num",
                                                          "resource blocks of uplink BWP 0, which follows, 6 and more")
        .outside_tree(),
    row::leaf<&prach_t::get_n_RA_start, &prach_t::set_n_RA_start>(
        "n_RA_start", "resource block of the BWP that the lowest occasion begins with, 0 to rb_num")
        .outside_tree(),
    row::leaf<&prach_t::get_power_boosting, &prach_t::set_power_boosting>("power_boosting", "dB, -40 to 40")
        .outside_tree(),
    row::leaf<&prach_t::get_timeoffet, &prach_t::set_timeoffset>("timeoffset",
                                                                 "delay within the frame in seconds, at most 0.001")
        .outside_tree(),
    row::leaf<&prach_t::get_enable, &prach_t::set_enable>("enable", "whether the burst is sent; not at 240 kHz")
        .outside_tree());

constexpr auto k_figures = row::rows(
    row::figure<&prach_t::get_format>("format", "preamble format of the row and occasion"),
    row::figure<&prach_t::get_frame_period>("frame_period", "x: frames from one burst to the next"),
    row::figure<&prach_t::get_first_symbol>("first_symbol", "starting symbol of the row"),
    row::figure<&prach_t::get_prach_slot_per_subframe_and_60khz>(
        "prach_slot_per_subframe_and_60khz", "PRACH slots in a subframe or 60 kHz slot; 255 for the long formats"),
    row::figure<&prach_t::get_n_RA_slot_t>("n_RA_slot_t", "occasions in time within a slot"),
    row::figure<&prach_t::get_prach_duration>("prach_duration",
                                              "symbols of an occasion, or a long format's repetitions"),
    row::figure<&prach_t::get_logical_root_sequence_index>("logical_root_sequence_index",
                                                           "logical index of the preamble's root"),
    row::figure<&prach_t::get_sequence_number>("sequence_number", "the preamble's root u"),
    row::figure<&prach_t::get_config_table_for_ui>("config_table_for_ui", "tables of the carrier's frequency range"),
    row::figure<&prach_t::get_prach_scs_for_ui>("prach_scs_for_ui", "spacings of format and frequency range"),
    row::figure<&prach_t::get_lra_for_ui>("lra_for_ui", "lengths of format and spacing"),
    row::figure<&prach_t::get_frame_offset_for_ui>("frame_offset_for_ui", "the row's y"),
    row::figure<&prach_t::get_subframe_index_for_ui>("subframe_index_for_ui", "the row's subframes"),
    row::figure<&prach_t::get_slot_index_for_ui>("slot_index_for_ui", "the row's slots"),
    row::figure<&prach_t::get_n_RA_slot_for_ui>("n_RA_slot_for_ui", "PRACH slots of the spacing"),
    row::figure<&prach_t::get_n_RA_t_for_ui>("n_RA_t_for_ui", "occasions in time"));

} // namespace

constinit const cfg_nr_table_of_t<prach_t> g_cfg_nr_prach_table = row::table("cfg_nr_prach", k_leaves, k_figures);

} // namespace vek::nr_mod_lib
