#pragma once

#include "host/analysis/nrwave_measurement.h"

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace nrwave
{

/// A figure as a person reads it, and the expected one.
struct figure_row_t
{
    std::string name;
    std::string value;
    std::string expected;
    bool is_exceeded = false;
};

/// The figures of the waveform, without a title, or of a carrier.
struct figure_group_t
{
    std::string title;
    std::vector<figure_row_t> rows;
};

std::vector<figure_group_t> groups_of(const measurement_t& measurement);
/// The markers as a table: a line of heads, then waveform, burst and Gaussian noise.
std::vector<std::vector<std::string>> markers_of(const measurement_t& measurement);

/// The channels' error vector magnitudes under their names in JSON.
nlohmann::ordered_json json_of(const std::vector<channel_evm_t>& channels);

/// All of it as text in columns. What passes its limit is marked, and listed at the end.
std::string text_of(const measurement_t& measurement);
/// The same under fixed names; null where silence or the rate leaves nothing to tell.
nlohmann::ordered_json json_of(const measurement_t& measurement);

} // namespace nrwave
