#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

/// Settings that were left in a state which their own setters would not take any more, such as a period that the
/// spacing had lost: looks for another setting, of the same façade or of a bandwidth part, numerology or PRACH of the
/// carrier, that opens the way for a moment. The copy takes the steps found, which are appended.
void take_detours(vek::nr_mod_lib::cfg_nr_waveform_t& original, vek::nr_mod_lib::cfg_nr_waveform_t& copy,
                  std::vector<std::string>& steps);

} // namespace nrwave
