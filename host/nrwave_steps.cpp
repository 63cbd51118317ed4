#include "host/nrwave_steps.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_path.h"
#include "host/nrwave_settings.h"
#include "host/nrwave_value.h"

#include <filesystem>
#include <fstream>

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

} // namespace

stepper_t::stepper_t(cfg_nr_waveform_t& waveform, on_correction_t on_correction)
    : m_waveform(waveform), m_on_correction(std::move(on_correction))
{}

void stepper_t::apply(const std::string& step, const std::string& folder)
{
    std::string rest = step.substr(std::min(step.find_first_not_of(" \t"), step.size()));
    const std::size_t equals = rest.find('=');
    // A verb is a word with a blank behind it; before an equals sign it is the name of a path.
    if (equals == std::string::npos || rest.find_first_of(" \t") < equals) {
        for (const char* verb : {"add", "copy", "remove"})
            if (take_verb(rest, verb))
                return _change_list(verb, rest);
        if (take_verb(rest, "load"))
            return load((std::filesystem::path(folder) / rest).string());
    }
    if (equals == std::string::npos)
        return _run_verb(trimmed(step));
    const std::size_t value = rest.find_first_not_of(" \t", equals + 1);
    _set(trimmed(rest.substr(0, equals)), value == std::string::npos ? std::string{} : rest.substr(value));
}

void stepper_t::apply_recipe(const std::string& file)
{
    std::ifstream recipe(file);
    if (!recipe)
        throw failure_t("cannot read " + file);
    const std::string folder = std::filesystem::path(file).parent_path().string();
    std::string line;
    for (unsigned int number = 1; std::getline(recipe, line); ++number) {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const std::string text = trimmed(line);
        if (text.empty() || text.front() == '#')
            continue;
        try {
            apply(line, folder);
        } catch (const failure_t& failure) {
            throw failure_t(file + ':' + std::to_string(number) + ": " + failure.what());
        }
    }
    if (recipe.bad() || !recipe.eof())
        throw failure_t("cannot read " + file);
}

void stepper_t::load(const std::string& file)
{
    for (const std::string& step : recall_file(m_waveform, file))
        apply(step, std::filesystem::path(file).parent_path().string());
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
    if (!leaf.write(target.facade, leaf.form == cfg_nr_leaf_form_t::text ? value : trimmed(value), index)) {
        const bool named = !leaf.enumerators().empty();
        throw failure_t(path + ": " + (value.empty() ? "an empty value" : value) + " is " +
                        (named ? "not among its enumerators" : std::string("no ") + form_name(leaf.form)));
    }
    const std::string stored = leaf.read(target.facade, index);
    if (!same_value(leaf.form, value, stored))
        m_on_correction(path + ": asked " + value + ", stored " + stored);
}

void stepper_t::_run_verb(const std::string& step)
{
    const std::size_t blank = std::min(step.find_first_of(" \t"), step.size());
    const std::string name = step.substr(0, blank);
    if (!_ran_verb(name, trimmed(step.substr(blank))))
        throw failure_t("unknown step " + step);
}

/// Whether the façade at the path has a verb of that name, which has then been run.
bool stepper_t::_ran_verb(const std::string& name, const std::string& path)
{
    const verb_target_t target = resolve_verb(m_waveform, name, path);
    if (!target.verb)
        return false;
    if (!target.verb->run(target.facade, target.index))
        throw failure_t("cannot " + name + ' ' + path);
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
}

} // namespace nrwave
