#include "host/nrwave_settings.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_mending.h"

#include <pugixml.hpp>
#include <sstream>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr const char* k_root = "nr_settings";
constexpr const char* k_steps = "nrwave_steps";
constexpr const char* k_step = "step";

} // namespace

std::vector<std::string> recall_text(cfg_nr_waveform_t& waveform, const std::string& file, const std::string& content)
{
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(content.data(), content.size());
    if (!parsed)
        throw failure_t(file + " is no settings file: " + parsed.description());
    const pugi::xml_node root = document.document_element();
    if (!waveform.recall_setting(root))
        throw failure_t(file + " is no settings file of this protocol");

    std::vector<std::string> steps;
    for (const pugi::xml_node& step : root.child(k_steps).children(k_step))
        steps.emplace_back(step.text().as_string());
    return steps;
}

std::string saved_text(cfg_nr_waveform_t& waveform)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child(k_root);
    waveform.save_setting(root);

    cfg_nr_waveform_t recalled;
    recalled.recall_setting(root);
    const std::vector<std::string> steps = mending_steps(waveform, recalled);
    if (!steps.empty()) {
        pugi::xml_node beside = root.append_child(k_steps);
        for (const std::string& step : steps)
            beside.append_child(k_step).text().set(step.c_str());
    }

    std::ostringstream text;
    document.save(text, "  ");
    return text.str();
}

} // namespace nrwave
