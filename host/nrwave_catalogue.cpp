#include "host/nrwave_catalogue.h"

#include "config/leaves/cfg_nr_leaf.h"
#include "host/nrwave_nearest.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <string_view>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

void add_paths(std::vector<std::string>& paths, const std::string& front, const cfg_nr_facade_table_t& table)
{
    for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order())
        paths.push_back(front + leaf->name + (leaf->is_indexed() ? "[i]" : ""));
    for (const cfg_nr_figure_t& figure : table.figures)
        paths.push_back(front + figure.name);
    for (const cfg_nr_branch_t& branch : table.branches) {
        const std::string path = front + branch.name + (branch.is_list() ? "[i]" : "");
        paths.push_back(path);
        add_paths(paths, path + '.', *branch.facade);
    }
}

std::string without_indices(const std::string& path)
{
    std::string names;
    bool inside = false;
    for (const char c : path) {
        inside = c == '[' || (inside && c != ']');
        if (!inside && c != ']')
            names += c;
    }
    return names;
}

/// The last names of a path, as many as another has.
std::string_view tail_as_long_as(std::string_view path, std::string_view other)
{
    std::size_t begin = path.size() + 1;
    for (auto names = std::count(other.begin(), other.end(), '.') + 1; names > 0 && begin > 0; --names)
        begin = begin < 2 ? 0 : path.rfind('.', begin - 2) + 1;
    return path.substr(begin);
}

} // namespace

std::vector<std::string> known_paths()
{
    std::vector<std::string> paths;
    add_paths(paths, {}, g_cfg_nr_waveform_table);
    return paths;
}

std::vector<std::string> known_paths_ending_in(const std::string& path)
{
    const std::string wanted = without_indices(path);
    std::vector<std::string> found;
    for (std::string& known : known_paths()) {
        const std::string names = without_indices(known);
        if (tail_as_long_as(names, wanted) == wanted)
            found.push_back(std::move(known));
    }
    return found;
}

std::string unknown_path_line(const std::string& path)
{
    const std::string wanted = without_indices(path);
    const auto distance = [&](const std::string& known) {
        const std::string names = without_indices(known);
        return std::min(distance_between(wanted, names),
                        distance_between(wanted, tail_as_long_as(names, wanted)) + (names == wanted ? 0 : 1));
    };
    return "unknown path " + shortened(path) + nearest_by(distance, known_paths());
}

} // namespace nrwave
