#include "host/analysis/nrwave_ccdf.h"

#include <algorithm>

namespace nrwave
{

namespace
{

// The grid of the library's curves.
constexpr double k_step_db = 0.05;

} // namespace

std::vector<ccdf_point_t> ccdf_points(const std::vector<double>& curve)
{
    std::vector<ccdf_point_t> points;
    for (std::size_t i = 0; i < curve.size() && curve[i] > 0; ++i)
        points.push_back({k_step_db * static_cast<double>(i), curve[i]});
    return points;
}

double ccdf_end_db(const std::vector<double>& curve, double probability)
{
    const auto last = std::find_if(curve.rbegin(), curve.rend(), [&](double value) { return value >= probability; });
    return k_step_db * static_cast<double>(curve.rend() - last);
}

} // namespace nrwave
