#include "common/lib_common_container.h"

#include "common/lib_common_math.h"
#include "common/lib_normalization.h"
#include "support/captured_output.h"

#include <algorithm>
#include <complex>
#include <gtest/gtest.h>
#include <limits>

namespace
{

using namespace vek::common_lib;
using list_t = std::vector<int>;

TEST(lib_common_container, shifts_add_join_and_split_within_their_limits)
{
    struct row_t
    {
        int shift;
        list_t result;
        const char* line;
    };
    const char* range = "lib_common_container_t::deal_cyclic_shift Report : Shift Offset Out of Range!\n";
    for (const row_t& row : {row_t{0, {1, 2, 3}, ""}, row_t{1, {3, 1, 2}, ""}, row_t{-1, {2, 3, 1}, ""},
                             row_t{3, {1, 2, 3}, ""}, row_t{4, {1, 2, 3}, range}, row_t{-4, {1, 2, 3}, range},
                             row_t{std::numeric_limits<int>::min(), {1, 2, 3}, range}})
    {
        nr_test::captured_output_t output;
        list_t values = {1, 2, 3};
        lib_common_container_t::deal_cyclic_shift(row.shift, values);
        EXPECT_EQ(values, row.result) << row.shift;
        EXPECT_EQ(output.text(), row.line) << row.shift;
    }
    nr_test::captured_output_t output;
    list_t none;
    lib_common_container_t::deal_cyclic_shift(0, none);
    std::vector<list_t> parts;
    EXPECT_FALSE(lib_common_container_t::split_vector(4, list_t{1, 2, 3, 4, 5}, parts));
    EXPECT_EQ(output.text(), "lib_common_container_t::deal_cyclic_shift Report : Empty Vector!\n"
                             "lib_common_container_t::split_vector Report : Divide in equal is Impossible!\n");
    EXPECT_TRUE(lib_common_container_t::split_vector(4, list_t{1, 2, 3, 4}, parts));
    EXPECT_EQ(parts, (std::vector<list_t>{{1}, {2}, {3}, {4}}));
    list_t joined;
    lib_common_container_t::combine_vector(parts, joined);
    EXPECT_EQ(joined, (list_t{1, 2, 3, 4}));

    list_t target = {10, 20, 30};
    lib_common_container_t::deal_data_addition(list_t{1, 2, 3}, target, 1);
    lib_common_container_t::deal_data_addition(list_t{}, target, 0);
    lib_common_container_t::deal_data_addition(list_t{9}, target, 3);
    lib_common_container_t::deal_data_addition(list_t{9}, target, std::numeric_limits<std::size_t>::max());
    EXPECT_EQ(target, (list_t{10, 21, 32}));

    std::vector<unsigned char> bits;
    lib_common_container_t::extract_bit_data(0b1101, 6, bits);
    EXPECT_EQ(bits, (std::vector<unsigned char>{0, 0, 1, 1, 0, 1}));
    lib_common_container_t::extract_bit_data(0xFFFFFFFFU, 34, bits);
    EXPECT_EQ(std::count(bits.begin(), bits.end(), 1), 32);
    EXPECT_EQ(bits.front(), 0);
}

TEST(lib_common_container, powers_of_two_and_full_scale)
{
    for (const auto& [value, power] : std::vector<std::pair<unsigned int, unsigned int>>{
             {0, 4}, {1, 4}, {4, 4}, {5, 8}, {4096, 4096}, {4097, 8192}, {3276, 4096}})
        EXPECT_EQ(lib_common_math_t::get_min_pow_of_2(value, 4), power) << value;
    for (unsigned int value = 0; value < 70; ++value)
        EXPECT_EQ(lib_common_math_t::is_power_of_2(value),
                  value == 1 || value == 2 || value == 4 || value == 8 || value == 16 || value == 32 || value == 64);

    std::vector<std::complex<double>> signal = {{0.1, -0.3}, {0.2, 0.05}};
    lib_normalization_t::iq_value_max_normalize(signal);
    EXPECT_EQ(signal[0].imag(), -1.0);
    EXPECT_NEAR(signal[1].real(), 2.0 / 3.0, 1e-15);
    std::vector<std::complex<double>> silent(3);
    lib_normalization_t::iq_value_max_normalize(silent);
    EXPECT_EQ(silent, std::vector<std::complex<double>>(3));
    EXPECT_EQ(lib_common_math_t::get_data_max_amplitude({}), 0.0);
    EXPECT_DOUBLE_EQ(lib_common_math_t::get_data_max_amplitude({{3, -4}, {1, 1}}), 5.0);
    EXPECT_DOUBLE_EQ(lib_common_math_t::db_value_to_amplitude_ratio(-20), 0.1);
}

} // namespace
