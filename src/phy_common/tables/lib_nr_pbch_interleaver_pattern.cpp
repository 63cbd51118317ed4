// TS 38.212 Table 7.1.1-1, PBCH payload interleaver pattern: 32 rows.
#include "phy_common/tables/lib_nr_pbch_interleaver_pattern.h"

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::array<std::uint8_t, 32> pbch_interleaver_pattern = {
    16, 23, 18, 17, 8,  30, 10, 6,  24, 7,  0,  5,  3,  2,  1,  4,
    9,  11, 12, 13, 14, 15, 19, 20, 21, 22, 25, 26, 27, 28, 29, 31,
};

} // namespace

const std::array<std::uint8_t, 32>& get_pbch_interleaver_pattern() { return pbch_interleaver_pattern; }

} // namespace vek::nr_mod_lib
