#include "host/nrwave_saved.h"

#include "host/nrwave_difference.h"
#include "host/nrwave_mending.h"
#include "host/nrwave_settings.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_value.h"

#include <pugixml.hpp>
#include <sstream>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr const char* k_root = "nr_settings";

std::string quoted(const std::string& value) { return value.empty() ? "an empty value" : shortened(value); }

/// The tree, and the steps that bring back from it what is in the waveform.
std::string text_of(cfg_nr_waveform_t& waveform)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child(k_root);
    waveform.save_setting(root);

    cfg_nr_waveform_t recalled;
    recalled.recall_setting(root);
    const std::vector<std::string> steps = mending_steps(waveform, recalled);
    if (!steps.empty()) {
        pugi::xml_node beside = root.append_child(k_steps_element);
        for (const std::string& step : steps)
            beside.append_child(k_step_element).text().set(step.c_str());
    }

    std::ostringstream text;
    document.save(text, "  ");
    return text.str();
}

} // namespace

saved_settings_t saved_settings(cfg_nr_waveform_t& waveform)
{
    saved_settings_t saved{text_of(waveform), {}};
    // What counts is what a load makes of the text itself.
    cfg_nr_waveform_t loaded;
    stepper_t(loaded, [](const std::string&) {}).load_text("the file", saved.text);
    std::vector<difference_t> lost = differences(waveform, loaded);
    if (lost.empty())
        lost = figure_differences(waveform, loaded);
    for (const auto& [path, value, fallen] : lost)
        saved.losses.push_back(path + ": saved " + quoted(value) + ", comes back as " + quoted(fallen));
    return saved;
}

} // namespace nrwave
