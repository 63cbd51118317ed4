#include "host/nrwave_description.h"

#include "host/nrwave_path.h"
#include "host/nrwave_rows.h"
#include "host/nrwave_value.h"

#include <ostream>
#include <utility>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

std::string shown(const std::string& value) { return value.empty() ? "empty" : value; }

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
    static std::optional<std::string> standard(const cfg_nr_leaf_t& leaf, void* fresh)
    {
        return leaf.is_indexed() ? std::nullopt : std::optional(leaf.read(fresh));
    }
};

/// Row by row, as the listing shows them.
class description_rows_t : public description_t
{
public:
    std::vector<description_row_t> rows;

    void begin_facade(const std::string& path, const cfg_nr_branch_t* branch) override
    {
        if (branch)
            rows.push_back({path, branch->is_list() ? operations(*branch) : "", {}, {}, {}, branch->help});
    }
    void setting(const std::string& path, const cfg_nr_leaf_t& leaf, void* facade, void* fresh) override
    {
        rows.push_back(
            {path, form_name(leaf.form), standard(leaf, fresh), leaf.enumerators(), leaf.on_offer(facade), leaf.help});
    }
    void figure(const std::string& path, const cfg_nr_figure_t& figure) override
    {
        rows.push_back({path, "read only", {}, {}, {}, figure.help});
    }
    void verb(const std::string& path, const cfg_nr_verb_t& verb) override
    {
        rows.push_back({verb_step(verb, path) + (verb.takes_index ? "[i]" : ""), "step", {}, {}, {}, verb.help});
    }
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
        const std::optional<std::string> value = standard(leaf, fresh);
        row(path.substr(path.rfind('.') + 1), form, value ? '`' + shown(*value) + '`' : "", leaf.help);
    }
    void figure(const std::string& path, const cfg_nr_figure_t& figure) override
    {
        row(path.substr(path.rfind('.') + 1), "read only", "", figure.help);
    }
    void verb(const std::string&, const cfg_nr_verb_t& verb) override
    {
        row(verb.object ? verb_step(verb, {}) : verb.name, verb.takes_index ? "step, with an index" : "step", "",
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

std::vector<description_row_t> described(cfg_nr_waveform_t& waveform, const std::string& path)
{
    cfg_nr_waveform_t fresh_waveform;
    description_rows_t description;
    const target_t target = resolve(waveform, path, reading_t::any_entry);
    const target_t fresh = resolve_first(fresh_waveform, path);
    if (target.leaf)
        description.setting(path, *target.leaf, target.facade, fresh.facade);
    else if (target.figure)
        description.figure(path, *target.figure);
    else if (target.list && !target.index)
        description.branch(path, *target.list, target.list_parent, fresh.list_parent);
    else
        description.facade(path, target.facade, fresh.facade, *target.table, target.list);
    return std::move(description.rows);
}

std::string line_of(const description_row_t& row)
{
    std::string line = row.path + "  ";
    for (const std::string& part :
         {row.form + (row.values.empty() ? "" : ' ' + joined(row.values)),
          row.standard ? "default " + shown(*row.standard) : std::string{},
          row.on_offer.empty() || row.on_offer == row.values ? std::string{} : "on offer " + joined(row.on_offer)})
        line += part.empty() ? part : part + "; ";
    return line + row.meaning;
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
