#pragma once

#include "common/lib_signal_view.h"

#include <cstddef>
#include <vector>

namespace nrwave
{

/// What stands for silence where a level is shown.
constexpr double k_floor_db = -140.0;

/// A power in dB, at least the floor.
double db_of_power(double power, double floor_db = k_floor_db);

/// Power within a piece of the samples.
struct power_point_t
{
    std::size_t first_sample = 0;
    double mean = 0.0;
    double peak = 0.0;
};

/// Power against time in at most so many pieces of one length, the last one maybe shorter; none of no samples.
std::vector<power_point_t> power_against_time(vek::common_lib::lib_signal_view_t samples, std::size_t most_points);

} // namespace nrwave
