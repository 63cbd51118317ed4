#include "receiver/ofdm_receiver.h"

#include <cmath>
#include <numbers>

namespace nr_test
{

namespace
{

using complex_t = std::complex<double>;

/// exp(j 2 pi turns), the whole turns taken out first.
complex_t turned(double turns) { return std::polar(1.0, 2.0 * std::numbers::pi * (turns - std::floor(turns))); }

/// The phase term of a symbol whose useful part begins at a sample of its frame.
complex_t phase_term(const ofdm_setup_t& setup, std::size_t start)
{
    // Exact in integers: hertz times samples, modulo the rate.
    const double cycles_times_rate =
        std::fmod(std::fmod(setup.radio_frequency, setup.sample_rate) * static_cast<double>(start), setup.sample_rate);
    return turned(cycles_times_rate / setup.sample_rate);
}

} // namespace

std::size_t ofdm_setup_t::useful_length() const
{
    return static_cast<std::size_t>(std::llround(sample_rate / spacing()));
}

std::size_t ofdm_setup_t::frame_length() const { return static_cast<std::size_t>(std::llround(sample_rate * 0.01)); }

std::size_t prefix_length(const ofdm_setup_t& setup, unsigned int symbol_in_frame)
{
    // In units of 1 / 30.72 MHz (kappa Tc), of which a useful symbol at 15 kHz has 2048.
    const double shrink = 1.0 / static_cast<double>(1u << setup.mu);
    double units = setup.extended_prefix ? 512.0 * shrink : 144.0 * shrink;
    const unsigned int symbols_in_half_subframe = 7u << setup.mu;
    if (!setup.extended_prefix && symbol_in_frame % symbols_in_half_subframe == 0)
        units += 16.0;
    return static_cast<std::size_t>(std::llround(units * setup.sample_rate / 30.72e6));
}

std::size_t useful_start(const ofdm_setup_t& setup, unsigned int symbol_in_frame)
{
    std::size_t start = 0;
    for (unsigned int symbol = 0; symbol < symbol_in_frame; ++symbol)
        start += prefix_length(setup, symbol) + setup.useful_length();
    return start + prefix_length(setup, symbol_in_frame);
}

signal_t mixed_down(const signal_t& signal, const ofdm_setup_t& setup)
{
    signal_t result = signal;
    if (setup.frequency_offset != 0.0)
        for (std::size_t i = 0; i < result.size(); ++i)
            result[i] *= turned(-setup.frequency_offset / setup.sample_rate * static_cast<double>(i));
    return result;
}

signal_t demodulate_at(const signal_t& signal, const ofdm_setup_t& setup, std::size_t sample)
{
    const std::size_t length = setup.useful_length();
    signal_t symbol(length);
    for (std::size_t i = 0; i < length; ++i)
        symbol[i] = signal[(sample + i) % signal.size()];
    fft(symbol, -1);
    signal_t subcarriers(length);
    for (std::size_t i = 0; i < length; ++i)
        subcarriers[(i + length / 2) % length] = symbol[i] / static_cast<double>(length);
    return subcarriers;
}

signal_t demodulate_symbol(const signal_t& signal, const ofdm_setup_t& setup, std::size_t frame_start,
                           unsigned int symbol_in_frame)
{
    const std::size_t start = useful_start(setup, symbol_in_frame);
    signal_t subcarriers = demodulate_at(signal, setup, frame_start + start);
    const complex_t turn = phase_term(setup, start);
    for (complex_t& value : subcarriers)
        value *= turn;
    return subcarriers;
}

rows_t demodulate_frame(const signal_t& samples, const ofdm_setup_t& setup, unsigned int subcarriers, double early,
                        unsigned int frame)
{
    const std::size_t useful = setup.useful_length();
    const double scale = std::sqrt(static_cast<double>(useful));
    rows_t rows(setup.symbols_in_frame(), signal_t(subcarriers));
    signal_t advance; // by subcarrier, for a transform that begins early
    std::size_t advanced_by = 0;
    std::size_t start = 0;
    for (unsigned int l = 0; l < rows.size(); ++l, start += useful) {
        start += prefix_length(setup, l);
        const auto ahead = static_cast<std::size_t>(early * static_cast<double>(prefix_length(setup, l)));
        if (advance.empty() || advanced_by != ahead) {
            advance.clear();
            for (unsigned int k = 0; k < subcarriers; ++k)
                advance.push_back(turned((static_cast<double>(k) - subcarriers / 2) * static_cast<double>(ahead) /
                                         static_cast<double>(useful)));
            advanced_by = ahead;
        }
        const signal_t bins = demodulate_at(samples, setup, frame * setup.frame_length() + start - ahead);
        const complex_t phase = scale * phase_term(setup, start);
        for (unsigned int k = 0; k < subcarriers; ++k)
            rows[l][k] = bins[useful / 2 + k - subcarriers / 2] * phase * advance[k];
    }
    return rows;
}

signal_t select_channel(const signal_t& samples, double sample_rate, double centre, double width)
{
    signal_t spectrum = samples;
    fft(spectrum, -1);
    const auto size = static_cast<long long>(samples.size());
    const double bin = sample_rate / static_cast<double>(size);
    const long long shift = std::llround(centre / bin);
    const long long bins = std::llround(width / bin);
    signal_t channel(static_cast<std::size_t>(bins));
    for (long long k = -bins / 2; k < bins - bins / 2; ++k)
        channel[static_cast<std::size_t>((k + bins) % bins)] =
            spectrum[static_cast<std::size_t>(((k + shift) % size + size) % size)] / static_cast<double>(size);
    fft(channel, +1);
    return channel;
}

complex_t fitted_gain(const rows_t& received, const rows_t& sent)
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

double error_vector_magnitude(const rows_t& received, const rows_t& sent)
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
