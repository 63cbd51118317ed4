#include "host/nrwave_settings.h"

#include "config/leaves/cfg_nr_leaf.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_recalled.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

settings_file_t::settings_file_t(std::string file, const std::string& content) : m_file(std::move(file))
{
    const pugi::xml_parse_result parsed = m_document.load_buffer(content.data(), content.size());
    if (!parsed)
        throw failure_t(m_file + " is no settings file: " + parsed.description());
}

void settings_file_t::recall(cfg_nr_waveform_t& waveform) const
{
    if (!waveform.recall_setting(m_document.document_element()))
        throw failure_t(m_file + " is no settings file of this protocol");
}

std::vector<std::string> settings_file_t::steps() const
{
    std::vector<std::string> steps;
    for (const pugi::xml_node& step : m_document.document_element().child(k_steps_element).children(k_step_element))
        steps.emplace_back(step.text().as_string());
    return steps;
}

std::vector<std::string> settings_file_t::corrections(cfg_nr_waveform_t& waveform) const
{
    const pugi::xml_node root = m_document.document_element();
    const pugi::xml_node tree = root.child(g_cfg_nr_waveform_table.element);
    const pugi::xml_node beside = root.child(k_steps_element);
    std::vector<std::string> lines = recall_corrections(tree, waveform);
    if (!tree)
        lines.push_back("no element " + std::string(g_cfg_nr_waveform_table.element) + " in " + root.name());
    for (const pugi::xml_node& node : root.children())
        if (node.type() == pugi::node_element && node != tree && node != beside)
            lines.push_back(passed_over(node, "unknown"));
    for (std::string& line : lines)
        line.insert(0, m_file + ": ");
    return lines;
}

} // namespace nrwave
