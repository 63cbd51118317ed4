#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"

#include "support/captured_output.h"
#include "support/coder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

namespace
{

constexpr auto k_unknown_graph = static_cast<lib_nr_ldpc_base_graph_type_t>(7);

const bits_t& crc24b_divisor()
{
    static const bits_t divisor = nr_test::bits_of(0x1800063, 25);
    return divisor;
}

struct sizes_t
{
    std::size_t block_count;
    std::size_t used; // K', with the block's CRC
    std::size_t z;
};

// Counted up instead of divided: TS 38.212 clause 5.2.2.
sizes_t expected_sizes(bool is_graph_1, std::size_t b)
{
    const std::size_t largest = is_graph_1 ? 8448 : 3840;
    sizes_t sizes{1, b, 0};
    if (b > largest) {
        while (sizes.block_count * (largest - 24) < b)
            ++sizes.block_count;
        sizes.used = b / sizes.block_count + 24;
    }
    std::size_t columns = 22;
    if (!is_graph_1)
        columns = b > 640 ? 10 : b > 560 ? 9 : b > 192 ? 8 : 6;
    const auto is_lifting_size = [](std::size_t z) {
        while (z > 15 && z % 2 == 0)
            z /= 2;
        return z <= 16 && z >= 2;
    };
    for (sizes.z = 2; sizes.z * columns < sizes.used || !is_lifting_size(sizes.z);)
        ++sizes.z;
    return sizes;
}

void expect_segmentation(bool is_graph_1, std::size_t b)
{
    SCOPED_TRACE((is_graph_1 ? "graph 1, B = " : "graph 2, B = ") + std::to_string(b));
    std::mt19937 random(static_cast<unsigned int>(b));
    const bits_t in = nr_test::random_bits(random, b);
    lib_nr_ldpc_code_block_segmentation_t segmentation;
    segmentation.set_base_graph_type(is_graph_1 ? LIB_NR_LDPC_BASE_GRAPH_1 : LIB_NR_LDPC_BASE_GRAPH_2);
    std::vector<bits_t> out(3, bits_t(5));
    segmentation.deal_code_block_segmentation(in, out);

    const sizes_t sizes = expected_sizes(is_graph_1, b);
    ASSERT_EQ(out.size(), sizes.block_count);
    bits_t joined;
    for (const bits_t& block : out) {
        ASSERT_EQ(block.size(), (is_graph_1 ? 22 : 10) * sizes.z);
        const auto filler = block.begin() + static_cast<std::ptrdiff_t>(sizes.used);
        EXPECT_EQ(bits_t(filler, block.end()), bits_t(block.size() - sizes.used, 255));
        const auto payload_end = filler - (sizes.block_count > 1 ? 24 : 0);
        const bits_t payload(block.begin(), payload_end);
        if (sizes.block_count > 1) {
            EXPECT_EQ(bits_t(payload_end, filler), nr_test::long_division(payload, crc24b_divisor()));
        }
        joined.insert(joined.end(), payload.begin(), payload.end());
    }
    // At most C - 1 bits are left out, at the end.
    ASSERT_EQ(joined.size(), b - b % sizes.block_count);
    EXPECT_TRUE(std::equal(joined.begin(), joined.end(), in.begin()));
}

TEST(lib_nr_ldpc_code_block_segmentation, every_boundary_has_its_blocks_crc_and_fillers)
{
    for (const std::size_t b : {0u, 1u, 44u, 45u, 8424u, 8447u, 8448u, 8449u, 2 * 8424u, 2 * 8424u + 1, 100001u})
        expect_segmentation(true, b);
    for (const std::size_t b :
         {0u, 1u, 192u, 193u, 560u, 561u, 640u, 641u, 3816u, 3839u, 3840u, 3841u, 2 * 3816u, 2 * 3816u + 1, 50000u})
        expect_segmentation(false, b);
    for (std::size_t b = 7; b < 30000; b += 397) {
        expect_segmentation(true, b);
        expect_segmentation(false, b);
    }
}

// One of the standing blocks is the input; an unknown graph keeps the largest block and the columns of graph 1.
TEST(lib_nr_ldpc_code_block_segmentation, input_within_the_output_and_unknown_graph)
{
    lib_nr_ldpc_code_block_segmentation_t segmentation;
    std::mt19937 random(3);
    const bits_t in = nr_test::random_bits(random, 9000);
    std::vector<bits_t> expected;
    segmentation.deal_code_block_segmentation(in, expected);
    std::vector<bits_t> out = {{}, in, {}};
    segmentation.deal_code_block_segmentation(out[1], out);
    EXPECT_EQ(out, expected);

    const nr_test::captured_output_t output;
    segmentation.set_base_graph_type(LIB_NR_LDPC_BASE_GRAPH_2);
    segmentation.set_base_graph_type(k_unknown_graph);
    EXPECT_EQ(output.text(), "lib_nr_ldpc_code_block_segmentation_t::_update_code_block_size_max Report : Unknown LDPC "
                             "Base Graph Type!\n");
    segmentation.deal_code_block_segmentation(in, out);
    ASSERT_EQ(out.size(), 3u); // of 3840 at most
    EXPECT_EQ(out[0].size(), 3024u);
}

} // namespace
