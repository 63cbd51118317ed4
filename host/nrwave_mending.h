#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

/// Steps that bring a copy's settings and figures to those of the original, as far as steps can; the copy takes them.
std::vector<std::string> mending_steps(vek::nr_mod_lib::cfg_nr_waveform_t& original,
                                       vek::nr_mod_lib::cfg_nr_waveform_t& copy);

} // namespace nrwave
