#include "host/nrwave_single_steps.h"

#include "host/nrwave_path.h"
#include "host/nrwave_rows.h"
#include "host/nrwave_shorthand.h"
#include "host/nrwave_value.h"

#include <algorithm>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

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
        steps.push_back(verb_step(*add, path));
}

constexpr const char* k_most = "max";

/// Whether a value is not taken as such but comes of the largest number, which has then been set.
bool is_most(const cfg_nr_leaf_t& leaf, void* facade, unsigned int i, const std::string& value)
{
    if (!is_whole(leaf.form) || std::stod(leaf.read(facade, i)) >= std::stod(value))
        return false;
    leaf.write(facade, value_in_full(leaf, k_most), i);
    return leaf.read(facade, i) == value;
}

/// A step holds what it asks for, or what the setter made of it: taken once more, it is not corrected.
void mend_leaf(const target_t& wanted, const target_t& present, const cfg_nr_leaf_t& leaf, unsigned int i,
               const std::string& path, std::vector<std::string>& steps)
{
    const std::string value = leaf.read(wanted.facade, i);
    const std::string before = leaf.read(present.facade, i);
    if (before == value || !fits_a_step(value))
        return;
    for (const auto& [name, way] : leaf.detour(wanted.facade))
        find_row(wanted.table->leaves, name)->write(present.facade, way);
    leaf.write(present.facade, value, i);
    if (leaf.read(present.facade, i) == value)
        append_steps_to(steps, path, leaf, wanted.facade, i);
    else if (is_most(leaf, present.facade, i, value))
        steps.push_back(setting_path(path, leaf, i) + '=' + k_most);
    else if (leaf.read(present.facade, i) != before)
        steps.push_back(setting_step(path, leaf, present.facade, i));
}

} // namespace

void mend(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, const std::string& path,
          std::vector<std::string>& steps)
{
    const target_t wanted = resolve(original, path);
    const target_t present = resolve(copy, path);
    const std::size_t before = steps.size();
    drop_edits(*wanted.table, wanted.facade);
    mend_number_of_values(wanted, present, path, steps);
    for (const cfg_nr_leaf_t* leaf : wanted.table->leaves_in_recall_order())
        for (unsigned int i = 0; i < std::min(leaf->count(wanted.facade), leaf->count(present.facade)); ++i)
            mend_leaf(wanted, present, *leaf, i, path, steps);
    for (const cfg_nr_verb_t& verb : wanted.table->verbs)
        if (verb.ends_steps && steps.size() > before && verb.run(present.facade, 0))
            steps.push_back(verb_step(verb, path));
    for (const cfg_nr_branch_t& branch : wanted.table->branches) {
        const std::string child = below(path, branch.name);
        if (branch.is_list())
            mend_list(original, copy, child, steps);
        else
            mend(original, copy, child, steps);
    }
}

void mend_in_rounds(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, std::vector<std::string>& steps)
{
    constexpr unsigned int k_rounds = 4;
    for (unsigned int round = 0; round < k_rounds; ++round) {
        const std::size_t before = steps.size();
        mend(original, copy, {}, steps);
        if (steps.size() == before)
            break;
    }
}

void take_over(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy)
{
    copy.copy_configuration(original.get_waveform_manager());
    std::vector<std::string> ignored;
    mend(original, copy, "carrier[0].pucch_test_model", ignored);
}

bool fits_a_step(const std::string& value)
{
    return value == trimmed(value) && std::none_of(value.begin(), value.end(), [](char c) {
               return (c != '\t' && static_cast<unsigned char>(c) < ' ') || c == 0x7f;
           });
}

} // namespace nrwave
