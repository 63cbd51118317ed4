#include "host/nrwave_path.h"

#include "host/nrwave_failure.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

struct segment_t
{
    std::string_view name;
    std::optional<unsigned int> index;
};

/// Takes the next name, with its index in brackets, off the path.
segment_t take_segment(std::string_view& rest, const std::string& path)
{
    const std::size_t end = std::min(rest.find('.'), rest.size());
    std::string_view text = rest.substr(0, end);
    if (text.empty() || end + 1 == rest.size())
        throw failure_t("unknown path " + path);
    rest.remove_prefix(std::min(end + 1, rest.size()));

    segment_t segment{text, std::nullopt};
    const std::size_t bracket = text.find('[');
    if (bracket == std::string_view::npos)
        return segment;
    segment.name = text.substr(0, bracket);
    const std::string_view number = text.substr(bracket + 1);
    unsigned int index = 0;
    const auto [after, error] = std::from_chars(number.data(), number.data() + number.size(), index);
    if (error != std::errc{} ||
        std::string_view(after, static_cast<std::size_t>(number.data() + number.size() - after)) != "]")
        throw failure_t("bad index in " + path);
    segment.index = index;
    return segment;
}

template <class row_t, class name_t>
const row_t* find(const cfg_nr_rows_t<row_t>& rows, name_t name_of, std::string_view name)
{
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const row_t& row) { return name == name_of(row); });
    return found == rows.end() ? nullptr : found;
}

/// The last name of a path where it is a setting or a figure.
bool resolve_value(target_t& target, std::string_view name)
{
    target.leaf = find(
        target.table->leaves, [](const cfg_nr_leaf_t& row) { return row.name; }, name);
    target.figure = find(
        target.table->figures, [](const cfg_nr_figure_t& row) { return row.name; }, name);
    return target.leaf || target.figure;
}

} // namespace

target_t resolve(cfg_nr_waveform_t& waveform, const std::string& path, reading_t reading)
{
    target_t target;
    target.facade = &waveform;
    target.table = &g_cfg_nr_waveform_table;

    for (std::string_view rest = path; !rest.empty();) {
        if (target.list && !target.index)
            throw failure_t("a list needs an index in " + path);
        const segment_t segment = take_segment(rest, path);
        const auto* branch = find(
            target.table->branches, [](const cfg_nr_branch_t& row) { return row.accessor; }, segment.name);
        const bool may_be_value = rest.empty() && !segment.index && (!branch || reading == reading_t::setting_first);
        if (may_be_value && resolve_value(target, segment.name))
            return target;
        if (!branch)
            throw failure_t("unknown path " + path);
        if (segment.index && !branch->is_list())
            throw failure_t("no list takes an index in " + path);
        target.list = branch->is_list() ? branch : nullptr;
        target.list_parent = target.facade;
        target.index = segment.index;
        if (segment.index && *segment.index >= branch->count(target.facade))
            throw failure_t("index past the end in " + path + ": there are " +
                            std::to_string(branch->count(target.facade)));
        if (!branch->is_list() || segment.index)
            target.facade = branch->enter(target.facade, segment.index.value_or(0));
        target.table = branch->facade;
    }
    return target;
}

std::string below(const std::string& path, const std::string& name) { return path.empty() ? name : path + '.' + name; }

std::string entry(const std::string& list, unsigned int index) { return list + '[' + std::to_string(index) + ']'; }

} // namespace nrwave
