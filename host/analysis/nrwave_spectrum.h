#pragma once

#include <complex>
#include <cstddef>
#include <vector>

namespace nrwave
{

/// A line of a spectrum, or the largest of a group of neighbours.
struct spectrum_point_t
{
    double frequency_hz = 0.0; ///< from the centre, of the group's first line
    double power = 0.0;
};

/// Thins a spectrum with 0 Hz in its middle to groups of neighbours, fewer than twice the wanted number of points.
std::vector<spectrum_point_t> thinned_spectrum(const std::vector<std::complex<double>>& spectrum, double rate_hz,
                                               std::size_t wanted_points);

} // namespace nrwave
