#pragma once

#include "config/cfg_nr_waveform.h"
#include "host/analysis/nrwave_evm.h"
#include "host/nrwave_output.h"
#include "phy/lib_nr_phy.h"

#include <filesystem>
#include <set>
#include <string>

namespace nrwave
{

/// Measures the samples of a waveform that an engine has generated, and lays into a folder: report.html, which needs
/// no other file; spectrum, CCDF and power as PNG and SVG; a PNG of each carrier's, numerology's and frame's map, the
/// first named resource_map.png; the constellations of chosen channels, by their paths. The page shows eight maps and
/// links the others. A channel that sends no cell is a failure.
void write_report(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, vek::nr_mod_lib::lib_nr_phy_t& engine,
                  const signal_t& signal, const mapped_t& cells, const std::set<std::string>& chosen,
                  outputs_t& outputs, const std::filesystem::path& folder);

} // namespace nrwave
