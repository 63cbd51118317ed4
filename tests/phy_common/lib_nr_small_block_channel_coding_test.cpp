#include "phy_common/lib_nr_small_block_channel_coding.h"
#include "support/captured_output.h"
#include "support/coder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>

template <>
struct vek::test_peer_t<vek::nr_mod_lib::lib_nr_small_block_channel_coding_t>
{
    using coder_t = nr_mod_lib::lib_nr_small_block_channel_coding_t;
    using bits_t = nr_test::bits_t;

    static bool repeat(const coder_t& coder, const bits_t& in, bits_t& out)
    {
        return coder._deal_repetition_coding(in, out);
    }
    static bool simplex(const coder_t& coder, const bits_t& in, bits_t& out)
    {
        return coder._deal_simplex_coding(in, out);
    }
};

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

bits_t coded(const bits_t& in, unsigned int order)
{
    lib_nr_small_block_channel_coding_t coder;
    EXPECT_TRUE(coder.set_modulation_order(order));
    bits_t out = in; // one vector as input and output
    EXPECT_TRUE(coder.deal_small_block_channel_coding(out, out));
    return out;
}

TEST(lib_nr_small_block_channel_coding, every_word_has_its_sum_of_rows_and_the_minimum_distance_of_its_code)
{
    // Of the (32, K) code of TS 38.212 Table 5.3.3.3-1, K from 3 on.
    constexpr std::array<long, 9> distances = {16, 16, 16, 16, 12, 12, 12, 12, 10};
    const auto& basis = get_reed_muller_basis_sequence_vector();
    ASSERT_EQ(basis.size(), 32u);
    EXPECT_EQ(&basis, &get_reed_muller_basis_sequence_vector());
    lib_nr_small_block_channel_coding_t coder;
    for (unsigned int K = 3; K <= 11; ++K) {
        long least = 32;
        for (unsigned long word = 0; word < 1ul << K; ++word) {
            bits_t in;
            for (unsigned int n = 0; n < K; ++n)
                in.push_back(static_cast<unsigned char>(word >> n & 1u));
            bits_t out;
            ASSERT_TRUE(coder.deal_small_block_channel_coding(in, out));
            ASSERT_EQ(out.size(), 32u);
            for (unsigned int i = 0; i < 32; ++i)
                ASSERT_EQ(out[i], std::inner_product(in.begin(), in.end(), basis[i].begin(), 0) % 2);
            // The code is linear: its distance is the least weight of a word.
            if (word != 0)
                least = std::min(least, static_cast<long>(std::count(out.begin(), out.end(), 1)));
        }
        EXPECT_EQ(least, distances[K - 3]) << K;
    }
    EXPECT_EQ(coded({1, 0, 0}, 8), bits_t(32, 1)); // M(i, 0) is 1, whatever the order
}

TEST(lib_nr_small_block_channel_coding, one_and_two_bits_carry_placeholders_for_every_order)
{
    constexpr unsigned char x = 255;
    constexpr unsigned char y = 254;
    for (const unsigned int order : {1u, 2u, 4u, 6u, 8u}) {
        for (unsigned char c0 = 0; c0 < 2; ++c0) {
            bits_t expected(order, x);
            expected[0] = c0;
            if (order > 1)
                expected[1] = y;
            EXPECT_EQ(coded({c0}, order), expected) << order;
            for (unsigned char c1 = 0; c1 < 2; ++c1) {
                const auto c2 = static_cast<unsigned char>(c0 ^ c1);
                const std::array<unsigned char, 6> pairs = {c0, c1, c2, c0, c1, c2};
                bits_t both = {c0, c1, c2};
                if (order > 1) {
                    both.assign(std::size_t{3} * order, x);
                    for (unsigned int i = 0; i < pairs.size(); ++i)
                        both[i / 2 * order + i % 2] = pairs[i];
                }
                EXPECT_EQ(coded({c0, c1}, order), both) << order;
            }
        }
    }
}

TEST(lib_nr_small_block_channel_coding, wrong_inputs_print_their_lines_and_leave_nothing)
{
    using peer_t = vek::test_peer_t<lib_nr_small_block_channel_coding_t>;
    const std::string name = "lib_nr_small_block_channel_coding_t::";
    lib_nr_small_block_channel_coding_t coder;
    ASSERT_TRUE(coder.set_modulation_order(2));
    nr_test::captured_output_t output;
    for (const unsigned int order : {0u, 3u, 5u, 7u, 9u, 10u, ~0u}) {
        output.clear();
        EXPECT_FALSE(coder.set_modulation_order(order)) << order;
        EXPECT_EQ(output.text(), name + "set_modulation_order Report : Invalid Modulation Order!\n");
    }
    for (const std::size_t size : {0u, 12u, 1000u}) {
        bits_t out = {1};
        output.clear();
        EXPECT_FALSE(coder.deal_small_block_channel_coding(bits_t(size), out)) << size;
        EXPECT_TRUE(out.empty());
        EXPECT_EQ(output.text(),
                  name + "deal_small_block_channel_coding Report : Input Sequence Length out of range!\n");
    }
    bits_t out = {1};
    output.clear();
    EXPECT_FALSE(peer_t::repeat(coder, {1, 0}, out));
    EXPECT_TRUE(out.empty());
    EXPECT_FALSE(peer_t::simplex(coder, {1}, out));
    EXPECT_TRUE(out.empty());
    EXPECT_EQ(output.text(), name + "_deal_repetition_coding Report : Invalid Input Sequence Length!\n" + name +
                                 "_deal_simplex_coding Report : Invalid Input Sequence Length!\n");
    ASSERT_TRUE(coder.deal_small_block_channel_coding({1}, out));
    EXPECT_EQ(out, (bits_t{1, 254})); // the refused orders left 2
}

} // namespace
