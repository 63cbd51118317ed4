#include "config/cfg_nr_ul_bwp.h"
#include "config/leaves/cfg_nr_leaf_rows.h"
#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using bwp_t = cfg_nr_ul_bwp_t;
using row = rows_of_t<bwp_t>;

constexpr auto k_leaves = row::leaves(
    row::leaf<&bwp_t::get_numerology, &bwp_t::set_numerology>("numerology", "spacing, of the carrier's enabled ones"),
    row::leaf<&bwp_t::get_cp_type, &bwp_t::set_cp_type>(
        "cp_type",
        "cyclic prefix of all uplink BWPs; extended at 60 kHz alone, and sent with scs and cp_type of dl_bwp[0] "
        "set likewise"),
    row::leaf<&bwp_t::get_rb_offset, &bwp_t::set_rb_offset>(
        "rb_offset", "first resource block, 6 below the numerology's end; cuts rb_number"),
    row::leaf<&bwp_t::get_rb_number, &bwp_t::set_rb_number>("rb_number",
                                                            "resource blocks, 6 to what fits behind rb_offset"),
    row::leaf<&bwp_t::get_bwp_name, &bwp_t::set_bwp_name>("bwp_name", "any text").outside_tree());

} // namespace

constinit const cfg_nr_table_of_t<bwp_t> g_cfg_nr_ul_bwp_table = row::table("cfg_nr_ul_bwp", k_leaves);

} // namespace vek::nr_mod_lib
