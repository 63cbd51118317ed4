#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using coreset_t = cfg_nr_dl_coreset_t;
using row = rows_of_t<coreset_t>;

constexpr auto k_leaves = row::leaves(
    row::leaf<&coreset_t::get_rb_offset, &coreset_t::set_rb_offset>(
        "rb_offset", "resource blocks that the groups move up, 0 to 5; -1 aligns them with point A"),
    row::leaf<&coreset_t::get_fd_resources, &coreset_t::set_fd_resources>(
        "fd_resources", "a bit for each group of 6 resource blocks, as 1101; held to what interleaving can use")
        .before("shift_idx"),
    row::leaf<&coreset_t::get_duration, &coreset_t::set_duration>("duration", "symbols, 1 to 3"),
    row::leaf<&coreset_t::get_cce2reg_mapping_type, &coreset_t::set_cce2reg_mapping_type>(
        "cce2reg_mapping_type", "whether the REGs are interleaved"),
    row::leaf<&coreset_t::get_reg_bundle_size, &coreset_t::set_reg_bundle_size>(
        "reg_bundle_size", "for interleaving; 3 at 3 symbols alone"),
    row::leaf<&coreset_t::get_interleaver_size, &coreset_t::set_interleaver_size>("interleaver_size",
                                                                                  "rows of the interleaver"),
    row::leaf<&coreset_t::get_shift_idx, &coreset_t::set_shift_idx>("shift_idx",
                                                                    "n_shift of the interleaver, 0 to 274"),
    row::leaf<&coreset_t::get_precoder_granularity, &coreset_t::set_precoder_granularity>(
        "precoder_granularity", "kept, without effect on the signal"));

constexpr auto k_figures = row::rows(row::figure<&coreset_t::get_available_coreset_bitmap>(
    "available_coreset_bitmap", "a 1 for each group of 6 resource blocks of the bandwidth part"));

} // namespace

constinit const cfg_nr_table_of_t<coreset_t> g_cfg_nr_dl_coreset_table =
    row::table("cfg_nr_dl_coreset", k_leaves, k_figures);

} // namespace vek::nr_mod_lib
