#include "common/lib_number_text.h"

#include "common/lib_common_list_parse.h"
#include "support/comma_locale.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

using namespace vek::common_lib;

namespace
{

std::vector<double> awkward_values()
{
    std::vector<double> values = {
        0.0,     -0.0, 0.1,           -40.25, 1e9,      3.5e9,     1e15,
        1e16,    1e17, 1e100,         1e-5,   0.0001,   1e-300,    5e-324,
        1.0 / 3, 2e22, 123456789.125, -1e308, HUGE_VAL, -HUGE_VAL, std::numeric_limits<double>::max()};
    std::mt19937_64 random(3);
    while (values.size() < 2000) {
        const double value = std::bit_cast<double>(random());
        if (std::isfinite(value))
            values.push_back(value);
    }
    return values;
}

} // namespace

TEST(lib_number_text, writes_what_the_tree_writes_and_reads_it_back)
{
    for (const double value : awkward_values()) {
        pugi::xml_document document;
        document.append_child("x").text().set(value);
        const std::string text = lib_number_text_t::double_to_text(value);
        EXPECT_EQ(text, document.child("x").text().as_string());
        EXPECT_EQ(std::bit_cast<std::uint64_t>(lib_number_text_t::text_to_double(text)),
                  std::bit_cast<std::uint64_t>(value))
            << text;
    }
}

TEST(lib_number_text, reads_like_the_c_library_in_the_c_locale)
{
    for (const char* text : {"",
                             " ",
                             "0.1",
                             "  -2.5e3xyz",
                             "+7",
                             "+-7",
                             "-",
                             "+",
                             ".5",
                             "5.",
                             "1e",
                             "1e+",
                             "1,5",
                             "e5",
                             "abc",
                             "1e400",
                             "-1e400",
                             "1e-400",
                             "-1e-400",
                             "0e999999999999999999999",
                             "1e999999999999999999999",
                             "1e-999999999999999999999",
                             "0.00001e310",
                             "100000e-330",
                             "0.0000000001e-320",
                             "1234567890e305",
                             "\t\n1",
                             "nan",
                             "inf",
                             "-infinity"})
    {
        const double expected = std::strtod(text, nullptr);
        const double value = lib_number_text_t::text_to_double(text);
        EXPECT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected))) << text << " gave " << value;
        EXPECT_EQ(std::signbit(value), std::signbit(expected)) << text;
    }
    for (const char* text : {"", " ", "nan", "inf", "1e400", "1x", "1 2", "+-1", "1,5"}) {
        double value = 42.0;
        EXPECT_FALSE(lib_number_text_t::text_to_double(text, value)) << text;
        EXPECT_EQ(value, 42.0);
    }
    double value = 0.0;
    EXPECT_FALSE(lib_number_text_t::text_to_double(std::string_view(), value));
    EXPECT_TRUE(lib_number_text_t::text_to_double(" +1.5e2\n", value));
    EXPECT_EQ(value, 150.0);
}

TEST(lib_number_text, does_not_follow_the_locale)
{
    const nr_test::comma_locale_t locale;
    char formatted[16];
    std::snprintf(formatted, sizeof(formatted), "%g", 0.5);
    ASSERT_STREQ(formatted, "0,5");

    EXPECT_EQ(lib_number_text_t::double_to_text(1234567.5), "1234567.5");
    EXPECT_EQ(lib_number_text_t::text_to_double("0.25"), 0.25);
    EXPECT_EQ(lib_common_list_parse_t::float_list_to_string({0.5, 1234567.0}), "0.5,1.23457e+06");
    EXPECT_EQ(lib_common_list_parse_t::index_list_to_string(std::vector<int>{1234567}), "1234567");
    std::vector<double> list;
    EXPECT_TRUE(lib_common_list_parse_t::string_to_float_list("0.5:0.25:3,-1.5", list));
    EXPECT_EQ(list, (std::vector<double>{0.5, 0.75, 1.0, -1.5}));
}
