#pragma once

#include "config/cfg_nr_waveform.h"
#include "host/analysis/nrwave_signal.h"
#include "host/nrwave_output.h"
#include "phy/lib_nr_phy.h"

#include <filesystem>

namespace nrwave
{

/// Measures the samples of a waveform that an engine has generated, and lays into a folder: report.html, which needs
/// no other file; spectrum, CCDF and power as PNG and SVG; a PNG of each carrier's, numerology's and frame's map, the
/// first named resource_map.png. The page shows eight maps and links the others.
void write_report(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, vek::nr_mod_lib::lib_nr_phy_t& engine,
                  const signal_t& signal, outputs_t& outputs, const std::filesystem::path& folder);

} // namespace nrwave
