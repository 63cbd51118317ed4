#pragma once

#include <complex>
#include <vector>

namespace nr_test
{

using signal_t = std::vector<std::complex<double>>;

/// Discrete Fourier transform in place, unscaled, of any length; quick where its prime factors are small. sign -1 is
/// the forward one.
void fft(signal_t& values, int sign);

} // namespace nr_test
