#include "phy_ul/lib_nr_low_papr_sequence1.h"
#include "phy_ul/lib_nr_low_papr_sequence2.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <stdexcept>
#include <utility>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using row_t = std::vector<std::complex<double>>;

row_t base(std::uint32_t u, std::uint32_t v, std::uint32_t m, std::int32_t delta = 0)
{
    row_t row;
    lib_nr_low_papr_sequence1::generate_basic_sequence({u, v, 0.0, delta, m}, row);
    return row;
}

std::complex<double> correlation(const row_t& a, const row_t& b, std::size_t period, std::size_t lag)
{
    std::complex<double> sum = 0.0;
    for (std::size_t n = 0; n < period; ++n)
        sum += a[n] * std::conj(b[(n + lag) % period]);
    return sum;
}

// A Zadoff-Chu sequence of prime length correlates with none of its own shifts, and with another root's by the root of
// its length; the sequence goes on cyclically behind the prime.
TEST(lib_nr_low_papr_sequence, long_bases_are_zadoff_chu_sequences_of_their_largest_prime)
{
    for (const auto& [m, prime] : {std::pair{36u, 31u}, {48u, 47u}, {72u, 71u}, {144u, 139u}, {1632u, 1627u}}) {
        const std::uint32_t v = m >= 72; // shorter ones have one sequence a group
        const row_t row = base(29, v, m);
        ASSERT_EQ(row.size(), m);
        for (const auto& value : row)
            EXPECT_NEAR(std::abs(value), 1.0, 1e-12);
        for (const std::size_t lag : {std::size_t{1}, std::size_t{2}, std::size_t{prime / 2}})
            EXPECT_LT(std::abs(correlation(row, row, prime, lag)), 1e-8) << m;
        for (std::size_t n = prime; n < m; ++n)
            EXPECT_LT(std::abs(row[n] - row[n - prime]), 1e-12);
        for (const row_t& other : {base(28, v, m), base(14, 0, m), base(0, 0, m)})
            EXPECT_NEAR(std::abs(correlation(row, other, prime, 5)), std::sqrt(prime), 1e-8) << m;
    }
    // The root of group 0 at length 36: q-bar is 1, so the second value is one step of the root 1 of 31.
    EXPECT_NEAR(std::arg(base(0, 0, 36)[1]), -2.0 * std::numbers::pi / 31.0, 1e-12);
}

TEST(lib_nr_low_papr_sequence, every_length_and_shift_follows_the_length_rule)
{
    EXPECT_EQ(get_low_papr_base_length(30, 1), 30u);
    EXPECT_EQ(get_low_papr_base_length(31, 1), 36u);
    EXPECT_EQ(get_low_papr_base_length(10, 2), 12u);
    EXPECT_EQ(get_low_papr_base_length(13, -1), 24u);
    EXPECT_NEAR(std::arg(base(3, 0, 30, 1)[0]), -std::numbers::pi * 4 * 2 / 31.0, 1e-12);
    EXPECT_NEAR(std::arg(base(0, 0, 6, 1)[1]), -std::numbers::pi / 4.0, 1e-12);
    EXPECT_THROW(base(30, 0, 12), std::out_of_range);
    for (const std::uint32_t m : {6u, 12u, 18u, 24u, 30u, 36u, 612u, 1632u}) {
        const row_t plain = base(17, 0, m, 1);
        row_t turned = {1.0};
        lib_nr_low_papr_sequence1::generate_low_papr_sequence_1({17, 0, 2.5, 1, m}, turned);
        ASSERT_EQ(turned.size(), m + 1);
        for (std::size_t n = 0; n < m; ++n)
            EXPECT_LT(std::abs(turned[n + 1] - plain[n] * std::polar(1.0, 2.5 * static_cast<double>(n))), 1e-11);
    }
}

TEST(lib_nr_low_papr_sequence, sequences_have_mean_power_1_and_constant_envelope_behind_the_transform)
{
    for (const std::uint32_t m : {6u, 12u, 18u, 24u, 30u, 36u, 300u})
        for (std::uint32_t u = 0; u < 30; ++u) {
            row_t row;
            lib_nr_low_papr_sequence2::generate_low_papr_sequence_2({u, 1, 1234 + u, m}, row);
            ASSERT_EQ(row.size(), m);
            for (std::size_t n = 0; n < m; n += 5) {
                std::complex<double> sample = 0.0;
                for (std::size_t k = 0; k < m; ++k)
                    sample += row[k] * std::polar(1.0, 2.0 * std::numbers::pi * static_cast<double>(n * k % m) / m);
                EXPECT_NEAR(std::abs(sample) / std::sqrt(m), 1.0, 1e-10) << m << " " << u;
            }
        }
}

} // namespace
