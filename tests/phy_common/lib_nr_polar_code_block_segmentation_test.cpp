#include "support/coder.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

// TS 38.212 clause 5.2.1: the blocks without their CRCs, put together, are the bits behind at most one leading zero.
TEST(lib_nr_polar_code_block_segmentation, cuts_every_size_into_blocks_with_their_crc)
{
    const bits_t crc11 = nr_test::bits_of(0xE21, 12);
    std::mt19937 random(17);
    for (unsigned int i_seg = 0; i_seg <= 1; ++i_seg)
        for (std::size_t size = 0; size <= 176; ++size) {
            lib_nr_polar_code_block_segmentation_t segmentation;
            segmentation.set_crc_type(LIB_NR_CRC_TYPE_11);
            ASSERT_TRUE(segmentation.set_i_seg(i_seg));
            const bits_t in = nr_test::random_bits(random, size);
            std::vector<bits_t> out(3);
            ASSERT_TRUE(segmentation.deal_code_block_segementation(in, out));
            ASSERT_EQ(out.size(), i_seg + 1);
            bits_t together;
            for (const bits_t& block : out) {
                ASSERT_EQ(block.size(), (size + i_seg) / (i_seg + 1) + 11);
                const bits_t message(block.begin(), block.end() - 11);
                EXPECT_EQ(bits_t(block.end() - 11, block.end()), nr_test::long_division(message, crc11));
                together.insert(together.end(), message.begin(), message.end());
            }
            bits_t expected(together.size() - size, 0);
            ASSERT_LE(expected.size(), 1u);
            expected.insert(expected.end(), in.begin(), in.end());
            ASSERT_EQ(together, expected) << size << " bits in " << out.size();
        }
}

TEST(lib_nr_polar_code_block_segmentation, starts_with_one_block_and_crc6_and_refuses_other_settings)
{
    lib_nr_polar_code_block_segmentation_t segmentation;
    EXPECT_FALSE(segmentation.set_i_seg(2));
    std::vector<bits_t> out;
    ASSERT_TRUE(segmentation.deal_code_block_segementation({1}, out));
    EXPECT_EQ(out, std::vector<bits_t>({{1, 1, 0, 0, 0, 0, 1}}));
    // One of the result's own vectors as input.
    out = {{1, 0, 1}};
    ASSERT_TRUE(segmentation.set_i_seg(1));
    ASSERT_TRUE(segmentation.deal_code_block_segementation(out[0], out));
    EXPECT_EQ(out.size(), 2u);
}

} // namespace
