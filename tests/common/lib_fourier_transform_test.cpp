#include "common/lib_fourier_transform.h"

#include "support/noise.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using namespace vek::common_lib;
using nr_test::largest_difference;
using nr_test::noise;
using signal_t = std::vector<std::complex<double>>;

TEST(lib_fourier_transform, goes_there_and_back_at_any_length_and_pads_or_cuts)
{
    for (const std::size_t length : {6u, 17u, 1000u, 61440u, 100003u}) {
        const signal_t in = noise(length);
        signal_t values = in;
        lib_fourier_transform_t::deal_fft(values, static_cast<unsigned int>(length));
        lib_fourier_transform_t::deal_ifft(values, static_cast<unsigned int>(length));
        EXPECT_LT(largest_difference(values, in), 1e-11) << length;
    }
    signal_t padded = {1.0, 2.0};
    lib_fourier_transform_t::deal_fft(padded, 4);
    EXPECT_LT(largest_difference(padded, {3.0, {1.0, -2.0}, -1.0, {1.0, 2.0}}), 1e-15);
    signal_t cut = {1.0, 2.0, 5.0};
    lib_fourier_transform_t::deal_fft(cut, 1);
    EXPECT_EQ(cut, signal_t{1.0});
    signal_t odd = {0.0, 1.0, 2.0, 3.0, 4.0};
    lib_fourier_transform_t::fft_shift(odd);
    EXPECT_EQ(odd, (signal_t{3.0, 4.0, 0.0, 1.0, 2.0}));
}

TEST(lib_fourier_transform, a_tone_stands_in_its_bin_with_its_amplitude)
{
    for (const int bin : {0, 3, -5, 31}) {
        signal_t tone(64);
        for (std::size_t n = 0; n < tone.size(); ++n)
            tone[n] = std::polar(0.25, 2 * M_PI * bin * static_cast<double>(n) / 64);
        signal_t spectrum;
        lib_fourier_transform_t::calc_freq_spectrum(tone, spectrum, false, 0);
        ASSERT_EQ(spectrum.size(), 64u);
        for (int k = -32; k < 32; ++k)
            EXPECT_LT(std::abs(spectrum[static_cast<std::size_t>(k + 32)] - (k == bin ? 0.25 : 0.0)), 1e-14);
    }
    signal_t spectrum;
    lib_fourier_transform_t::calc_freq_spectrum(noise(3), spectrum, false, 0);
    EXPECT_EQ(spectrum.size(), 4u);

    const signal_t blocks = noise(7 * 100 + 6);
    signal_t expected(128);
    for (std::size_t k = 0; k < 7; ++k) {
        lib_fourier_transform_t::calc_freq_spectrum({blocks.data() + 100 * k, 100}, spectrum, false, 0);
        for (std::size_t i = 0; i < expected.size(); ++i)
            expected[i] += spectrum[i];
    }
    lib_fourier_transform_t::add_freq_spectra(blocks, 7, spectrum);
    EXPECT_LT(largest_difference(spectrum, expected), 1e-14);
}

} // namespace
