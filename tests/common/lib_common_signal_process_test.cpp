#include "common/lib_common_signal_process.h"

#include "support/noise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace vek::common_lib;

namespace
{

using samples_t = std::vector<std::complex<double>>;

} // namespace

TEST(lib_common_signal_process, mixer_keeps_its_phase_over_millions_of_samples)
{
    for (const double turns : {12345.678 / 122.88e6, -50e6 / 245.76e6, 0.4999999, 1e-12, 3.25, -1234567.1}) {
        samples_t signal(5'000'000, 1.0);
        lib_common_signal_process_t::deal_mixer(signal, turns, 0.3);
        double worst = 0.0;
        for (std::size_t i = 0; i < signal.size(); i += 997) {
            // Exact, for the 64 bits of a long double hold the product of the fraction of a turn and the count.
            const long double fraction = std::remainder(static_cast<long double>(turns), 1.0L) * i;
            const long double angle = 2 * std::numbers::pi_v<long double> * (fraction - std::floor(fraction)) + 0.3L;
            const std::complex<double> expected(static_cast<double>(std::cos(angle)),
                                                static_cast<double>(std::sin(angle)));
            worst = std::max(worst, std::abs(signal[i] - expected));
        }
        EXPECT_LT(worst, 1e-12) << turns;
    }
}

TEST(lib_common_signal_process, mixer_leaves_a_signal_alone_without_an_offset)
{
    const samples_t original = nr_test::noise(1000, 7);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const auto& [turns, phase] : std::vector<std::pair<double, double>>{
             {0.0, 0.0}, {3.0, 0.0}, {infinity, 0.0}, {0.1, infinity}, {std::nan(""), 0.0}})
    {
        samples_t signal = original;
        lib_common_signal_process_t::deal_mixer(signal, turns, phase);
        EXPECT_EQ(signal, original) << turns;
    }
    samples_t empty;
    lib_common_signal_process_t::deal_mixer(empty, 0.1, 0.1);

    // There and back again, with a modulated signal.
    samples_t signal = original;
    lib_common_signal_process_t::deal_mixer(signal, 0.123, 1.0);
    lib_common_signal_process_t::deal_mixer(signal, -0.123, -1.0);
    for (std::size_t i = 0; i < signal.size(); ++i)
        EXPECT_LT(std::abs(signal[i] - original[i]), 1e-14);
}

TEST(lib_common_signal_process, burst_is_what_lies_between_the_gaps)
{
    struct row_t
    {
        std::size_t length;
        std::vector<std::pair<std::size_t, std::size_t>> active; // first and last sample of each active part
    };
    const std::vector<row_t> rows = {
        {1'228'800, {{0, 1'228'799}}},
        {1'228'800, {{100'000, 104'383}}},
        {1'228'800, {{30'000, 91'000}, {700'000, 900'000}}},
        {1'228'800, {{0, 300'000}}},
        {1'228'800, {{1'000'000, 1'228'799}}},
        {1'228'800, {{0, 4000}, {1'226'000, 1'228'799}}},
        {1'228'801, {{1'228'800, 1'228'800}}},
        {1'228'800, {{0, 0}}},
        {20'000, {{777, 1500}}},
        {1000, {{0, 999}}},
        {5, {{0, 4}}},
        {1, {{0, 0}}},
    };
    for (const row_t& row : rows) {
        const samples_t noise = nr_test::noise(row.length, 8);
        samples_t signal(row.length);
        for (const auto& [first, last] : row.active)
            std::copy(noise.begin() + static_cast<std::ptrdiff_t>(first),
                      noise.begin() + static_cast<std::ptrdiff_t>(last) + 1,
                      signal.begin() + static_cast<std::ptrdiff_t>(first));
        // What a real filter leaves in the gaps.
        for (std::complex<double>& sample : signal)
            if (sample == 0.0)
                sample = 1e-5;
        const samples_t expected(signal.begin() + static_cast<std::ptrdiff_t>(row.active.front().first),
                                 signal.begin() + static_cast<std::ptrdiff_t>(row.active.back().second) + 1);
        samples_t burst(3);
        lib_common_signal_process_t::get_burst_signal_data(signal, burst);
        EXPECT_EQ(burst.size(), expected.size());
        EXPECT_TRUE(burst == expected) << row.length << " samples, first " << row.active.front().first;
        lib_common_signal_process_t::get_burst_signal_data(signal, signal);
        EXPECT_TRUE(signal == expected) << "in place";
    }
    for (samples_t silent : {samples_t(), samples_t(1), samples_t(100'000)}) {
        lib_common_signal_process_t::get_burst_signal_data(silent, silent);
        EXPECT_TRUE(silent.empty());
    }
}
