#include "receiver/ofdm_demodulator.h"

#include "common/lib_fft_plan.h"

#include <cmath>
#include <numbers>

namespace nr_test
{

namespace
{

using complex_t = std::complex<double>;

/// exp(j 2 pi turns), the whole turns taken out first.
complex_t turned(long double turns)
{
    const auto fraction = static_cast<double>(turns - std::floor(turns));
    return std::polar(1.0, 2.0 * std::numbers::pi * fraction);
}

} // namespace

std::vector<complex_t> select_channel(const std::vector<complex_t>& samples, double sample_rate, double centre,
                                      double width)
{
    using vek::common_lib::lib_fft_plan_t;
    const auto size = static_cast<long long>(samples.size());
    std::vector<complex_t> spectrum = samples;
    lib_fft_plan_t(samples.size(), vek::common_lib::LIB_FFT_FORWARD).execute(spectrum.data(), spectrum.data());

    const double bin = sample_rate / static_cast<double>(size);
    const long long shift = std::llround(centre / bin);
    const long long bins = std::llround(width / bin);
    std::vector<complex_t> channel(static_cast<std::size_t>(bins));
    for (long long k = -bins / 2; k < bins - bins / 2; ++k)
        channel[static_cast<std::size_t>((k + bins) % bins)] =
            spectrum[static_cast<std::size_t>(((k + shift) % size + size) % size)] / static_cast<double>(size);
    lib_fft_plan_t(channel.size(), vek::common_lib::LIB_FFT_INVERSE).execute(channel.data(), channel.data());
    return channel;
}

std::vector<std::vector<complex_t>> demodulate_frame(const std::vector<complex_t>& samples,
                                                     const ofdm_numerology_t& numerology, unsigned int frame)
{
    const double spacing = 15000.0 * (1U << numerology.mu);
    const auto useful = static_cast<std::size_t>(std::llround(numerology.sample_rate / spacing));
    const unsigned int per_slot = numerology.extended_prefix ? 12 : 14;
    const unsigned int symbols = per_slot * 10 * (1U << numerology.mu);
    // Prefixes in units of a 2048th of the useful symbol; the long one comes every half millisecond.
    const double unit = static_cast<double>(useful) / 2048.0;
    const unsigned int half_millisecond = 7U << numerology.mu;
    const double long_extra = 16.0 * (1U << numerology.mu);

    const auto& fft = vek::common_lib::lib_fft_plan_t::get(useful, vek::common_lib::LIB_FFT_FORWARD);
    const double scale = 1.0 / std::sqrt(static_cast<double>(useful));
    const auto frame_length = static_cast<std::size_t>(std::llround(numerology.sample_rate * 0.01));
    std::size_t begin = frame * frame_length;
    std::size_t in_frame = 0;
    std::vector<std::vector<complex_t>> rows(symbols, std::vector<complex_t>(numerology.subcarriers));
    std::vector<complex_t> window(useful);
    std::vector<complex_t> advance; // by bin, for a transform that begins early
    std::size_t advanced_by = 0;
    for (unsigned int l = 0; l < symbols; ++l) {
        double units = numerology.extended_prefix ? 512.0 : 144.0;
        if (!numerology.extended_prefix && l % half_millisecond == 0)
            units += long_extra;
        const auto prefix = static_cast<std::size_t>(std::llround(units * unit));
        const auto early = static_cast<std::size_t>(numerology.early * static_cast<double>(prefix));
        const std::size_t first = begin + prefix - early;
        for (std::size_t i = 0; i < useful; ++i)
            window[i] = samples[(first + i) % samples.size()];
        fft.execute(window.data(), window.data());

        const complex_t phase = turned(static_cast<long double>(numerology.radio_frequency) *
                                       static_cast<long double>(in_frame + prefix) / numerology.sample_rate);
        if (advance.empty() || advanced_by != early) {
            advance.resize(useful);
            for (std::size_t bin = 0; bin < useful; ++bin)
                advance[bin] = early == 0 ? 1.0 : turned(static_cast<long double>(early * bin) / useful);
            advanced_by = early;
        }
        const unsigned int half = numerology.subcarriers / 2;
        for (unsigned int k = 0; k < numerology.subcarriers; ++k) {
            const std::size_t bin = (k + useful - half) % useful;
            rows[l][k] = scale * window[bin] * phase * advance[bin];
        }
        begin += prefix + useful;
        in_frame += prefix + useful;
    }
    return rows;
}

complex_t fitted_gain(const std::vector<std::vector<complex_t>>& received,
                      const std::vector<std::vector<complex_t>>& sent)
{
    complex_t cross = 0;
    double power = 0;
    for (std::size_t l = 0; l < sent.size(); ++l)
        for (std::size_t k = 0; k < sent[l].size(); ++k) {
            cross += received[l][k] * std::conj(sent[l][k]);
            power += std::norm(sent[l][k]);
        }
    return cross / power;
}

double error_vector_magnitude(const std::vector<std::vector<complex_t>>& received,
                              const std::vector<std::vector<complex_t>>& sent)
{
    const complex_t gain = fitted_gain(received, sent);
    double error = 0;
    double power = 0;
    for (std::size_t l = 0; l < sent.size(); ++l)
        for (std::size_t k = 0; k < sent[l].size(); ++k) {
            error += std::norm(received[l][k] - gain * sent[l][k]);
            power += std::norm(gain * sent[l][k]);
        }
    return std::sqrt(error / power);
}

} // namespace nr_test
