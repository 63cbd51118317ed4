#pragma once

#include <cstdint>

namespace vek::nr_mod_lib
{

/// The tables of modulation and coding schemes, named after their numbers in TS 38.214.
enum mcs_table_t : std::uint32_t
{
    TABLE_5_1_3_1_1 = 0,
    TABLE_5_1_3_1_2 = 1,
    TABLE_5_1_3_1_3 = 2,
    TABLE_5_1_3_1_4 = 3,
    TABLE_6_1_4_1_1 = 4,
    TABLE_6_1_4_1_2 = 5,
};

} // namespace vek::nr_mod_lib
