#include "receiver/polar_decoder.h"
#include "support/coder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <map>
#include <ostream>

namespace nr_test
{

std::ostream& operator<<(std::ostream& stream, const polar_block_t& b)
{
    return stream << "K " << b.K << ", E " << b.E << ", n_max " << b.n_max << ", parity " << b.n_pc << "/" << b.n_pc_wm;
}

} // namespace nr_test

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using nr_test::polar_block_t;
using peer_t = vek::test_peer_t<lib_nr_polar_coding_t>;

lib_nr_polar_coding_t& configure(lib_nr_polar_coding_t& coder, const polar_block_t& block)
{
    EXPECT_TRUE(coder.set_i_il(block.input_interleaving ? 1 : 0));
    EXPECT_TRUE(coder.set_n_max(block.n_max));
    coder.set_n_pc(block.n_pc);
    EXPECT_TRUE(coder.set_n_pc_wm(block.n_pc_wm));
    coder.set_rate_matching_output_length(block.E);
    return coder;
}

// G_N of clause 5.3.1.2 as the Kronecker power that defines it.
const std::vector<bits_t>& generator(unsigned int order)
{
    static std::map<unsigned int, std::vector<bits_t>> built;
    std::vector<bits_t>& matrix = built[order];
    if (matrix.empty()) {
        matrix = {{1}};
        while (matrix.size() < order) {
            const std::size_t half = matrix.size();
            std::vector<bits_t> next(2 * half, bits_t(2 * half, 0));
            for (std::size_t j = 0; j < half; ++j)
                for (std::size_t i = 0; i < half; ++i)
                    next[j][i] = next[j + half][i] = next[j + half][i + half] = matrix[j][i];
            matrix = std::move(next);
        }
    }
    return matrix;
}

bits_t times_generator(const bits_t& u)
{
    const std::vector<bits_t>& matrix = generator(static_cast<unsigned int>(u.size()));
    bits_t out(u.size(), 0);
    for (std::size_t j = 0; j < u.size(); ++j)
        if (u[j] != 0)
            for (std::size_t i = 0; i < u.size(); ++i)
                out[i] ^= matrix[j][i];
    return out;
}

// Clause 5.3.1 from the text: interleaving, u, code word.
bits_t encoded(const polar_block_t& block, const bits_t& in, const nr_test::polar_construction_t& code)
{
    const std::vector<unsigned int> order = nr_test::polar_input_interleaver(block.K);
    bits_t u(code.N, 0);
    unsigned char y0 = 0, y1 = 0, y2 = 0, y3 = 0, y4 = 0;
    std::size_t k = 0;
    for (unsigned int n = 0; n < code.N; ++n) {
        const unsigned char yt = y0;
        y0 = y1;
        y1 = y2;
        y2 = y3;
        y3 = y4;
        y4 = yt;
        if (code.is_frozen[n])
            continue;
        if (code.is_parity[n]) {
            u[n] = y0;
            continue;
        }
        u[n] = in[block.input_interleaving ? order[k] : k];
        ++k;
        y0 ^= u[n];
    }
    return times_generator(u);
}

// Every kind of block that a channel can ask for.
std::vector<polar_block_t> blocks_of_the_channels()
{
    std::vector<polar_block_t> blocks = {{56, 864, 9, true, false, 0, 0}}; // PBCH
    for (unsigned int level = 1; level <= 16; level *= 2)                  // DCI of 12 to 140 bits and CRC24C
        for (unsigned int K = 36; K <= 164 && K <= 108 * level; K += K < 60 ? 1 : 7)
            blocks.push_back({K, 108 * level, 9, true, false, 0, 0});
    blocks.push_back({164, 432, 9, true, false, 0, 0});
    for (unsigned int E = 72; E < 1100; ++E) // UCI on both sides of every limit on the rate
        for (const unsigned int K : {E / 6, 7 * E / 16, 9 * E / 16})
            if (K >= 31)
                blocks.push_back({K, E, 10, false, true, 0, 0});
    std::mt19937 random(2024);
    for (int i = 0; i < 700; ++i) { // UCI: CRC6 and parity check bits up to 25 bits, CRC11 above
        const bool parity = i % 3 == 0;
        const unsigned int K =
            parity ? 18 + random() % 8 : 31 + static_cast<unsigned int>(random()) % (i % 2 ? 834 : 100);
        const unsigned int least = K + (parity ? 3 : 0);
        const unsigned int most = i % 5 == 0 ? 8192 : std::min(8192u, 6 * K);
        const unsigned int E = least + static_cast<unsigned int>(random()) % (most - least + 1);
        const unsigned int n_pc_wm = parity && E + 3 - K > 192 ? 1 : 0;
        blocks.push_back({K, E, 10, false, true, parity ? 3u : 0u, n_pc_wm});
    }
    return blocks;
}

TEST(lib_nr_polar_coding, construction_and_code_word_equal_the_standard_and_the_receiver_recovers_the_bits)
{
    std::mt19937 random(1);
    std::map<unsigned int, int> seen; // by N
    int repeated = 0, punctured = 0, shortened = 0;
    for (const polar_block_t& block : blocks_of_the_channels()) {
        const nr_test::polar_construction_t code = nr_test::construct_polar_code(block);
        const bits_t in = nr_test::random_bits(random, block.K);
        lib_nr_polar_coding_t coder;
        bits_t word;
        ASSERT_TRUE(configure(coder, block).deal_polar_coding(in, word)) << block;
        ASSERT_EQ(word.size(), code.N) << block;

        std::vector<bool> frozen(code.N, true);
        std::vector<bool> parity(code.N, false);
        for (const unsigned int index : peer_t::non_frozen(coder))
            frozen[index] = false;
        for (const unsigned int index : peer_t::parity(coder))
            parity[index] = true;
        ASSERT_EQ(frozen, code.is_frozen) << block;
        ASSERT_EQ(parity, code.is_parity) << block;
        ASSERT_EQ(peer_t::parity(coder).size(), block.n_pc) << block;
        ASSERT_EQ(word, encoded(block, in, code)) << block;

        lib_nr_polar_rate_match_t rate_match;
        rate_match.set_i_bil(block.coded_bit_interleaving ? 1 : 0);
        rate_match.set_polar_coding_input_lentgh(block.K);
        rate_match.set_rate_match_output_length(block.E);
        bits_t sent;
        ASSERT_TRUE(rate_match.deal_rate_matching(word, sent)) << block;
        std::vector<double> soft;
        for (const unsigned char bit : sent)
            soft.push_back(bit != 0 ? -1.0 : 1.0);
        ASSERT_EQ(nr_test::polar_decode(block, soft), in) << block;

        ++seen[code.N];
        ++(block.E >= code.N ? repeated : block.K <= 7.0 / 16.0 * block.E ? punctured : shortened);
    }
    EXPECT_EQ(seen.size(), 6u) << "a mother code length is never asked for";
    EXPECT_GT(std::min({repeated, punctured, shortened}), 50);
}

TEST(lib_nr_polar_coding, order_of_the_lists_is_by_reliability)
{
    const polar_block_t block{20, 300, 10, false, true, 3, 1};
    lib_nr_polar_coding_t coder;
    bits_t word;
    ASSERT_TRUE(configure(coder, block).deal_polar_coding(bits_t(block.K), word));
    const std::vector<unsigned int>& sequence = lib_nr_polar_coding_t::get_polar_sequence();
    const auto rank = [&](unsigned int index) { return std::find(sequence.begin(), sequence.end(), index); };
    const std::vector<unsigned int>& list = peer_t::non_frozen(coder);
    ASSERT_EQ(list.size(), 23u);
    EXPECT_TRUE(
        std::is_sorted(list.begin(), list.end(), [&](unsigned int a, unsigned int b) { return rank(a) > rank(b); }));
    // The two least reliable ones, then the one placed by weight.
    const std::vector<unsigned int>& parity = peer_t::parity(coder);
    ASSERT_EQ(parity.size(), 3u);
    EXPECT_EQ(parity[0], list[21]);
    EXPECT_EQ(parity[1], list[22]);
    EXPECT_LT(std::find(list.begin(), list.end(), parity[2]) - list.begin(), 20);
}

TEST(lib_nr_polar_coding, a_reused_object_encodes_as_a_fresh_one)
{
    // Each differs from the one before in one setting, which alone has to renew what the object holds.
    const std::vector<polar_block_t> blocks = {
        {60, 100, 9, true, false, 0, 0},  {60, 110, 9, true, false, 0, 0},  {55, 110, 9, true, false, 0, 0},
        {55, 110, 9, false, false, 0, 0}, {55, 110, 6, false, false, 0, 0}, {55, 110, 9, false, false, 0, 0},
        {55, 110, 9, false, false, 3, 0}, {55, 110, 6, false, false, 3, 0}, {55, 110, 9, false, false, 3, 0},
        {55, 110, 9, false, false, 3, 2}, {55, 110, 9, false, false, 3, 0}, {55, 110, 9, false, false, 3, 1},
        {55, 110, 9, false, false, 2, 1}, {55, 110, 9, false, false, 2, 0},
    };
    std::mt19937 random(77);
    lib_nr_polar_coding_t reused;
    for (const polar_block_t& block : blocks) {
        bits_t in = nr_test::random_bits(random, block.K);
        lib_nr_polar_coding_t fresh;
        bits_t expected;
        bits_t out;
        ASSERT_TRUE(configure(fresh, block).deal_polar_coding(in, expected));
        ASSERT_TRUE(configure(reused, block).deal_polar_coding(in, out));
        EXPECT_EQ(out, expected) << block;
        EXPECT_EQ(peer_t::parity(reused), peer_t::parity(fresh)) << block;
        ASSERT_TRUE(reused.deal_polar_coding(in, in)); // again, and in place
        EXPECT_EQ(in, expected) << block;
    }
}

TEST(lib_nr_polar_coding, settings_no_channel_asks_for_stay_defined)
{
    lib_nr_polar_coding_t coder;
    EXPECT_FALSE(coder.set_n_max(4));
    EXPECT_FALSE(coder.set_n_max(11));
    EXPECT_FALSE(coder.set_i_il(2));
    EXPECT_FALSE(coder.set_n_pc_wm(1)) << "above n_pc";

    std::mt19937 random(3);
    bits_t out;
    for (int i = 0; i < 3000; ++i) {
        const unsigned int K = static_cast<unsigned int>(random()) % 165;
        coder.set_n_max(static_cast<unsigned int>(random()) % 16);
        coder.set_i_il(random() % 2);
        coder.set_n_pc(static_cast<unsigned int>(random()) % (i % 2 ? 4 : 300));
        coder.set_n_pc_wm(static_cast<unsigned int>(random()) % 300);
        coder.set_rate_matching_output_length(K + 300 +
                                              static_cast<unsigned int>(random()) % (i % 2 ? 300 : ~0u - 500));
        ASSERT_TRUE(coder.deal_polar_coding(nr_test::random_bits(random, K), out));
        ASSERT_TRUE(std::has_single_bit(out.size()) && out.size() >= 32 && out.size() <= 1024);
    }
    // n_pc lowered below n_pc_wm: every parity check bit goes by weight.
    coder.set_n_pc(3);
    ASSERT_TRUE(coder.set_n_pc_wm(3));
    coder.set_n_pc(2);
    coder.set_rate_matching_output_length(400);
    ASSERT_TRUE(coder.deal_polar_coding(bits_t(20), out));
    EXPECT_EQ(peer_t::parity(coder).size(), 2u);
}

TEST(lib_nr_polar_coding, stores_are_those_of_the_kronecker_power)
{
    const auto& matrices = lib_nr_polar_coding_t::get_coding_matrix();
    const auto& weights = lib_nr_polar_coding_t::get_row_weight_data();
    ASSERT_EQ(matrices.size(), 6u);
    ASSERT_EQ(weights.size(), 6u);
    for (const auto& [order, rows] : matrices) {
        const std::vector<bits_t>& expected = generator(order);
        ASSERT_EQ(rows.size(), order);
        bool equal = weights.at(order).size() == order;
        for (unsigned int j = 0; j < order; ++j) {
            for (unsigned int i = 0; i < order; ++i)
                equal = equal && (rows[i][j / 32] >> (31 - j % 32) & 1u) == expected[j][i];
            equal = equal && weights.at(order).at(j) == std::count(expected[j].begin(), expected[j].end(), 1);
        }
        EXPECT_TRUE(equal) << order;
    }
}

TEST(lib_nr_polar_coding, input_interleaver_puts_each_parity_bit_behind_what_it_depends_on)
{
    EXPECT_EQ(lib_nr_polar_coding_t::get_interleaving_pattern(), nr_test::polar_input_interleaver(164));
}

} // namespace
