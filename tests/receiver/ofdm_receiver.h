#pragma once

#include "receiver/fft.h"

#include <cstddef>

namespace nr_test
{

/// Symbols as [symbol in frame][subcarrier].
using rows_t = std::vector<signal_t>;

/// What a receiver of OFDM symbols has to know of the signal. The waveform is periodic, so indices past its end wrap.
struct ofdm_setup_t
{
    unsigned int mu = 0; ///< numerology of TS 38.211 clause 4.2
    double sample_rate = 0.0;
    bool extended_prefix = false;
    double frequency_offset = 0.0; ///< of the carrier's centre, in hertz
    double radio_frequency = 0.0;  ///< whose phase term of TS 38.211 clause 5.4 the signal carries; 0 for none
    bool standard_rules = false;   ///< whether the signal goes by the standard where own rules differ

    double spacing() const { return 15000.0 * static_cast<double>(1u << mu); }
    std::size_t useful_length() const;
    std::size_t frame_length() const;
    unsigned int symbols_in_frame() const { return 10u * (1u << mu) * (extended_prefix ? 12u : 14u); }
};

/// Samples of the prefix of a symbol of the frame, TS 38.211 clause 5.3.1.
std::size_t prefix_length(const ofdm_setup_t& setup, unsigned int symbol_in_frame);

/// Where the useful part of a symbol begins, in samples from the start of the frame.
std::size_t useful_start(const ofdm_setup_t& setup, unsigned int symbol_in_frame);

/// Brings the carrier's centre to 0 Hz. The phase at the first sample is 0.
signal_t mixed_down(const signal_t& signal, const ofdm_setup_t& setup);

/// The symbol whose useful part begins at a sample: entry N/2 + k is subcarrier k from the carrier's centre, N the
/// useful length. Scaled by 1/N; no phase term is taken out.
signal_t demodulate_at(const signal_t& signal, const ofdm_setup_t& setup, std::size_t sample);

/// A symbol of a frame, with its phase term taken out.
signal_t demodulate_symbol(const signal_t& signal, const ofdm_setup_t& setup, std::size_t frame_start,
                           unsigned int symbol_in_frame);

/// The symbols of one frame, [symbol in frame][subcarrier], from samples of a periodic waveform whose carrier lies at
/// 0 Hz. The transform begins a part of the prefix, `early`, ahead of the useful samples. Scaled by the root of the
/// useful length, so that a transmitter whose inverse transform is scaled likewise gives back what was mapped.
rows_t demodulate_frame(const signal_t& samples, const ofdm_setup_t& setup, unsigned int subcarriers, double early,
                        unsigned int frame);

/// One channel out of a periodic waveform: the band round a centre, both in hertz, brought to 0 Hz at a rate equal to
/// the band's width. What lies outside is cut, as a receiver's channel filter does. Centre and width are whole
/// multiples of the waveform's repetition rate.
signal_t select_channel(const signal_t& samples, double sample_rate, double centre, double width);

/// The complex gain that brings the sent symbols closest to the received ones.
std::complex<double> fitted_gain(const rows_t& received, const rows_t& sent);

/// Root of the mean squared error between received and sent symbols over the mean power sent, after the fitted gain.
double error_vector_magnitude(const rows_t& received, const rows_t& sent);

} // namespace nr_test
