#pragma once

#include "config/cfg_nr_waveform.h"

#include <pugixml.hpp>
#include <string>
#include <vector>

namespace nrwave
{

/// What a recall of the tree below a block `cfg_nr_waveform` did not take over as it stands there, held against the
/// waveform as it is now: a line for each element and attribute that was passed over, and for each value.
std::vector<std::string> recall_corrections(const pugi::xml_node& block, vek::nr_mod_lib::cfg_nr_waveform_t& waveform);

/// The line for an element that is passed over: an "unknown" one, or "another" one of its name.
std::string passed_over(const pugi::xml_node& element, const std::string& why);

} // namespace nrwave
