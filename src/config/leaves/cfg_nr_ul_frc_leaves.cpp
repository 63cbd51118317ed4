#include "config/leaves/cfg_nr_leaf_tables.h"
#include "config/leaves/cfg_nr_preset_leaves.h"

namespace vek::nr_mod_lib
{

namespace
{

using frc_t = cfg_nr_ul_frc_t;
using row = rows_of_t<frc_t>;

constexpr auto k_leaves = row::leaves(
    k_preset_enable<row>,
    row::leaf<&frc_t::get_fixed_reference_channels, &frc_t::set_fixed_reference_channels,
              &frc_t::get_valid_fixed_reference_channels_list>("fixed_reference_channels",
                                                               "family; another one takes its first channel"),
    row::leaf<&frc_t::get_frc_reference_channels, &frc_t::set_frc_reference_channels,
              &frc_t::get_valid_frc_reference_channels_list>(
        "frc_reference_channels", "channel of the family; bandwidth, mapping type and period follow"),
    k_preset_bandwidth<row>, k_preset_duplex_type<row>,
    row::leaf<&frc_t::get_periodicity, &frc_t::set_periodicity, &frc_t::get_valid_periodicity_list>(
        "periodicity", "of the TDD pattern, in ms; limits tdd_ul_slot_number"),
    row::leaf<&frc_t::get_tdd_ul_slot_number, &frc_t::set_tdd_ul_slot_number>(
        "tdd_ul_slot_number", "slots at the end of each period, 1 to all"),
    row::leaf<&frc_t::get_rb_offset, &frc_t::set_rb_offset>(
        "rb_offset", "first resource block, as far up as the bandwidth has room; not of an interlaced channel"),
    row::leaf<&frc_t::get_mapping_type, &frc_t::set_mapping_type, &frc_t::get_valid_mapping_type_list>(
        "mapping_type", "of the PUSCH, as the channel allows")
        .before("rb_offset"),
    row::leaf<&frc_t::get_dmrs_type_a_position, &frc_t::set_dmrs_type_a_position,
              &frc_t::get_valid_dmrs_type_a_position_list>(
        "dmrs_type_a_position", "first DMRS symbol with mapping type A, 2 or with some channels 3; else 0")
        .before("rb_offset"),
    row::leaf<&frc_t::get_interlace_index, &frc_t::set_interlace_index>(
        "interlace_index", "of an interlaced channel, below 10 at 15 kHz, else below 5"),
    k_preset_radio_leaves<row>);

constexpr auto k_figures = row::rows(
    row::figure<&frc_t::get_frequency_range>("frequency_range", "of the channel"),
    row::figure<&frc_t::get_numerolgy>("numerolgy", "spacing of the channel"),
    row::figure<&frc_t::get_rb_num>("rb_num", "resource blocks of the channel"),
    row::figure<&frc_t::get_symbol_number>("symbol_number", "symbols of a slot"),
    row::figure<&frc_t::get_layers>("layers", "of the channel"),
    row::figure<&frc_t::get_enable_transfer_precoding>("enable_transfer_precoding", "whether the channel has it"),
    row::figure<&frc_t::get_dmrs_additional_position>("dmrs_additional_position", "of the channel"),
    row::figure<&frc_t::is_type_2>("type_2", "whether the channel is interlaced"),
    row::figure<&frc_t::get_slot_allocation_str>("slot_allocation_str",
                                                 "a period of the TDD pattern, U for a slot of the uplink"),
    row::figure<&frc_t::get_valid_numerology_list>("valid_numerology_list", "spacings of the bandwidth"));

} // namespace

constinit const cfg_nr_table_of_t<frc_t> g_cfg_nr_ul_frc_table = row::table("cfg_nr_ul_frc", k_leaves, k_figures);

} // namespace vek::nr_mod_lib
