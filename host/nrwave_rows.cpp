#include "host/nrwave_rows.h"

#include "host/nrwave_path.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

std::string setting_path(const std::string& facade, const cfg_nr_leaf_t& leaf, unsigned int index)
{
    const std::string path = below(facade, leaf.name);
    return leaf.is_indexed() ? entry(path, index) : path;
}

void append_steps_to(std::vector<std::string>& steps, const std::string& path, const cfg_nr_leaf_t& leaf, void* facade,
                     unsigned int index)
{
    const auto detour = leaf.detour(facade);
    for (const auto& [name, value] : detour)
        steps.push_back(below(path, name) + '=' + value);
    if (detour.empty())
        steps.push_back(setting_step(path, leaf, facade, index));
}

std::string setting_step(const std::string& path, const cfg_nr_leaf_t& leaf, void* facade, unsigned int index)
{
    return setting_path(path, leaf, index) + '=' + leaf.read(facade, index);
}

std::string verb_step(const cfg_nr_verb_t& verb, const std::string& facade)
{
    return std::string(verb.name) + ' ' + (verb.object ? below(facade, verb.object) : facade);
}

void drop_edits(const cfg_nr_facade_table_t& table, void* facade)
{
    for (const cfg_nr_verb_t& verb : table.verbs)
        if (verb.drops_edits)
            verb.run(facade, 0);
}

unsigned int indexed_values(const cfg_nr_facade_table_t& table, void* facade)
{
    for (const cfg_nr_leaf_t& leaf : table.leaves)
        if (leaf.is_indexed())
            return leaf.count(facade);
    return 0;
}

} // namespace nrwave
