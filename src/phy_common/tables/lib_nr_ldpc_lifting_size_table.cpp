// TS 38.212 Table 5.3.2-1: LDPC lifting sizes Z, 8 rows, one a lifting set; 0 fills a row up.
#include "phy_common/tables/lib_nr_ldpc_lifting_size_table.h"

namespace vek::nr_mod_lib
{

namespace
{

// clang-format off
constexpr std::array<std::array<std::uint16_t, 8>, 8> k_table = {{
    {{  2,   4,   8,  16,  32,  64, 128, 256}},
    {{  3,   6,  12,  24,  48,  96, 192, 384}},
    {{  5,  10,  20,  40,  80, 160, 320,   0}},
    {{  7,  14,  28,  56, 112, 224,   0,   0}},
    {{  9,  18,  36,  72, 144, 288,   0,   0}},
    {{ 11,  22,  44,  88, 176, 352,   0,   0}},
    {{ 13,  26,  52, 104, 208,   0,   0,   0}},
    {{ 15,  30,  60, 120, 240,   0,   0,   0}},
}};
// clang-format on

} // namespace

const std::array<std::array<std::uint16_t, 8>, 8>& lib_nr_ldpc_lifting_size_table() { return k_table; }

} // namespace vek::nr_mod_lib
