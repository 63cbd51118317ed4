// TS 38.211 Tables 6.3.3.1-5 to 6.3.3.1-7: N_CS of the preamble formats, 16 rows each, one a zero correlation zone.
#include "phy_common/tables/lib_nr_prach_cyclic_shift_table.h"

namespace vek::nr_mod_lib
{

namespace
{

// clang-format off
constexpr lib_nr_prach_cyclic_shift_table_t k_formats_0_1_2 = {{
    {{  0,  15,  15}},
    {{ 13,  18,  18}},
    {{ 15,  22,  22}},
    {{ 18,  26,  26}},
    {{ 22,  32,  32}},
    {{ 26,  38,  38}},
    {{ 32,  46,  46}},
    {{ 38,  55,  55}},
    {{ 46,  68,  68}},
    {{ 59,  82,  82}},
    {{ 76, 100, 100}},
    {{ 93, 128, 118}},
    {{119, 158, 137}},
    {{167, 202,  -1}},
    {{279, 237,  -1}},
    {{419,  -1,  -1}},
}};

constexpr lib_nr_prach_cyclic_shift_table_t k_format_3 = {{
    {{  0,  36,  36}},
    {{ 13,  57,  57}},
    {{ 26,  72,  60}},
    {{ 33,  81,  63}},
    {{ 38,  89,  65}},
    {{ 41,  94,  68}},
    {{ 49, 103,  71}},
    {{ 55, 112,  77}},
    {{ 64, 121,  81}},
    {{ 76, 132,  85}},
    {{ 93, 137,  97}},
    {{119, 152, 109}},
    {{139, 173, 122}},
    {{209, 195, 137}},
    {{279, 216,  -1}},
    {{419, 237,  -1}},
}};

constexpr lib_nr_prach_cyclic_shift_table_t k_short = {{
    {{  0,   0,   0}},
    {{  2,   8,  17}},
    {{  4,  10,  21}},
    {{  6,  12,  25}},
    {{  8,  15,  30}},
    {{ 10,  17,  35}},
    {{ 12,  21,  44}},
    {{ 13,  25,  52}},
    {{ 15,  31,  63}},
    {{ 17,  40,  82}},
    {{ 19,  51, 104}},
    {{ 23,  63, 127}},
    {{ 27,  81, 164}},
    {{ 34, 114, 230}},
    {{ 46, 190, 383}},
    {{ 69, 285, 575}},
}};
// clang-format on

} // namespace

const lib_nr_prach_cyclic_shift_table_t& lib_nr_prach_cyclic_shift_formats_0_1_2_table() { return k_formats_0_1_2; }

const lib_nr_prach_cyclic_shift_table_t& lib_nr_prach_cyclic_shift_format_3_table() { return k_format_3; }

const lib_nr_prach_cyclic_shift_table_t& lib_nr_prach_cyclic_shift_short_table() { return k_short; }

} // namespace vek::nr_mod_lib
