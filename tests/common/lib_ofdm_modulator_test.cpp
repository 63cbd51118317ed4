#include "common/lib_ofdm_modulator.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace
{

using namespace vek::common_lib;
using complex_t = std::complex<double>;
using rows_t = std::vector<std::vector<complex_t>>;

struct setting_t
{
    unsigned int fft_length;
    unsigned int oversampling;
    unsigned int subcarriers;
    double beta;
};

constexpr unsigned int k_symbols = 8;
constexpr double k_prefix = 0.125;
constexpr double k_long_prefix = 0.25; // symbols 0 and 4

/// The frame sample by sample: each symbol's sum of subcarriers, in its useful part and prefix, faded in over the first
/// samples of the prefix and out over those of the next one. The end of the last symbol falls behind the frame.
std::vector<complex_t> frame_by_definition(const rows_t& rows, const setting_t& s, const std::vector<double>& turns)
{
    const double length = s.fft_length * s.oversampling;
    const auto prefix = [&](std::size_t l) { return std::round((l % 4 == 0 ? k_long_prefix : k_prefix) * length); };
    const auto fade = [&](std::size_t l) { return std::round(std::min(s.beta * length, prefix(l))); };
    double total = 0;
    for (std::size_t l = 0; l < rows.size(); ++l)
        total += prefix(l) + length;
    std::vector<complex_t> frame(static_cast<std::size_t>(total + fade(0)));
    double begin = 0;
    for (std::size_t l = 0; l < rows.size(); ++l) {
        const double rise = fade(l);
        const double fall = fade((l + 1) % rows.size());
        for (double i = 0; i < prefix(l) + length + fall; ++i) {
            double weight = 1;
            if (i < rise)
                weight = 0.5 * (1 - std::cos(M_PI * (i + 0.5) / rise));
            else if (i >= prefix(l) + length)
                weight = 0.5 * (1 + std::cos(M_PI * (i - prefix(l) - length + 0.5) / fall));
            complex_t sum = 0;
            for (std::size_t k = 0; k < rows[l].size(); ++k) {
                const double frequency = static_cast<double>(k) - static_cast<double>(rows[l].size() / 2);
                sum +=
                    rows[l][k] *
                    std::polar(1.0, 2 * M_PI * (frequency * (i - prefix(l)) / length + (turns.empty() ? 0 : turns[l])));
            }
            frame[static_cast<std::size_t>(begin + i)] += weight / std::sqrt(length) * sum;
        }
        begin += prefix(l) + length;
    }
    return frame;
}

TEST(lib_ofdm_modulator, equals_the_sum_of_its_subcarriers_with_prefix_and_window)
{
    std::mt19937 random(9);
    std::normal_distribution<double> gauss;
    for (const setting_t& s :
         {setting_t{64, 1, 48, 0}, setting_t{64, 1, 48, 0.05}, setting_t{64, 2, 47, 0.2}, setting_t{32, 3, 32, 0.5}})
        for (const bool turned : {false, true}) {
            rows_t rows(k_symbols, std::vector<complex_t>(s.subcarriers));
            std::vector<double> turns;
            for (unsigned int l = 0; l < k_symbols; ++l) {
                if (l != 3) // a silent symbol between others
                    for (complex_t& cell : rows[l])
                        cell = {gauss(random), gauss(random)};
                if (turned)
                    turns.push_back(10.0 * gauss(random));
            }
            lib_ofdm_cyclic_special_case_t longer;
            longer.set_symbol_index_list(k_symbols, {0, 4});
            longer.set_cyclic_length_factor(k_long_prefix);
            lib_ofdm_cyclic_config_t prefixes(0.0);
            prefixes.set_default_cyclic_length_factor(k_prefix);
            prefixes.set_specified_config_arr(k_symbols, {longer});

            lib_ofdm_modulator_t modulator;
            modulator.set_frame_idle_length(0);
            modulator.set_cyclic_suffix_config(lib_ofdm_cyclic_config_t(0.0));
            modulator.set_cyclic_prefix_config(prefixes);
            modulator.set_fft_length(s.fft_length);
            modulator.set_symbol_number(k_symbols);
            modulator.set_window_beta(s.beta);
            modulator.set_windowing_method(LIB_OFDM_WINDOWING_RAISED_COSINE);
            modulator.set_oversampling_ratio(s.oversampling);
            modulator.set_symbol_phase_turns(turns);
            std::vector<complex_t> main(9999, 7.0); // what was in it does not show through
            std::vector<complex_t> head(1);
            std::vector<complex_t> tail(1);
            ASSERT_TRUE(modulator.deal_ofdm_modulation(rows, main, head, tail));
            EXPECT_TRUE(head.empty());
            EXPECT_TRUE(tail.empty());

            const std::vector<complex_t> expected = frame_by_definition(rows, s, turns);
            ASSERT_EQ(main.size(), expected.size());
            double largest = 0;
            for (std::size_t i = 0; i < main.size(); ++i)
                largest = std::max(largest, std::abs(main[i] - expected[i]));
            EXPECT_LT(largest, 1e-11) << s.fft_length << " x " << s.oversampling << ", beta " << s.beta;
        }
}

TEST(lib_ofdm_modulator, refuses_rows_that_do_not_fit)
{
    lib_ofdm_modulator_t modulator;
    modulator.set_fft_length(16);
    modulator.set_symbol_number(2);
    std::vector<complex_t> main(3);
    std::vector<complex_t> head;
    std::vector<complex_t> tail;
    for (const rows_t& rows : {rows_t{}, rows_t(1, std::vector<complex_t>(12)), rows_t(2, std::vector<complex_t>(17))})
    {
        EXPECT_FALSE(modulator.deal_ofdm_modulation(rows, main, head, tail));
        EXPECT_TRUE(main.empty());
    }
}

} // namespace
