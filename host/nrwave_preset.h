#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

/// The values of a setting that a row can be chosen with, among all that the setting knows.
struct preset_values_t
{
    std::vector<std::string> known;
    std::vector<std::string> taken;

    void include(const std::string& value);
    /// With "to" between the ends of a run.
    std::string text() const;
};

/// A row of a family of presets, with all that it can be chosen with.
struct preset_t
{
    const char* family;
    std::string name;
    bool ntn;
    preset_values_t bandwidths;
    preset_values_t spacings;
    preset_values_t duplex_types;
};

/// dl_tm, dl_frc and so on.
std::vector<std::string> preset_families();
/// The rows of a family, or of all where the name is empty, in non-terrestrial mode or out of it.
std::vector<preset_t> presets_of(const std::string& family, bool ntn);

/// The steps that NAME[:bandwidth=B,scs=S,duplex=D] stands for, on carrier 0: the name as the standard has it
/// (NR-FR1-TM3.1a), or any unique tail of its enumerator. What is left out is the first that the rest is offered with;
/// what is not offered, and an unknown name or key, is a failure. A name that the mode does not know has the step that
/// changes the mode ahead.
std::vector<std::string> preset_steps(const std::string& text, bool ntn);
/// All names, as the standard writes them where they are its own.
std::vector<std::string> preset_names();
/// The name of a row as the standard writes it, NR-FR1-TM3.1a for a test model, G-FR1-A3-14 for a reference channel of
/// the uplink; its enumerator where the standard has none.
std::string name_of_preset(const std::string& row);
/// What may stand behind the colon: bandwidth, scs, duplex.
std::vector<std::string> preset_keys();
/// What a preset offers under a key, in short: 100M, 30K, TDD. An unknown name is a failure.
std::vector<std::string> preset_values(const std::string& name, const std::string& key);

} // namespace nrwave
