#include "support/captured_output.h"
#include "support/coder.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_of;
using nr_test::bits_t;

struct crc_case_t
{
    lib_nr_crc_type_t type;
    bits_t divisor; // TS 38.212 clause 5.1, from the exponents
    unsigned long parity_of_123456789;
};

bits_t polynomial(std::initializer_list<std::size_t> exponents)
{
    bits_t divisor(*exponents.begin() + 1, 0);
    for (const std::size_t exponent : exponents)
        divisor[divisor.size() - 1 - exponent] = 1;
    return divisor;
}

const std::vector<crc_case_t>& every_crc()
{
    static const std::vector<crc_case_t> cases = {
        {LIB_NR_CRC_TYPE_24A, polynomial({24, 23, 18, 17, 14, 11, 10, 7, 6, 5, 4, 3, 1, 0}), 0xCDE703},
        {LIB_NR_CRC_TYPE_24B, polynomial({24, 23, 6, 5, 1, 0}), 0x23EF52},
        {LIB_NR_CRC_TYPE_24C, polynomial({24, 23, 21, 20, 17, 15, 13, 12, 8, 4, 2, 1, 0}), 0xF48279},
        {LIB_NR_CRC_TYPE_16, polynomial({16, 12, 5, 0}), 0x31C3},
        {LIB_NR_CRC_TYPE_11, polynomial({11, 10, 9, 5, 0}), 0x5CA},
        {LIB_NR_CRC_TYPE_6, polynomial({6, 5, 0}), 0x15},
    };
    return cases;
}

bits_t joined(bits_t bits, const bits_t& tail)
{
    bits.insert(bits.end(), tail.begin(), tail.end());
    return bits;
}

TEST(lib_nr_crc_calculator, known_answers)
{
    bits_t text;
    for (const char digit : std::string("123456789"))
        text = joined(text, bits_of(static_cast<unsigned char>(digit), 8));
    for (const crc_case_t& c : every_crc()) {
        const auto length = static_cast<unsigned int>(c.divisor.size() - 1);
        lib_nr_crc_calculator_t crc;
        crc.set_crc_type(c.type);
        EXPECT_EQ(crc.get_crc_length(), length) << c.type;
        bits_t out;
        EXPECT_TRUE(crc.deal_crc_attachment(text, out));
        EXPECT_EQ(out, joined(text, bits_of(c.parity_of_123456789, length))) << c.type;
        // A single 1 leaves the polynomial without its first term.
        EXPECT_TRUE(crc.deal_crc_attachment({1}, out));
        EXPECT_EQ(out, c.divisor) << c.type;
    }
}

TEST(lib_nr_crc_calculator, equals_long_division_for_every_length)
{
    std::mt19937 random(31);
    for (const crc_case_t& c : every_crc()) {
        lib_nr_crc_calculator_t crc;
        crc.set_crc_type(c.type);
        for (std::size_t size = 0; size < 20000; size += size < 300 ? 1 : 4567) {
            const bits_t in = nr_test::random_bits(random, size);
            bits_t out(size % 7, 1);
            EXPECT_TRUE(crc.deal_crc_attachment(in, out));
            ASSERT_EQ(out, joined(in, nr_test::long_division(in, c.divisor))) << c.type << ", " << size << " bits";
            bits_t same = in;
            EXPECT_TRUE(crc.deal_crc_attachment(same, same));
            ASSERT_EQ(same, out) << c.type << ", " << size << " bits in place";
        }
    }
}

TEST(lib_nr_crc_calculator, starts_as_24c_and_keeps_its_polynomial_under_an_unknown_type)
{
    const nr_test::captured_output_t output;
    lib_nr_crc_calculator_t crc;
    bits_t out;
    for (const unsigned int type : {unsigned{LIB_NR_CRC_TYPE_24C}, 6u}) {
        EXPECT_EQ(vek::test_peer_t<lib_nr_crc_calculator_t>::type(crc), type);
        EXPECT_EQ(crc.get_crc_length(), 24u);
        EXPECT_TRUE(crc.deal_crc_attachment({1}, out));
        EXPECT_EQ(out, every_crc()[LIB_NR_CRC_TYPE_24C].divisor);
        crc.set_crc_type(static_cast<lib_nr_crc_type_t>(6));
    }
}

} // namespace
