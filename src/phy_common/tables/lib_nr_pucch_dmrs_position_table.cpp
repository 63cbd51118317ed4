// TS 38.211 Table 6.4.1.3.3.2-1, DMRS positions of PUCCH formats 3 and 4: 11 rows, and 4 symbols with hopping.
#include "phy_common/tables/lib_nr_pucch_dmrs_position_table.h"

#include <array>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_first_symbol_number = 4;

struct position_row_t
{
    std::vector<unsigned int> plain;
    std::vector<unsigned int> additional;
};

} // namespace

const std::vector<unsigned int>& get_pucch_dmrs_positions(bool intra_slot_hopping, bool additional_dmrs,
                                                          unsigned int symbol_number)
{
    static const std::array<position_row_t, 11> rows = {{
        {{1}, {1}},
        {{0, 3}, {0, 3}},
        {{1, 4}, {1, 4}},
        {{1, 4}, {1, 4}},
        {{1, 5}, {1, 5}},
        {{1, 6}, {1, 6}},
        {{2, 7}, {1, 3, 6, 8}},
        {{2, 7}, {1, 3, 6, 9}},
        {{2, 8}, {1, 4, 7, 10}},
        {{2, 9}, {1, 4, 7, 11}},
        {{3, 10}, {1, 5, 8, 12}},
    }};
    static const std::vector<unsigned int> four_symbols_hopping = {0, 2};
    if (symbol_number == k_first_symbol_number && intra_slot_hopping)
        return four_symbols_hopping;
    const position_row_t& row = rows.at(symbol_number - k_first_symbol_number);
    return additional_dmrs ? row.additional : row.plain;
}

} // namespace vek::nr_mod_lib
