#include "config/leaves/cfg_nr_leaf_tables.h"
#include "config/leaves/cfg_nr_sch_leaves.h"

namespace vek::nr_mod_lib
{

namespace
{

using sch_t = cfg_nr_ul_sch_t;
using row = rows_of_t<sch_t>;

constexpr auto k_leaves =
    row::leaves(
        row::leaf<&sch_t::get_enable_transfer_precoding, &sch_t::set_enable_transfer_precoding>(
            "enable_transfer_precoding", "transform precoding, with ra_type 1; fits rb_num, mcs_table and dmrs_port"),
        row::leaf<&sch_t::get_rapid, &sch_t::set_rapid>("rapid", "n_RAPID of the scrambling, 0 to 63; -1 for none"),
        row::leaf<&sch_t::get_enable_codebook, &sch_t::set_enable_codebook>(
            "enable_codebook", "precoding by antenna_port_number and tpmi"),
        row::leaf<&sch_t::get_antenna_port_number, &sch_t::set_antenna_port_number,
                  &sch_t::get_antenna_port_number_list>("antenna_port_number", "of the codebook; limits tpmi"),
        row::leaf<&sch_t::get_tpmi, &sch_t::set_tpmi>(
            "tpmi", "precoding matrix, from 0 up to 27 by layers and antenna ports; above it 0"),
        row::leaf<&sch_t::get_rb_set_start, &sch_t::set_rb_set_start>(
            "rb_set_start", "first RB set between the guard bands, for interlaces; cuts rb_set_number"),
        row::leaf<&sch_t::get_rb_set_number, &sch_t::set_rb_set_number>("rb_set_number",
                                                                        "RB sets, 1 to those from rb_set_start on"),
        row::leaf<&sch_t::get_interlace_index, &sch_t::set_interlace_index>(
            "interlace_index", "interlaces such as 0,2:3, below 10 at 15 kHz, else below 5; for ra_type 2"),
        row::leaf<&sch_t::get_unused_rb, &sch_t::set_unused_rb>(
            "unused_rb", "resource blocks left out at the end of a single RB set; limits interlace_index"),
        row::leaf<&sch_t::get_hopping_mode, &sch_t::set_hopping_mode>(
            "hopping_mode", "limits dmrs_length, dmrs_additional_position and the symbols"),
        row::leaf<&sch_t::get_hopping_rb_offset, &sch_t::set_hopping_rb_offset>(
            "hopping_rb_offset",
            "resource blocks from the first hop to the second, which may wrap in the bandwidth part"),
        row::leaf<&sch_t::get_modulation, &sch_t::set_modulation, &sch_t::get_modulation_list>(
            "modulation", "of the MCS, where that leaves it open"),
        row::leaf<&sch_t::get_enable_lbrm, &sch_t::set_enable_lbrm>(
            "enable_lbrm", "limited buffer rate matching; the bits are the same"),
        row::leaf<&sch_t::get_dmrs_hopping, &sch_t::set_dmrs_hopping>(
            "dmrs_hopping", "of transform-precoded DMRS, by group or sequence"),
        row::leaf<&sch_t::get_n_rs_id, &sch_t::set_n_rs_id>(
            "n_rs_id",
            "n_ID^RS of transform-precoded DMRS, 0 to 65535; -1 stands for ncell_id, 0 too without standard_rules"),
        row::leaf<&sch_t::get_ptrs_port, &sch_t::set_ptrs_port>("ptrs_port", "DMRS ports with PTRS, such as 0,2"),
        row::leaf<&sch_t::get_n_ptrs_group_sample, &sch_t::set_n_ptrs_group_sample>(
            "n_ptrs_group_sample", "samples of a transform-precoded PTRS group; 8 groups have 4"),
        row::leaf<&sch_t::get_n_ptrs_group, &sch_t::set_n_ptrs_group>("n_ptrs_group",
                                                                      "PTRS groups of a transform-precoded symbol"),
        row::leaf<&sch_t::get_n_ptrs_id, &sch_t::set_n_ptrs_id>("n_ptrs_id",
                                                                "n_ID of transform-precoded PTRS, 0 to 65535"),
        k_sch_leaves<row>)
        .recalled_first({"bwp_id", "hopping_mode", "dmrs_configuration_type", "dmrs_length", "mapping_type",
                         "dmrs_type_a_position", "dmrs_additional_position", "ra_type"});

constexpr auto k_figures = row::rows(
    row::figure<&sch_t::get_layers_num>("layers_num", "one for each DMRS port"),
    row::figure<&sch_t::get_target_code_rate>("target_code_rate", "of the MCS, 0 to 1"),
    row::figure<&sch_t::get_rbg_bitmap_number>("rbg_bitmap_number", "resource block groups of the bandwidth part"),
    row::figure<&sch_t::get_antenna_port_number_list>("antenna_port_number_list", "for the number of layers"),
    row::figure<&sch_t::get_modulation_list>("modulation_list", "for the MCS"),
    row::figure<&sch_t::get_ptrs_time_density_list>("ptrs_time_density_list", "for the waveform"),
    row::figure<&sch_t::get_ra_type_list>("ra_type_list", "types of allocation"),
    row::figure<&sch_t::get_mcs_table_list>("mcs_table_list", "for the waveform"),
    row::figure<&sch_t::get_rbg_size_list>("rbg_size_list", "for the bandwidth part"),
    row::figure<&sch_t::get_dmrs_additional_position_list>("dmrs_additional_position_list",
                                                           "for hopping, DMRS length and mapping type"));

} // namespace

constinit const cfg_nr_table_of_t<sch_t> g_cfg_nr_ul_sch_table = row::table("cfg_nr_ul_sch", k_leaves, k_figures);

} // namespace vek::nr_mod_lib
