#pragma once

#include <complex>
#include <cstddef>

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

} // namespace vek::common_lib
