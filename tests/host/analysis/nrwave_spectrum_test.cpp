#include "host/analysis/nrwave_spectrum.h"

#include <cmath>
#include <complex>
#include <gtest/gtest.h>
#include <numbers>
#include <vector>

namespace
{

using namespace nrwave;
using samples_t = std::vector<std::complex<double>>;

void add_tone(samples_t& samples, double turns, double power, std::size_t begin, std::size_t end)
{
    for (std::size_t i = begin; i < end; ++i)
        samples[i] += std::polar(std::sqrt(power), 2.0 * std::numbers::pi * turns * static_cast<double>(i));
}

// Where a tone begins and ends within the signal, and whether it falls on a line, changes nothing.
TEST(nrwave_spectrum, finds_all_power_of_a_tone_and_none_beside_it)
{
    constexpr std::size_t k_samples = 30'720;
    for (const std::uint64_t rate : {7'680'000U, 122'880'000U, 30'000'007U})
        for (const double line : {0.0, 1.0, 4321.0, 15'360.0, 30'719.0}) {
            const double turns = line / static_cast<double>(k_samples);
            samples_t samples(k_samples);
            add_tone(samples, turns, 0.01, 0, k_samples);
            const signal_t signal{samples, rate};
            const spectrum_t spectrum(signal);
            const double hertz = static_cast<double>(rate) * (turns > 0.5 ? turns - 1.0 : turns);
            const double away = 12.0 * spectrum.resolution_hz();
            EXPECT_LE(spectrum.resolution_hz(), 15e3);
            EXPECT_GT(spectrum.resolution_hz(), 13e3);
            if (line == 15'360.0) // half the rate: at both ends
                continue;
            EXPECT_NEAR(spectrum.power_between(hertz - away, hertz + away), 0.01, 1e-9) << rate << ' ' << line;
            for (const spectrum_point_t& point : spectrum.points(1'000'000)) {
                const double off = std::fabs(point.frequency_hz - hertz);
                EXPECT_FALSE(off > away / 3.0 && off < static_cast<double>(rate) / 2.0 && point.peak > 1e-14)
                    << rate << ' ' << line << ' ' << point.frequency_hz;
            }
            double peak = 0.0;
            for (const spectrum_point_t& point : spectrum.points(300))
                peak = std::max(peak, point.peak);
            EXPECT_NEAR(10.0 * std::log10(peak), -20.0, 0.9) << "between two lines a tone shows less";

            samples_t burst(k_samples);
            add_tone(burst, turns, 0.01, 29'000, k_samples);
            add_tone(burst, turns, 0.01, 0, 200);
            EXPECT_NEAR(spectrum_t(signal_t{burst, rate}).power_between(-1e9, 1e9), 0.01 * 1920.0 / k_samples, 1.4e-7);
        }
}

TEST(nrwave_spectrum, cuts_half_a_percent_at_either_end_of_what_is_occupied)
{
    constexpr std::size_t k_samples = 76'800;
    constexpr std::uint64_t k_rate = 7'680'000;
    const auto width_with = [&](double outer) {
        samples_t samples(k_samples);
        add_tone(samples, 0.0, 1.0 - 2.0 * outer, 0, k_samples);
        add_tone(samples, 0.125, outer, 0, k_samples);
        add_tone(samples, -0.125, outer, 0, k_samples);
        const spectrum_t spectrum(signal_t{samples, k_rate});
        const auto occupied = spectrum.occupied({-3e6, 3e6}, 0.99);
        EXPECT_FALSE(spectrum.occupied({2e6, 2e6}, 0.99)) << "an empty band";
        EXPECT_NEAR(occupied->low_hz, -occupied->high_hz, 100.0);
        return occupied->width_hz();
    };
    EXPECT_NEAR(width_with(0.006), 1'920e3, 30e3);
    EXPECT_NEAR(width_with(0.004), 0.0, 50e3);
    EXPECT_FALSE(spectrum_t({samples_t(1000), k_rate}).occupied({-1e6, 1e6}, 0.99));
    EXPECT_TRUE(spectrum_t({samples_t(), 0}).points(100).empty());
    EXPECT_EQ(spectrum_t({samples_t(), 0}).power_between(-1.0, 1.0), 0.0);
}

} // namespace
