#include "host/nrwave_difference.h"

#include "host/nrwave_path.h"

#include <algorithm>
#include <string_view>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

struct comparison_t
{
    void* first;
    void* second;
    const cfg_nr_facade_table_t* table;
    std::string path;
    /// Whether a preset is chosen here.
    bool is_choice = false;
    /// Figures instead of settings.
    bool of_figures = false;
};

void compare_leaf(const comparison_t& pair, const cfg_nr_leaf_t& leaf, std::vector<difference_t>& found)
{
    if (pair.is_choice && is_no_choice(leaf, pair.first))
        return;
    const std::string path = below(pair.path, leaf.name);
    const unsigned int values = leaf.count(pair.first);
    if (values != leaf.count(pair.second)) {
        found.push_back({path, std::to_string(values), std::to_string(leaf.count(pair.second))});
        return;
    }
    for (unsigned int i = 0; i < values; ++i) {
        std::string first = leaf.read(pair.first, i);
        std::string second = leaf.read(pair.second, i);
        if (first != second)
            found.push_back({leaf.is_indexed() ? entry(path, i) : path, std::move(first), std::move(second)});
    }
}

/// The one setting that counts in a direction that is not sent.
void compare_prefixes(const comparison_t& parents, const cfg_nr_branch_t& branch, std::vector<difference_t>& found)
{
    const cfg_nr_leaf_t* prefix = find_row(branch.facade->leaves, "cp_type");
    if (!prefix || std::string_view(branch.name) != "dl_bwp")
        return;
    const unsigned int entries = std::min(branch.count(parents.first), branch.count(parents.second));
    for (unsigned int i = 0; i < entries; ++i)
        compare_leaf({branch.enter_place(parents.first, i), branch.enter_place(parents.second, i), branch.facade,
                      entry(below(parents.path, branch.name), i), false, false},
                     *prefix, found);
}

void compare_figure(const comparison_t& pair, const cfg_nr_figure_t& figure, std::vector<difference_t>& found)
{
    std::string first = figure.read(pair.first);
    std::string second = figure.read(pair.second);
    if (first != second)
        found.push_back({below(pair.path, figure.name), std::move(first), std::move(second)});
}

void compare(const comparison_t& pair, std::vector<difference_t>& found)
{
    if (pair.of_figures)
        for (const cfg_nr_figure_t& figure : pair.table->figures)
            compare_figure(pair, figure, found);
    else
        for (const cfg_nr_leaf_t& leaf : pair.table->leaves)
            compare_leaf(pair, leaf, found);
    const std::string carrier_type = carrier_type_of(pair.first, *pair.table);
    for (const cfg_nr_branch_t& branch : pair.table->branches) {
        const std::string path = below(pair.path, branch.name);
        if (!sends(carrier_type, branch)) {
            if (!pair.of_figures)
                compare_prefixes(pair, branch, found);
            continue;
        }
        // A PRACH keeps the highest root index that it has had, which no signal reads.
        if (pair.of_figures && std::string_view(branch.name) == "ul_prach")
            continue;
        const unsigned int entries = branch.count(pair.first);
        if (entries != branch.count(pair.second)) {
            found.push_back({path, std::to_string(entries), std::to_string(branch.count(pair.second))});
            continue;
        }
        for (unsigned int i = 0; i < entries; ++i)
            compare({branch.enter_place(pair.first, i), branch.enter_place(pair.second, i), branch.facade,
                     branch.is_list() ? entry(path, branch.first(pair.first) + i) : path,
                     is_preset(*pair.table, branch), pair.of_figures},
                    found);
    }
}

} // namespace

std::vector<difference_t> differences(cfg_nr_waveform_t& first, cfg_nr_waveform_t& second)
{
    std::vector<difference_t> found;
    compare({&first, &second, &g_cfg_nr_waveform_table, {}, false, false}, found);
    return found;
}

std::vector<difference_t> figure_differences(cfg_nr_waveform_t& first, cfg_nr_waveform_t& second)
{
    std::vector<difference_t> found;
    compare({&first, &second, &g_cfg_nr_waveform_table, {}, false, true}, found);
    return found;
}

bool sends(const std::string& carrier_type, const cfg_nr_branch_t& branch)
{
    const std::string name = branch.name;
    if (carrier_type.empty())
        return true;
    if (name == "ul_prach")
        return carrier_type == "LIB_NR_PRACH";
    if (name.rfind("dl_", 0) == 0)
        return carrier_type == "LIB_NR_DOWNLINK";
    if (name.rfind("ul_", 0) == 0 || name == "pucch_test_model")
        return carrier_type != "LIB_NR_DOWNLINK";
    return true;
}

bool is_preset(const cfg_nr_facade_table_t& table, const cfg_nr_branch_t& branch)
{
    return std::any_of(table.verbs.begin(), table.verbs.end(), [&](const cfg_nr_verb_t& verb) {
        return verb.object && std::string_view(verb.object) == branch.name;
    });
}

bool is_no_choice(const cfg_nr_leaf_t& leaf, void* facade) { return leaf.on_offer(facade).size() == 1; }

std::string carrier_type_of(void* facade, const cfg_nr_facade_table_t& table)
{
    const cfg_nr_leaf_t* type = find_row(table.leaves, "carrier_type");
    return type ? type->read(facade) : std::string{};
}

} // namespace nrwave
