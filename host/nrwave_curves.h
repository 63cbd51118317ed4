#pragma once

#include "host/analysis/nrwave_evm.h"
#include "host/analysis/nrwave_measurement.h"
#include "host/nrwave_plot.h"

namespace nrwave
{

/// Power against frequency with the channels' edges, what they occupy, and the power beside them. The radio frequency
/// is told, the axis counts from the centre.
plot_t spectrum_plot(const spectrum_t& spectrum, const measurement_t& measurement, double radio_frequency_hz);
/// How often the power of waveform, burst and Gaussian noise exceeds its mean, with the markers.
plot_t ccdf_plot(const measurement_t& measurement);
/// Mean and peak power of short pieces.
plot_t power_plot(const signal_t& signal, const measurement_t& measurement);

/// The cells of a channel as they are received, over those sent.
plot_t constellation_plot(const constellation_t& constellation);

} // namespace nrwave
