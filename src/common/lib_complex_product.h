#pragma once

#include <complex>
#include <cstddef>

namespace vek::common_lib
{

/// The product of finite numbers, without the care that std::complex takes of infinities.
inline std::complex<double> product(const std::complex<double>& a, const std::complex<double>& b)
{
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// target[i] = source[i] factor. Source and target may be the same.
void multiply(const std::complex<double>* source, std::size_t count, const std::complex<double>& factor,
              std::complex<double>* target);
/// values[i] = values[i] factors[i].
void multiply_each(std::complex<double>* values, std::size_t count, const std::complex<double>* factors);

} // namespace vek::common_lib
