#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

// A guest is a further carrier, which stays for as long as a run of steps takes. The copy takes these, and they are
// appended, where they lead to what the original holds.

/// What no setting brings, but a preset lays down for the whole waveform: its antennas, and a radio frequency that is
/// not whole. The rest can be mended behind it.
void take_preset_of_a_guest(vek::nr_mod_lib::cfg_nr_waveform_t& original, vek::nr_mod_lib::cfg_nr_waveform_t& copy,
                            std::vector<std::string>& steps);

/// What crest factor reduction has kept from a time when the sample rate was higher.
void take_width_of_a_guest(vek::nr_mod_lib::cfg_nr_waveform_t& original, vek::nr_mod_lib::cfg_nr_waveform_t& copy,
                           std::vector<std::string>& steps);

} // namespace nrwave
