#include "host/nrwave_guest.h"

#include "host/nrwave_difference.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_path.h"
#include "host/nrwave_steps.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

using steps_t = std::vector<std::string>;

constexpr const char* k_widest = "LIB_NR_CHANNEL_FR2_2_2000M";
constexpr const char* k_widest_ntn = "LIB_NR_CHANNEL_FR2_1_400M";

/// The value of a setting or figure of the whole waveform.
std::string value_of(cfg_nr_waveform_t& waveform, const std::string& name)
{
    const target_t target = resolve(waveform, name);
    return target.leaf ? target.leaf->read(target.facade) : target.figure->read(target.facade);
}

std::string guest_of(cfg_nr_waveform_t& waveform) { return entry("carrier", waveform.get_carrier_number()); }

/// Takes steps while the guest is there, if none of them is corrected and the values named are the original's then.
void take_with_guest(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, const steps_t& between, const steps_t& names,
                     steps_t& steps)
{
    steps_t run = {"add carrier"};
    run.insert(run.end(), between.begin(), between.end());
    run.push_back("remove " + guest_of(copy));

    cfg_nr_waveform_t trial;
    trial.copy_configuration(copy.get_waveform_manager());
    bool leads = true;
    stepper_t stepper(trial, [&](const std::string&) { leads = false; });
    try {
        for (const std::string& step : run)
            stepper.apply(step);
    } catch (const failure_t&) { // an endless value, which a file can hold and a step cannot
        return;
    }
    for (const std::string& name : names)
        leads = leads && value_of(trial, name) == value_of(original, name);
    if (!leads)
        return;
    copy.copy_configuration(trial.get_waveform_manager());
    steps.insert(steps.end(), run.begin(), run.end());
}

} // namespace

void take_preset_of_a_guest(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, steps_t& steps)
{
    const std::string antennas = value_of(original, "antennas_number");
    const std::string frequency = value_of(original, "radio_frequency_hz");
    if (antennas == value_of(copy, "antennas_number") && frequency == value_of(copy, "radio_frequency_hz"))
        return;
    const std::string model = below(guest_of(copy), "dl_tm");
    take_with_guest(original, copy,
                    {model + ".layers=" + antennas, model + ".radio_frequency=" + frequency, "apply " + model},
                    {"antennas_number", "radio_frequency_hz"}, steps);
}

void take_width_of_a_guest(cfg_nr_waveform_t& original, cfg_nr_waveform_t& copy, steps_t& steps)
{
    steps_t between = {below(guest_of(copy), "channel_bandwidth=") + (original.get_nr_ntn() ? k_widest_ntn : k_widest)};
    steps_t names;
    for (const difference_t& difference : differences(original, copy))
        if (difference.path.rfind("cfr_", 0) == 0) {
            between.push_back(difference.path + '=' + difference.first);
            names.push_back(difference.path);
        }
    if (!names.empty())
        take_with_guest(original, copy, between, names, steps);
}

} // namespace nrwave
