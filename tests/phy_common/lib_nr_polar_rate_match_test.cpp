#include "receiver/polar_decoder.h"
#include "support/coder.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

TEST(lib_nr_polar_rate_match, subblock_interleaver_is_a_permutation_that_keeps_the_order_of_the_weak)
{
    std::vector<unsigned int> sequence(1);
    for (unsigned int order = 32; order <= 1024; order *= 2) {
        lib_nr_polar_rate_match_t::genreate_subblock_interleave_sequence(order, sequence);
        ASSERT_EQ(sequence, nr_test::polar_subblock_interleaver(order));
        // What puncturing drops first must not be more reliable: an index comes behind each that it covers bitwise.
        std::vector<unsigned int> place(order, order);
        for (unsigned int n = 0; n < order; ++n)
            place[sequence[n]] = n;
        for (unsigned int i = 0; i < order; ++i)
            for (unsigned int j = i + 1; j < order; ++j)
                if ((i & j) == i) {
                    ASSERT_LT(place[i], place[j]) << order << ": " << i << ", " << j;
                }
    }
    for (const unsigned int order : {0u, 16u, 33u}) {
        lib_nr_polar_rate_match_t::genreate_subblock_interleave_sequence(order, sequence);
        EXPECT_TRUE(sequence.empty()) << order;
    }
}

// TS 38.212 clauses 5.4.1.1 to 5.4.1.3, bit by bit.
bits_t rate_matched(const bits_t& in, unsigned int K, unsigned int E, bool interleaved)
{
    const auto N = static_cast<unsigned int>(in.size());
    const std::vector<unsigned int> J = nr_test::polar_subblock_interleaver(N);
    bits_t e(E);
    for (unsigned int k = 0; k < E; ++k)
        e[k] = in[J[E >= N ? k % N : K <= 7.0 / 16.0 * E ? k + N - E : k]];
    if (!interleaved)
        return e;
    unsigned int T = 0;
    while (T * (T + 1) / 2 < E)
        ++T;
    std::vector<std::vector<unsigned char>> v(T, bits_t(T, 255));
    unsigned int k = 0;
    for (unsigned int i = 0; i < T; ++i)
        for (unsigned int j = 0; j < T - i && k < E; ++j)
            v[i][j] = e[k++];
    bits_t f;
    for (unsigned int j = 0; j < T; ++j)
        for (unsigned int i = 0; i < T - j; ++i)
            if (v[i][j] < 255)
                f.push_back(v[i][j]);
    return f;
}

TEST(lib_nr_polar_rate_match, equals_the_standard_bit_by_bit)
{
    std::mt19937 random(41);
    for (int i = 0; i < 600; ++i) {
        const unsigned int N = 32u << random() % 6;
        const bits_t in = nr_test::random_bits(random, N);
        const unsigned int E = i < 40    ? static_cast<unsigned int>(i) / 2
                               : i == 40 ? 8192u
                                         : static_cast<unsigned int>(random() % (i % 7 == 0 ? 8193u : 2 * N));
        const unsigned int K = E == 0 ? 0 : static_cast<unsigned int>(random() % E);
        const unsigned int i_bil = i < 40 ? static_cast<unsigned int>(i) % 2 : random() % 2;
        lib_nr_polar_rate_match_t rate_match;
        EXPECT_TRUE(rate_match.set_i_bil(i_bil));
        EXPECT_FALSE(rate_match.set_i_bil(2));
        EXPECT_TRUE(rate_match.set_rate_match_output_length(E));
        rate_match.set_polar_coding_input_lentgh(K);
        bits_t out(9, 1);
        ASSERT_TRUE(rate_match.deal_rate_matching(in, out));
        ASSERT_EQ(out, rate_matched(in, K, E, i_bil == 1)) << "N " << N << ", K " << K << ", E " << E << ", " << i_bil;
        bits_t same = in;
        ASSERT_TRUE(rate_match.deal_rate_matching(same, same));
        ASSERT_EQ(same, out);
    }
}

} // namespace
