#pragma once

#include <vector>

namespace nrwave
{

/// How often the power exceeds the mean by so much.
struct ccdf_point_t
{
    double above_mean_db = 0.0;
    double probability = 0.0;
};

/// The points of the library's curve up to the last probability above 0.
std::vector<ccdf_point_t> ccdf_points(const std::vector<double>& curve);

/// dB up to which the probability stays at or above one; 0 where it never reaches it.
double ccdf_end_db(const std::vector<double>& curve, double probability);

} // namespace nrwave
