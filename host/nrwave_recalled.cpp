#include "host/nrwave_recalled.h"

#include "config/leaves/cfg_nr_leaf.h"
#include "host/nrwave_difference.h"
#include "host/nrwave_path.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

using lines_t = std::vector<std::string>;

/// The text of an element as a step would give it: the items of a list with commas, a boolean as the recall reads it.
std::string asked_text(const cfg_nr_leaf_t& leaf, const pugi::xml_node& element)
{
    std::string text;
    if (leaf.form == cfg_nr_leaf_form_t::enumerator_list) {
        for (const pugi::xml_node& item : element.children("i"))
            text.append(text.empty() ? "" : ",").append(item.text().as_string());
        return text;
    }
    text = element.text().as_string();
    if (leaf.form == cfg_nr_leaf_form_t::boolean && std::string_view("tTyY").find(text[0]) != std::string_view::npos)
        return "true";
    return text;
}

bool is_named(const cfg_nr_leaf_t& leaf, const std::string& text)
{
    const lines_t names = leaf.enumerators();
    return leaf.form != cfg_nr_leaf_form_t::enumerator || std::find(names.begin(), names.end(), text) != names.end();
}

/// One block of the tree and the façade that it was recalled to.
class block_t
{
public:
    /// Of what is not sent, wrong names alone are told.
    enum class part_t
    {
        sent,
        preset,
        not_sent,
    };

    block_t(const pugi::xml_node& block, void* facade, const cfg_nr_facade_table_t& table, std::string path,
            part_t part, lines_t& lines)
        : m_block(block), m_facade(facade), m_table(table), m_path(std::move(path)), m_part(part), m_lines(lines)
    {}

    void compare() const
    {
        const std::string carrier_type = carrier_type_of(m_facade, m_table);
        std::set<std::string_view> seen;
        _tell_attributes(m_block, nullptr);
        for (const pugi::xml_node& element : m_block.children()) {
            if (element.type() != pugi::node_element)
                continue;
            const std::string_view name = element.name();
            const bool counts = seen.insert(name).second;
            const cfg_nr_leaf_t* leaf = find_row(m_table.leaves, name);
            const auto branch = std::find_if(m_table.branches.begin(), m_table.branches.end(), [&](const auto& row) {
                return row.in_tree && row.facade->element == name;
            });
            if (counts && leaf && leaf->in_tree)
                _compare_leaf(*leaf, element);
            else if (counts && branch != m_table.branches.end())
                _compare_branch(*branch, element,
                                m_part == part_t::not_sent || !sends(carrier_type, *branch) ? part_t::not_sent
                                : is_preset(m_table, *branch)                               ? part_t::preset
                                                                                            : part_t::sent);
            else
                m_lines.push_back(passed_over(element, counts ? "unknown" : "another"));
        }
    }

private:
    void _compare_leaf(const cfg_nr_leaf_t& leaf, const pugi::xml_node& element) const
    {
        const bool is_list = leaf.form == cfg_nr_leaf_form_t::enumerator_list;
        _tell_attributes(element, is_list ? "type" : nullptr);
        for (const pugi::xml_node& child : element.children())
            if (child.type() == pugi::node_element && !(is_list && std::string_view(child.name()) == "i"))
                m_lines.push_back(passed_over(child, "unknown"));
        const std::string asked = asked_text(leaf, element);
        if (asked.empty())
            return; // the zero of its form is meant
        const std::string stored = leaf.read(m_facade);
        const bool is_told = m_part == part_t::sent || (m_part == part_t::preset && !is_no_choice(leaf, m_facade));
        if (!same_value(leaf.form, asked, stored) && (is_told || !is_named(leaf, asked)))
            m_lines.push_back(below(m_path, leaf.name) + ": asked " + shortened(asked) + ", stored " +
                              shortened(stored));
    }

    void _compare_branch(const cfg_nr_branch_t& branch, const pugi::xml_node& container, part_t part) const
    {
        const std::string path = below(m_path, branch.name);
        if (!branch.is_list())
            return block_t(container, branch.enter(m_facade, 0), *branch.facade, path, part, m_lines).compare();
        _tell_attributes(container, nullptr);
        unsigned int place = 0;
        for (const pugi::xml_node& element : container.children()) {
            if (element.type() != pugi::node_element)
                continue;
            if (std::string_view(element.name()) != branch.facade->element)
                m_lines.push_back(passed_over(element, "unknown"));
            else if (place < branch.count(m_facade)) {
                const std::string own = entry(path, branch.first(m_facade) + place);
                block_t(element, branch.enter_place(m_facade, place++), *branch.facade, own, part, m_lines).compare();
            }
            else
                ++place;
        }
        if (place > branch.count(m_facade))
            m_lines.push_back(path + ": asked " + std::to_string(place) + " entries, stored " +
                              std::to_string(branch.count(m_facade)));
    }

    void _tell_attributes(const pugi::xml_node& element, const char* known) const
    {
        for (const pugi::xml_attribute& attribute : element.attributes())
            if (!known || std::string_view(attribute.name()) != known)
                m_lines.push_back("unknown attribute " + shortened(attribute.name()) + " in " +
                                  shortened(element.name()));
    }

    pugi::xml_node m_block;
    void* m_facade;
    const cfg_nr_facade_table_t& m_table;
    std::string m_path;
    part_t m_part;
    lines_t& m_lines;
};

} // namespace

std::vector<std::string> recall_corrections(const pugi::xml_node& block, cfg_nr_waveform_t& waveform)
{
    lines_t lines;
    block_t(block, &waveform, g_cfg_nr_waveform_table, {}, block_t::part_t::sent, lines).compare();
    return lines;
}

std::string passed_over(const pugi::xml_node& element, const std::string& why)
{
    return why + " element " + shortened(element.name()) + " in " + shortened(element.parent().name());
}

} // namespace nrwave
