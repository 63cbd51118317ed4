#include "phy/lib_nr_circular_addition.h"

#include <algorithm>
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
    // Frames of 4 samples, each 1 more than the one before; 2 more behind, 1 ahead.
    const auto laid = [](std::size_t size, std::uint64_t frames, std::uint64_t silent) {
        signal_t waveform(size, 1e9); // what was there is written over
        frame_seams_t seams;
        seams.open(4);
        for (std::uint64_t f = 0; f < frames; ++f) {
            signal_t head = f == silent ? signal_t() : signal_t{700};
            signal_t tail = f == silent ? signal_t() : signal_t{50, 60};
            for (std::size_t i = 4 * f; i < std::min<std::size_t>(size, 4 * f + 4); ++i)
                waveform[i] = f == silent ? 0.0 : static_cast<double>(1 + f);
            seams.join(f, head, tail, waveform);
        }
        seams.close(waveform);
        return waveform;
    };
    EXPECT_EQ(laid(12, 3, 9), (signal_t{51, 61, 1, 701, 52, 62, 2, 702, 53, 63, 3, 703}));
    EXPECT_EQ(laid(12, 3, 1), (signal_t{51, 61, 1, 1, 50, 60, 0, 700, 3, 3, 3, 703}));
    EXPECT_EQ(laid(12, 3, 0), (signal_t{50, 60, 0, 700, 2, 2, 2, 702, 53, 63, 3, 3}));
    EXPECT_EQ(laid(12, 3, 2), (signal_t{1, 1, 1, 701, 52, 62, 2, 2, 50, 60, 0, 700}));
    EXPECT_EQ(laid(4, 1, 9), (signal_t{51, 61, 1, 701}));
    // The waveform ends inside a frame, or before it: fewer subframes, or a sample count past 32 bits.
    EXPECT_EQ(laid(3, 1, 9), (signal_t{1, 1, 701}));
    EXPECT_EQ(laid(10, 3, 9), (signal_t{1, 1, 1, 701, 52, 62, 2, 702, 53, 763}));
    EXPECT_EQ(laid(8, 4, 9), (signal_t{51, 61, 1, 701, 52, 62, 2, 702}));
    EXPECT_EQ(laid(0, 2, 9), signal_t());
    // It may spread further than the waveform is long.
    signal_t waveform = {1031, 1042};
    signal_t head = {7, 80, 900};
    signal_t tail = {500, 5, 50};
    frame_seams_t seams;
    seams.open(2);
    seams.join(0, head, tail, waveform);
    seams.close(waveform);
    EXPECT_EQ(waveform, (signal_t{1031 + 550 + 80, 1042 + 5 + 907}));
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
