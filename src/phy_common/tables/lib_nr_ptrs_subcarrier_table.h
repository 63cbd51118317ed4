#pragma once

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

// TS 38.211 Tables 7.4.1.2.2-1 and 6.4.1.2.2.1-1, the subcarrier of a PTRS in its resource block: a row for each DMRS
// port that can have PTRS, by resourceElementOffset.

inline constexpr std::array<std::array<std::uint8_t, 4>, 4> tbs_k_re_ref_type1 = {{
    {0, 2, 6, 8},
    {2, 4, 8, 10},
    {1, 3, 7, 9},
    {3, 5, 9, 11},
}};

inline constexpr std::array<std::array<std::uint8_t, 4>, 6> tbs_k_re_ref_type2 = {{
    {0, 1, 6, 7},
    {1, 6, 7, 0},
    {2, 3, 8, 9},
    {3, 8, 9, 2},
    {4, 5, 10, 11},
    {5, 10, 11, 4},
}};

} // namespace vek::nr_mod_lib
