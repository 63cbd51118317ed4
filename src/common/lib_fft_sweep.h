#pragma once

#include <cstddef>

namespace vek::common_lib::detail
{

/// A pass, or a part of it that is done at a time. Places, steps and distances count values, but for that of the roots.
struct fft_sweep_t
{
    std::size_t in_length = 0;            ///< values in the buffer that is read
    std::size_t out_length = 0;           ///< likewise
    std::size_t count = 0;                ///< of the steps
    std::size_t run = 0;                  ///< neighbouring q in a step
    std::size_t in_step = 0;              ///< from step to step
    std::size_t out_step = 0;             ///< likewise
    std::size_t in_distance = 0;          ///< from i to i + 1
    std::size_t out_distance = 0;         ///< from k to k + 1
    std::size_t root_step = 0;            ///< from step to step, in numbers
    const double* roots_in_run = nullptr; ///< of the first pass with tiles, in vectors
};

/// The roots are those of the first step.
using fft_pass_t = void (*)(const fft_sweep_t& sweep, const double* roots, const double* in, double* out);

} // namespace vek::common_lib::detail
