#include "phy_common/tables/lib_nr_mcs_table.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace
{

using namespace vek::nr_mod_lib;

TEST(lib_nr_mcs_table, rows_rise_to_their_last_and_their_efficiency_is_that_of_order_and_rate)
{
    constexpr std::array<unsigned int, 6> k_rows = {29, 28, 29, 27, 28, 28};
    constexpr std::array<unsigned int, 6> k_largest_qm = {6, 8, 6, 10, 6, 6};
    for (unsigned int i = 0; i < k_rows.size(); ++i) {
        const lib_nr_mcs_table_t& table = lib_nr_mcs_table(static_cast<mcs_table_t>(i));
        for (unsigned int mcs = 0; mcs < table.size(); ++mcs) {
            const lib_nr_mcs_row_t& row = table[mcs];
            const double efficiency = row.qm * row.code_rate_x1024 / 1024;
            EXPECT_NEAR(row.spectral_efficiency, std::floor(efficiency * 1e4 + 0.5) * 1e-4, 1e-9) << i << ' ' << mcs;
            EXPECT_EQ(row.qm != 0, mcs < k_rows[i]) << i << ' ' << mcs;
            const bool falls = i == 0 && mcs == 17; // the one place where the standard's table does
            if (mcs > 0 && mcs < k_rows[i]) {
                EXPECT_EQ(row.spectral_efficiency < table[mcs - 1].spectral_efficiency, falls) << i << ' ' << mcs;
            }
        }
        EXPECT_EQ(table[k_rows[i] - 1].qm, k_largest_qm[i]) << i;
    }
}

} // namespace
