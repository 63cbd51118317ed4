#include "common/lib_symbol_data.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>

using namespace vek::common_lib;

TEST(lib_symbol_data, packs_the_first_bit_highest_and_reads_nothing_past_the_end)
{
    std::independent_bits_engine<std::mt19937, 32, std::uint32_t> random(2);
    for (int trial = 0; trial < 500; ++trial) {
        std::vector<unsigned char> bits(random() % 200);
        for (unsigned char& bit : bits)
            bit = static_cast<unsigned char>(random());
        bits.shrink_to_fit();
        const unsigned int width = random() % 40;
        const unsigned int count = random() % 50;
        const unsigned int offset = random() % 20;
        std::vector<unsigned int> symbols(3, 7);
        lib_symbol_data_t::generate_symbol_arr_by_bit_arr(symbols, bits, count, width, offset);
        std::vector<unsigned int> expected(count);
        for (std::size_t i = 0; i < std::size_t{count} * width; ++i) {
            unsigned int& symbol = expected[i / width];
            symbol = symbol << 1 | (offset + i < bits.size() ? bits[offset + i] & 1u : 0u);
        }
        ASSERT_EQ(symbols, expected) << bits.size() << " bits, " << count << " x " << width << " from " << offset;
    }
    std::vector<unsigned int> symbols;
    lib_symbol_data_t::generate_symbol_arr_by_bit_arr(symbols, {1, 1}, 2, 0xFFFFFFFFu, 0xFFFFFFFFu);
    EXPECT_EQ(symbols, std::vector<unsigned int>(2, 0));
}
