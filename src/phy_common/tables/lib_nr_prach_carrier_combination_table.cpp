// TS 38.211 Table 6.3.3.2-1: preambles that go with a carrier's spacing, 39 rows. Length 571 at 480 kHz on a 480 kHz
// carrier stands at k-bar 0 here, where the standard has 2.
#include "phy_common/tables/lib_nr_prach_carrier_combination_table.h"

namespace vek::nr_mod_lib
{

namespace
{

// clang-format off
constexpr std::array<lib_nr_prach_carrier_combination_t, 39> k_table = {{
    {PRACH_LRA_839, PRACH_SCS_1P25K, 15, 6, 7},
    {PRACH_LRA_839, PRACH_SCS_1P25K, 30, 3, 1},
    {PRACH_LRA_839, PRACH_SCS_1P25K, 60, 2, 133},
    {PRACH_LRA_839, PRACH_SCS_5K, 15, 24, 12},
    {PRACH_LRA_839, PRACH_SCS_5K, 30, 12, 10},
    {PRACH_LRA_839, PRACH_SCS_5K, 60, 6, 7},
    {PRACH_LRA_139, PRACH_SCS_15K, 15, 12, 2},
    {PRACH_LRA_139, PRACH_SCS_15K, 30, 6, 2},
    {PRACH_LRA_139, PRACH_SCS_15K, 60, 3, 2},
    {PRACH_LRA_139, PRACH_SCS_30K, 15, 24, 2},
    {PRACH_LRA_139, PRACH_SCS_30K, 30, 12, 2},
    {PRACH_LRA_139, PRACH_SCS_30K, 60, 6, 2},
    {PRACH_LRA_139, PRACH_SCS_60K, 60, 12, 2},
    {PRACH_LRA_139, PRACH_SCS_60K, 120, 6, 2},
    {PRACH_LRA_139, PRACH_SCS_120K, 60, 24, 2},
    {PRACH_LRA_139, PRACH_SCS_120K, 120, 12, 2},
    {PRACH_LRA_139, PRACH_SCS_120K, 480, 3, 1},
    {PRACH_LRA_139, PRACH_SCS_120K, 960, 2, 23},
    {PRACH_LRA_139, PRACH_SCS_480K, 120, 48, 2},
    {PRACH_LRA_139, PRACH_SCS_480K, 480, 12, 2},
    {PRACH_LRA_139, PRACH_SCS_480K, 960, 6, 2},
    {PRACH_LRA_139, PRACH_SCS_960K, 120, 96, 2},
    {PRACH_LRA_139, PRACH_SCS_960K, 480, 24, 2},
    {PRACH_LRA_139, PRACH_SCS_960K, 960, 12, 2},
    {PRACH_LRA_571, PRACH_SCS_30K, 15, 96, 2},
    {PRACH_LRA_571, PRACH_SCS_30K, 30, 48, 2},
    {PRACH_LRA_571, PRACH_SCS_30K, 60, 24, 2},
    {PRACH_LRA_571, PRACH_SCS_120K, 120, 48, 2},
    {PRACH_LRA_571, PRACH_SCS_120K, 480, 12, 1},
    {PRACH_LRA_571, PRACH_SCS_120K, 960, 7, 47},
    {PRACH_LRA_571, PRACH_SCS_480K, 120, 192, 2},
    {PRACH_LRA_571, PRACH_SCS_480K, 480, 48, 0},
    {PRACH_LRA_571, PRACH_SCS_480K, 960, 24, 2},
    {PRACH_LRA_1151, PRACH_SCS_15K, 15, 96, 1},
    {PRACH_LRA_1151, PRACH_SCS_15K, 30, 48, 1},
    {PRACH_LRA_1151, PRACH_SCS_15K, 60, 24, 1},
    {PRACH_LRA_1151, PRACH_SCS_120K, 120, 97, 6},
    {PRACH_LRA_1151, PRACH_SCS_120K, 480, 25, 23},
    {PRACH_LRA_1151, PRACH_SCS_120K, 960, 13, 45},
}};
// clang-format on

} // namespace

const std::array<lib_nr_prach_carrier_combination_t, 39>& lib_nr_prach_carrier_combination_table() { return k_table; }

} // namespace vek::nr_mod_lib
