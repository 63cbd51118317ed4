#include "support/leaf_walk.h"

#include "host/nrwave_path.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace nr_test
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr unsigned int k_longest_list = 4;

std::string all_values(const cfg_nr_leaf_t& leaf, void* facade)
{
    std::string text;
    for (unsigned int i = 0; i < leaf.count(facade); ++i)
        text += (i > 0 ? " and " : "") + leaf.read(facade, i);
    return text;
}

std::string value_of(void* facade, const cfg_nr_facade_table_t& table, const char* name)
{
    const cfg_nr_leaf_t* leaf = find_row(table.leaves, name);
    return leaf != nullptr ? leaf->read(facade) : std::string();
}

/// Whether a carrier's signal is made from a branch: channels and BWPs of its own direction.
bool is_read(const std::string& branch, const std::string& carrier_type)
{
    if (branch == "ul_prach")
        return carrier_type == "LIB_NR_PRACH";
    return branch.rfind(carrier_type == "LIB_NR_DOWNLINK" ? "ul_" : "dl_", 0) != 0;
}

/// Of what is off only that it is off reaches a signal. PUCCH formats with UCI bits do not tell by `uci_format`.
bool is_silent(const cfg_nr_leaf_t& leaf, void* facade, const cfg_nr_facade_table_t& table)
{
    const std::string name = leaf.name;
    if (name == "uci_format" && value_of(facade, table, "pucch_format") > "LIB_NR_UL_PUCCH_FORMAT_1")
        return true;
    if (name == "modulation" && find_row(table.leaves, "test_model") && leaf.on_offer(facade).size() == 1)
        return true; // a test model that leaves no choice
    return (name != "enable" && value_of(facade, table, "enable") == "false") ||
           (name.rfind("cfr_", 0) == 0 && value_of(facade, table, "crest_factor_reduction_enable") == "false");
}

void compare(void* first, void* second, const cfg_nr_facade_table_t& table, const std::string& path, scope_t scope,
             std::vector<difference_t>& found)
{
    for (const cfg_nr_leaf_t& leaf : table.leaves) {
        if (scope == scope_t::in_the_tree ? !leaf.in_tree : is_silent(leaf, first, table))
            continue;
        const std::string a = all_values(leaf, first);
        const std::string b = all_values(leaf, second);
        if (a != b)
            found.push_back({path + leaf.name, a, b});
    }
    const std::string carrier_type = value_of(first, table, "carrier_type");
    const bool is_off = value_of(first, table, "enable") == "false";
    for (const cfg_nr_branch_t& branch : table.branches) {
        if ((scope == scope_t::in_the_tree ? !branch.in_tree : is_off) ||
            (!carrier_type.empty() && !is_read(branch.name, carrier_type)))
            continue;
        const unsigned int entries = branch.count(first);
        if (entries != branch.count(second)) {
            found.push_back({path + branch.name, std::to_string(entries), std::to_string(branch.count(second))});
            continue;
        }
        for (unsigned int i = 0; i < entries; ++i)
            compare(branch.enter_place(first, i), branch.enter_place(second, i), *branch.facade,
                    path + branch.name +
                        (branch.is_list() ? '[' + std::to_string(branch.first(first) + i) + "]." : "."),
                    scope, found);
    }
}

unsigned int rows_below(const cfg_nr_facade_table_t& table);

/// How likely a branch is: a list counts as one more for its operations.
unsigned int rows_of(const cfg_nr_branch_t& branch) { return rows_below(*branch.facade) + (branch.is_list() ? 1 : 0); }

unsigned int rows_below(const cfg_nr_facade_table_t& table)
{
    auto rows = static_cast<unsigned int>(table.leaves.size() + table.verbs.size());
    for (const cfg_nr_branch_t& branch : table.branches)
        rows += rows_of(branch);
    return rows;
}

void compare_with_offers(void* facade, const cfg_nr_facade_table_t& table, const std::string& path,
                         std::vector<difference_t>& found)
{
    for (const cfg_nr_leaf_t& leaf : table.leaves) {
        const std::vector<std::string> offer = leaf.on_offer(facade);
        if (offer.empty())
            continue;
        std::istringstream items(leaf.read(facade));
        const char separator = leaf.form == cfg_nr_leaf_form_t::enumerator_list ? ',' : '\0';
        for (std::string item; std::getline(items, item, separator);)
            if (std::find(offer.begin(), offer.end(), item) == offer.end())
                found.push_back({path + leaf.name, item, "not on offer"});
    }
    for (const cfg_nr_branch_t& branch : table.branches)
        for (unsigned int i = 0; i < branch.count(facade); ++i)
            compare_with_offers(branch.enter_place(facade, i), *branch.facade,
                                path + branch.name + '[' + std::to_string(branch.first(facade) + i) + "].", found);
}

} // namespace

leaf_walk_t::leaf_walk_t(cfg_nr_waveform_t& waveform, unsigned int seed) : m_waveform(waveform), m_random(seed) {}

void leaf_walk_t::take_steps(unsigned int count, unsigned int settings)
{
    for (unsigned int i = 0; i < count; ++i)
        _take_step(settings);
}

void leaf_walk_t::take_steps_at(const std::string& path, unsigned int count)
{
    for (unsigned int i = 0; i < count; ++i) {
        const nrwave::target_t target = nrwave::resolve(m_waveform, path);
        _set(target.facade,
             target.table->leaves.begin()[_below(static_cast<unsigned int>(target.table->leaves.size()))], path + '.');
    }
}

/// Goes down from the waveform. At each façade all settings and verbs here and below are equally likely; a list that is
/// passed changes its entries now and then.
void leaf_walk_t::_take_step(unsigned int settings)
{
    void* facade = &m_waveform;
    const cfg_nr_facade_table_t* table = &g_cfg_nr_waveform_table;
    std::string path;
    for (;;) {
        unsigned int drawn = _below(rows_below(*table));
        if (drawn < table->leaves.size()) {
            for (unsigned int i = 0; i < settings; ++i, drawn = _below(static_cast<unsigned int>(table->leaves.size())))
                _set(facade, table->leaves.begin()[drawn], path);
            return;
        }
        drawn -= static_cast<unsigned int>(table->leaves.size());
        if (drawn < table->verbs.size())
            return _run(facade, table->verbs.begin()[drawn], path);
        drawn -= static_cast<unsigned int>(table->verbs.size());
        const cfg_nr_branch_t* branch = table->branches.begin();
        for (; drawn >= rows_of(*branch); ++branch)
            drawn -= rows_of(*branch);
        if (branch->is_list() && (drawn == 0 || _below(8) == 0))
            return _change_list(facade, *branch, path);
        const unsigned int index = branch->first(facade) + _below(branch->count(facade));
        facade = branch->enter(facade, index);
        table = branch->facade;
        path += std::string(branch->name) + '[' + std::to_string(index) + "].";
        if (rows_below(*table) == 0)
            return;
    }
}

void leaf_walk_t::_run(void* facade, const cfg_nr_verb_t& verb, const std::string& path)
{
    const unsigned int index = _below(k_longest_list);
    m_history +=
        std::string(verb.name) + ' ' + path + (verb.object ? verb.object : "") + ' ' + std::to_string(index) + '\n';
    verb.run(facade, index);
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
    if (leaf.count(facade) == 0)
        return;
    const unsigned int index = _below(leaf.count(facade));
    const std::string value = _value(facade, leaf);
    m_history += path + leaf.name + (leaf.is_indexed() ? '[' + std::to_string(index) + ']' : "") + '=' + value + '\n';
    leaf.write(facade, value, index);
}

std::string leaf_walk_t::_value(void* facade, const cfg_nr_leaf_t& leaf)
{
    const std::vector<std::string> offer = leaf.on_offer(facade);
    if (!offer.empty() && _below(2))
        return offer[_below(static_cast<unsigned int>(offer.size()))];
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

std::vector<difference_t> not_on_offer(cfg_nr_waveform_t& waveform)
{
    std::vector<difference_t> found;
    compare_with_offers(&waveform, g_cfg_nr_waveform_table, "", found);
    return found;
}

std::vector<difference_t> differences(cfg_nr_waveform_t& first, cfg_nr_waveform_t& second, scope_t scope)
{
    std::vector<difference_t> found;
    compare(&first, &second, g_cfg_nr_waveform_table, "", scope, found);
    return found;
}

} // namespace nr_test
