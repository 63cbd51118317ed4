#include "config/leaves/cfg_nr_leaf_tables.h"
#include "config/leaves/cfg_nr_sch_leaves.h"

namespace vek::nr_mod_lib
{

namespace
{

using sch_t = cfg_nr_dl_sch_t;
using row = rows_of_t<sch_t>;

constexpr auto k_leaves =
    row::leaves(
        row::leaf<&sch_t::get_vrb2prb_interleaver, &sch_t::set_vrb2prb_interleaver>(
            "vrb2prb_interleaver", "whether resource blocks are interleaved, for type 1"),
        row::leaf<&sch_t::get_vrb_bundle_size, &sch_t::set_vrb_bundle_size>("vrb_bundle_size",
                                                                            "resource blocks of an interleaved bundle"),
        row::leaf<&sch_t::get_tb_scaling, &sch_t::set_tb_scaling>("tb_scaling", "factor of the transport block size"),
        k_sch_leaves<row>)
        .recalled_first({"bwp_id", "dmrs_length", "dmrs_configuration_type", "mapping_type", "dmrs_type_a_position",
                         "dmrs_additional_position"});

constexpr auto k_figures = row::rows(
    row::figure<&sch_t::get_layers_num>("layers_num", "one for each DMRS port"),
    row::figure<&sch_t::get_antenna_port_number>("antenna_port_number", "antenna ports of the channel"),
    row::figure<&sch_t::get_modulation>("modulation", "of the MCS"),
    row::figure<&sch_t::get_target_code_rate>("target_code_rate", "of the MCS, 0 to 1"),
    row::figure<&sch_t::get_rbg_bitmap_number>("rbg_bitmap_number", "resource block groups of the bandwidth part"));

} // namespace

constinit const cfg_nr_table_of_t<sch_t> g_cfg_nr_dl_sch_table = row::table("cfg_nr_dl_sch", k_leaves, k_figures);

} // namespace vek::nr_mod_lib
