#include "phy_ul/lib_nr_low_papr_sequence1.h"
#include "phy_ul/lib_nr_low_papr_sequence2.h"

#include "receiver/low_papr.h"
#include "support/noise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <stdexcept>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::largest_difference;
using row_t = std::vector<std::complex<double>>;

row_t base(std::uint32_t u, std::uint32_t v, std::uint32_t m, std::int32_t delta = 0)
{
    row_t row;
    lib_nr_low_papr_sequence1::generate_basic_sequence({u, v, 0.0, delta, m}, row);
    return row;
}

TEST(lib_nr_low_papr_sequence, sequences_of_either_type_are_those_of_the_receiver)
{
    for (const std::uint32_t m : {4u, 6u, 8u, 12u, 18u, 24u, 30u, 36u, 48u, 72u, 144u, 1632u})
        for (std::uint32_t u = 0; u < 30; ++u) {
            for (const std::uint32_t v : {0u, 1u})
                EXPECT_LT(largest_difference(base(u, v, m, 1), nr_test::low_papr_type_1(u, v, m)), 1e-10)
                    << m << ' ' << u << ' ' << v;
            row_t row;
            lib_nr_low_papr_sequence2::generate_low_papr_sequence_2({u, 1, 1234 + u, m}, row);
            EXPECT_LT(largest_difference(row, nr_test::low_papr_type_2(u, 1234 + u, (m + 5) / 6 * 6)), 1e-10)
                << m << ' ' << u;
        }
}

TEST(lib_nr_low_papr_sequence, every_length_and_shift_follows_the_length_rule)
{
    EXPECT_EQ(get_low_papr_base_length(30, 1), 30u);
    EXPECT_EQ(get_low_papr_base_length(31, 1), 36u);
    EXPECT_EQ(get_low_papr_base_length(10, 2), 12u);
    EXPECT_EQ(get_low_papr_base_length(13, -1), 24u);
    EXPECT_THROW(base(30, 0, 12), std::out_of_range);
    row_t none = base(0, 0, 0);
    lib_nr_low_papr_sequence2::generate_low_papr_sequence_2({0, 0, 1, 0}, none);
    EXPECT_TRUE(none.empty());
    for (const std::uint32_t m : {6u, 12u, 18u, 24u, 30u, 36u, 612u, 1632u}) {
        row_t expected = {1.0};
        for (const auto& value : base(17, 0, m, 1))
            expected.push_back(value * std::polar(1.0, 2.5 * static_cast<double>(expected.size() - 1)));
        row_t turned = {1.0};
        lib_nr_low_papr_sequence1::generate_low_papr_sequence_1({17, 0, 2.5, 1, m}, turned);
        EXPECT_LT(largest_difference(turned, expected), 1e-10) << m;
    }
}

} // namespace
