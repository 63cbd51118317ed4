#include "host/analysis/nrwave_power.h"

#include <algorithm>
#include <cmath>

namespace nrwave
{

double db_of_power(double power, double floor_db)
{
    return power > 0 ? std::max(10 * std::log10(power), floor_db) : floor_db;
}

std::vector<power_point_t> power_against_time(vek::common_lib::lib_signal_view_t samples, std::size_t most_points)
{
    const std::size_t length = std::max<std::size_t>(1, (samples.size() + most_points - 1) / most_points);
    std::vector<power_point_t> points;
    for (std::size_t begin = 0; begin < samples.size(); begin += length) {
        const std::size_t end = std::min(begin + length, samples.size());
        power_point_t point{begin, 0.0, 0.0};
        for (std::size_t i = begin; i < end; ++i) {
            const double power = std::norm(samples[i]);
            point.mean += power;
            point.peak = std::max(point.peak, power);
        }
        point.mean /= static_cast<double>(end - begin);
        points.push_back(point);
    }
    return points;
}

} // namespace nrwave
