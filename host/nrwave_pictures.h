#pragma once

#include "host/nrwave_generation.h"
#include "host/nrwave_output.h"

#include <filesystem>
#include <string>

namespace nrwave
{

/// The allocation of a frame as a table: symbol,subcarrier,owner, a line for each cell that is not empty.
std::string csv_of(const resource_map_t& map);
/// The same as a picture, the content of a PNG file, each owner in its colour.
std::string picture_of(const resource_map_t& map);

/// Spectrum, CCDF with the Gaussian reference, power against time and the resource map of the first enabled carrier as
/// PNG files in a folder; deviations from the standard that the run met as a text beside them.
void draw_report(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, vek::nr_mod_lib::lib_nr_phy_t& engine,
                 outputs_t& outputs, const std::filesystem::path& folder);

} // namespace nrwave
