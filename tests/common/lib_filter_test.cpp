#include "common/lib_filter.h"

#include "common/lib_fir_filter_design.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace
{

using namespace vek::common_lib;
using signal_t = std::vector<std::complex<double>>;

signal_t design(double cutoff, unsigned int order = 1024)
{
    lib_fir_filter_design_t filter;
    filter.set_filter_passband_type(0);
    filter.set_filter_order(order);
    filter.set_cutoff_freq(cutoff);
    filter.generate_fir_filter();
    return filter.get_filter_data();
}

/// Response at a frequency, 1 being half the rate, without the group delay.
double response(const signal_t& taps, double frequency)
{
    const double middle = 0.5 * static_cast<double>(taps.size() - 1);
    double sum = 0;
    for (std::size_t i = 0; i < taps.size(); ++i)
        sum += taps[i].real() * std::cos(M_PI * frequency * (static_cast<double>(i) - middle));
    return sum;
}

TEST(lib_filter, passes_up_to_the_cut_off_and_stops_behind_the_transition)
{
    for (const double cutoff : {0.006, 0.01, 0.2, 0.5, 0.8125, 0.97}) {
        const signal_t taps = design(cutoff);
        ASSERT_EQ(taps.size(), 1025u);
        for (std::size_t i = 0; i < taps.size(); ++i) {
            EXPECT_EQ(taps[i].imag(), 0.0);
            EXPECT_EQ(taps[i], taps[1024 - i]);
        }
        EXPECT_NEAR(response(taps, 0), 1.0, 1e-12);
        double ripple = 0;
        double leak = 0;
        for (unsigned int i = 0; i <= 4000; ++i) {
            const double frequency = i / 4000.0;
            if (frequency <= cutoff)
                ripple = std::max(ripple, std::fabs(response(taps, frequency) - 1.0));
            else if (frequency >= cutoff + 0.011)
                leak = std::max(leak, std::fabs(response(taps, frequency)));
        }
        EXPECT_LT(ripple, 1e-4) << cutoff;
        EXPECT_LT(leak, 1e-4) << cutoff;
    }
    signal_t delay(1025);
    delay[512] = 1.0;
    for (const double cutoff : {0.995, 1.0, 7.0})
        EXPECT_EQ(design(cutoff), delay) << cutoff;
    EXPECT_EQ(design(std::nan("")), delay);
}

TEST(lib_filter, equals_the_convolution_that_defines_it)
{
    std::mt19937 random(5);
    std::normal_distribution<double> gauss;
    for (const std::size_t tap_count : {1u, 2u, 63u, 1025u})
        for (const std::size_t size : {1u, 7u, 1000u, 4096u, 20001u}) {
            signal_t taps(tap_count);
            for (auto& tap : taps)
                tap = {gauss(random), tap_count == 63 ? gauss(random) : 0.0};
            signal_t in(size);
            for (std::size_t i = 0; i < size; ++i)
                if (size != 20001 || i < 3000 || i > 15000) // with a silent stretch
                    in[i] = {gauss(random), gauss(random)};
            signal_t full = in;
            lib_filter_t::deal_filter(taps, full, LIB_FILTER_DELAY_REMOVED);
            signal_t causal = in;
            lib_filter_t::deal_filter(taps, causal, LIB_FILTER_DELAY_CAUSAL);
            ASSERT_EQ(full.size(), size + tap_count - 1);
            // A frame where it lies, its last third standing in the tail.
            signal_t frame(in.begin(), in.end() - static_cast<std::ptrdiff_t>(size / 3));
            signal_t tail(in.end() - static_cast<std::ptrdiff_t>(size / 3), in.end());
            signal_t parts(5);
            lib_filter_t::filter_frame(taps, frame.data(), frame.size(), parts, tail);
            ASSERT_EQ(parts.size(), (tap_count - 1) / 2);
            parts.insert(parts.end(), frame.begin(), frame.end());
            parts.insert(parts.end(), tail.begin(), tail.end());
            EXPECT_EQ(parts, full);
            ASSERT_EQ(causal.size(), size);
            double largest = 0;
            for (std::size_t n = 0; n < full.size(); n += 1 + full.size() / 500) {
                std::complex<double> sum = 0;
                for (std::size_t k = 0; k < tap_count; ++k)
                    if (n >= k && n - k < size)
                        sum += taps[k] * in[n - k];
                largest = std::max(largest, std::abs(full[n] - sum));
                if (n < size)
                    largest = std::max(largest, std::abs(causal[n] - sum));
            }
            EXPECT_LT(largest, 1e-11) << tap_count << " taps, " << size << " samples";
        }
    signal_t untouched = {1.0, 2.0};
    lib_filter_t::deal_filter({}, untouched, LIB_FILTER_DELAY_REMOVED);
    EXPECT_EQ(untouched, (signal_t{1.0, 2.0}));
    signal_t empty;
    lib_filter_t::deal_filter(design(0.5), empty, LIB_FILTER_DELAY_REMOVED);
    EXPECT_TRUE(empty.empty());
}

} // namespace
