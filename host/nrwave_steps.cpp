#include "host/nrwave_steps.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_path.h"
#include "host/nrwave_settings.h"
#include "host/nrwave_shorthand.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

/// Takes a verb off the front of a step; true where the step begins with it.
bool take_verb(std::string& rest, const std::string& verb)
{
    if (rest.rfind(verb, 0) != 0 || rest.size() == verb.size() ||
        (rest[verb.size()] != ' ' && rest[verb.size()] != '\t'))
        return false;
    rest = trimmed(rest.substr(verb.size()));
    return true;
}

void refuse_control_characters(const std::string& step)
{
    const auto found = std::find_if(step.begin(), step.end(), [](char c) {
        return c != '\t' && (static_cast<unsigned char>(c) < ' ' || c == 0x7f);
    });
    if (found != step.end())
        throw failure_t((*found == '\n'   ? "a newline in the step "
                         : *found == '\0' ? "a NUL in the step "
                                          : "a control character in the step ") +
                        shortened(one_line(step)));
}

/// Where a path of a section leads; without one it is the section's own.
std::string joined_path(const std::string& section, const std::string& path)
{
    return path.empty() ? section : below(section, path);
}

std::string in_full(const std::string& path, const cfg_nr_leaf_t& leaf, const std::string& value)
{
    try {
        return value_in_full(leaf, leaf.form == cfg_nr_leaf_form_t::text ? value : trimmed(value));
    } catch (const failure_t& failure) {
        throw failure_t(path + ": " + failure.what());
    }
}

} // namespace

stepper_t::stepper_t(cfg_nr_waveform_t& waveform, on_correction_t on_correction)
    : m_waveform(waveform), m_on_correction(std::move(on_correction)), m_stored(waveform)
{}

void stepper_t::apply(const std::string& step, const std::string& folder, const std::string& section)
{
    std::string rest = trimmed(step);
    refuse_control_characters(rest);
    const std::size_t equals = rest.find('=');
    // A verb is a word with a blank behind it; before an equals sign it is the name of a path.
    if (equals == std::string::npos || rest.find_first_of(" \t") < equals) {
        for (const char* verb : {"add", "copy", "remove"})
            if (take_verb(rest, verb))
                return _change_list(verb, joined_path(section, rest));
        if (take_verb(rest, "load"))
            return load((std::filesystem::path(folder) / rest).string());
        if (take_verb(rest, "include"))
            return apply_recipe((std::filesystem::path(folder) / rest).string());
    }
    if (equals == std::string::npos)
        return _run_verb(rest, section);
    const std::size_t value = rest.find_first_not_of(" \t", equals + 1);
    _set(joined_path(section, trimmed(rest.substr(0, equals))),
         value == std::string::npos ? std::string{} : rest.substr(value));
}

void stepper_t::apply_recipe(const std::string& file)
{
    if (m_in_settings_file)
        throw failure_t("a settings file cannot include a recipe, " + file);
    std::error_code ignored;
    for (const std::string& open : m_open_recipes)
        if (std::filesystem::equivalent(open, file, ignored))
            throw failure_t(file + " includes itself");
    std::istringstream recipe(m_inputs.read(file));
    m_open_recipes.push_back(file);
    const std::string folder = std::filesystem::path(file).parent_path().string();
    std::string section;
    std::string line;
    for (unsigned int number = 1; std::getline(recipe, line); ++number) {
        const std::string text = trimmed(line);
        if (text.empty() || text.front() == '#')
            continue;
        try {
            if (text.front() == '[')
                section = _section_of(text);
            else
                apply(text, folder, section);
        } catch (const failure_t& failure) {
            throw failure_t(file + ':' + std::to_string(number) + ": " + failure.what());
        }
    }
    m_open_recipes.pop_back();
}

void stepper_t::load(const std::string& file)
{
    if (m_in_settings_file)
        throw failure_t("a settings file cannot load another, " + file);
    load_text(file, m_inputs.read(file));
}

void stepper_t::load_text(const std::string& file, const std::string& content)
{
    const settings_file_t settings(file, content);
    settings.recall(m_waveform);
    m_in_settings_file = true;
    for (const std::string& step : settings.steps()) {
        try {
            apply(step);
        } catch (const failure_t& failure) {
            throw failure_t(file + ": " + failure.what());
        }
    }
    m_in_settings_file = false;
    m_stored.forget_all();
    for (const std::string& line : settings.corrections(m_waveform))
        m_on_correction(line);
}

void stepper_t::tell_resets() const
{
    for (const std::string& line : m_stored.resets())
        m_on_correction(line);
}

void stepper_t::_set(const std::string& path, const std::string& value)
{
    const target_t target = resolve(m_waveform, path);
    if (!target.leaf)
        throw failure_t(path + (target.figure ? " follows from other settings" : " is no setting"));

    const cfg_nr_leaf_t& leaf = *target.leaf;
    const unsigned int index = target.index.value_or(0);
    if (leaf.is_indexed() && !target.index)
        throw failure_t(path + " takes an index");
    const std::string full = in_full(path, leaf, value);
    if (!leaf.write(target.facade, full, index)) {
        const bool named = !leaf.enumerators().empty();
        throw failure_t(path + ": " + (value.empty() ? "an empty value" : shortened(value)) + " is " +
                        (named ? "not among its enumerators" : std::string("no ") + form_name(leaf.form)));
    }
    const std::string stored = leaf.read(target.facade, index);
    if (!asks_for_most(leaf, value) && !same_value(leaf.form, full, stored))
        m_on_correction(path + ": asked " + shortened(value) + ", stored " + shortened(stored));
    m_stored.remember(path, stored);
}

void stepper_t::_run_verb(const std::string& step, const std::string& section)
{
    const std::size_t blank = std::min(step.find_first_of(" \t"), step.size());
    const std::string name = step.substr(0, blank);
    if (!_ran_verb(name, joined_path(section, trimmed(step.substr(blank)))))
        throw failure_t("unknown step " + shortened(step));
}

/// The path between the brackets of a section's head.
std::string stepper_t::_section_of(const std::string& line) const
{
    if (line.back() != ']')
        throw failure_t("no ] ends " + shortened(line));
    std::string path = trimmed(line.substr(1, line.size() - 2));
    if (!is_facade(resolve(m_waveform, path, reading_t::list_first)))
        throw failure_t(shortened(path) + " heads no section: it is a setting or a whole list");
    return path;
}

/// Whether the façade at the path has a verb of that name, which has then been run.
bool stepper_t::_ran_verb(const std::string& name, const std::string& path)
{
    const cfg_nr_verb_t* verb = resolve_verb(m_waveform, name, path).verb;
    if (!verb)
        return false;
    bool done = false;
    m_stored.forget_rewritten([&] {
        const verb_target_t again = resolve_verb(m_waveform, name, path);
        done = verb->run(again.facade, again.index);
    });
    if (!done && !verb->shortfall)
        throw failure_t("cannot " + name + ' ' + path);
    if (!done)
        m_on_correction(path + ": " + verb->shortfall);
    return true;
}

void stepper_t::_change_list(const std::string& verb, const std::string& path)
{
    if (_ran_verb(verb, path))
        return;
    const target_t target = resolve(m_waveform, path, reading_t::list_first);
    if (!target.list || target.leaf || target.figure)
        throw failure_t(path + " is no list");
    const cfg_nr_branch_t& list = *target.list;
    if (verb == "add") {
        if (target.index)
            throw failure_t("add takes a list without an index, not " + path);
        if (!list.add(target.list_parent))
            throw failure_t("cannot add " + path);
        return;
    }
    if (!target.index)
        throw failure_t(verb + " takes an entry, such as " + entry(path, 0));
    if (verb == "copy" ? !list.copy(target.list_parent, *target.index)
                       : !list.remove(target.list_parent, *target.index))
        throw failure_t("cannot " + verb + ' ' + path);
    if (verb == "remove")
        m_stored.remove_entry(path.substr(0, path.rfind('[')), *target.index);
}

} // namespace nrwave
