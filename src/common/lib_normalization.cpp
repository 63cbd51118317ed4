#include "common/lib_normalization.h"

#include "common/lib_target_clones.h"

#include <algorithm>
#include <cmath>

namespace vek::common_lib
{

namespace
{

// Maxima side by side, so that no comparison waits for the one before and the compiler finds vectors.
constexpr std::size_t k_lanes = 16;

NR_MOD_LIB_TARGET_CLONES
void raise_to_largest(const std::complex<double>* samples, std::size_t rounds, double* largest)
{
    double lanes[k_lanes] = {};
    for (std::size_t round = 0; round < rounds; ++round)
        for (std::size_t i = 0; i < k_lanes / 2; ++i) {
            const std::complex<double> sample = samples[round * (k_lanes / 2) + i];
            lanes[2 * i] = std::max(lanes[2 * i], std::fabs(sample.real()));
            lanes[2 * i + 1] = std::max(lanes[2 * i + 1], std::fabs(sample.imag()));
        }
    *largest = std::max(*largest, *std::max_element(lanes, lanes + k_lanes));
}

// A division, not a multiplication by the inverse: the largest component becomes exactly 1.
NR_MOD_LIB_TARGET_CLONES
void divide(std::complex<double>* samples, std::size_t count, double divisor)
{
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = {samples[i].real() / divisor, samples[i].imag() / divisor};
}

} // namespace

double lib_normalization_t::get_largest_component(lib_signal_view_t signal)
{
    constexpr std::size_t k_samples = k_lanes / 2;
    const std::size_t rounds = signal.size() / k_samples;
    double largest = 0.0;
    raise_to_largest(signal.data(), rounds, &largest);
    for (std::size_t i = rounds * k_samples; i < signal.size(); ++i)
        largest = std::max({largest, std::fabs(signal[i].real()), std::fabs(signal[i].imag())});
    return largest;
}

void lib_normalization_t::normalize(std::vector<std::complex<double>>& signal, double largest_component,
                                    std::size_t measured, lib_power_pieces_t& pieces)
{
    const bool has_scale = largest_component > 0.0 && std::isfinite(largest_component);
    const auto scale = [&](std::size_t begin, std::size_t count) {
        if (has_scale)
            divide(signal.data() + begin, count, largest_component);
    };
    pieces.sums.clear();
    pieces.sums.reserve(measured / pieces.width + 1);
    for (std::size_t begin = 0; begin < measured; begin += pieces.width) {
        const std::size_t count = std::min(pieces.width, measured - begin);
        scale(begin, count);
        pieces.sums.push_back(sum_of_power(signal.data() + begin, count));
    }
    scale(measured, signal.size() - measured);
}

void lib_normalization_t::iq_value_max_normalize(std::vector<std::complex<double>>& signal)
{
    lib_power_pieces_t nothing;
    normalize(signal, get_largest_component(signal), 0, nothing);
}

} // namespace vek::common_lib
