#pragma once

#include "common/lib_signal_view.h"

#include <complex>
#include <cstddef>
#include <vector>

namespace vek::common_lib
{

/// The squared magnitude, without the library call behind std::norm's relatives.
inline double power_of(const std::complex<double>& sample)
{
    return sample.real() * sample.real() + sample.imag() * sample.imag();
}

/// The sum of the samples' powers, in four lanes, so that no addition waits for the one before.
inline double sum_of_power(const std::complex<double>* samples, std::size_t count)
{
    double lanes[4] = {};
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
        for (std::size_t lane = 0; lane < 4; ++lane)
            lanes[lane] += power_of(samples[i + lane]);
    for (; i < count; ++i)
        lanes[0] += power_of(samples[i]);
    return (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
}

/// Whether all samples are 0, of either sign. Stops soon after the first other one.
bool is_silent(lib_signal_view_t signal);

/// What is known of a signal's power: its sum over pieces of `width` samples, the last of which may be shorter. So a
/// pass that looks at every sample anyway spares those that come after it another.
struct lib_power_pieces_t
{
    std::size_t width = 1;
    std::vector<double> sums;
};

/// The sum of power of a signal's samples `begin` to `end - 1`, of whole pieces as far as they go.
double sum_of_power(lib_signal_view_t signal, const lib_power_pieces_t& pieces, std::size_t begin, std::size_t end);

} // namespace vek::common_lib
