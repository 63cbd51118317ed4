#pragma once

#include "config/cfg_nr_waveform.h"

#include <memory>
#include <string>
#include <vector>

namespace nr_test
{

/// A fresh waveform with an uplink fixed reference channel chosen, in NTN mode where it is one of such networks.
std::unique_ptr<vek::nr_mod_lib::cfg_nr_waveform_t>
waveform_of(vek::nr_mod_lib::lib_nr_ul_frc_reference_channel_t channel);

/// The lines of an output that presets may not print: all but those that changes of bandwidth and spacing print too.
std::vector<std::string> surprises(const std::string& output);

} // namespace nr_test
