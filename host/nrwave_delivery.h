#pragma once

#include "common/lib_signal_view.h"
#include "config/cfg_nr_waveform.h"

#include <complex>
#include <cstdint>
#include <optional>
#include <vector>

namespace nrwave
{

/// What a user asks of the samples beyond the waveform.
struct delivery_t
{
    std::optional<std::uint64_t> rate; ///< hertz; the waveform's own where none is given
    std::uint64_t multiple_of = 1;     ///< the waveform is repeated until its samples are a multiple of this
    std::optional<double> scale_db;    ///< how far below full scale the peak is put; the level stays without
};

/// Samples as they are delivered: one period of them, at a rate, with what is still to be done when they are written.
struct delivered_t
{
    vek::common_lib::lib_signal_view_t period{nullptr, 0};
    std::uint64_t rate = 0;
    std::uint64_t repeats = 1; ///< how often the period is written
    double gain = 1.0;         ///< by which all samples are multiplied

    std::uint64_t samples() const { return period.size() * repeats; }
    std::vector<std::complex<double>> resampled; ///< holds the period where the rate is not the waveform's
};

/// Before the generation: a rate that does not hold the occupied bands or no whole number of samples, more than 2^31
/// samples and numbers that mean nothing are failures.
void check_delivery(const delivery_t& delivery, vek::nr_mod_lib::cfg_nr_waveform_t& waveform);

/// The waveform's samples as they are asked for; they have to stay as long as the result. Another rate comes by the
/// periodic spectrum, cut or padded: what lies within the occupied bands keeps every line, and nothing is added.
delivered_t delivered(const delivery_t& delivery, vek::nr_mod_lib::cfg_nr_waveform_t& waveform,
                      const std::vector<std::complex<double>>& samples);

/// Multiplies the period by its gain, which is 1 from then on.
void take_gain(delivered_t& delivered);

} // namespace nrwave
