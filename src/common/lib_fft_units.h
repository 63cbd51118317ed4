#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstddef>
#include <vector>

namespace vek::common_lib::detail
{

/// A pass, or a part of it that is done at a time. Places, steps and distances count values, but for that of the roots.
struct fft_sweep_t
{
    std::size_t in_length = 0;    ///< values in the buffer that is read
    std::size_t out_length = 0;   ///< likewise
    std::size_t count = 0;        ///< of the steps
    std::size_t run = 0;          ///< neighbouring q in a step
    std::size_t in_step = 0;      ///< from step to step
    std::size_t out_step = 0;     ///< likewise
    std::size_t in_distance = 0;  ///< from i to i + 1
    std::size_t out_distance = 0; ///< from k to k + 1
    const double* roots = nullptr;
    std::size_t root_step = 0;            ///< in numbers
    const double* roots_in_run = nullptr; ///< of the first pass with tiles, in vectors
};

using fft_pass_t = void (*)(const fft_sweep_t& sweep, const double* in, double* out);

/// The passes by one vector unit and with one order of the values between the passes. Each is found by its radix, first
/// and last ones also by whether the transform is the inverse one; those that no transform needs are missing.
struct fft_unit_t
{
    static constexpr std::size_t k_largest_radix = 20;
    using passes_t = std::array<fft_pass_t, k_largest_radix + 1>;

    std::size_t width = 0; ///< numbers in a vector
    bool is_in_planes = false;
    std::array<passes_t, 2> first{};
    std::array<passes_t, 2> first_in_tiles{};
    passes_t middle{};
    std::array<passes_t, 2> last{};

    /// Whether it has all passes of these radices, and whole vectors for the first.
    NR_MOD_LIB_EXPORT bool can_run(const std::vector<std::size_t>& radices, std::size_t length) const;
};

/// Those that this machine can run, from the narrowest to the widest; plain ones run every list of radices.
NR_MOD_LIB_EXPORT const std::vector<fft_unit_t>& get_fft_units();

} // namespace vek::common_lib::detail
