#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using numerology_t = cfg_nr_phy_numerology_t;
using row = rows_of_t<numerology_t>;

constexpr auto k_leaves =
    row::leaves(row::leaf<&numerology_t::get_enable, &numerology_t::set_enable>(
                    "enable", "whether the numerology is used; the last enabled one cannot be switched off"),
                row::leaf<&numerology_t::get_rb_size, &numerology_t::set_rb_size>(
                    "rb_size", "width in resource blocks, 6 to what fits behind rb_start"),
                row::leaf<&numerology_t::get_rb_start, &numerology_t::set_rb_start>(
                    "rb_start", "first resource block; leaves room for 6, and cuts a width that no longer fits"));

constexpr auto k_figures =
    row::rows(row::figure<&numerology_t::get_scs>("scs", "subcarrier spacing"),
              row::figure<&numerology_t::get_k0>(
                  "k0", "distance between the centres of the used band and of the carrier, in subcarriers"));

constexpr auto k_branches = row::rows(row::single<&numerology_t::get_ul_guard_band>(
                                          "ul_guard_band", g_cfg_nr_ul_guard_band_table, "guard bands inside the cell")
                                          .outside_tree());

} // namespace

constinit const cfg_nr_table_of_t<numerology_t> g_cfg_nr_phy_numerology_table =
    row::table("cfg_nr_phy_numerology", k_leaves, k_figures, k_branches);

} // namespace vek::nr_mod_lib
