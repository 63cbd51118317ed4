#include "common/lib_common_list_parse.h"

#include "support/captured_output.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <random>
#include <set>

using namespace vek::common_lib;
using parse = lib_common_list_parse_t;

namespace
{

using ints_t = std::vector<int>;

struct index_row_t
{
    const char* text;
    int first;
    int last;
    ints_t list;
    const char* stored;
};

ints_t steps(int first, int step, int last)
{
    ints_t list;
    for (int i = first; i <= last; i += step)
        list.push_back(i);
    return list;
}

} // namespace

TEST(lib_common_list_parse, index_texts)
{
    const std::vector<index_row_t> rows = {
        // Nothing dropped: the text stays, but for its blanks.
        {"0, 1, 2, 3", 0, 7, {0, 1, 2, 3}, "0,1,2,3"},
        {"0:2,5:7", 0, 9, {0, 1, 2, 5, 6, 7}, "0:2,5:7"},
        {"0:3:19", 0, 19, steps(0, 3, 19), "0:3:19"},
        {" 7 , 3:4 ", 0, 9, {7, 3, 4}, "7,3:4"},
        {"-3:-1,+2", -5, 5, {-3, -2, -1, 2}, "-3:-1,+2"},
        {"5:5", 0, 9, {5}, "5:5"},
        {"007", 0, 9, {7}, "007"},
        // Dropped: out of range, repeated, or no entry at all; the list is written anew.
        {"0:99", 0, 19, steps(0, 1, 19), "0:19"},
        {"0:3:30", 0, 19, steps(0, 3, 19), "0,3,6,9,12,15,18"},
        {"-5:2:3", 0, 9, {1, 3}, "1,3"},
        {"8,1,99,2,-1", 0, 9, {8, 1, 2}, "8,1,2"},
        {"1,1,2", 0, 9, {1, 2}, "1,2"},
        {"3:6,4,0", 0, 9, {3, 4, 5, 6, 0}, "3:6,0"},
        {"0,1,x", 0, 9, {0, 1}, "0,1"},
        {"0,,1,2,", 0, 9, {0, 1, 2}, "0:2"},
        {"1 2,4", 0, 9, {4}, "4"},
        {"9:0,1:0:5,1:-1:5,1:2:3:4,:,1:,:2,6", 0, 9, {6}, "6"},
        // Nothing is left.
        {"", 0, 9, {}, ""},
        {" , ", 0, 9, {}, ""},
        {"all", 0, 9, {}, ""},
        {"20:30", 0, 19, {}, ""},
        {"0:5", 3, 2, {}, ""},
        // Numbers beyond any type, and ranges that must not be walked.
        {"0:99999999999999999999999", 0, 3, {0, 1, 2, 3}, "0:3"},
        {"-99999999999999999999999:99999999999999999999999", 0, 3, {0, 1, 2, 3}, "0:3"},
        {"2:9223372036854775807:9223372036854775807", 0, 3, {2}, "2:9223372036854775807:9223372036854775807"},
        {"2147483646:2147483647", INT_MAX - 1, INT_MAX, {INT_MAX - 1, INT_MAX}, "2147483646:2147483647"},
    };
    for (const index_row_t& row : rows) {
        ints_t list = {99};
        std::string stored = "before";
        const bool found = parse::string_to_index_list_in_range(row.text, list, stored, row.first, row.last);
        EXPECT_EQ(list, row.list) << row.text;
        EXPECT_EQ(stored, row.stored) << row.text;
        EXPECT_EQ(found, !row.list.empty()) << row.text;
    }

    std::vector<unsigned int> indices;
    std::string text = "-1, 4:6";
    EXPECT_TRUE(parse::string_to_index_list_in_range(text, indices, text, -3, 9)) << "one string for both";
    EXPECT_EQ(indices, (std::vector<unsigned int>{4, 5, 6}));
    EXPECT_EQ(text, "4:6");
    ints_t list;
    EXPECT_TRUE(parse::string_to_index_list("0:2147483647", list, text));
    EXPECT_EQ(list, steps(0, 1, 65535));
    EXPECT_TRUE(parse::string_to_index_list_in_range("-2147483648:2147483647", list, text, INT_MIN, INT_MAX));
    EXPECT_EQ(list.size(), 65536u) << "a range without bounds does not fill the memory";
}

TEST(lib_common_list_parse, any_text_gives_distinct_indices_in_range_that_their_text_gives_again)
{
    std::independent_bits_engine<std::mt19937, 32, std::uint32_t> random(4);
    const std::string characters = "0123456789,,,::- x";
    for (int trial = 0; trial < 20000; ++trial) {
        std::string text;
        for (unsigned int i = random() % 20; i > 0; --i)
            text += characters[random() % characters.size()];
        const int last = static_cast<int>(random() % 100);
        ints_t list;
        ints_t again;
        std::string stored;
        std::string stored_again;
        parse::string_to_index_list_in_range(text, list, stored, 0, last);
        EXPECT_EQ(std::set<int>(list.begin(), list.end()).size(), list.size()) << text;
        for (const int index : list)
            EXPECT_TRUE(index >= 0 && index <= last) << text;
        for (const std::string& written : {stored, parse::index_list_to_string(list)}) {
            parse::string_to_index_list_in_range(written, again, stored_again, 0, last);
            ASSERT_EQ(again, list) << text << " written as " << written;
            ASSERT_EQ(stored_again, written) << text;
        }
    }
}

TEST(lib_common_list_parse, bit_texts)
{
    std::vector<unsigned char> bits;
    for (const char* text : {"100", "1,0,0", " 1 0\t0 ", "1, 00,"}) {
        EXPECT_TRUE(parse::string_to_bit_list(text, bits)) << text;
        EXPECT_EQ(parse::bit_list_to_string(bits), "100") << text;
    }
    for (const char* text : {"", " ,", "102", "1;0", "0x1"}) {
        EXPECT_FALSE(parse::string_to_bit_list(text, bits)) << text;
        EXPECT_TRUE(bits.empty()) << text;
    }
    EXPECT_EQ(parse::bit_list_to_string({0, 2, 255}), "011");
}

TEST(lib_common_list_parse, float_texts)
{
    const std::string unknown = "cfg_custom_ofdm_common_t::_get_float_list Report : Unknown Data List String Format!\n";
    struct row_t
    {
        const char* text;
        std::vector<double> list;
        unsigned int skipped;
    };
    const std::vector<row_t> rows = {
        {"0.0,0.0,-1.5", {0.0, 0.0, -1.5}, 0},
        {" 1e1 , +2 ", {10.0, 2.0}, 0},
        {"1:0.5:3,7", {1.0, 1.5, 2.0, 7.0}, 0},
        {"3:-1:2", {3.0, 2.0}, 0},
        {"1:2:0", {}, 0},
        {"", {}, 0},
        {"a,1", {1.0}, 1},
        {",1,", {1.0}, 2},
        {"1:2,1:2:3:4,1:2:-1,1:2:1.5,1:x:3", {}, 5},
        {"nan,inf,1e999,1e308:1e308:9,5", {5.0}, 4},
    };
    for (const row_t& row : rows) {
        const nr_test::captured_output_t output;
        std::vector<double> list = {99.0};
        EXPECT_EQ(parse::string_to_float_list(row.text, list), !row.list.empty()) << row.text;
        EXPECT_EQ(list, row.list) << row.text;
        std::string expected;
        for (unsigned int i = 0; i < row.skipped; ++i)
            expected += unknown;
        EXPECT_EQ(output.text(), expected) << row.text;
    }
    std::vector<double> list;
    EXPECT_TRUE(parse::string_to_float_list("0:1:1e300,0:1:70000", list));
    EXPECT_EQ(list.size(), 65536u);
    EXPECT_EQ(parse::float_list_to_string({1.0, -0.25, 1e9, 1.0 / 3.0}), "1,-0.25,1e+09,0.333333");
}

TEST(lib_common_list_parse, parts_and_numbers)
{
    std::vector<std::string> parts;
    for (const char* text : {"a", "a--b", "--a----b--", "--"}) {
        parse::split_str(text, parts, "--");
        EXPECT_EQ(parse::combine_str(parts, "--"), text);
    }
    parse::split_str("a,,b", parts, ",");
    EXPECT_EQ(parts, (std::vector<std::string>{"a", "", "b"}));
    parse::split_str("a,b", parts, "");
    EXPECT_EQ(parts, (std::vector<std::string>{"a,b"}));
    parse::split_str("", parts, ",");
    EXPECT_TRUE(parts.empty());

    int value = 5;
    for (const char* text : {"", "x", "1x", "1.5", "2147483648", "-2147483649", "99999999999999999999", "+-1", "1 2"})
        EXPECT_FALSE(parse::str_to_int(text, value)) << text;
    EXPECT_EQ(value, 5);
    EXPECT_TRUE(parse::str_to_int(" -2147483648 ", value));
    EXPECT_EQ(value, INT_MIN);
    EXPECT_TRUE(parse::str_to_int("+12", value));
    EXPECT_EQ(value, 12);

    EXPECT_EQ(parse::_count_character_in_str("1:2:3", ':'), 2u);
    for (const char* text : {"1", "0:19", " 1, 2", "-1:5"})
        EXPECT_TRUE(parse::check_valid_content(text)) << text;
    for (const char* text : {"", ",", "1;2", "a", "1.5"})
        EXPECT_FALSE(parse::check_valid_content(text)) << text;
}
