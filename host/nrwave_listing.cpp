#include "host/nrwave_listing.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_path.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_value.h"

#include <algorithm>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

std::string path_of(const std::string& facade, const cfg_nr_leaf_t& leaf, unsigned int index)
{
    const std::string path = below(facade, leaf.name);
    return leaf.is_indexed() ? entry(path, index) : path;
}

std::string setting(const std::string& path, const cfg_nr_leaf_t& leaf, void* facade, unsigned int index = 0)
{
    return path_of(path, leaf, index) + '=' + leaf.read(facade, index);
}

/// Number of values of a façade's indexed settings, which its verb `add` makes more; 0 where it has none.
unsigned int indexed_values(const cfg_nr_facade_table_t& table, void* facade)
{
    for (const cfg_nr_leaf_t& leaf : table.leaves)
        if (leaf.is_indexed())
            return leaf.count(facade);
    return 0;
}

/// Writes façades as steps, beside a fresh waveform that tells which entries have to be added.
class lister_t
{
public:
    std::vector<std::string> steps;

    void facade(const std::string& path, void* facade, void* fresh, const cfg_nr_facade_table_t& table)
    {
        const std::size_t before = steps.size();
        for (unsigned int i = indexed_values(table, fresh); i < indexed_values(table, facade); ++i)
            steps.push_back("add " + path);
        for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order())
            for (unsigned int i = 0; i < leaf->count(facade); ++i)
                steps.push_back(setting(path, *leaf, facade, i));
        for (const cfg_nr_verb_t& verb : table.verbs)
            if (verb.ends_steps && steps.size() > before)
                steps.push_back(std::string(verb.name) + ' ' + path);
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
                    setting(entry(path, branch.first(parent) + place), leaf, branch.enter_place(parent, place)));
    }

    /// The `add` steps that bring a fresh list to a number of entries.
    void added_entries(const std::string& path, const cfg_nr_branch_t& branch, unsigned int entries, void* fresh)
    {
        if (branch.can_add())
            for (unsigned int i = branch.count(fresh); i < entries; ++i)
                steps.push_back("add " + path);
    }
};

/// The part of a path above its last name, and that name.
std::pair<std::string, std::string> split_last(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    return dot == std::string::npos ? std::pair{std::string{}, path}
                                    : std::pair{path.substr(0, dot), path.substr(dot + 1)};
}

/// A setting, with all its values where it has several and the path names none.
std::vector<std::string> values_at(const std::string& facade, const target_t& target)
{
    std::vector<std::string> steps;
    for (unsigned int i = 0; i < target.leaf->count(target.facade); ++i)
        if (i == target.index.value_or(i))
            steps.push_back(setting(facade, *target.leaf, target.facade, i));
    return steps;
}

/// The target of the same path in a fresh waveform, where every list begins with the entry that an added one equals.
target_t resolve_first(cfg_nr_waveform_t& fresh, std::string path)
{
    for (std::size_t open = path.find('['); open != std::string::npos; open = path.find('[', open + 1))
        path.replace(open, path.find(']', open) - open + 1, "[i]");
    return resolve(fresh, path, reading_t::any_entry);
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

void mend(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, const std::string& path,
          std::vector<std::string>& steps);

void mend_list(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, const std::string& path,
               std::vector<std::string>& steps)
{
    const target_t wanted = resolve(original, path, reading_t::list_first);
    const unsigned int entries = wanted.list->count(wanted.list_parent);
    for (;;) {
        const target_t present = resolve(copy, path, reading_t::list_first);
        if (present.list->count(present.list_parent) >= entries || !present.list->add(present.list_parent))
            break;
        steps.push_back("add " + path);
    }
    const target_t present = resolve(copy, path, reading_t::list_first);
    const unsigned int first = present.list->first(present.list_parent);
    const unsigned int common = std::min(entries, present.list->count(present.list_parent));
    for (unsigned int i = first; i < first + common; ++i)
        mend(original, copy, entry(path, i), steps);
}

/// Brings the values of a façade's indexed settings to the same number, where its verbs can.
void mend_number_of_values(const target_t& wanted, const target_t& present, const std::string& path,
                           std::vector<std::string>& steps)
{
    const cfg_nr_verb_t* add = find_row(wanted.table->verbs, "add");
    while (add && indexed_values(*wanted.table, present.facade) < indexed_values(*wanted.table, wanted.facade) &&
           add->run(present.facade, 0))
        steps.push_back("add " + path);
}

void mend(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, const std::string& path,
          std::vector<std::string>& steps)
{
    const target_t wanted = resolve(original, path);
    const target_t present = resolve(copy, path);
    const std::size_t before = steps.size();
    mend_number_of_values(wanted, present, path, steps);
    for (const cfg_nr_leaf_t* leaf : wanted.table->leaves_in_recall_order())
        for (unsigned int i = 0; i < std::min(leaf->count(wanted.facade), leaf->count(present.facade)); ++i) {
            const std::string value = leaf->read(wanted.facade, i);
            if (leaf->read(present.facade, i) == value)
                continue;
            leaf->write(present.facade, value, i);
            if (leaf->read(present.facade, i) == value)
                steps.push_back(setting(path, *leaf, present.facade, i));
        }
    for (const cfg_nr_verb_t& verb : wanted.table->verbs)
        if (verb.ends_steps && steps.size() > before && verb.run(present.facade, 0))
            steps.push_back(std::string(verb.name) + ' ' + path);
    for (const cfg_nr_branch_t& branch : wanted.table->branches) {
        const std::string child = below(path, branch.name);
        if (branch.is_list())
            mend_list(original, copy, child, steps);
        else
            mend(original, copy, child, steps);
    }
}

void describe_facade(std::ostream& out, const std::string& path, const cfg_nr_facade_table_t& table);

void describe_leaf(std::ostream& out, const std::string& path, const cfg_nr_leaf_t& leaf)
{
    out << path << "  " << form_name(leaf.form);
    const char* separator = " ";
    for (const std::string& name : leaf.enumerators()) {
        out << separator << name;
        separator = ", ";
    }
    out << '\n';
}

void describe_branch(std::ostream& out, const std::string& path, const cfg_nr_branch_t& branch)
{
    if (!branch.is_list())
        return describe_facade(out, path, *branch.facade);
    out << path << "[i]  list";
    if (branch.can_add())
        out << " with add";
    if (branch.can_copy())
        out << ", copy";
    if (branch.can_remove())
        out << ", remove";
    out << '\n';
    describe_facade(out, path + "[i]", *branch.facade);
}

void describe_facade(std::ostream& out, const std::string& path, const cfg_nr_facade_table_t& table)
{
    for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order())
        describe_leaf(out, below(path, leaf->name), *leaf);
    for (const cfg_nr_figure_t& figure : table.figures)
        out << below(path, figure.name) << "  figure, read only\n";
    for (const cfg_nr_branch_t& branch : table.branches)
        describe_branch(out, below(path, branch.name), branch);
}

} // namespace

std::vector<std::string> steps_of(cfg_nr_waveform_t& waveform)
{
    lister_t lister;
    {
        cfg_nr_waveform_t fresh;
        lister.facade({}, &waveform, &fresh, g_cfg_nr_waveform_table);
    }
    cfg_nr_waveform_t copy;
    stepper_t stepper(copy, [](const std::string&) {});
    for (const std::string& step : lister.steps)
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
    else
        lister.facade(path, again.facade, fresh_target.facade, *again.table);
    return lister.steps;
}

std::vector<std::string> mending_steps(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy)
{
    std::vector<std::string> steps;
    mend(original, copy, {}, steps);
    return steps;
}

void describe(std::ostream& out, cfg_nr_waveform_t& waveform, const std::string& path)
{
    const target_t target = resolve(waveform, path);
    if (target.leaf)
        describe_leaf(out, path, *target.leaf);
    else if (target.figure)
        out << path << "  figure, read only\n";
    else if (target.list && !target.index)
        describe_branch(out, path, *target.list);
    else
        describe_facade(out, path, *target.table);
}

} // namespace nrwave
