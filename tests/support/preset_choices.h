#pragma once

#include <string>
#include <utility>
#include <vector>

namespace nr_test
{

using steps_t = std::vector<std::string>;

/// Steps that choose a preset of the first carrier, by settings NAME=VALUE of its family, and apply it.
steps_t preset_steps(const std::string& family, const steps_t& settings, bool ntn = false);

/// A family of presets: its façade below a carrier, and the settings that make the choice, in the order in which they
/// are taken, each with the values to try; without any, those on offer.
struct preset_family_t
{
    const char* facade;
    std::vector<std::pair<const char*, steps_t>> settings;
};

/// Such steps for every choice that the lists of a family's façade offer.
std::vector<steps_t> every_choice(const preset_family_t& family, bool ntn);

/// The lines of an output that taking and applying a choice has no reason for: neither traces nor what plain changes of
/// bandwidth and spacing print, nor, in NTN mode, that a test model has no FDD.
std::string unexpected_of_presets(const std::string& output, bool ntn);

} // namespace nr_test
