#pragma once

#include "host/nrwave_generation.h"

#include <filesystem>
#include <string>

namespace nrwave
{

/// The allocation of a frame as a table: symbol,subcarrier,owner, a line for each cell that is not empty.
std::string csv_of(const resource_map_t& map);
/// The same as a picture, each owner in its colour.
void draw_map(const resource_map_t& map, const std::string& title, const std::filesystem::path& place);

/// Spectrum, CCDF with the Gaussian reference, power against time and the resource map of the first enabled carrier as
/// PNG files in a folder, which is made where it does not exist.
void draw_report(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, vek::nr_mod_lib::lib_nr_phy_t& engine,
                 const std::filesystem::path& folder);

} // namespace nrwave
