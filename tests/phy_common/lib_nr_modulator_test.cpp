#include "support/captured_output.h"
#include "support/coder.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <functional>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using point_t = std::complex<double>;

struct constellation_case_t
{
    lib_nr_modulation_type_t type;
    unsigned int order;
    double distance_squared; // between nearest points, before scaling by the mean power
    std::function<point_t(const bits_t&)> point;
};

double sign(unsigned char bit) { return 1.0 - 2.0 * bit; }

point_t scaled(double real, double imaginary, double divisor) { return {real / divisor, imaginary / divisor}; }

// TS 38.211 clauses 5.1.1 to 5.1.7, as they stand there.
const std::vector<constellation_case_t>& every_constellation()
{
    const auto bpsk = [](const bits_t& b) {
        return point_t(sign(b[0]) * 0.7071067811865476, sign(b[0]) * 0.7071067811865476);
    };
    static const std::vector<constellation_case_t> cases = {
        {LIB_NR_MODULATION_HALF_PI_BPSK, 1, 4.0, bpsk},
        {LIB_NR_MODULATION_BPSK, 1, 4.0, bpsk},
        {LIB_NR_MODULATION_QPSK, 2, 4.0 / 2,
         [](const bits_t& b) { return scaled(sign(b[0]), sign(b[1]), std::sqrt(2.0)); }},
        {LIB_NR_MODULATION_16QAM, 4, 4.0 / 10,
         [](const bits_t& b) {
             return scaled(sign(b[0]) * (2 - sign(b[2])), sign(b[1]) * (2 - sign(b[3])), std::sqrt(10.0));
         }},
        {LIB_NR_MODULATION_64QAM, 6, 4.0 / 42,
         [](const bits_t& b) {
             return scaled(sign(b[0]) * (4 - sign(b[2]) * (2 - sign(b[4]))),
                           sign(b[1]) * (4 - sign(b[3]) * (2 - sign(b[5]))), std::sqrt(42.0));
         }},
        {LIB_NR_MODULATION_256QAM, 8, 4.0 / 170,
         [](const bits_t& b) {
             return scaled(sign(b[0]) * (8 - sign(b[2]) * (4 - sign(b[4]) * (2 - sign(b[6])))),
                           sign(b[1]) * (8 - sign(b[3]) * (4 - sign(b[5]) * (2 - sign(b[7])))), std::sqrt(170.0));
         }},
        {LIB_NR_MODULATION_1024QAM, 10, 4.0 / 682,
         [](const bits_t& b) {
             return scaled(sign(b[0]) * (16 - sign(b[2]) * (8 - sign(b[4]) * (4 - sign(b[6]) * (2 - sign(b[8]))))),
                           sign(b[1]) * (16 - sign(b[3]) * (8 - sign(b[5]) * (4 - sign(b[7]) * (2 - sign(b[9]))))),
                           std::sqrt(682.0));
         }},
    };
    return cases;
}

TEST(lib_nr_modulator, constellations_are_exact_of_unit_power_and_gray)
{
    for (const constellation_case_t& c : every_constellation()) {
        const auto map = lib_nr_modulator_t(c.type).get_constellation_map();
        EXPECT_EQ(lib_nr_modulator_t::get_modulation_order(c.type), c.order);
        ASSERT_EQ(map.size(), std::size_t{1} << c.order);
        double power = 0.0;
        for (const auto& [symbol, point] : map) {
            EXPECT_EQ(point, c.point(nr_test::bits_of(symbol, c.order))) << c.type << ", symbol " << symbol;
            power += std::norm(point);
            for (const auto& [other, other_point] : map)
                if (other != symbol && std::norm(point - other_point) < 1.001 * c.distance_squared) {
                    EXPECT_EQ(std::popcount(symbol ^ other), 1) << c.type << ": " << symbol << ", " << other;
                }
        }
        EXPECT_NEAR(power / static_cast<double>(map.size()), 1.0, 1e-12) << c.type;
    }
}

TEST(lib_nr_modulator, maps_bits_in_groups_and_turns_every_second_symbol_of_half_pi_bpsk)
{
    std::mt19937 random(8);
    std::vector<point_t> symbols(5);
    for (const constellation_case_t& c : every_constellation()) {
        const lib_nr_modulator_t modulator(c.type);
        for (const std::size_t count : {0u, 1u, 2u, 3u, 500u}) {
            const bits_t bits = nr_test::random_bits(random, count * c.order);
            modulator.deal_nr_modulation(bits, symbols);
            ASSERT_EQ(symbols.size(), count);
            for (std::size_t i = 0; i < count; ++i) {
                const auto first = bits.begin() + static_cast<std::ptrdiff_t>(i * c.order);
                point_t expected = c.point(bits_t(first, first + c.order));
                if (c.type == LIB_NR_MODULATION_HALF_PI_BPSK && i % 2 == 1)
                    expected = {-expected.imag(), expected.real()};
                ASSERT_EQ(symbols[i], expected) << c.type << ", symbol " << i << " of " << count;
            }
        }
    }
}

TEST(lib_nr_modulator, keeps_its_constellation_under_an_unknown_type)
{
    const nr_test::captured_output_t output;
    const auto unknown = static_cast<lib_nr_modulation_type_t>(7);
    std::vector<point_t> symbols(1);
    lib_nr_modulator_t modulator(unknown);
    EXPECT_TRUE(modulator.get_constellation_map().empty());
    modulator.deal_nr_modulation({1, 0}, symbols);
    EXPECT_TRUE(symbols.empty());

    modulator.set_modulation_type(LIB_NR_MODULATION_HALF_PI_BPSK);
    modulator.set_modulation_type(unknown);
    modulator.deal_nr_modulation({0, 0}, symbols); // BPSK's points, no turn
    ASSERT_EQ(symbols.size(), 2u);
    EXPECT_EQ(symbols[0], symbols[1]);
    EXPECT_EQ(modulator.get_constellation_map().size(), 2u);
}

} // namespace
