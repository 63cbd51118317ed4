#pragma once

#include "config/cfg_nr_waveform.h"

#include <ostream>
#include <string>

namespace nrwave
{

/// Tells the paths at and below a path, the form of each setting and the enumerators that it knows.
void describe(std::ostream& out, vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path);

} // namespace nrwave
