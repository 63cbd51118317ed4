#pragma once

#include "host/nrwave_generation.h"

#include <string>

namespace nrwave
{

/// The allocation of a frame as a table: symbol,subcarrier,owner, a line for each cell that is not empty.
std::string csv_of(const resource_map_t& map);
/// The same as a picture, the content of a PNG file, each owner in its colour.
std::string picture_of(const resource_map_t& map);

} // namespace nrwave
