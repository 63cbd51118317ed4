#include "host/analysis/nrwave_spectrum.h"

#include <algorithm>

namespace nrwave
{

std::vector<spectrum_point_t> thinned_spectrum(const std::vector<std::complex<double>>& spectrum, double rate_hz,
                                               std::size_t wanted_points)
{
    const std::size_t size = spectrum.size();
    const std::size_t group = std::max<std::size_t>(1, size / wanted_points);
    const std::size_t middle = size / 2;
    std::vector<spectrum_point_t> points;
    for (std::size_t begin = 0; begin < size; begin += group) {
        const double line = static_cast<double>(begin) - static_cast<double>(middle);
        spectrum_point_t point{line / static_cast<double>(size) * rate_hz, 0.0};
        for (std::size_t i = begin; i < std::min(begin + group, size); ++i)
            point.power = std::max(point.power, std::norm(spectrum[i]));
        points.push_back(point);
    }
    return points;
}

} // namespace nrwave
