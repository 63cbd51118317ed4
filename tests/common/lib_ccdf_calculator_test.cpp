#include "common/lib_ccdf_calculator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace vek::common_lib;

namespace
{

using samples_t = std::vector<std::complex<double>>;

samples_t gaussian_noise(std::size_t count, double sigma, unsigned int seed)
{
    std::mt19937_64 random(seed);
    std::normal_distribution<double> normal(0.0, sigma);
    samples_t signal(count);
    for (std::complex<double>& sample : signal)
        sample = {normal(random), normal(random)};
    return signal;
}

double mean_power(const samples_t& signal)
{
    double sum = 0.0;
    for (const std::complex<double>& sample : signal)
        sum += std::norm(sample);
    return sum / static_cast<double>(signal.size());
}

/// The definition by decibels and sorting.
std::vector<double> sorted_curve(const samples_t& signal)
{
    std::vector<double> levels;
    for (const std::complex<double>& sample : signal)
        levels.push_back(10.0 * std::log10(std::norm(sample) / mean_power(signal)));
    std::sort(levels.begin(), levels.end());
    std::vector<double> curve;
    for (int i = 0; i < 601; ++i) {
        const auto above = levels.end() - std::upper_bound(levels.begin(), levels.end(), 0.05 * i);
        curve.push_back(static_cast<double>(above) / static_cast<double>(levels.size()));
    }
    return curve;
}

} // namespace

TEST(lib_ccdf_calculator, counts_every_sample_at_its_level)
{
    for (const double scale : {1.0, 1e-9, 3e7}) {
        samples_t signal = gaussian_noise(3001, scale, 5);
        signal[7] = {40.0 * scale, 0.0};
        signal[8] = {0.0, -2000.0 * scale}; // beyond the last point of the curve
        std::vector<double> curve(3, 0.5);
        lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
        EXPECT_EQ(curve, sorted_curve(signal)) << scale;
        EXPECT_EQ(curve.size(), lib_ccdf_calculator_t::get_default_ccdf_data_length());

        samples_t short_signal(signal.begin(), signal.begin() + 7);
        lib_ccdf_calculator_t::calculate_default_ccdf_data(short_signal, curve);
        EXPECT_EQ(curve, sorted_curve(short_signal)) << scale;
    }
}

TEST(lib_ccdf_calculator, gaussian_noise_lies_on_the_exponential)
{
    const samples_t signal = gaussian_noise(10'000'000, 0.7, 6);
    std::vector<double> curve;
    lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
    for (std::size_t i = 0; i < curve.size(); ++i) {
        const double level = 0.05 * static_cast<double>(i);
        const double probability = std::exp(-std::pow(10.0, level / 10.0));
        if (probability >= 1e-4) {
            EXPECT_NEAR(10.0 * std::log10(-std::log(curve[i])), level, 0.1) << curve[i];
        }
    }
    std::vector<double> markers;
    lib_ccdf_calculator_t::get_default_ccdf_marker_data(curve, signal, markers);
    ASSERT_EQ(markers.size(), 7u);
    EXPECT_NEAR(markers[0], 10.0 * std::log10(2.0 * 0.7 * 0.7), 0.01);
    for (int decade = 1; decade <= 5; ++decade)
        EXPECT_NEAR(markers[static_cast<std::size_t>(decade)], 10.0 * std::log10(decade * std::log(10.0)),
                    decade < 5 ? 0.05 : 0.2);
    double peak = 0.0;
    for (const std::complex<double>& sample : signal)
        peak = std::max(peak, std::norm(sample));
    EXPECT_NEAR(markers[6], 10.0 * std::log10(peak / mean_power(signal)), 1e-6);
}

TEST(lib_ccdf_calculator, markers_of_simple_signals)
{
    std::vector<double> curve;
    std::vector<double> markers;
    // A constant envelope never exceeds its mean, whatever its phases.
    samples_t signal(10000);
    for (std::size_t i = 0; i < signal.size(); ++i)
        signal[i] = std::polar(0.1, 0.7 * static_cast<double>(i));
    lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
    EXPECT_EQ(curve, std::vector<double>(601, 0.0));
    lib_ccdf_calculator_t::get_default_ccdf_marker_data(curve, signal, markers);
    EXPECT_NEAR(markers[0], -20.0, 1e-9);
    for (std::size_t i = 1; i < 7; ++i)
        EXPECT_NEAR(markers[i], 0.0, 1e-9);

    // On for 1 of 20: 13.01 dB above the mean with 5 %, so between the 10 % and the 1 % marker.
    for (std::size_t i = 0; i < signal.size(); ++i)
        signal[i] = i % 20 == 0 ? 2.0 : 0.0;
    lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
    lib_ccdf_calculator_t::get_default_ccdf_marker_data(curve, signal, markers);
    EXPECT_EQ(markers[1], 0.0);
    for (std::size_t i = 2; i < 7; ++i)
        EXPECT_NEAR(markers[i], 13.01, 0.05) << i;
}

TEST(lib_ccdf_calculator, gives_zeros_where_there_is_no_power_to_compare_with)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const samples_t& signal :
         {samples_t(), samples_t(100), samples_t(3, {nan, 0.0}), samples_t(3, {infinity, 0.0}),
          samples_t(3, {1e200, 0.0}), samples_t(3, {1e-170, 0.0})})
    {
        std::vector<double> curve;
        std::vector<double> markers;
        lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
        EXPECT_EQ(curve, std::vector<double>(601, 0.0));
        lib_ccdf_calculator_t::get_default_ccdf_marker_data(curve, signal, markers);
        EXPECT_EQ(markers, std::vector<double>(7, 0.0));
    }
    std::vector<double> markers;
    lib_ccdf_calculator_t::get_default_ccdf_marker_data({}, samples_t(3, 1.0), markers);
    EXPECT_EQ(markers, std::vector<double>(7, 0.0)) << "a curve of another length is no harm";
}
