#pragma once

#include "config/cfg_nr_waveform.h"

#include <random>
#include <string>

namespace nr_test
{

/// Sets every setting of an enabled PDSCH or PUSCH of a 20 MHz carrier at random, in two rounds, as the façade corrects
/// it; but for those by which it would not be received alone.
void draw_shared_channel(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path, std::mt19937& random);

} // namespace nr_test
