// TS 38.211 Table 7.4.1.7.3-1, frequency offset k' of PRS: 4 rows.
#include "phy_common/tables/lib_nr_prs_offset_table.h"

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::array<lib_nr_prs_offset_row_t, 4> prs_offset_table = {{
    {0, 1, 0, 1, 0, 1, 0, 1, 0, 1, 0, 1},
    {0, 2, 1, 3, 0, 2, 1, 3, 0, 2, 1, 3},
    {0, 3, 1, 4, 2, 5, 0, 3, 1, 4, 2, 5},
    {0, 6, 3, 9, 1, 7, 4, 10, 2, 8, 5, 11},
}};

} // namespace

const std::array<lib_nr_prs_offset_row_t, 4>& get_prs_offset_table() { return prs_offset_table; }

} // namespace vek::nr_mod_lib
