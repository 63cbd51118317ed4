#include "config/cfg_nr_waveform.h"
#include "config/leaves/cfg_nr_leaf.h"
#include "support/captured_output.h"
#include "support/settings_text.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

// The settings tree against settings_format.txt, which was typed from the format: a line a block, its elements in the
// order of the file, each with its form, or the first name of its enumeration, and its step in the recall.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::recall;
using nr_test::saved;

struct element_t
{
    std::string name;
    std::string form;
    unsigned int step = 0;
};

const std::map<std::string, std::vector<element_t>>& format()
{
    static const auto blocks = [] {
        std::map<std::string, std::vector<element_t>> read;
        std::ifstream file(NR_MOD_LIB_SOURCE_DIR "/tests/config/settings_format.txt");
        std::string block;
        for (std::string word; file >> word;) {
            const std::size_t equals = word.find('=');
            const std::size_t at = word.find('@');
            if (equals == std::string::npos)
                block = word;
            else
                read[block].push_back({word.substr(0, equals), word.substr(equals + 1, at - equals - 1),
                                       static_cast<unsigned int>(std::stoul(word.substr(at + 1)))});
        }
        return read;
    }();
    return blocks;
}

const std::map<std::string, std::vector<std::string>> k_below = {
    {"cfg_nr_waveform", {"cfg_nr_carrier"}},
    {"cfg_nr_carrier",
     {"cfg_nr_phy_numerology", "cfg_nr_dl_bwp", "cfg_nr_dl_csirs", "cfg_nr_dl_dci", "cfg_nr_dl_sch", "cfg_nr_dl_prs",
      "cfg_nr_dl_ssb", "cfg_nr_dl_tm", "cfg_nr_dl_frc", "cfg_nr_ul_bwp", "cfg_nr_ul_pucch", "cfg_nr_ul_sch",
      "cfg_nr_ul_frc", "cfg_nr_ul_rmc", "cfg_nr_pucch_test_model"}},
    {"cfg_nr_dl_bwp", {"cfg_nr_dl_coreset"}}};
const std::set<std::string> k_single = {"cfg_nr_dl_ssb", "cfg_nr_dl_tm",  "cfg_nr_dl_frc",
                                        "cfg_nr_ul_frc", "cfg_nr_ul_rmc", "cfg_nr_pucch_test_model"};

std::vector<std::string> below(const std::string& block)
{
    return k_below.count(block) ? k_below.at(block) : std::vector<std::string>{};
}

const cfg_nr_branch_t& branch_of(const cfg_nr_facade_table_t& table, const std::string& block)
{
    return *std::find_if(table.branches.begin(), table.branches.end(),
                         [&](const cfg_nr_branch_t& branch) { return branch.facade->element == block; });
}

/// What pugixml writes for the value that it reads.
std::string rewritten(const pugi::xml_node& element, const std::string& form)
{
    pugi::xml_document document;
    const pugi::xml_text read = element.text();
    pugi::xml_text text = document.append_child("x").text();
    if (form == "bool")
        text.set(read.as_bool());
    else if (form == "int")
        text.set(read.as_int());
    else if (form == "unsigned")
        text.set(read.as_uint());
    else if (form == "unsigned64")
        text.set(read.as_ullong());
    else if (form == "double")
        text.set(read.as_double());
    else
        return read.as_string();
    return text.as_string();
}

void expect_block(const pugi::xml_node& block, const std::string& name, unsigned int& leaves)
{
    std::vector<std::string> names;
    for (const pugi::xml_node& child : block.children())
        names.emplace_back(child.name());
    std::vector<std::string> wanted;
    for (const element_t& element : format().at(name)) {
        wanted.push_back(element.name);
        const pugi::xml_node leaf = block.child(element.name.c_str());
        EXPECT_EQ(rewritten(leaf, element.form), leaf.text().as_string()) << element.name;
        EXPECT_EQ(leaf.attribute("type").as_string(), std::string(element.form[0] == '[' ? "vector" : ""));
        ++leaves;
    }
    for (const std::string& child : below(name)) {
        wanted.push_back(child);
        const pugi::xml_node container = block.child(child.c_str());
        if (k_single.count(child))
            expect_block(container, child, leaves);
        for (const pugi::xml_node& entry : container.children(child.c_str()))
            expect_block(entry, child, leaves);
    }
    EXPECT_EQ(names, wanted) << name;
}

/// Three carriers, one of each direction and one with several numerologies, every list grown.
void grow(cfg_nr_waveform_t& waveform)
{
    waveform.add_carrier();
    waveform.add_carrier();
    for (unsigned int i = 0; i < 3; ++i) {
        cfg_nr_carrier_t& carrier = *waveform.get_carrier(i);
        if (i == 1)
            carrier.set_carrier_type(LIB_NR_UPLINK);
        if (i == 2)
            carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
        carrier.add_dl_bwp();
        carrier.get_dl_bwp(1)->set_coreset_number(3);
        carrier.add_dl_csirs();
        carrier.add_dl_dci();
        carrier.add_dl_sch();
        carrier.add_dl_prs();
        carrier.add_ul_bwp();
        carrier.add_ul_pucch();
        carrier.add_ul_sch();
    }
}

TEST(cfg_nr_settings_format, has_every_element_in_its_place_and_form)
{
    const nr_test::captured_output_t silence;
    cfg_nr_waveform_t fresh;
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(saved(fresh).c_str()));
    unsigned int leaves = 0;
    expect_block(document.document_element().child("cfg_nr_waveform"), "cfg_nr_waveform", leaves);
    EXPECT_EQ(leaves, 328U + 5U + 8U); // two BWPs, each with a CORESET

    grow(fresh);
    ASSERT_TRUE(document.load_string(saved(fresh).c_str()));
    expect_block(document.document_element().child("cfg_nr_waveform"), "cfg_nr_waveform", leaves);
}

std::string zero_of(const std::string& form)
{
    if (form == "bool")
        return "false";
    if (form == "string" || form[0] == '[')
        return "";
    return std::isupper(form[0]) != 0 || form == "unsigned64" ? (form == "unsigned64" ? "0" : form) : "0";
}

/// The state after a recall in which the first element of that name in such a block is changed.
template <class change_t>
std::string state_after(const std::string& text, const std::string& block, const std::string& name, change_t change)
{
    pugi::xml_document document;
    document.load_string(text.c_str());
    const pugi::xml_node found = document.find_node([&](const pugi::xml_node& node) {
        return node.name() == name && node.parent().name() == block && node.parent().child(name.c_str()) == node;
    });
    change(found.parent(), found);
    cfg_nr_waveform_t waveform;
    waveform.recall_setting(document.document_element());
    return saved(waveform);
}

TEST(cfg_nr_settings_format, takes_what_is_missing_empty_or_foreign_as_zero)
{
    const nr_test::captured_output_t silence;
    cfg_nr_waveform_t waveform;
    grow(waveform);
    const std::string text = saved(waveform);
    for (const auto& [block, elements] : format())
        for (const element_t& element : elements) {
            const auto state = [&, name = element.name, in = block](auto change) {
                return state_after(text, in, name, change);
            };
            const std::string zero = state([&](auto, pugi::xml_node leaf) {
                leaf.remove_children();
                leaf.text().set(zero_of(element.form).c_str());
            });
            EXPECT_EQ(state([](auto parent, auto leaf) { parent.remove_child(leaf); }), zero) << element.name;
            EXPECT_EQ(state([](auto, auto leaf) { leaf.remove_children(); }), zero) << element.name;
            if (element.form != "string" && element.form[0] != '[') {
                EXPECT_EQ(state([](auto, auto leaf) { leaf.text().set("#?"); }), zero) << element.name;
            }
            // What nobody knows, and what stands twice, changes nothing.
            EXPECT_EQ(state([](auto parent, auto leaf) {
                          parent.prepend_child("foreign").append_child(leaf.name()).text().set("1");
                          parent.append_copy(leaf).text().set("17");
                          parent.prepend_child(pugi::node_comment).set_value("1");
                          leaf.append_attribute("unit").set_value(1);
                          parent.append_move(leaf.previous_sibling());
                      }),
                      state([](auto, auto) {}))
                << element.name;
        }
}

/// Applies a block call by call: its elements by their steps, then its lists and single blocks.
void set_block(void* facade, const cfg_nr_facade_table_t& table, const pugi::xml_node& node)
{
    std::vector<element_t> elements = format().at(table.element);
    std::sort(elements.begin(), elements.end(), [](const auto& a, const auto& b) { return a.step < b.step; });
    for (const element_t& element : elements)
        find_row(table.leaves, element.name)->recall(facade, node);
    for (const std::string& child : below(table.element)) {
        const cfg_nr_branch_t& branch = branch_of(table, child);
        const pugi::xml_node container = node.child(child.c_str());
        if (k_single.count(child))
            set_block(branch.enter(facade, 0), *branch.facade, container);
        unsigned int i = 0;
        for (const pugi::xml_node& entry : container.children(child.c_str())) {
            if (i >= branch.count(facade) && !branch.add(facade))
                break; // numerologies and CORESETs are as many as other settings say
            set_block(branch.enter_place(facade, i++), *branch.facade, entry);
        }
        i = 0;
        if (child == "cfg_nr_phy_numerology")
            for (const pugi::xml_node& entry : container)
                if (i < branch.count(facade))
                    find_row(branch.facade->leaves, "enable")->recall(branch.enter_place(facade, i++), entry);
    }
}

/// Gives every leaf below a block a text of its form, drawn at random; a few leaves, lists and single blocks go.
void scramble(pugi::xml_node block, const cfg_nr_facade_table_t& table, std::mt19937& random)
{
    static const char* const k_texts[] = {"0:3", "1011", "2,5", "0", "7", "111111", "1,0,1"};
    for (const element_t& element : format().at(table.element)) {
        pugi::xml_node leaf = block.child(element.name.c_str());
        const std::vector<std::string> names = find_row(table.leaves, element.name)->enumerators();
        std::string text = std::to_string(static_cast<int>(random() % (random() % 2 ? 20 : 300)) - 3);
        if (element.form == "double")
            text += '.' + std::to_string(random() % 100);
        if (element.form == "string")
            text = k_texts[random() % std::size(k_texts)];
        if (element.form == "bool")
            text = random() % 2 ? "true" : "false";
        if (!names.empty())
            text = names[random() % names.size()];
        if (element.form[0] == '[')
            leaf = leaf.append_child("i");
        leaf.text().set(text.c_str());
        if (random() % 50 == 0)
            block.remove_child(element.name.c_str());
    }
    for (const std::string& child : below(table.element)) {
        pugi::xml_node container = block.child(child.c_str());
        if (k_single.count(child))
            scramble(container, *branch_of(table, child).facade, random);
        for (pugi::xml_node entry : container.children(child.c_str()))
            scramble(entry, *branch_of(table, child).facade, random);
        if (random() % 50 == 0)
            block.remove_child(container);
        else if (random() % 50 == 0)
            container.first_child().remove_children();
    }
}

TEST(cfg_nr_settings_format, recalls_as_single_calls_in_their_order_do)
{
    const nr_test::captured_output_t silence;
    cfg_nr_waveform_t grown;
    grow(grown);
    const std::string text = saved(grown);
    for (unsigned int seed = 0; seed < 200; ++seed) {
        std::mt19937 random(seed);
        pugi::xml_document document;
        document.load_string(text.c_str());
        const pugi::xml_node root = document.document_element();
        const pugi::xml_node tree = root.child("cfg_nr_waveform");
        scramble(tree, g_cfg_nr_waveform_table, random);

        cfg_nr_waveform_t recalled;
        ASSERT_TRUE(recalled.recall_setting(root));
        cfg_nr_waveform_t set;
        set.init();
        set_block(&set, g_cfg_nr_waveform_table, tree);
        EXPECT_EQ(saved(recalled), saved(set)) << seed;
    }
}

} // namespace
