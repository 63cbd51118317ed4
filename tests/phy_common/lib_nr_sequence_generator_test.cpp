#include "phy_common/lib_nr_sequence_generator.h"

#include "common/lib_bit_packing.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace
{

using vek::nr_mod_lib::lib_nr_sequence_generator_t;
using bits_t = std::vector<unsigned char>;

bits_t generate(unsigned int c_init, unsigned int length)
{
    bits_t out(3, 1);
    lib_nr_sequence_generator_t::generate_pseudo_random_sequence(c_init, length, out);
    return out;
}

// TS 38.211 clause 5.2.1, bit by bit.
bits_t bit_serial(unsigned int c_init, unsigned int length)
{
    bits_t x1(length + 1631);
    bits_t x2(length + 1631);
    x1[0] = 1;
    for (unsigned int i = 0; i < 31; ++i)
        x2[i] = c_init >> i & 1u;
    for (std::size_t n = 0; n < length + 1600; ++n) {
        x1[n + 31] = x1[n + 3] ^ x1[n];
        x2[n + 31] = x2[n + 3] ^ x2[n + 2] ^ x2[n + 1] ^ x2[n];
    }
    bits_t c(length);
    for (std::size_t i = 0; i < length; ++i)
        c[i] = x1[i + 1600] ^ x2[i + 1600];
    return c;
}

TEST(lib_nr_sequence_generator, first_words)
{
    const std::vector<std::pair<unsigned int, std::string>> rows = {
        {0, "0000001000011010000100100111101000100101100101010000001101010110"},
        {1, "0000001010000011000000110111010000101011100110101111110111100010"},
        {74565, "1101011001010111011110100111101100111010100001111011001101001001"},
        {2147483647, "1111110100001011111100111000111000101110011000000101011110001110"},
    };
    for (const auto& [c_init, text] : rows) {
        const bits_t bits = generate(c_init, 64);
        std::string found;
        for (const unsigned char bit : bits)
            found += static_cast<char>('0' + bit);
        EXPECT_EQ(found, text) << c_init;
    }
}

TEST(lib_nr_sequence_generator, equals_the_recursion_bit_by_bit)
{
    std::mt19937 random(5);
    // Around the word, the memory of the recursion by words, and the window.
    std::vector<unsigned int> lengths = {0,    1,    7,    63,    64,    65,    1920,  1983,  1984,
                                         1985, 2048, 2049, 16383, 16384, 16385, 30784, 30785, 100000};
    for (int i = 0; i < 40; ++i)
        lengths.push_back(static_cast<unsigned int>(random() % 40000));
    for (const unsigned int length : lengths) {
        const unsigned int c_init = static_cast<unsigned int>(random());
        ASSERT_EQ(generate(c_init, length), bit_serial(c_init, length)) << c_init << ", " << length;
        ASSERT_EQ(generate(c_init ^ 0x80000000u, length), generate(c_init, length)) << "bit 31 counts";

        std::vector<std::uint64_t> words(length / 64);
        lib_nr_sequence_generator_t::generate_pseudo_random_words(c_init, words.size(), words.data());
        bits_t bits(64 * words.size());
        vek::common_lib::unpack_bits(words.data(), bits.size(), bits.data());
        ASSERT_EQ(bits, generate(c_init, static_cast<unsigned int>(bits.size()))) << c_init << ", " << length;
        lib_nr_sequence_generator_t::add_pseudo_random_words(c_init, words.size(), words.data());
        ASSERT_EQ(words, std::vector<std::uint64_t>(words.size())) << c_init << ", " << length;
    }
}

} // namespace
