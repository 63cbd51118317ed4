#include "host/nrwave_listing.h"

#include "host/nrwave_mending.h"
#include "host/nrwave_path.h"
#include "host/nrwave_rows.h"
#include "host/nrwave_steps.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

/// Writes façades as steps, beside a fresh waveform that tells which entries have to be added.
class lister_t
{
public:
    std::vector<std::string> steps;

    void facade(const std::string& path, void* facade, void* fresh, const cfg_nr_facade_table_t& table)
    {
        const std::size_t before = steps.size();
        drop_edits(table, facade);
        for (unsigned int i = indexed_values(table, fresh); i < indexed_values(table, facade); ++i)
            steps.push_back(verb_step(*find_row(table.verbs, "add"), path));
        for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order())
            for (unsigned int i = 0; i < leaf->count(facade); ++i)
                append_steps_to(steps, path, *leaf, facade, i);
        for (const cfg_nr_verb_t& verb : table.verbs)
            if (verb.ends_steps && steps.size() > before)
                steps.push_back(verb_step(verb, path));
        for (const cfg_nr_branch_t& branch : table.branches) {
            const std::string child = below(path, branch.name);
            if (branch.is_list())
                list(child, branch, facade, fresh);
            else
                this->facade(child, branch.enter(facade, 0), branch.enter(fresh, 0), *branch.facade);
        }
    }

    void list(const std::string& path, const cfg_nr_branch_t& branch, void* parent, void* fresh)
    {
        const unsigned int entries = branch.count(parent);
        added_entries(path, branch, entries, fresh);
        if (branch.recalled_twice && entries > 1)
            switched_on(path, branch, parent);
        for (unsigned int place = 0; place < entries; ++place)
            facade(entry(path, branch.first(parent) + place), branch.enter_place(parent, place),
                   branch.enter_place(fresh, 0), *branch.facade);
    }

    /// What is on in a list whose last such entry cannot be switched off comes first, so that no step is corrected.
    void switched_on(const std::string& path, const cfg_nr_branch_t& branch, void* parent)
    {
        const cfg_nr_leaf_t& leaf = *find_row(branch.facade->leaves, branch.recalled_twice);
        for (unsigned int place = 0; place < branch.count(parent); ++place)
            if (leaf.read(branch.enter_place(parent, place)) == "true")
                steps.push_back(
                    setting_step(entry(path, branch.first(parent) + place), leaf, branch.enter_place(parent, place)));
    }

    /// The `add` steps that bring a fresh list to a number of entries.
    void added_entries(const std::string& path, const cfg_nr_branch_t& branch, unsigned int entries, void* fresh)
    {
        if (branch.can_add())
            for (unsigned int i = branch.count(fresh); i < entries; ++i)
                steps.push_back("add " + path);
    }
};

/// A setting, with all its values where it has several and the path names none.
std::vector<std::string> values_at(const std::string& facade, const target_t& target)
{
    std::vector<std::string> steps;
    for (unsigned int i = 0; i < target.leaf->count(target.facade); ++i)
        if (i == target.index.value_or(i))
            steps.push_back(setting_step(facade, *target.leaf, target.facade, i));
    return steps;
}

/// Makes a comment of each step that a fresh waveform would correct: what it shows no step brings back.
void hide_corrected(std::vector<std::string>& steps)
{
    cfg_nr_waveform_t fresh;
    bool corrected = false;
    stepper_t stepper(fresh, [&corrected](const std::string&) { corrected = true; });
    for (std::string& step : steps) {
        corrected = false;
        stepper.apply(step);
        if (corrected)
            step.insert(0, "# ");
    }
}

/// The `add` steps for the entries that a path goes through.
void added_on_the_way(lister_t& lister, cfg_nr_waveform_t& waveform, cfg_nr_waveform_t& fresh, const std::string& path)
{
    for (std::size_t close = path.find(']'); close != std::string::npos; close = path.find(']', close + 1)) {
        const std::string through = path.substr(0, close + 1);
        const target_t target = resolve(waveform, through);
        const target_t fresh_target = resolve_first(fresh, through);
        lister.added_entries(through.substr(0, through.rfind('[')), *target.list,
                             *target.index - target.list->first(target.list_parent) + 1, fresh_target.list_parent);
    }
}

} // namespace

std::vector<std::string> steps_of(cfg_nr_waveform_t& waveform)
{
    lister_t lister;
    {
        cfg_nr_waveform_t fresh;
        lister.facade({}, &waveform, &fresh, g_cfg_nr_waveform_table);
    }
    hide_corrected(lister.steps);
    cfg_nr_waveform_t copy;
    stepper_t stepper(copy, [](const std::string&) {});
    for (const std::string& step : lister.steps)
        if (step.front() != '#')
            stepper.apply(step);
    for (std::string& step : mending_steps(waveform, copy))
        lister.steps.push_back(std::move(step));
    return lister.steps;
}

std::vector<std::string> steps_at(cfg_nr_waveform_t& waveform, const std::string& path)
{
    lister_t lister;
    cfg_nr_waveform_t fresh;
    const target_t target = resolve(waveform, path);
    if (target.leaf)
        return values_at(split_last(path).first, target);
    if (target.figure)
        return {path + '=' + target.figure->read(target.facade)};

    added_on_the_way(lister, waveform, fresh, path);
    const target_t fresh_target = resolve_first(fresh, path);
    const target_t again = resolve(waveform, path);
    if (again.list && !again.index)
        lister.list(path, *again.list, again.list_parent, fresh_target.list_parent);
    else {
        lister.facade(path, again.facade, fresh_target.facade, *again.table);
        const target_t shown = resolve(waveform, path);
        for (const cfg_nr_figure_t& figure : shown.table->figures)
            lister.steps.push_back("# " + below(path, figure.name) + '=' + figure.read(shown.facade));
    }
    return lister.steps;
}

} // namespace nrwave
