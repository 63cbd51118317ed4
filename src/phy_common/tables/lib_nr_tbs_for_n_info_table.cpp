// TS 38.214 Table 5.1.3.2-1: transport block sizes for N_info up to 3824, 93 rows.
#include "phy_common/tables/lib_nr_tbs_for_n_info_table.h"

namespace vek::nr_mod_lib
{

namespace
{

// clang-format off
constexpr std::array<std::uint16_t, 93> k_table = {
      24,   32,   40,   48,   56,   64,   72,   80,   88,   96,  104,  112,
     120,  128,  136,  144,  152,  160,  168,  176,  184,  192,  208,  224,
     240,  256,  272,  288,  304,  320,  336,  352,  368,  384,  408,  432,
     456,  480,  504,  528,  552,  576,  608,  640,  672,  704,  736,  768,
     808,  848,  888,  928,  984, 1032, 1064, 1128, 1160, 1192, 1224, 1256,
    1288, 1320, 1352, 1416, 1480, 1544, 1608, 1672, 1736, 1800, 1864, 1928,
    2024, 2088, 2152, 2216, 2280, 2408, 2472, 2536, 2600, 2664, 2728, 2792,
    2856, 2976, 3104, 3240, 3368, 3496, 3624, 3752, 3824,
};
// clang-format on

} // namespace

const std::array<std::uint16_t, 93>& lib_nr_tbs_for_n_info_table() { return k_table; }

} // namespace vek::nr_mod_lib
