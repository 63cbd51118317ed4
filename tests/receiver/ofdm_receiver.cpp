#include "receiver/ofdm_receiver.h"

#include <cmath>
#include <numbers>

namespace nr_test
{

namespace
{

std::complex<double> turned(double turns)
{
    return std::polar(1.0, 2.0 * std::numbers::pi * (turns - std::floor(turns)));
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
    // Exact in integers: hertz times samples, modulo the rate.
    const double cycles_times_rate =
        std::fmod(std::fmod(setup.radio_frequency, setup.sample_rate) * static_cast<double>(start), setup.sample_rate);
    const std::complex<double> turn = turned(cycles_times_rate / setup.sample_rate);
    for (std::complex<double>& value : subcarriers)
        value *= turn;
    return subcarriers;
}

} // namespace nr_test
