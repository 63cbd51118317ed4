#include "config/cfg_nr_leaf_rows.h"
#include "config/cfg_nr_leaf_tables.h"
#include "config/cfg_nr_phy_numerology.h"

namespace vek::nr_mod_lib
{

namespace
{

using numerology_t = cfg_nr_phy_numerology_t;

constexpr std::array k_leaves = {
    leaf<&numerology_t::get_enable, &numerology_t::set_enable>("enable", 1),
    leaf<&numerology_t::get_rb_size, &numerology_t::set_rb_size>("rb_size", 2),
    leaf<&numerology_t::get_rb_start, &numerology_t::set_rb_start>("rb_start", 3),
};

} // namespace

constinit const cfg_nr_facade_table_t g_cfg_nr_phy_numerology_table = {"cfg_nr_phy_numerology", k_leaves, {}, {}};

} // namespace vek::nr_mod_lib
