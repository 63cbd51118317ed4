#include "common/lib_xml_common.h"
#include "config/cfg_nr_waveform.h"
#include "config/leaves/cfg_nr_leaf.h"

// The settings tree: an image of the façade tree, written and read by walking the leaf tables.

namespace vek::nr_mod_lib
{

namespace
{

constexpr const char* k_protocol_attribute = "ProtocolType";

void save_block(void* facade, const cfg_nr_facade_table_t& table, pugi::xml_node& block)
{
    for (const cfg_nr_leaf_t& leaf : table.leaves)
        if (leaf.in_tree)
            leaf.save(facade, block);

    for (const cfg_nr_branch_t& branch : table.branches) {
        if (!branch.in_tree)
            continue;
        pugi::xml_node container = block.append_child(branch.facade->element);
        if (!branch.is_list()) {
            save_block(branch.enter(facade, 0), *branch.facade, container);
            continue;
        }
        for (unsigned int place = 0; place < branch.count(facade); ++place) {
            pugi::xml_node entry = container.append_child(branch.facade->element);
            save_block(branch.enter_place(facade, place), *branch.facade, entry);
        }
    }
}

void recall_block(void* facade, const cfg_nr_facade_table_t& table, const pugi::xml_node& block);

/// The entries of a list, by position: a list grows where it can and is never cut.
void recall_list(void* parent, const cfg_nr_branch_t& branch, const pugi::xml_node& container)
{
    unsigned int place = 0;
    for (const pugi::xml_node& entry : container.children(branch.facade->element)) {
        if (place >= branch.count(parent) && !branch.add(parent))
            break;
        recall_block(branch.enter_place(parent, place++), *branch.facade, entry);
    }
    if (!branch.recalled_twice)
        return;
    const cfg_nr_leaf_t& leaf = *find_row(branch.facade->leaves, branch.recalled_twice);
    place = 0;
    for (const pugi::xml_node& entry : container.children(branch.facade->element)) {
        if (place >= branch.count(parent))
            break;
        leaf.recall(branch.enter_place(parent, place++), entry);
    }
}

void recall_block(void* facade, const cfg_nr_facade_table_t& table, const pugi::xml_node& block)
{
    for (const cfg_nr_leaf_t* leaf : table.leaves_in_recall_order())
        if (leaf->in_tree)
            leaf->recall(facade, block);

    for (const cfg_nr_branch_t& branch : table.branches) {
        if (!branch.in_tree)
            continue;
        const pugi::xml_node container = block.child(branch.facade->element);
        if (branch.is_list())
            recall_list(facade, branch, container);
        else
            recall_block(branch.enter(facade, 0), *branch.facade, container);
    }
}

} // namespace

bool cfg_nr_waveform_t::save_setting(pugi::xml_node& node)
{
    const std::string protocol = common_lib::lib_xml_common_t::get_protocol_name(get_protocol_type());
    node.append_attribute(k_protocol_attribute).set_value(protocol.c_str());
    pugi::xml_node block = node.append_child(g_cfg_nr_waveform_table.element);
    save_block(this, g_cfg_nr_waveform_table, block);
    return true;
}

bool cfg_nr_waveform_t::recall_setting(const pugi::xml_node& node)
{
    const std::string protocol = node.attribute(k_protocol_attribute).as_string();
    common_lib::plib_protocol_type_t type = get_protocol_type();
    if (!common_lib::lib_xml_common_t::get_protocol_type(protocol, type) || type != get_protocol_type())
        return false;

    m_waveform.init();
    recall_block(this, g_cfg_nr_waveform_table, node.child(g_cfg_nr_waveform_table.element));
    return true;
}

} // namespace vek::nr_mod_lib
