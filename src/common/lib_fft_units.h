#pragma once

#include "common/lib_fft_sweep.h"
#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstddef>
#include <vector>

namespace vek::common_lib::detail
{

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
