#include "common/lib_crest_factor_reduce.h"

#include "common/lib_ccdf_calculator.h"
#include "common/lib_fft_plan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using namespace vek::common_lib;

namespace
{

using samples_t = std::vector<std::complex<double>>;
constexpr double k_spacing = 30e3;

/// Random QPSK on the `used` subcarriers round the centre; unit power.
samples_t random_ofdm(std::size_t fft_length, std::size_t used, std::size_t symbols, unsigned int seed)
{
    std::mt19937 random(seed);
    const lib_fft_plan_t& inverse = lib_fft_plan_t::get(fft_length, LIB_FFT_INVERSE);
    samples_t signal;
    samples_t symbol(fft_length);
    const std::size_t prefix = fft_length / 8;
    for (std::size_t i = 0; i < symbols; ++i) {
        std::fill(symbol.begin(), symbol.end(), 0.0);
        for (std::size_t k = 0; k < used; ++k) {
            const auto bits = random();
            const double amplitude = std::sqrt(0.5 / static_cast<double>(used));
            symbol[(fft_length - used / 2 + k) % fft_length] = {bits & 1u ? amplitude : -amplitude,
                                                                bits & 2u ? amplitude : -amplitude};
        }
        inverse.execute(symbol.data(), symbol.data());
        signal.insert(signal.end(), symbol.end() - static_cast<std::ptrdiff_t>(prefix), symbol.end());
        signal.insert(signal.end(), symbol.begin(), symbol.end());
    }
    return signal;
}

double energy(const samples_t& signal)
{
    double sum = 0.0;
    for (const std::complex<double>& sample : signal)
        sum += std::norm(sample);
    return sum;
}

samples_t difference(const samples_t& left, const samples_t& right)
{
    samples_t result(left.size());
    for (std::size_t i = 0; i < left.size(); ++i)
        result[i] = left[i] - right[i];
    return result;
}

/// Error vector magnitude over everything that the reduction changed, in band or not.
double evm(const samples_t& reduced, const samples_t& original)
{
    return std::sqrt(energy(difference(reduced, original)) / energy(original));
}

/// The power over the mean at 0.01 % probability and at the peak, in dB.
std::pair<double, double> crest_factors(const samples_t& signal)
{
    std::vector<double> curve;
    std::vector<double> markers;
    lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
    lib_ccdf_calculator_t::get_default_ccdf_marker_data(curve, signal, markers);
    return {markers[4], markers[6]};
}

samples_t reduce(samples_t signal, double sample_rate, const lib_crest_factor_reduce_setting_t& setting)
{
    lib_crest_factor_reduce_t reduction;
    reduction.set_cfr_parameter(sample_rate, setting);
    reduction.deal_crest_factor_reduce(signal);
    return signal;
}

/// The largest spectral power of what the reduction took away, inside and outside of +-limit (Hz).
std::pair<double, double> spectrum_peaks(samples_t correction, double sample_rate, double limit)
{
    lib_fft_plan_t(correction.size(), LIB_FFT_FORWARD).execute(correction.data(), correction.data());
    double inside = 0.0;
    double outside = 0.0;
    const double size = static_cast<double>(correction.size());
    for (std::size_t i = 0; i < correction.size(); ++i) {
        const double bin = static_cast<double>(i) - (2 * i < correction.size() ? 0.0 : size);
        double& peak = std::fabs(bin / size * sample_rate) <= limit ? inside : outside;
        peak = std::max(peak, std::norm(correction[i]));
    }
    return {inside, outside};
}

struct band_t
{
    std::size_t fft_length;
    std::size_t used;
    unsigned int block_size;
};

} // namespace

TEST(lib_crest_factor_reduce, reaches_its_target_inside_the_mask)
{
    // Full band, a fifth and a twentieth of the rate; blocks by default, short ones, and the whole signal.
    for (const band_t& band : std::vector<band_t>{
             {4096, 3276, 12288}, {4096, 3276, 0}, {4096, 3276, 600}, {4096, 820, 12288}, {4096, 204, 50000}})
    {
        const samples_t original = random_ofdm(band.fft_length, band.used, 120, 1);
        const double rate = static_cast<double>(band.fft_length) * k_spacing;
        const double passband = static_cast<double>(band.used) * k_spacing;
        const auto [level_before, peak_before] = crest_factors(original);
        EXPECT_NEAR(level_before, 9.6, 0.35);
        EXPECT_GT(peak_before, 10.5);
        for (const double target : {7.0, 7.5, 8.0, 9.0}) {
            lib_crest_factor_reduce_setting_t setting;
            setting.init(rate, passband);
            setting.set_signal_block_size(band.block_size);
            setting.set_target_peak_to_average_power_ratio(target);
            const samples_t reduced = reduce(original, rate, setting);
            const auto [level, peak] = crest_factors(reduced);
            EXPECT_NEAR(level, target, 0.05) << band.used << " subcarriers";
            EXPECT_LT(peak, target + 0.02) << band.used << " subcarriers";
            EXPECT_LT(evm(reduced, original), target < 8.0 ? 0.045 : 0.02) << target << " dB";
            const auto [inside, outside] = spectrum_peaks(difference(reduced, original), rate, passband / 2.0);
            EXPECT_LT(outside, 1e-11 * inside) << band.used << " subcarriers, blocks of " << band.block_size;
        }
    }
}

TEST(lib_crest_factor_reduce, correction_has_the_levels_of_the_mask)
{
    const samples_t original = random_ofdm(1024, 800, 60, 3);
    const double rate = 1024 * k_spacing;
    lib_crest_factor_reduce_setting_t setting;
    // 0 dB on the left, a step to -20 dB, from there down to -40 dB, nothing beyond 12 MHz.
    setting.set_filter_mask_data_arr({{-10e6, 0.0}, {4e6, 0.0}, {4e6, -20.0}, {12e6, -40.0}});
    setting.set_max_iteration(1);
    for (const unsigned int block_size : {0u, 12288u}) {
        setting.set_signal_block_size(block_size);
        samples_t correction = difference(reduce(original, rate, setting), original);
        lib_fft_plan_t(correction.size(), LIB_FFT_FORWARD).execute(correction.data(), correction.data());
        const auto level_db = [&](double from, double to) {
            double sum = 0.0;
            double count = 0.0;
            for (std::size_t i = 0; i < correction.size(); ++i) {
                double frequency = static_cast<double>(i) / static_cast<double>(correction.size()) * rate;
                frequency -= frequency < rate / 2 ? 0.0 : rate;
                if (frequency < from || frequency > to)
                    continue;
                sum += std::norm(correction[i]);
                ++count;
            }
            return 10.0 * std::log10(sum / count + 1e-300);
        };
        // The excess itself is about white, which a wide average shows.
        const double passband = level_db(-9.9e6, 3.9e6);
        EXPECT_NEAR(level_db(4.1e6, 5.0e6) - passband, -21.3, 1.0) << block_size;
        EXPECT_NEAR(level_db(7.5e6, 8.5e6) - passband, -30.0, 1.0) << block_size;
        EXPECT_NEAR(level_db(11.0e6, 11.9e6) - passband, -38.6, 1.0) << block_size;
        EXPECT_LT(level_db(12.001e6, 15e6) - passband, -110.0) << block_size;
        EXPECT_LT(level_db(-15e6, -10.001e6) - passband, -110.0) << block_size;
    }
}

TEST(lib_crest_factor_reduce, takes_the_share_asked_for_and_stops_at_the_iteration_limit)
{
    // One lonely peak, 20 dB above a constant envelope.
    samples_t original(10000, 1.0);
    original[5000] = {0.0, 10.0};
    const double mean = energy(original) / 10000.0;
    lib_crest_factor_reduce_setting_t setting;
    setting.set_target_peak_to_average_power_ratio(10.0);
    setting.set_cancel_percent(40.0);
    double expected = 10.0;
    for (unsigned int passes = 0; passes < 4; ++passes) {
        setting.set_max_iteration(passes);
        const samples_t reduced = reduce(original, 1e6, setting);
        EXPECT_NEAR(std::abs(reduced[5000]), expected, 0.05) << passes;
        EXPECT_NEAR(std::arg(reduced[5000]), std::acos(0.0), 1e-12) << "the phase stays";
        EXPECT_EQ(std::count_if(reduced.begin(), reduced.end(),
                                [](const std::complex<double>& sample) { return std::abs(sample - 1.0) < 1e-12; }),
                  9999);
        expected -= 0.4 * (expected - std::sqrt(10.0 * mean));
    }
    setting.set_max_iteration(100);
    setting.set_cancel_percent(0.0);
    EXPECT_EQ(reduce(original, 1e6, setting), original);
}

TEST(lib_crest_factor_reduce, treats_the_signal_as_circular)
{
    const samples_t original = random_ofdm(256, 200, 20, 4);
    lib_crest_factor_reduce_setting_t setting;
    setting.init(256 * k_spacing, 200 * k_spacing);
    setting.set_target_peak_to_average_power_ratio(7.0);
    setting.set_signal_block_size(0);
    samples_t turned = original;
    std::rotate(turned.begin(), turned.begin() + 1234, turned.end());
    turned = reduce(turned, 256 * k_spacing, setting);
    samples_t expected = reduce(original, 256 * k_spacing, setting);
    std::rotate(expected.begin(), expected.begin() + 1234, expected.end());
    EXPECT_LT(evm(turned, expected), 1e-9);

    // In blocks: the correction of a peak at the very end reaches round to the beginning, without a seam.
    samples_t signal(40000, 1.0);
    signal.back() = 20.0;
    setting.set_signal_block_size(12288);
    const samples_t correction = difference(reduce(signal, 256 * k_spacing, setting), signal);
    EXPECT_GT(std::abs(correction.front()), 1.0);
    const auto [inside, outside] = spectrum_peaks(correction, 256 * k_spacing, 100 * k_spacing);
    EXPECT_LT(outside, 1e-11 * inside);
}

TEST(lib_crest_factor_reduce, measures_a_gated_signal_against_its_active_part)
{
    samples_t original = random_ofdm(1024, 800, 140, 5);
    std::fill(original.begin() + static_cast<std::ptrdiff_t>(original.size() / 4), original.end(), 0.0);
    lib_crest_factor_reduce_setting_t setting;
    setting.init(1024 * k_spacing, 800 * k_spacing);
    const samples_t reduced = reduce(original, 1024 * k_spacing, setting);
    EXPECT_LT(evm(reduced, original), 0.025);
    EXPECT_NEAR(
        crest_factors(samples_t(reduced.begin(), reduced.begin() + static_cast<std::ptrdiff_t>(original.size() / 4)))
            .first,
        8.0, 0.1);
}

TEST(lib_crest_factor_reduce, no_setting_does_harm)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<std::vector<std::pair<double, double>>> masks = {
        {},
        {{nan, 0.0}, {1e6, nan}},
        {{0.0, 0.0}},
        {{1234.5, 0.0}},
        {{2e6, 0.0}, {-3e6, 0.0}, {nan, 1.0}, {0.0, -1e9}, {1e6, 1e9}},
        {{-1e3, 0.0}, {1e3, 0.0}},
        {{2.9e6, 0.0}, {3.1e6, 0.0}},
        {{-1e300, 0.0}, {1e300, 0.0}},
        {{1e9, 0.0}, {2e9, 0.0}},
    };
    std::mt19937 random(6);
    for (int trial = 0; trial < 300; ++trial) {
        samples_t original = random_ofdm(256, 200, 4, static_cast<unsigned int>(trial));
        original.resize(random() % (original.size() + 1));
        lib_crest_factor_reduce_setting_t setting;
        setting.set_filter_mask_data_arr(masks[random() % masks.size()]);
        const std::vector<unsigned int> block_sizes = {0, 1, 2, 3, 7, 100, 255, 256, 1000, 0xFFFFFFFFu};
        setting.set_signal_block_size(block_sizes[random() % block_sizes.size()]);
        setting.set_target_peak_to_average_power_ratio(static_cast<double>(random() % 12) - 1.0);
        setting.set_cancel_percent(random() % 3 == 0 ? 55.0 : 100.0);
        setting.set_max_iteration(random() % 2 == 0 ? 0xFFFFFFFFu : 3);
        const double rate = std::vector<double>{7.68e6, 7.68e6, 7.68e6, 0.0, -1.0, nan, 1e300}[random() % 7];
        const samples_t reduced = reduce(original, rate, setting);
        ASSERT_EQ(reduced.size(), original.size());
        EXPECT_TRUE(original.empty() || energy(reduced) < 3.0 * energy(original))
            << "trial " << trial << ": " << energy(reduced) / energy(original) << " of the energy, blocks of "
            << setting.get_signal_block_size() << " in " << original.size() << ", target "
            << setting.get_target_peak_to_average_power_ratio() << " dB, mask from "
            << setting.get_filter_mask_data_arr().front().first << " Hz";
        const auto& mask = setting.get_filter_mask_data_arr();
        if (!(rate > 0.0) || mask.front().first == mask.back().first) {
            EXPECT_EQ(reduced, original);
        }
    }
    const samples_t silent(5000);
    EXPECT_EQ(reduce(silent, 7.68e6, lib_crest_factor_reduce_setting_t()), silent);
    samples_t broken(5000, 1.0);
    broken[3] = {nan, std::numeric_limits<double>::infinity()};
    reduce(broken, 7.68e6, lib_crest_factor_reduce_setting_t());
}

TEST(lib_crest_factor_reduce, keeps_numbers_finite_and_the_mask_sorted)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    lib_crest_factor_reduce_setting_t setting;
    const lib_crest_factor_reduce_setting_t fresh;
    EXPECT_FALSE(setting.is_enable());
    EXPECT_EQ(setting.get_target_peak_to_average_power_ratio(), 8.0);
    EXPECT_EQ(setting.get_signal_block_size(), 12288u);
    EXPECT_FALSE(setting.set_target_peak_to_average_power_ratio(nan));
    EXPECT_TRUE(setting.set_target_peak_to_average_power_ratio(infinity));
    EXPECT_EQ(setting.get_target_peak_to_average_power_ratio(), 30.0);
    EXPECT_FALSE(setting.set_cancel_percent(nan));
    EXPECT_TRUE(setting.set_cancel_percent(-infinity));
    EXPECT_EQ(setting.get_cancel_percent(), 0.0);
    EXPECT_NE(setting, fresh);
    EXPECT_TRUE(setting.set_signal_block_size(0xFFFFFFFFu));
    EXPECT_EQ(setting.get_signal_block_size(), 0xFFFFFFFFu);

    using mask_t = std::vector<std::pair<double, double>>;
    const mask_t default_mask = {{-3.84e6, 0.0}, {3.84e6, 0.0}};
    EXPECT_EQ(setting.get_filter_mask_data_arr(), default_mask);
    EXPECT_FALSE(setting.set_filter_mask_data_arr({}));
    EXPECT_FALSE(setting.set_filter_mask_data_arr({{nan, 0.0}, {0.0, infinity}}));
    EXPECT_EQ(setting.get_filter_mask_data_arr(), default_mask);
    EXPECT_TRUE(setting.set_filter_mask_data_arr({{1e6, -3.0}, {nan, 1.0}, {-1e6, -2.0}}));
    EXPECT_EQ(setting.get_filter_mask_data_arr(), (mask_t{{-1e6, -2.0}, {1e6, -3.0}}));
    setting.init_filter_mask_data(0.0, 0.0);
    setting.init_filter_mask_data(nan, 1e6);
    EXPECT_EQ(setting.get_filter_mask_data_arr(), (mask_t{{-1e6, -2.0}, {1e6, -3.0}}));
    setting.init_filter_mask_data(10e6, 20e6);
    EXPECT_EQ(setting.get_filter_mask_data_arr(), (mask_t{{-5e6, 0.0}, {5e6, 0.0}})) << "no more than the rate";
    setting.init(7.68e6, 7.68e6);
    EXPECT_EQ(setting, fresh);
}
