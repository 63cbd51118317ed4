#include "phy_common/lib_nr_prach_preamble.h"

#include "phy_common/lib_nr_phy_common.h"
#include "support/captured_output.h"

#include <algorithm>
#include <gtest/gtest.h>
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
                for (unsigned int root = 0; root < 838 && ncs > 0; ++root) {
                    const unsigned int u = common::get_prach_root(PRACH_LRA_839, root);
                    const auto d_u = static_cast<int>(preamble::get_restrictedset_cyclic_shift(PRACH_LRA_839, u));
                    EXPECT_TRUE(static_cast<int>(u) * d_u % 839 == 1 || static_cast<int>(u) * d_u % 839 == 838);
                    std::vector<int> taken(839);
                    prach_preamble_setting_t setting = {format, PRACH_LRA_839, set, zone, root, 0};
                    for (auto found = preamble::get_preamble(setting); found.is_found && found.logical_index == root;
                         ++setting.preamble_index, found = preamble::get_preamble(setting))
                        for (int turn = -most; turn <= most; ++turn)
                            for (int i = 0; i < ncs; ++i)
                                ++taken[static_cast<std::size_t>(
                                    (static_cast<int>(found.cyclic_shift) + turn * d_u + i + 1678) % 839)];
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

TEST(lib_nr_prach_preamble, roots_of_the_shorter_tables_go_in_pairs_from_the_outside_in)
{
    for (const auto lra : {PRACH_LRA_139, PRACH_LRA_571, PRACH_LRA_1151})
        for (unsigned int i = 0; i + 1 < lra; ++i)
            EXPECT_EQ(common::get_prach_root(lra, i), i % 2 == 0 ? i / 2 + 1 : lra - 1 - i / 2);
}

} // namespace
} // namespace vek::nr_mod_lib
