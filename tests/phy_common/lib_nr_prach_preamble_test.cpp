#include "phy_common/lib_nr_prach_preamble.h"

#include "phy_common/lib_nr_phy_common.h"
#include "support/captured_output.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <utility>
#include <vector>

namespace vek::nr_mod_lib
{
namespace
{

using common = lib_nr_phy_common_t;
using preamble = lib_nr_prach_preamble_t;

// What a receiver relies on: under every Doppler shift that a set allows for, which moves the peak by whole d_u, the
// windows of a root's preambles keep apart.
TEST(lib_nr_prach_preamble, windows_of_one_root_keep_apart_under_the_doppler_shifts_of_their_set)
{
    const nr_test::captured_output_t output;
    for (const prach_format_t format : {prach_format_0, prach_format_3})
        for (const auto set : {RESTRICTED_TYPE_A, RESTRICTED_TYPE_B})
            for (unsigned int zone = 0; zone < 16; ++zone) {
                const int ncs = common::get_prach_ncs(format, PRACH_LRA_839, set, zone);
                const int most = set == RESTRICTED_TYPE_A ? 1 : 2;
                for (unsigned int u = 1; u < 839 && ncs > 0; ++u) {
                    const auto d_u = static_cast<int>(preamble::get_restrictedset_cyclic_shift(PRACH_LRA_839, u));
                    EXPECT_TRUE(static_cast<int>(u) * d_u % 839 == 1 || static_cast<int>(u) * d_u % 839 == 838);
                    std::vector<int> taken(839);
                    for (const unsigned int shift :
                         preamble::get_cyclic_shifts(PRACH_LRA_839, set, ncs, static_cast<unsigned int>(d_u)))
                        for (int turn = -most; turn <= most; ++turn)
                            for (int i = 0; i < ncs; ++i)
                                ++taken[static_cast<std::size_t>((static_cast<int>(shift) + turn * d_u + i + 1678) %
                                                                 839)];
                    ASSERT_LE(*std::max_element(taken.begin(), taken.end()), 1)
                        << "format " << format << " set " << set << " zone " << zone << " root " << u;
                }
            }
}

TEST(lib_nr_prach_preamble, indices_walk_the_shifts_of_a_root_then_the_next_root)
{
    const nr_test::captured_output_t output;
    struct row_t
    {
        prach_preamble_setting_t setting;
        unsigned int logical_index;
        unsigned int u;
        unsigned int shift;
    };
    const row_t rows[] = {
        {{prach_format_0, PRACH_LRA_839, UNRESTRICTED, 0, 22, 0}, 22, 1, 0},    // one preamble a root
        {{prach_format_0, PRACH_LRA_839, UNRESTRICTED, 0, 837, 2}, 1, 710, 0},  // round the table's end
        {{prach_format_0, PRACH_LRA_839, UNRESTRICTED, 1, 22, 63}, 22, 1, 819}, // 64 of 13 samples in one root
        {{prach_format_B4, PRACH_LRA_139, UNRESTRICTED, 14, 0, 7}, 2, 2, 46},   // three a root
        {{prach_format_A1, PRACH_LRA_571, UNRESTRICTED, 15, 1, 3}, 2, 2, 285},  // two a root
        {{prach_format_A1, PRACH_LRA_1151, UNRESTRICTED, 1, 3, 63}, 3, 1149, 1071},
    };
    for (const row_t& row : rows) {
        const prach_preamble_t found = preamble::get_preamble(row.setting);
        EXPECT_TRUE(found.is_found);
        EXPECT_EQ(found.logical_index, row.logical_index);
        EXPECT_EQ(found.u, row.u);
        EXPECT_EQ(found.cyclic_shift, row.shift);
    }
}

TEST(lib_nr_prach_preamble, rows_obey_the_rules_of_their_tables)
{
    const nr_test::captured_output_t output;
    for (const auto& [table, rows] : {std::pair{FR1_FDD_SUL, 256u}, {FR1_TDD, 263u}, {FR2_TDD, 256u}}) {
        std::set<std::vector<unsigned int>> seen;
        for (unsigned int index = 0; index < rows; ++index) {
            configuration_table_t row;
            common::get_variables_from_configTable(table, index, row, 0);
            const prach_format_t format = common::prach_string_map_index(row.format.front());
            EXPECT_TRUE(std::all_of(row.y.begin(), row.y.end(), [&](unsigned int y) { return y < row.x; }));
            EXPECT_FALSE(row.subframe_or_slot.empty());
            const unsigned int symbols = format == prach_format_C0 ? 2 : 1;
            if (!is_long_prach_format(format)) {
                EXPECT_LE(row.starting_symbol + row.occasions_per_slot * row.duration * symbols, 14u) << index;
            }
            configuration_table_t last;
            common::get_variables_from_configTable(table, index, last, row.occasions_per_slot - 1);
            if (last.format != row.format) {
                EXPECT_EQ(row.format.front()[0], 'A');
                EXPECT_EQ(last.format.front()[0], 'B');
                EXPECT_EQ(last.format.front()[1], row.format.front()[1]);
            }
            std::vector<unsigned int> key = row.subframe_or_slot;
            key.insert(key.end(), {format, common::prach_string_map_index(last.format.front()), row.x, row.y.front(),
                                   row.starting_symbol, row.slots_per_subframe_or_60khz_slot, row.occasions_per_slot});
            EXPECT_TRUE(seen.insert(key).second) << "row " << index << " stands twice";
        }
    }
    for (const auto lra : {PRACH_LRA_139, PRACH_LRA_571, PRACH_LRA_839, PRACH_LRA_1151}) {
        std::set<unsigned int> roots;
        for (unsigned int i = 0; i + 1 < lra; i += 2) {
            EXPECT_EQ(common::get_prach_root(lra, i) + common::get_prach_root(lra, i + 1), lra);
            roots.insert({common::get_prach_root(lra, i), common::get_prach_root(lra, i + 1)});
        }
        EXPECT_EQ(roots.size(), lra - 1u);
        EXPECT_EQ(*roots.begin(), 1u);
    }
}

} // namespace
} // namespace vek::nr_mod_lib
