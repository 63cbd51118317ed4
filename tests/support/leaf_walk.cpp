#include "support/leaf_walk.h"

#include <array>

namespace nr_test
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr unsigned int k_longest_list = 4;

void compare(void* first, void* second, const cfg_nr_facade_table_t& table, const std::string& path,
             std::vector<difference_t>& found)
{
    for (const cfg_nr_leaf_t& leaf : table.leaves) {
        const std::string a = leaf.read(first);
        const std::string b = leaf.read(second);
        if (leaf.in_tree && a != b)
            found.push_back({path + leaf.name, a, b});
    }
    for (const cfg_nr_branch_t& branch : table.branches) {
        if (!branch.in_tree)
            continue;
        const unsigned int entries = branch.count(first);
        if (entries != branch.count(second)) {
            found.push_back({path + branch.name, std::to_string(entries), std::to_string(branch.count(second))});
            continue;
        }
        for (unsigned int i = 0; i < entries; ++i)
            compare(branch.enter_place(first, i), branch.enter_place(second, i), *branch.facade,
                    path + branch.name + '[' + std::to_string(branch.first(first) + i) + "].", found);
    }
}

} // namespace

leaf_walk_t::leaf_walk_t(cfg_nr_waveform_t& waveform, unsigned int seed) : m_waveform(waveform), m_random(seed) {}

void leaf_walk_t::take_steps(unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i)
        _take_step();
}

/// Goes down from the waveform, at each façade choosing among its settings and its branches.
void leaf_walk_t::_take_step()
{
    void* facade = &m_waveform;
    const cfg_nr_facade_table_t* table = &g_cfg_nr_waveform_table;
    std::string path;
    for (;;) {
        const auto leaves = static_cast<unsigned int>(table->leaves.size());
        const auto branches = static_cast<unsigned int>(table->branches.size());
        if (leaves + branches == 0)
            return;
        // A branch with settings weighs as much as all the settings here together.
        if (branches == 0 || (leaves != 0 && _below(3) == 0))
            return _set(facade, table->leaves.begin()[_below(leaves)], path);
        const cfg_nr_branch_t& branch = table->branches.begin()[_below(branches)];
        if (branch.is_list() && _below(4) == 0)
            return _change_list(facade, branch, path);
        const unsigned int index = branch.first(facade) + _below(branch.count(facade));
        facade = branch.enter(facade, index);
        table = branch.facade;
        path += std::string(branch.name) + '[' + std::to_string(index) + "].";
    }
}

void leaf_walk_t::_change_list(void* parent, const cfg_nr_branch_t& branch, const std::string& path)
{
    const unsigned int entries = branch.count(parent);
    const unsigned int index = _below(entries + 1); // past the end too
    switch (_below(3)) {
    case 0:
        if (branch.can_add() && entries < k_longest_list) {
            branch.add(parent);
            m_history += "add " + path + branch.name + '\n';
        }
        return;
    case 1:
        if (branch.can_copy() && entries < k_longest_list) {
            branch.copy(parent, index);
            m_history += "copy " + path + branch.name + '[' + std::to_string(index) + "]\n";
        }
        return;
    default:
        if (branch.can_remove()) {
            branch.remove(parent, index);
            m_history += "remove " + path + branch.name + '[' + std::to_string(index) + "]\n";
        }
    }
}

void leaf_walk_t::_set(void* facade, const cfg_nr_leaf_t& leaf, const std::string& path)
{
    const std::string value = _value(leaf);
    m_history += path + leaf.name + '=' + value + '\n';
    leaf.write(facade, value);
}

std::string leaf_walk_t::_value(const cfg_nr_leaf_t& leaf)
{
    switch (leaf.form) {
    case cfg_nr_leaf_form_t::boolean:
        return _below(2) ? "true" : "false";
    case cfg_nr_leaf_form_t::integer:
    case cfg_nr_leaf_form_t::unsigned_integer:
    case cfg_nr_leaf_form_t::unsigned_short:
    case cfg_nr_leaf_form_t::unsigned_byte:
    case cfg_nr_leaf_form_t::unsigned_long:
        return _whole_number();
    case cfg_nr_leaf_form_t::real:
        return _real();
    case cfg_nr_leaf_form_t::text:
        return _text();
    case cfg_nr_leaf_form_t::enumerator:
    case cfg_nr_leaf_form_t::enumerator_list: {
        const std::vector<std::string> names = leaf.enumerators();
        return names[_below(static_cast<unsigned int>(names.size()))];
    }
    case cfg_nr_leaf_form_t::pair_list: {
        std::string text;
        for (unsigned int i = _below(5); i > 0; --i)
            text += std::string(text.empty() ? "" : ",") +
                    std::to_string(static_cast<int>(_below(200000000)) - 100000000) + ':' + _real();
        return text;
    }
    }
    return {};
}

std::string leaf_walk_t::_whole_number()
{
    static constexpr std::array k_edges = {"0",          "1",           "255",
                                           "256",        "1007",        "2147483647",
                                           "2147483648", "4294967295",  "18446744073709551615",
                                           "-1",         "-2147483648", "99999999999999999999"};
    switch (_below(4)) {
    case 0:
        return k_edges[_below(static_cast<unsigned int>(k_edges.size()))];
    case 1:
        return std::to_string(static_cast<int>(_below(1000000000)) - 500000000);
    case 2:
        return std::to_string(1000000 * static_cast<unsigned long long>(_below(8000)));
    default:
        return std::to_string(_below(300));
    }
}

std::string leaf_walk_t::_real()
{
    static constexpr std::array k_edges = {"0", "-0", "1e-300", "1e300", "-1e300", "0.1", "40", "-40.001", "0.5"};
    if (_below(3) == 0)
        return k_edges[_below(static_cast<unsigned int>(k_edges.size()))];
    return std::to_string(static_cast<int>(_below(2000)) - 1000) + "e-" + std::to_string(_below(5));
}

/// Lists of indices, ranges, powers and bits, well-formed and not.
std::string leaf_walk_t::_text()
{
    static constexpr std::array k_edges = {"",
                                           ",",
                                           ":",
                                           "0:0:9",
                                           "9:1",
                                           "0:4294967295",
                                           "-3:3",
                                           "1e9:1e9:1e9",
                                           "x,1",
                                           "0:1:64",
                                           "18446744073709551615",
                                           " 1 , 2 ",
                                           "-1.5,2.25",
                                           "99999999:1:999999999"};
    if (_below(3) == 0)
        return k_edges[_below(static_cast<unsigned int>(k_edges.size()))];
    std::string text;
    for (unsigned int i = _below(10); i > 0; --i) {
        text += std::string(text.empty() ? "" : ",") + std::to_string(_below(_below(2) ? 2 : 70));
        if (_below(5) == 0)
            text += ':' + std::to_string(_below(80));
    }
    return text;
}

std::vector<difference_t> differences(cfg_nr_waveform_t& first, cfg_nr_waveform_t& second)
{
    std::vector<difference_t> found;
    compare(&first, &second, g_cfg_nr_waveform_table, "", found);
    return found;
}

} // namespace nr_test
