#pragma once

#include "common/lib_signal_view.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace nrwave
{

/// The smallest even product of 2, 3 and 5 from a number on, whose transform is quickest.
std::size_t quick_length(std::size_t least);

/// What a number of samples at one rate is at another; nothing where that is no whole number.
std::optional<std::uint64_t> samples_at(std::uint64_t to_rate, std::uint64_t samples, std::uint64_t rate);

/// One period of a signal in another number of samples, by its spectrum, cut or padded. Half of the rate is the lower
/// edge of the band, or in a mirrored one the upper one, so that a band as wide as the rate keeps its outermost line.
std::vector<std::complex<double>> resampled(vek::common_lib::lib_signal_view_t samples, std::size_t count,
                                            bool mirrored);

} // namespace nrwave
