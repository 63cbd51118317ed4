#include "phy/lib_nr_circular_addition.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace
{

using namespace vek::nr_mod_lib;
using complex_t = std::complex<double>;
using signal_t = std::vector<complex_t>;

TEST(lib_nr_circular_addition, what_a_frame_spreads_goes_round_and_nothing_else_does)
{
    // Frames of 4 samples, 2 more behind, 1 ahead.
    const signal_t main = {1, 2, 3, 4, 50, 60};
    const signal_t head = {700};
    const auto added = [&](std::size_t size, std::uint64_t frame) {
        signal_t buffer(size);
        add_frame(main, head, 4, frame, buffer);
        return buffer;
    };
    EXPECT_EQ(added(12, 0), (signal_t{1, 2, 3, 4, 50, 60, 0, 0, 0, 0, 0, 700}));
    EXPECT_EQ(added(12, 1), (signal_t{0, 0, 0, 700, 1, 2, 3, 4, 50, 60, 0, 0}));
    EXPECT_EQ(added(12, 2), (signal_t{50, 60, 0, 0, 0, 0, 0, 700, 1, 2, 3, 4}));
    EXPECT_EQ(added(4, 0), (signal_t{51, 62, 3, 704}));
    // The waveform ends inside the frame, or before it: fewer subframes, or a sample count past 32 bits.
    EXPECT_EQ(added(3, 0), (signal_t{1, 2, 703}));
    EXPECT_EQ(added(10, 2), (signal_t{0, 0, 0, 0, 0, 0, 0, 700, 1, 2}));
    EXPECT_EQ(added(8, 2), signal_t(8));
    EXPECT_EQ(added(8, 1ULL << 40U), signal_t(8));
    EXPECT_EQ(added(0, 0), signal_t());
    // It adds, and may spread further than the buffer is long.
    signal_t buffer(2, 1000);
    add_frame({1, 2, 30, 40, 500}, {7, 80, 900}, 2, 0, buffer);
    EXPECT_EQ(buffer, (signal_t{1531 + 80, 1042 + 907}));
}

TEST(lib_nr_circular_addition, resampling_keeps_every_bin_that_both_rates_hold)
{
    std::mt19937 random(5);
    std::normal_distribution<double> gauss;
    struct lengths_t
    {
        std::size_t own;
        std::size_t buffer;
    };
    for (const lengths_t& c : {lengths_t{960, 390}, lengths_t{960, 391}, lengths_t{401, 640}, lengths_t{400, 400}}) {
        signal_t own(c.own);
        for (complex_t& sample : own)
            sample = {gauss(random), gauss(random)};
        const auto bin = [](const signal_t& signal, long k) {
            complex_t sum = 0;
            for (std::size_t i = 0; i < signal.size(); ++i)
                sum += signal[i] * std::polar(1.0, -2.0 * M_PI * static_cast<double>(k) * static_cast<double>(i) /
                                                       static_cast<double>(signal.size()));
            return sum / std::sqrt(static_cast<double>(signal.size()));
        };
        const signal_t original = own;
        signal_t buffer(c.buffer, complex_t(3, -4));
        add_resampled(own, buffer);
        for (complex_t& sample : buffer)
            sample -= complex_t(3, -4);
        const long both = static_cast<long>((std::min(c.own, c.buffer) - 1) / 2);
        double largest = 0;
        for (long k = -both; k <= both; ++k)
            largest = std::max(largest, std::abs(bin(buffer, k) - bin(original, k)));
        EXPECT_LT(largest, 1e-11) << c.own << " to " << c.buffer;
        // And nothing lies where only one of them has bins.
        for (long k = both + 1; c.buffer > c.own && k <= static_cast<long>(c.buffer) / 2; ++k)
            EXPECT_LT(std::abs(bin(buffer, k)), 1e-11);
    }
}

} // namespace
