#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using bwp_t = cfg_nr_dl_bwp_t;
using row = rows_of_t<bwp_t>;

constexpr auto k_leaves = row::leaves(
    row::leaf<&bwp_t::get_bwp_rb_size, &bwp_t::set_bwp_rb_size>(
        "bwp_rb_size", "width in resource blocks, 6 to what fits behind bwp_rb_start"),
    row::leaf<&bwp_t::get_bwp_rb_start, &bwp_t::set_bwp_rb_start>(
        "bwp_rb_start", "first resource block, within the numerology; cuts bwp_rb_size")
        .before("bwp_rb_size"),
    row::leaf<&bwp_t::get_scs, &bwp_t::set_scs>("scs", "spacing, of an enabled numerology; cuts the resource blocks")
        .before("bwp_rb_start"),
    row::leaf<&bwp_t::get_cp_type, &bwp_t::set_cp_type>(
        "cp_type", "cyclic prefix of all downlink bandwidth parts; extended at 60 kHz alone"),
    row::leaf<&bwp_t::get_coreset_number, &bwp_t::set_coreset_number>("coreset_number", "CORESETs that count, 1 to 3"));

constexpr auto k_figures = row::rows(
    row::figure<&bwp_t::get_first_coreset_index>("first_coreset_index", "0 in the initial bandwidth part, else 1"));

constexpr auto k_branches = row::rows(row::list<&bwp_t::get_coreset_number, &bwp_t::get_coreset>(
                                          "coreset", g_cfg_nr_dl_coreset_table, "control resource sets, by their ids")
                                          .first_index<&bwp_t::get_first_coreset_index>());

} // namespace

constinit const cfg_nr_table_of_t<bwp_t> g_cfg_nr_dl_bwp_table =
    row::table("cfg_nr_dl_bwp", k_leaves, k_figures, k_branches);

} // namespace vek::nr_mod_lib
