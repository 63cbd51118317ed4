#include "host/nrwave_listing.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_path.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <utility>

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

std::string step_of(const cfg_nr_verb_t& verb, const std::string& facade)
{
    return std::string(verb.name) + ' ' + (verb.object ? below(facade, verb.object) : facade);
}

/// What was edited but not confirmed is not written down.
void drop_edits(const cfg_nr_facade_table_t& table, void* facade)
{
    for (const cfg_nr_verb_t& verb : table.verbs)
        if (verb.drops_edits)
            verb.run(facade, 0);
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
        drop_edits(table, facade);
        for (unsigned int i = indexed_values(table, fresh); i < indexed_values(table, facade); ++i)
            steps.push_back(step_of(*find_row(table.verbs, "add"), path));
        for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order())
            for (unsigned int i = 0; i < leaf->count(facade); ++i)
                steps.push_back(setting(path, *leaf, facade, i));
        for (const cfg_nr_verb_t& verb : table.verbs)
            if (verb.ends_steps && steps.size() > before)
                steps.push_back(step_of(verb, path));
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

/// A setting, with all its values where it has several and the path names none.
std::vector<std::string> values_at(const std::string& facade, const target_t& target)
{
    std::vector<std::string> steps;
    for (unsigned int i = 0; i < target.leaf->count(target.facade); ++i)
        if (i == target.index.value_or(i))
            steps.push_back(setting(facade, *target.leaf, target.facade, i));
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
        steps.push_back(step_of(*add, path));
}

void mend(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, const std::string& path,
          std::vector<std::string>& steps)
{
    const target_t wanted = resolve(original, path);
    const target_t present = resolve(copy, path);
    const std::size_t before = steps.size();
    drop_edits(*wanted.table, wanted.facade);
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
            steps.push_back(step_of(verb, path));
    for (const cfg_nr_branch_t& branch : wanted.table->branches) {
        const std::string child = below(path, branch.name);
        if (branch.is_list())
            mend_list(original, copy, child, steps);
        else
            mend(original, copy, child, steps);
    }
}

std::string joined(const std::vector<std::string>& items)
{
    std::string text;
    for (const std::string& item : items)
        text += (text.empty() ? std::string{} : std::string{", "}) + item;
    return text;
}

/// How a description of the tables is written down, row by row.
class description_t
{
public:
    virtual ~description_t() = default;
    virtual void begin_facade(const std::string& path, const cfg_nr_branch_t* branch) = 0;
    virtual void setting(const std::string& path, const cfg_nr_leaf_t& leaf, void* facade, void* fresh) = 0;
    virtual void figure(const std::string& path, const cfg_nr_figure_t& figure) = 0;
    virtual void verb(const std::string& path, const cfg_nr_verb_t& verb) = 0;

    /// A façade and all below it; in lists the first entry stands for all.
    void facade(const std::string& path, void* facade, void* fresh, const cfg_nr_facade_table_t& table,
                const cfg_nr_branch_t* branch = nullptr)
    {
        begin_facade(path, branch);
        for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order())
            setting(below(path, leaf->name) + (leaf->is_indexed() ? "[i]" : ""), *leaf, facade, fresh);
        for (const cfg_nr_figure_t& row : table.figures)
            figure(below(path, row.name), row);
        for (const cfg_nr_verb_t& row : table.verbs)
            verb(path, row);
        for (const cfg_nr_branch_t& row : table.branches)
            this->branch(below(path, row.name), row, facade, fresh);
    }

    void branch(const std::string& path, const cfg_nr_branch_t& row, void* parent, void* fresh)
    {
        facade(path + (row.is_list() ? "[i]" : ""), row.enter_place(parent, 0), row.enter_place(fresh, 0), *row.facade,
               &row);
    }

protected:
    static std::string operations(const cfg_nr_branch_t& list)
    {
        std::string text = "list";
        text += list.can_add() ? " with add" : "";
        text += list.can_copy() ? ", copy" : "";
        return text + (list.can_remove() ? ", remove" : "");
    }
    /// What a fresh waveform has; nothing for what has several values, of which it has none.
    static std::string standard(const cfg_nr_leaf_t& leaf, void* fresh)
    {
        if (leaf.is_indexed())
            return {};
        const std::string value = leaf.read(fresh);
        return value.empty() ? "empty" : value;
    }
};

/// One line a row, for the terminal.
class description_lines_t : public description_t
{
public:
    explicit description_lines_t(std::ostream& out) : m_out(out) {}

    void begin_facade(const std::string& path, const cfg_nr_branch_t* branch) override
    {
        if (branch)
            m_out << path << "  " << (branch->is_list() ? operations(*branch) + "; " : "") << branch->help << '\n';
    }
    void setting(const std::string& path, const cfg_nr_leaf_t& leaf, void* facade, void* fresh) override
    {
        const std::vector<std::string> names = leaf.enumerators();
        m_out << path << "  " << form_name(leaf.form) << (names.empty() ? "" : " ") << joined(names);
        if (const std::string value = standard(leaf, fresh); !value.empty())
            m_out << "; default " << value;
        if (const std::vector<std::string> offer = leaf.on_offer(facade); offer != names && !offer.empty())
            m_out << "; on offer " << joined(offer);
        m_out << "; " << leaf.help << '\n';
    }
    void figure(const std::string& path, const cfg_nr_figure_t& figure) override
    {
        m_out << path << "  read only; " << figure.help << '\n';
    }
    void verb(const std::string& path, const cfg_nr_verb_t& verb) override
    {
        m_out << step_of(verb, path) << (verb.takes_index ? "[i]" : "") << "  step; " << verb.help << '\n';
    }

private:
    std::ostream& m_out;
};

/// A chapter a façade, for the manual.
class description_manual_t : public description_t
{
public:
    explicit description_manual_t(std::ostream& out) : m_out(out) {}

    void begin_facade(const std::string& path, const cfg_nr_branch_t* branch) override
    {
        m_heading = "\n## " + (path.empty() ? std::string("The waveform") : '`' + path + '`') + "\n\n";
        if (branch)
            m_heading += std::string(branch->help) + (branch->is_list() ? "; " + operations(*branch) : "") + ".\n\n";
        m_heading += "| Name | Form | Default | Meaning |\n|---|---|---|---|\n";
    }
    void setting(const std::string& path, const cfg_nr_leaf_t& leaf, void*, void* fresh) override
    {
        const std::vector<std::string> names = leaf.enumerators();
        std::string form = form_name(leaf.form);
        if (names.size() > k_most_names)
            form += " the " + std::to_string(names.size()) + " from `" + names.front() + "` to `" + names.back() + '`';
        else
            for (const std::string& name : names)
                form += (name == names.front() ? " `" : ", `") + name + '`';
        const std::string value = standard(leaf, fresh);
        row(path.substr(path.rfind('.') + 1), form, value.empty() ? value : '`' + value + '`', leaf.help);
    }
    void figure(const std::string& path, const cfg_nr_figure_t& figure) override
    {
        row(path.substr(path.rfind('.') + 1), "read only", "", figure.help);
    }
    void verb(const std::string&, const cfg_nr_verb_t& verb) override
    {
        row(verb.object ? step_of(verb, {}) : verb.name, verb.takes_index ? "step, with an index" : "step", "",
            verb.help);
    }

private:
    static constexpr std::size_t k_most_names = 8;

    void row(const std::string& name, const std::string& form, const std::string& standard, const char* help)
    {
        m_out << std::exchange(m_heading, {}) << "| `" << name << "` | " << form << " | " << standard << " | " << help
              << " |\n";
    }

    std::ostream& m_out;
    std::string m_heading; // until the façade's first row: one without rows has no chapter
};

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

std::vector<std::string> mending_steps(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy)
{
    std::vector<std::string> steps;
    mend(original, copy, {}, steps);
    return steps;
}

void describe(std::ostream& out, cfg_nr_waveform_t& waveform, const std::string& path)
{
    cfg_nr_waveform_t fresh_waveform;
    description_lines_t lines(out);
    const target_t target = resolve(waveform, path, reading_t::any_entry);
    const target_t fresh = resolve_first(fresh_waveform, path);
    if (target.leaf)
        lines.setting(path, *target.leaf, target.facade, fresh.facade);
    else if (target.figure)
        lines.figure(path, *target.figure);
    else if (target.list && !target.index)
        lines.branch(path, *target.list, target.list_parent, fresh.list_parent);
    else
        lines.facade(path, target.facade, fresh.facade, *target.table);
}

void write_manual(std::ostream& out)
{
    cfg_nr_waveform_t waveform;
    out << "# Settings\n\n"
           "Written by `nrwave list --manual`. A setting is `PATH=VALUE`; the settings of a façade stand in the order "
           "in\n"
           "which a settings file is recalled. `nrwave list PATH` tells all names of an enumeration, and with `--set` "
           "and\n"
           "`--recipe` what is on offer in that state.\n";
    description_manual_t(out).facade({}, &waveform, &waveform, g_cfg_nr_waveform_table);
}

} // namespace nrwave
