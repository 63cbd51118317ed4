#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <random>
#include <vector>

namespace nr_test
{

/// Complex white noise: each part normal with the given deviation. The same seed gives the same samples.
inline std::vector<std::complex<double>> noise(std::size_t count, unsigned int seed = 1, double deviation = 1.0)
{
    std::mt19937 random(seed);
    std::normal_distribution<double> normal(0.0, deviation);
    std::vector<std::complex<double>> samples(count);
    for (auto& sample : samples) {
        const double real = normal(random);
        sample = {real, normal(random)};
    }
    return samples;
}

inline std::vector<unsigned char> random_bits(std::mt19937& random, std::size_t count)
{
    std::vector<unsigned char> bits(count);
    for (unsigned char& bit : bits)
        bit = static_cast<unsigned char>(random() & 1U);
    return bits;
}

/// The largest distance between values of two signals of one length; infinite where the lengths differ.
inline double largest_difference(const std::vector<std::complex<double>>& a, const std::vector<std::complex<double>>& b)
{
    if (a.size() != b.size())
        return INFINITY;
    double largest = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

} // namespace nr_test
