#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

/// Appends the steps, a setting each, that bring the façade at a path of a copy, and all below it, to that of the
/// original, as far as they can in one round; the copy takes them.
void mend(vek::nr_mod_lib::cfg_nr_waveform_t& original, vek::nr_mod_lib::cfg_nr_waveform_t& copy,
          const std::string& path, std::vector<std::string>& steps);

/// The same for the whole waveform, in several rounds: what a later step resets by the way, or what one setting needs
/// of another, comes right with the next.
void mend_in_rounds(vek::nr_mod_lib::cfg_nr_waveform_t& original, vek::nr_mod_lib::cfg_nr_waveform_t& copy,
                    std::vector<std::string>& steps);

/// Makes a copy hold what the original does, the choices of the PUCCH's test models too, which no manager holds.
void take_over(vek::nr_mod_lib::cfg_nr_waveform_t& original, vek::nr_mod_lib::cfg_nr_waveform_t& copy);

/// Whether a value can stand in a step: one without control characters, and without blanks at its ends.
bool fits_a_step(const std::string& value);

} // namespace nrwave
