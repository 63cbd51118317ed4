#include "host/nrwave_completion.h"

#include "config/leaves/cfg_nr_leaf.h"
#include "host/nrwave_encoding.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_nearest.h"
#include "host/nrwave_path.h"
#include "host/nrwave_preset.h"

#include <algorithm>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

using words_t = std::vector<std::string>;

struct line_t
{
    words_t words;             ///< without their quotes; the last one may be empty
    bool is_in_quotes = false; ///< at the end
};

/// The words of a line as the shell splits them.
line_t split(const std::string& text)
{
    line_t line;
    line.words.emplace_back();
    char quote = '\0';
    bool is_between = true;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != '\0' ? c == quote : c == '\'' || c == '"')
            quote = quote == '\0' ? c : '\0';
        else if (quote == '\0' && (c == ' ' || c == '\t')) {
            if (!is_between)
                line.words.emplace_back();
            is_between = true;
            continue;
        }
        else if (c == '\\' && quote != '\'' && i + 1 < text.size())
            line.words.back() += text[++i];
        else
            line.words.back() += c;
        is_between = false;
    }
    line.is_in_quotes = quote != '\0';
    return line;
}

bool begins_in_any_case(const std::string& text, const std::string& front)
{
    return same_in_any_case(std::string_view(text).substr(0, front.size()), front);
}

words_t with_front(const std::string& front, const words_t& words)
{
    words_t whole;
    for (const std::string& word : words)
        whole.push_back(front + word);
    return whole;
}

/// The paths that go on from the beginning of one, up to the next name. A setting ends as its step goes on.
words_t paths_from(const std::string& begun, const std::string& end_of_setting)
{
    const auto [head, tail] = split_last(begun);
    const std::string front = head.empty() ? "" : head + '.';
    words_t paths;
    cfg_nr_waveform_t fresh;
    try {
        const target_t target = resolve_first(fresh, head);
        if (!is_facade(target))
            return {};
        for (const cfg_nr_leaf_t& leaf : target.table->leaves)
            paths.push_back(front + leaf.name + (leaf.is_indexed() ? "[0]" : "") + end_of_setting);
        for (const cfg_nr_figure_t& figure : target.table->figures)
            if (end_of_setting.empty())
                paths.push_back(front + figure.name);
        const std::string name = tail.substr(0, tail.find('['));
        for (const cfg_nr_branch_t& branch : target.table->branches) {
            const bool has_index = name == branch.name && tail.ends_with(']');
            const std::string index = '[' + std::to_string(branch.first(target.facade)) + ']';
            paths.push_back(front + (has_index ? tail : branch.name + (branch.is_list() ? index : "")) + '.');
        }
    } catch (const failure_t&) {
    }
    return paths;
}

/// The values that a setting may get.
words_t values_of(const std::string& path)
{
    cfg_nr_waveform_t fresh;
    try {
        const target_t target = resolve_first(fresh, path);
        if (!target.leaf)
            return {};
        if (target.leaf->form == cfg_nr_leaf_form_t::boolean)
            return {"true", "false"};
        return target.leaf->enumerators();
    } catch (const failure_t&) {
        return {};
    }
}

/// The lists that an entry may be added to, and the ways down to further ones.
words_t lists_from(const std::string& begun)
{
    words_t paths;
    for (const std::string& path : paths_from(begun, "="))
        if (const std::size_t index = path.rfind('['); path.ends_with("].")) {
            paths.push_back(path.substr(0, index));
            paths.push_back(path);
        }
        else if (path.ends_with('.'))
            paths.push_back(path);
    return paths;
}

words_t steps_from(const std::string& begun)
{
    if (const std::size_t equals = begun.find('='); equals != std::string::npos)
        return with_front(begun.substr(0, equals + 1), values_of(begun.substr(0, equals)));
    if (const std::size_t blank = begun.find(' '); blank != std::string::npos)
        return with_front(begun.substr(0, blank + 1), begun.starts_with("add ")
                                                          ? lists_from(begun.substr(blank + 1))
                                                          : paths_from(begun.substr(blank + 1), ""));
    words_t steps = paths_from(begun, "=");
    for (const char* verb : {"add ", "copy ", "remove ", "apply ", "load ", "include "})
        steps.emplace_back(verb);
    return steps;
}

words_t presets_from(const std::string& begun)
{
    const std::size_t key = begun.find_last_of(":,");
    if (key == std::string::npos)
        return preset_names();
    const std::size_t equals = begun.find('=', key);
    try {
        if (equals != std::string::npos)
            return with_front(begun.substr(0, equals + 1),
                              preset_values(begun.substr(0, begun.find(':')), begun.substr(key + 1, equals - key - 1)));
    } catch (const failure_t&) {
        return {};
    }
    words_t keys;
    for (const std::string& name : preset_keys())
        keys.push_back(begun.substr(0, key + 1) + name + '=');
    return keys;
}

words_t options_of(const CLI::App& command)
{
    words_t names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

/// What may stand at the end of the line, whatever has been begun there.
words_t candidates(const CLI::App& app, const words_t& words)
{
    const std::string& begun = words.back();
    if (words.size() < 3) {
        words_t names = options_of(app);
        for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
            if (!command->get_group().empty())
                names.push_back(command->get_name());
        return names;
    }
    const std::string& before = words[words.size() - 2];
    const auto named = app.get_subcommands([&](const CLI::App* command) { return command->get_name() == words[1]; });
    if (named.empty() || before == "--recipe" || before == "-o" || before == "--output" || before == "--report")
        return {};
    if (before == "--set")
        return steps_from(begun);
    if (before == "--format")
        return sample_format_names();
    if (before == "--preset")
        return presets_from(begun);
    if (begun.starts_with('-'))
        return options_of(*named.front());
    if (words[1] == "get" || words[1] == "list")
        return paths_from(begun, "");
    if (words[1] == "presets") {
        words_t names = begun.find(':') == std::string::npos ? preset_families() : words_t{};
        for (std::string& name : presets_from(begun))
            names.push_back(std::move(name));
        return names;
    }
    return {};
}

} // namespace

std::vector<std::string> completions_of(const CLI::App& app, const std::string& text)
{
    const line_t line = split(text);
    const std::string& begun = line.words.back();
    const std::size_t behind = line.is_in_quotes ? 0 : begun.find_last_of("=:") + 1; // 0 where there is none
    words_t words;
    for (const std::string& candidate : candidates(app, line.words))
        if (begins_in_any_case(candidate, begun))
            words.push_back(candidate.substr(behind));
    return words;
}

} // namespace nrwave
