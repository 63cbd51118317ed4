#include "config/leaves/cfg_nr_leaf.h"

namespace vek::nr_mod_lib
{

std::vector<const cfg_nr_leaf_t*> cfg_nr_facade_table_t::leaves_in_recall_order() const
{
    std::vector<const cfg_nr_leaf_t*> ordered;
    ordered.reserve(leaves.size());
    for (const unsigned short place : recall_order)
        ordered.push_back(leaves.begin() + place);
    return ordered;
}

} // namespace vek::nr_mod_lib
