#pragma once

#include "common/lib_signal_view.h"

#include <complex>
#include <cstdint>
#include <optional>
#include <vector>

namespace nrwave
{

/// How a capture of a periodic signal differs from it: captured(n) = gain exp(j 2 pi f n / rate) reference(n - delay).
struct alignment_t
{
    double delay_samples = 0.0; ///< modulo the period
    double frequency_offset_hz = 0.0;
    std::complex<double> gain; ///< with the phase at the first sample
};

/// Finds the alignment of a capture to one period of its reference, both at the same rate, over all that was captured;
/// nothing where the reference is not found in it. Frequency offsets up to 100 kHz are found.
std::optional<alignment_t> aligned(vek::common_lib::lib_signal_view_t captured,
                                   vek::common_lib::lib_signal_view_t reference, std::uint64_t rate);

/// The capture with gain and frequency offset taken out; its delay stays.
std::vector<std::complex<double>> corrected(vek::common_lib::lib_signal_view_t captured, const alignment_t& alignment,
                                            std::uint64_t rate);

} // namespace nrwave
