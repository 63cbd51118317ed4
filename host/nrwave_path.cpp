#include "host/nrwave_path.h"

#include "host/nrwave_catalogue.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_value.h"

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
    bool has_index = false;
    std::optional<unsigned int> index; // none where it is i
};

/// The number ahead of a closing bracket.
unsigned int index_in(std::string_view number, const std::string& path)
{
    unsigned int index = 0;
    const auto [after, error] = std::from_chars(number.data(), number.data() + number.size(), index);
    if (error != std::errc{} ||
        std::string_view(after, static_cast<std::size_t>(number.data() + number.size() - after)) != "]")
        throw failure_t("bad index in " + shortened(path));
    return index;
}

/// Takes the next name, with its index in brackets, off the path.
segment_t take_segment(std::string_view& rest, const std::string& path, reading_t reading)
{
    const std::size_t end = std::min(rest.find('.'), rest.size());
    std::string_view text = rest.substr(0, end);
    if (text.empty() || end + 1 == rest.size())
        throw failure_t(unknown_path_line(path));
    rest.remove_prefix(std::min(end + 1, rest.size()));

    segment_t segment{text, false, std::nullopt};
    const std::size_t bracket = text.find('[');
    if (bracket == std::string_view::npos)
        return segment;
    segment.name = text.substr(0, bracket);
    segment.has_index = true;
    const std::string_view number = text.substr(bracket + 1);
    if (reading == reading_t::any_entry && number == "i]")
        return segment;
    segment.index = index_in(number, path);
    return segment;
}

failure_t past_the_end(const std::string& path, unsigned int count)
{
    return failure_t("index past the end in " + shortened(path) + ": there are " + std::to_string(count));
}

/// The last name of a path where it is a setting or a figure.
bool resolve_value(target_t& target, const segment_t& segment, const std::string& path)
{
    const cfg_nr_leaf_t* leaf = find_row(target.table->leaves, segment.name);
    const cfg_nr_figure_t* figure = find_row(target.table->figures, segment.name);
    if (segment.has_index && !(leaf && leaf->is_indexed()))
        return false;
    if (segment.index && *segment.index >= leaf->count(target.facade))
        throw past_the_end(path, leaf->count(target.facade));
    target.leaf = leaf;
    target.figure = figure;
    if (leaf || figure)
        target.index = segment.index;
    return leaf || figure;
}

/// Moves on to a branch, or to the entry of it that the segment names.
void enter(target_t& target, const cfg_nr_branch_t& branch, const segment_t& segment, const std::string& path)
{
    if (segment.has_index && !branch.is_list())
        throw failure_t("no list takes an index in " + shortened(path));
    target.list = branch.is_list() ? &branch : nullptr;
    target.list_parent = target.facade;
    target.index.reset();
    if (segment.has_index)
        target.index = segment.index.value_or(branch.first(target.facade));
    if (target.index && !branch.holds(target.facade, *target.index)) {
        const unsigned int first = branch.first(target.facade);
        throw *target.index < first
            ? failure_t("index ahead of the first in " + shortened(path) + ": they begin with " + std::to_string(first))
            : past_the_end(path, branch.count(target.facade));
    }
    if (!branch.is_list() || target.index)
        target.facade = branch.enter(target.facade, target.index.value_or(0));
    target.table = branch.facade;
}

const cfg_nr_verb_t* find_verb(const cfg_nr_facade_table_t& table, const std::string& verb, const std::string& object)
{
    for (const cfg_nr_verb_t& row : table.verbs)
        if (verb == row.name && object == (row.object ? row.object : ""))
            return &row;
    return nullptr;
}

bool is_known_verb(const cfg_nr_facade_table_t& table, const std::string& verb, const std::string& object)
{
    return find_verb(table, verb, object) ||
           std::any_of(table.branches.begin(), table.branches.end(),
                       [&](const cfg_nr_branch_t& branch) { return is_known_verb(*branch.facade, verb, object); });
}

/// The verb of the façade at a path.
verb_target_t verb_at(cfg_nr_waveform_t& waveform, const std::string& verb, const std::string& facade,
                      const std::string& object)
{
    if (!is_known_verb(g_cfg_nr_waveform_table, verb, object))
        return {};
    const target_t target = resolve(waveform, facade, reading_t::list_first);
    return {target.facade, is_facade(target) ? find_verb(*target.table, verb, object) : nullptr, 0};
}

} // namespace

target_t resolve(cfg_nr_waveform_t& waveform, const std::string& path, reading_t reading)
{
    target_t target;
    target.facade = &waveform;
    target.table = &g_cfg_nr_waveform_table;

    for (std::string_view rest = path; !rest.empty();) {
        if (target.list && !target.index)
            throw failure_t("a list needs an index in " + shortened(path));
        const segment_t segment = take_segment(rest, path, reading);
        const cfg_nr_branch_t* branch = find_row(target.table->branches, segment.name);
        const bool may_be_value = !branch || (!segment.has_index && reading != reading_t::list_first);
        if (rest.empty() && may_be_value && resolve_value(target, segment, path))
            return target;
        if (!branch)
            throw failure_t(unknown_path_line(path));
        enter(target, *branch, segment, path);
    }
    return target;
}

std::optional<std::string> value_at(cfg_nr_waveform_t& waveform, const std::string& path)
{
    try {
        const target_t target = resolve(waveform, path);
        if (target.leaf)
            return target.leaf->read(target.facade, target.index.value_or(0));
    } catch (const failure_t&) {
    }
    return std::nullopt;
}

bool is_facade(const target_t& target) { return !target.leaf && !target.figure && !(target.list && !target.index); }

target_t resolve_first(cfg_nr_waveform_t& fresh, std::string path)
{
    for (std::size_t open = path.find('['); open != std::string::npos; open = path.find('[', open + 1))
        path.replace(open, path.find(']', open) - open + 1, "[i]");
    return resolve(fresh, path, reading_t::any_entry);
}

verb_target_t resolve_verb(cfg_nr_waveform_t& waveform, const std::string& verb, const std::string& path)
{
    if (const verb_target_t whole = verb_at(waveform, verb, path, {}); whole.verb)
        return whole;
    const std::size_t bracket = path.rfind('[');
    const bool has_index = bracket != std::string::npos && path.back() == ']';
    const auto [facade, object] = split_last(has_index ? path.substr(0, bracket) : path);
    verb_target_t target = verb_at(waveform, verb, facade, object);
    if (!target.verb)
        return {};
    if (target.verb->takes_index != has_index)
        throw failure_t(verb + (has_index ? " takes no index in " : " takes an index behind ") + shortened(path));
    if (has_index)
        target.index = index_in(path.substr(bracket + 1), path);
    return target;
}

std::pair<std::string, std::string> split_last(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    return dot == std::string::npos ? std::pair{std::string{}, path}
                                    : std::pair{path.substr(0, dot), path.substr(dot + 1)};
}

std::string below(const std::string& path, const std::string& name) { return path.empty() ? name : path + '.' + name; }

std::string entry(const std::string& list, unsigned int index) { return list + '[' + std::to_string(index) + ']'; }

} // namespace nrwave
