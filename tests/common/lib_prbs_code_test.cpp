#include "common/lib_prbs_code.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

using namespace vek::common_lib;

namespace
{

using bits_t = std::vector<unsigned char>;
using taps_t = std::vector<unsigned int>;

lib_prbs_code_t make_prbs(const taps_t& taps)
{
    lib_prbs_code_t prbs;
    prbs.set_custom_primitive_polynomial_enable(true);
    prbs.set_prbs_primitive_polynomial(taps);
    return prbs;
}

/// The definition, bit by bit.
bits_t serial_sequence(const taps_t& taps, unsigned int state, std::size_t count)
{
    const unsigned int degree = *std::max_element(taps.begin(), taps.end());
    bits_t bits;
    for (unsigned int i = 0; i < degree; ++i)
        bits.push_back((state >> i) & 1u);
    for (std::size_t i = 0; bits.size() < count; ++i) {
        unsigned char bit = bits[i];
        for (const unsigned int tap : taps)
            if (tap != degree)
                bit ^= bits[i + tap];
        bits.push_back(bit);
    }
    bits.resize(count);
    return bits;
}

} // namespace

TEST(lib_prbs_code, equals_the_recursion_and_runs_on_from_the_state_it_returns)
{
    const std::vector<taps_t> polynomials = {{9, 4},  {9, 5},          {11, 2},      {15, 14}, {23, 5}, {31, 28},
                                             {32, 1}, {16, 15, 13, 4}, {5, 4, 2, 1}, {1},      {32}};
    std::independent_bits_engine<std::mt19937, 32, std::uint32_t> random(1);
    for (const taps_t& taps : polynomials) {
        lib_prbs_code_t prbs = make_prbs(taps);
        for (const unsigned int count : {0u, 1u, 24u, 63u, 64u, 65u, 1000u, 2048u, 2049u, 100000u}) {
            const unsigned int state = random();
            const unsigned int behind = 1 + random() % 3000;
            const bits_t expected = serial_sequence(taps, state, count + behind);
            bits_t bits(17, 9);
            prbs.set_prbs_seed(state);
            prbs.set_prbs_seed(prbs.generate_prbs_code(count, bits));
            bits_t rest;
            prbs.generate_prbs_code(behind, rest);
            bits.insert(bits.end(), rest.begin(), rest.end());
            ASSERT_EQ(bits, expected) << "degree " << taps.front() << " count " << count << " state " << state;
        }
    }
}

TEST(lib_prbs_code, gives_the_sequences_of_the_recommendations)
{
    // ITU-T O.150, 511 bits, from all ones.
    lib_prbs_code_t prbs;
    bits_t bits;
    prbs.generate_prbs_code(64, bits);
    std::uint64_t packed = 0;
    for (const unsigned char bit : bits)
        packed = packed << 1 | bit;
    EXPECT_EQ(packed, 0xFF83DF1732094ED1u);

    // Maximum length: every state but zero once, so one one more than zeros, and every run pattern in its number.
    for (const taps_t& taps : std::vector<taps_t>{{9, 4}, {9, 5}, {11, 2}, {15, 14}, {23, 5}}) {
        const unsigned int degree = taps.front();
        const unsigned int period = (1u << degree) - 1;
        prbs = make_prbs(taps);
        const unsigned int behind = prbs.generate_prbs_code(period, bits);
        EXPECT_EQ(behind, period) << "after a period the state is all ones again, degree " << degree;
        EXPECT_EQ(std::count(bits.begin(), bits.end(), 1), (period + 1) / 2) << degree;
        std::vector<bool> seen(period + 1);
        unsigned int state = period;
        unsigned int distinct = 0;
        for (unsigned int i = 0; i < period; ++i) {
            distinct += !seen[state];
            seen[state] = true;
            state = state >> 1 | static_cast<unsigned int>(bits[(i + degree) % period]) << (degree - 1);
        }
        EXPECT_EQ(distinct, period) << degree;
        EXPECT_FALSE(seen[0]);
    }
}

TEST(lib_prbs_code, is_harmless_with_taps_it_cannot_use)
{
    const bits_t pn9 = serial_sequence({9, 4}, 0x1FF, 100);
    bits_t bits;
    for (const taps_t& taps : std::vector<taps_t>{{}, {0}, {33, 1}, {7, 7}, {0xFFFFFFFFu}}) {
        lib_prbs_code_t prbs = make_prbs(taps);
        prbs.generate_prbs_code(100, bits);
        EXPECT_EQ(bits, pn9);
    }
    lib_prbs_code_t prbs = make_prbs({15, 14});
    prbs.set_custom_primitive_polynomial_enable(false);
    prbs.generate_prbs_code(100, bits);
    EXPECT_EQ(bits, pn9);
    prbs.set_prbs_seed(0);
    EXPECT_EQ(prbs.generate_prbs_code(100, bits), 0u);
    EXPECT_EQ(bits, bits_t(100, 0));
    prbs.set_prbs_seed_to_default();
    prbs.generate_prbs_code(100, bits);
    EXPECT_EQ(bits, pn9);
}
