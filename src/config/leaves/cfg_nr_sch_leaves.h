#pragma once

#include "config/leaves/cfg_nr_leaf_rows.h"

#include <array>

namespace vek::nr_mod_lib
{

/// The settings that PDSCH and PUSCH have in common, for the table of either.
template <class row, class x_t = typename row::facade_type>
constexpr std::array k_sch_leaves = {
    row::template leaf<&x_t::get_enable, &x_t::set_enable>("enable", "whether the channel is sent; not at 240 kHz"),
    row::template leaf<&x_t::get_power_boosting, &x_t::set_power_boosting>("power_boosting", "dB, -40 to 40"),
    row::template leaf<&x_t::get_rnti, &x_t::set_rnti>("rnti", "n_RNTI of the scrambling, 0 to 65535"),
    row::template leaf<&x_t::get_nid, &x_t::set_nid>(
        "nid", "n_ID of the scrambling, 0 to 1023; -1 stands for ncell_id, 0 too without standard_rules"),
    row::template leaf<&x_t::get_dmrs_port, &x_t::set_dmrs_port>(
        "dmrs_port",
        "counted from 0; one in the downlink, up to 4, such as 0,2, in the uplink; limits what hangs on them"),
    row::template leaf<&x_t::get_antenna_port, &x_t::set_antenna_port>(
        "antenna_port", "port of each antenna; one that the channel has not becomes none"),
    row::template leaf<&x_t::get_cdm_groups_without_data_num, &x_t::set_cdm_groups_without_data_num>(
        "cdm_groups_without_data_num",
        "1 to 2, or 3 with type 2, and up to the group of dmrs_port; a new count resets dmrs_power"),
    row::template leaf<&x_t::get_one_frame_period, &x_t::set_one_frame_period>(
        "one_frame_period", "whether the slots repeat in every frame, or count over all frames"),
    row::template leaf<&x_t::get_slot_allocation, &x_t::set_slot_allocation>("slot_allocation", "slots, such as 0:4,7"),
    row::template leaf<&x_t::get_first_symbol, &x_t::set_first_symbol>(
        "first_symbol", "first symbol of the slot; mapping type, DMRS and prefix limit it"),
    row::template leaf<&x_t::get_symbol_num, &x_t::set_symbol_num>(
        "symbol_num", "symbols of a slot, limited likewise and by its end"),
    row::template leaf<&x_t::get_bwp_id, &x_t::set_bwp_id>(
        "bwp_id", "bandwidth part of the carrier, by its place; one past the end becomes 0"),
    row::template leaf<&x_t::get_ra_type, &x_t::set_ra_type, &x_t::get_ra_type_list>(
        "ra_type", "resource blocks by groups, by a range or, in the uplink, by interlaces"),
    row::template leaf<&x_t::get_rbg_size, &x_t::set_rbg_size, &x_t::get_rbg_size_list>(
        "rbg_size", "resource blocks of a group, for type 0; fits rbg_bitmap"),
    row::template leaf<&x_t::get_rbg_bitmap, &x_t::set_rbg_bitmap>(
        "rbg_bitmap", "bits such as 0110, rbg_bitmap_number of them, for type 0"),
    row::template leaf<&x_t::get_rb_offset, &x_t::set_rb_offset>(
        "rb_offset", "first resource block within the bandwidth part, for type 1; cuts rb_num"),
    row::template leaf<&x_t::get_rb_num, &x_t::set_rb_num>(
        "rb_num", "resource blocks, for type 1, 1 to what the bandwidth part has from rb_offset on"),
    row::template leaf<&x_t::get_enable_coding, &x_t::set_enable_coding>(
        "enable_coding", "whether transport blocks are coded; else the bare bits of data_source"),
    row::template leaf<&x_t::get_mcs_table, &x_t::set_mcs_table, &x_t::get_mcs_table_list>("mcs_table",
                                                                                           "of TS 38.214; limits mcs"),
    row::template leaf<&x_t::get_mcs, &x_t::set_mcs>("mcs", "row of mcs_table, 0 to its last, 26 to 28"),
    row::template leaf<&x_t::get_x_overhead, &x_t::set_x_overhead>(
        "x_overhead", "xOverhead of the transport block size, in resource elements"),
    row::template leaf<&x_t::get_data_source, &x_t::set_data_source>("data_source", "bits of the transport blocks"),
    row::template leaf<&x_t::get_data_source_custom, &x_t::set_data_source_custom>("data_source_custom",
                                                                                   "bits of the user, such as 1011"),
    row::template leaf<&x_t::get_rv, &x_t::set_rv>("rv", "redundancy version, 0 to 3"),
    row::template leaf<&x_t::get_enable_dmrs_downlink_r16, &x_t::set_enable_dmrs_downlink_r16>(
        "enable_dmrs_downlink_r16", "dmrs-Downlink-r16: a DMRS sequence for each CDM group"),
    row::template leaf<&x_t::get_nscid, &x_t::set_nscid>("nscid", "n_SCID of the DMRS, 0 or 1"),
    row::template leaf<&x_t::get_nid0, &x_t::set_nid0>(
        "nid0", "N_ID^0 of the DMRS, 0 to 65535; -1 stands for ncell_id, 0 too without standard_rules"),
    row::template leaf<&x_t::get_nid1, &x_t::set_nid1>(
        "nid1", "N_ID^1 of the DMRS, 0 to 65535; -1 stands for ncell_id, 0 too without standard_rules"),
    row::template leaf<&x_t::get_dmrs_power, &x_t::set_dmrs_power>("dmrs_power", "dB above power_boosting, -40 to 40"),
    row::template leaf<&x_t::get_dmrs_configuration_type, &x_t::set_dmrs_configuration_type>(
        "dmrs_configuration_type", "limits dmrs_port and cdm_groups_without_data_num"),
    row::template leaf<&x_t::get_dmrs_length, &x_t::set_dmrs_length>(
        "dmrs_length", "limits dmrs_port, dmrs_additional_position and the symbols"),
    row::template leaf<&x_t::get_dmrs_additional_position, &x_t::set_dmrs_additional_position,
                       &x_t::get_dmrs_additional_position_list>("dmrs_additional_position",
                                                                "DMRS positions behind the first"),
    row::template leaf<&x_t::get_mapping_type, &x_t::set_mapping_type>(
        "mapping_type", "limits dmrs_additional_position and the symbols"),
    row::template leaf<&x_t::get_dmrs_type_a_position, &x_t::set_dmrs_type_a_position>(
        "dmrs_type_a_position", "first DMRS symbol of mapping type A, given or of the carrier's MIB"),
    row::template leaf<&x_t::get_dmrs_mapping_ref, &x_t::set_dmrs_mapping_ref>(
        "dmrs_mapping_ref",
        "resource block that the DMRS sequence counts from: of a PDSCH under standard_rules, else its length alone"),
    row::template leaf<&x_t::get_enable_ptrs, &x_t::set_enable_ptrs>(
        "enable_ptrs", "not on the DMRS ports from 4 on, with type 2 from 6 on"),
    row::template leaf<&x_t::get_ptrs_power, &x_t::set_ptrs_power>("ptrs_power", "dB above power_boosting, -40 to 40"),
    row::template leaf<&x_t::get_ptrs_freqency_density, &x_t::set_ptrs_freqency_density>(
        "ptrs_freqency_density", "resource blocks from one PTRS subcarrier to the next"),
    row::template leaf<&x_t::get_ptrs_time_density, &x_t::set_ptrs_time_density>(
        "ptrs_time_density", "symbols from one PTRS symbol to the next"),
    row::template leaf<&x_t::get_ptrs_re_offset, &x_t::set_ptrs_re_offset>("ptrs_re_offset",
                                                                           "resourceElementOffset, 0 to 3"),
};

} // namespace vek::nr_mod_lib
