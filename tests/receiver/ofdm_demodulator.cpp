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

std::vector<std::vector<complex_t>> demodulate_frame(const std::vector<complex_t>& samples, const ofdm_setup_t& setup,
                                                     unsigned int subcarriers, double early, unsigned int frame)
{
    const std::size_t useful = setup.useful_length();
    const std::size_t frame_start = frame * setup.frame_length();
    const auto& fft = vek::common_lib::lib_fft_plan_t::get(useful, vek::common_lib::LIB_FFT_FORWARD);
    const double scale = 1.0 / std::sqrt(static_cast<double>(useful));

    std::vector<std::vector<complex_t>> rows(setup.symbols_in_frame(), std::vector<complex_t>(subcarriers));
    std::vector<complex_t> window(useful);
    std::vector<complex_t> advance; // by bin, for a transform that begins early
    std::size_t advanced_by = 0;
    for (unsigned int l = 0; l < rows.size(); ++l) {
        const std::size_t start = useful_start(setup, l);
        const auto ahead = static_cast<std::size_t>(early * static_cast<double>(prefix_length(setup, l)));
        for (std::size_t i = 0; i < useful; ++i)
            window[i] = samples[(frame_start + start - ahead + i) % samples.size()];
        fft.execute(window.data(), window.data());

        if (advance.empty() || advanced_by != ahead) {
            advance.resize(useful);
            for (std::size_t bin = 0; bin < useful; ++bin)
                advance[bin] = ahead == 0 ? 1.0 : turned(static_cast<long double>(ahead * bin) / useful);
            advanced_by = ahead;
        }
        const complex_t phase = turned(static_cast<long double>(setup.radio_frequency) *
                                       static_cast<long double>(start) / setup.sample_rate);
        for (unsigned int k = 0; k < subcarriers; ++k) {
            const std::size_t bin = (k + useful - subcarriers / 2) % useful;
            rows[l][k] = scale * window[bin] * phase * advance[bin];
        }
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
