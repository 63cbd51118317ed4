// TS 38.211 Tables 6.4.1.1.3-3 (single-symbol, 28 rows) and 6.4.1.1.3-4 (double-symbol, 9 rows), PUSCH DMRS positions.
#include "phy_common/tables/lib_nr_dmrs_position_table.h"

namespace vek::nr_mod_lib
{

namespace
{

using row_t = lib_nr_dmrs_position_row_t;

// Each setting's rows by rising length.
constexpr std::array<row_t, 13> k_single_type_a = {{
    {0, 5, 0, {}},
    {1, 5, 0, {}},
    {1, 8, 1, {7}},
    {1, 10, 1, {9}},
    {1, 13, 1, {11}},
    {2, 5, 0, {}},
    {2, 8, 1, {7}},
    {2, 10, 2, {6, 9}},
    {2, 13, 2, {7, 11}},
    {3, 5, 0, {}},
    {3, 8, 1, {7}},
    {3, 10, 2, {6, 9}},
    {3, 12, 3, {5, 8, 11}},
}};
constexpr std::array<row_t, 15> k_single_type_b = {{
    {0, 2, 0, {}},
    {1, 2, 0, {}},
    {1, 5, 1, {4}},
    {1, 8, 1, {6}},
    {1, 10, 1, {8}},
    {1, 12, 1, {10}},
    {2, 2, 0, {}},
    {2, 5, 1, {4}},
    {2, 8, 2, {3, 6}},
    {2, 10, 2, {4, 8}},
    {2, 12, 2, {5, 10}},
    {3, 2, 0, {}},
    {3, 5, 1, {4}},
    {3, 8, 2, {3, 6}},
    {3, 10, 3, {3, 6, 9}},
}};
constexpr std::array<row_t, 4> k_double_type_a = {{
    {0, 4, 0, {}},
    {1, 4, 0, {}},
    {1, 10, 1, {8}},
    {1, 13, 1, {10}},
}};
constexpr std::array<row_t, 5> k_double_type_b = {{
    {0, 5, 0, {}},
    {1, 5, 0, {}},
    {1, 8, 1, {5}},
    {1, 10, 1, {7}},
    {1, 12, 1, {9}},
}};

} // namespace

const row_t* get_pusch_dmrs_position_row(bool is_double, bool is_type_b, unsigned int additional_position,
                                         unsigned int length)
{
    const auto find_in = [&](const auto& table) {
        return find_dmrs_position_row(table.data(), table.size(), additional_position, length);
    };
    if (is_double)
        return is_type_b ? find_in(k_double_type_b) : find_in(k_double_type_a);
    return is_type_b ? find_in(k_single_type_b) : find_in(k_single_type_a);
}

} // namespace vek::nr_mod_lib
