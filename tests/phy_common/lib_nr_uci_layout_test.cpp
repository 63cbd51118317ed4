#include "phy_common/lib_nr_uci_layout.h"

#include <array>
#include <gtest/gtest.h>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

TEST(lib_nr_uci_layout, segments_checks_parity_bits_and_the_split_follow_the_standard)
{
    // Bits and coded bits; then segments, CRC, bits into and out of each encoder, parity bits, those of least weight.
    using row_t = std::array<std::uint64_t, 8>;
    for (const row_t& row : std::vector<row_t>{{11, 100, 1, 0, 11, 100, 0, 0},
                                               {12, 207, 1, 6, 18, 207, 3, 0}, // 207 - 18 + 3 = 192
                                               {12, 208, 1, 6, 18, 208, 3, 1},
                                               {19, 8192, 1, 6, 25, 8192, 3, 1},
                                               {20, 8192, 1, 11, 31, 8192, 0, 0},
                                               {359, 1088, 1, 11, 370, 1088, 0, 0},
                                               {360, 1087, 1, 11, 371, 1087, 0, 0},
                                               {361, 1089, 2, 11, 192, 544, 0, 0},
                                               {1012, 1087, 1, 11, 1023, 1087, 0, 0},
                                               {1013, 1087, 2, 11, 518, 543, 0, 0},
                                               {2026, 4000, 2, 11, 1024, 2000, 0, 0},
                                               {1ULL << 33, 0, 2, 11, (1ULL << 32) + 11, 0, 0, 0}})
    {
        const lib_nr_uci_layout_t got = get_uci_layout(row[0], static_cast<unsigned int>(row[1]));
        EXPECT_EQ((row_t{row[0], row[1], got.segment_number, got.crc_length, got.k, got.e, got.n_pc, got.n_pc_wm}),
                  row);
        EXPECT_EQ(got.is_polar, row[0] > 11);
        EXPECT_TRUE(got.crc_length == 0 || (got.crc_type == LIB_NR_CRC_TYPE_6) == (got.crc_length == 6));
    }
    // Whole symbols of (bits + CRC) / rate; 21 / 0.35 in floating point is above 60.
    const auto e_uci1 = [](std::uint64_t part1, unsigned int qm, unsigned int rate) {
        return split_uci(part1, 5, 1000, qm, rate).e_uci1;
    };
    EXPECT_EQ(e_uci1(15, 1, 35), 60u);
    EXPECT_EQ(e_uci1(10, 2, 80), 14u);
    EXPECT_EQ(e_uci1(11, 1, 80), 22u);
    EXPECT_EQ(e_uci1(20, 2, 25), 124u);
    EXPECT_EQ(e_uci1(3 * ((1ULL << 32) - 1), 2, 8), 1000u);
    EXPECT_EQ(split_uci(20, 5, 1000, 2, 25).e_uci2, 876u);
    EXPECT_EQ(split_uci(20, 0, 1000, 2, 25).e_uci1, 1000u);
    EXPECT_EQ(split_uci(0, 5, 1000, 2, 25).e_uci1, 1000u);
}

} // namespace
