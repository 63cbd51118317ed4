#pragma once

#include "receiver/ofdm_receiver.h"

#include <complex>
#include <vector>

namespace nr_test
{

/// One channel out of a periodic waveform: the band round a centre, both in hertz, brought to 0 Hz at a rate equal to
/// the band's width. What lies outside is cut, as a receiver's channel filter does. Centre and width are whole
/// multiples of the waveform's repetition rate.
std::vector<std::complex<double>> select_channel(const std::vector<std::complex<double>>& samples, double sample_rate,
                                                 double centre, double width);

/// The symbols of one frame, [symbol in frame][subcarrier], from samples of a periodic waveform whose carrier lies at
/// 0 Hz. The transform begins a part of the prefix, `early`, ahead of the useful samples. Scaled so that a transmitter
/// whose inverse transform is divided by the root of its length gives back what was mapped.
std::vector<std::vector<std::complex<double>>> demodulate_frame(const std::vector<std::complex<double>>& samples,
                                                                const ofdm_setup_t& setup, unsigned int subcarriers,
                                                                double early, unsigned int frame);

/// Root of the mean squared error between received and sent symbols over the mean power sent, after the one complex
/// gain that fits best.
double error_vector_magnitude(const std::vector<std::vector<std::complex<double>>>& received,
                              const std::vector<std::vector<std::complex<double>>>& sent);

/// The complex gain that brings the sent symbols closest to the received ones.
std::complex<double> fitted_gain(const std::vector<std::vector<std::complex<double>>>& received,
                                 const std::vector<std::vector<std::complex<double>>>& sent);

} // namespace nr_test
