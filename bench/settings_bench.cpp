// Save and recall of a large waveform, 16 carriers with 20 entries a list, beside what pugixml takes for the same tree.
#include "config/cfg_nr_waveform.h"
#include "config/leaves/cfg_nr_leaf.h"
#include "support/captured_output.h"

#include <benchmark/benchmark.h>
#include <pugixml.hpp>
#include <sstream>
#include <string>

namespace
{

using namespace vek::nr_mod_lib;

constexpr unsigned int k_carriers = 16;

void grow(cfg_nr_waveform_t& waveform, unsigned int carriers, unsigned int entries)
{
    while (waveform.get_carrier_number() < carriers)
        waveform.add_carrier();
    const cfg_nr_facade_table_t& table = *find_row(g_cfg_nr_waveform_table.branches, "carrier")->facade;
    for (unsigned int c = 0; c < carriers; ++c) {
        cfg_nr_carrier_t* carrier = waveform.get_carrier(c);
        for (const cfg_nr_branch_t& branch : table.branches)
            while (branch.in_tree && branch.can_add() && branch.count(carrier) < entries && branch.add(carrier))
                ;
    }
}

std::string text_of(const pugi::xml_node& node)
{
    std::ostringstream text;
    node.print(text, "", pugi::format_raw);
    return text.str();
}

/// The tree of a waveform that has grown.
void save_into(pugi::xml_node root, unsigned int carriers, unsigned int entries)
{
    cfg_nr_waveform_t waveform;
    grow(waveform, carriers, entries);
    waveform.save_setting(root);
}

/// Appends a tree again, node by node and text by text, as a save does.
void build(const pugi::xml_node& from, pugi::xml_node to)
{
    for (const pugi::xml_node& child : from.children()) {
        if (child.type() != pugi::node_element)
            continue;
        pugi::xml_node added = to.append_child(child.name());
        for (const pugi::xml_attribute& attribute : child.attributes())
            added.append_attribute(attribute.name()).set_value(attribute.value());
        if (child.first_child().type() == pugi::node_pcdata)
            added.text().set(child.text().as_string());
        else
            build(child, added);
    }
}

void settings_save(benchmark::State& state)
{
    const nr_test::captured_output_t silence;
    cfg_nr_waveform_t waveform;
    grow(waveform, k_carriers, static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        pugi::xml_document document;
        pugi::xml_node root = document.append_child("settings");
        waveform.save_setting(root);
    }
}
BENCHMARK(settings_save)->Arg(20);

void settings_save_pugixml_alone(benchmark::State& state)
{
    const nr_test::captured_output_t silence;
    pugi::xml_document tree;
    save_into(tree.append_child("settings"), k_carriers, static_cast<unsigned int>(state.range(0)));
    for (auto _ : state) {
        pugi::xml_document document;
        build(tree, document);
    }
}
BENCHMARK(settings_save_pugixml_alone)->Arg(20);

void settings_recall(benchmark::State& state)
{
    nr_test::captured_output_t silence;
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("settings");
    save_into(root, static_cast<unsigned int>(state.range(0)), static_cast<unsigned int>(state.range(1)));
    cfg_nr_waveform_t waveform;
    for (auto _ : state) {
        waveform.recall_setting(root);
        silence.clear();
    }
}
// The last two: a hundred entries a list cost at most twelve times ten.
BENCHMARK(settings_recall)->Args({k_carriers, 20})->Args({1, 10})->Args({1, 100});

void settings_recall_pugixml_alone(benchmark::State& state)
{
    const nr_test::captured_output_t silence;
    pugi::xml_document tree;
    pugi::xml_node root = tree.append_child("settings");
    save_into(root, k_carriers, static_cast<unsigned int>(state.range(0)));
    const std::string text = text_of(root);
    for (auto _ : state) {
        pugi::xml_document document;
        benchmark::DoNotOptimize(document.load_buffer(text.data(), text.size()));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(settings_recall_pugixml_alone)->Arg(20);

} // namespace
