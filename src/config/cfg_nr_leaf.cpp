#include "config/cfg_nr_leaf.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

std::vector<const cfg_nr_leaf_t*> cfg_nr_facade_table_t::leaves_by_step() const
{
    std::vector<const cfg_nr_leaf_t*> ordered;
    ordered.reserve(leaves.size());
    for (const cfg_nr_leaf_t& leaf : leaves)
        ordered.push_back(&leaf);
    std::sort(ordered.begin(), ordered.end(),
              [](const cfg_nr_leaf_t* a, const cfg_nr_leaf_t* b) { return a->step < b->step; });
    return ordered;
}

} // namespace vek::nr_mod_lib
