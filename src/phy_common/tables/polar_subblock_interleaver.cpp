// TS 38.212 Table 5.4.1.1-1, 32 rows: sub-block interleaver pattern
#include "phy_common/tables/polar_tables.h"

namespace vek::nr_mod_lib
{

const std::array<std::uint8_t, 32>& polar_subblock_interleaver()
{
    // clang-format off
    static constexpr std::array<std::uint8_t, 32> k_table = {
    0, 1, 2, 4, 3, 5, 6, 7, 8, 16, 9, 17, 10, 18, 11, 19, 12, 20, 13, 21, 14, 22, 15, 23, 24, 25, 26, 28, 27, 29, 30,
    31,
    };
    // clang-format on
    return k_table;
}

} // namespace vek::nr_mod_lib
