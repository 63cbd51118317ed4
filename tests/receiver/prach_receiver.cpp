#include "receiver/prach_receiver.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <numbers>

namespace nr_test
{

span_t sounding_span(const signal_t& samples)
{
    span_t span{samples.size(), 0};
    for (std::size_t i = 0; i < samples.size(); ++i)
        if (std::norm(samples[i]) > 1e-18) {
            span.begin = std::min(span.begin, i);
            span.end = i + 1;
        }
    return span;
}

signal_t prach_spectrum(std::size_t length, std::size_t u, std::size_t cyclic_shift)
{
    signal_t values(length);
    for (std::size_t n = 0; n < length; ++n) {
        const std::size_t i = (n + cyclic_shift) % length;
        values[n] = std::polar(1.0, -std::numbers::pi * static_cast<double>(u * i * (i + 1) % (2 * length)) /
                                        static_cast<double>(length));
    }
    fft(values, -1);
    return values;
}

signal_t receive_prach(const signal_t& samples, const prach_place_t& place, std::size_t repetition)
{
    const auto useful = static_cast<std::size_t>(std::llround(place.sample_rate / place.spacing_hz));
    const auto begin = static_cast<std::size_t>(std::llround((place.start_s + place.prefix_s) * place.sample_rate)) +
                       repetition * useful;
    const auto lowest = static_cast<std::int64_t>(std::floor(place.lowest_hz / place.spacing_hz + 1e-6));
    const double between = place.lowest_hz / place.spacing_hz - static_cast<double>(lowest);
    signal_t symbol(useful);
    for (std::size_t i = 0; i < useful; ++i)
        symbol[i] = samples[(begin + i) % samples.size()] *
                    std::polar(1.0, -2.0 * std::numbers::pi * between * static_cast<double>(i + repetition * useful) /
                                        static_cast<double>(useful));
    fft(symbol, -1);

    const auto size = static_cast<std::int64_t>(useful);
    signal_t subcarriers(place.length);
    for (std::size_t k = 0; k < place.length; ++k)
        subcarriers[k] =
            symbol[static_cast<std::size_t>(((lowest + static_cast<std::int64_t>(k)) % size + size) % size)];
    return subcarriers;
}

double likeness(const signal_t& a, const signal_t& b)
{
    std::complex<double> sum = 0.0;
    double power_a = 0.0;
    double power_b = 0.0;
    for (std::size_t k = 0; k < a.size(); ++k) {
        sum += a[k] * std::conj(b[k]);
        power_a += std::norm(a[k]);
        power_b += std::norm(b[k]);
    }
    return std::abs(sum) / std::sqrt(power_a * power_b);
}

} // namespace nr_test
