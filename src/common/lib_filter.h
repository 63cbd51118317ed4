#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::common_lib
{

/// Which samples of the convolution of a signal of n samples with k taps come back.
enum lib_filter_delay_type_t : std::uint32_t
{
    /// The first n: the output of a filter that starts at rest, late by its group delay, its ringing cut off.
    LIB_FILTER_DELAY_CAUSAL = 0,
    /// All n + k - 1. For symmetric taps the first (k - 1) / 2 lie ahead of the signal's start and as many behind its
    /// end: taken so, the group delay is removed. 1025 taps give n + 1024 samples, the first 512 ahead.
    LIB_FILTER_DELAY_REMOVED = 1,
};

/// Linear convolution of a signal with the taps of a filter, by blocks in the frequency domain.
class NR_MOD_LIB_EXPORT lib_filter_t
{
public:
    /// Filters in place; beside the signal only a few blocks of memory are needed. Silent stretches cost next to
    /// nothing, and taps with a single value that is not 0 shift and scale exactly. Without taps or without a signal
    /// nothing happens. An unknown delay type is taken as `LIB_FILTER_DELAY_REMOVED`.
    static void deal_filter(const std::vector<std::complex<double>>& coefficients,
                            std::vector<std::complex<double>>& signal, lib_filter_delay_type_t delay_type);
    /// All of the convolution, for symmetric taps, of a frame where it lies and of the samples behind it, which stand
    /// in the tail: the (k - 1) / 2 samples ahead of the frame's start become the head, and the tail grows by as many
    /// at its end.
    static void filter_frame(const std::vector<std::complex<double>>& coefficients, std::complex<double>* frame,
                             std::size_t count, std::vector<std::complex<double>>& head,
                             std::vector<std::complex<double>>& tail);
};

} // namespace vek::common_lib
