#include "common/lib_fourier_transform.h"

#include "common/lib_common_math.h"
#include "common/lib_fft_plan.h"
#include "common/lib_signal_power.h"
#include "common/lib_target_clones.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vek::common_lib
{

namespace
{

void transform(std::vector<std::complex<double>>& values, unsigned int length, lib_fft_direction_t direction)
{
    if (length != 0)
        values.resize(length);
    lib_fft_plan_t::get(values.size(), direction).execute(values.data(), values.data());
}

// The file is built without errno of mathematical functions, which would keep the roots out of vectors.
NR_MOD_LIB_TARGET_CLONES
void add_magnitudes(const std::complex<double>* bins, std::size_t count, double* sums)
{
    for (std::size_t i = 0; i < count; ++i)
        sums[i] += std::sqrt(power_of(bins[i]));
}

// Brings 0 Hz to the middle, as fft_shift does.
void lay_out_spectrum(const std::vector<double>& sums, double scale, std::vector<std::complex<double>>& spectrum)
{
    const std::size_t ahead = sums.size() / 2;
    spectrum.resize(sums.size());
    for (std::size_t i = 0; i < sums.size() - ahead; ++i)
        spectrum[ahead + i] = sums[i] * scale;
    for (std::size_t i = 0; i < ahead; ++i)
        spectrum[i] = sums[sums.size() - ahead + i] * scale;
}

// Returns the sum of the weights.
double apply_hann_window(std::vector<std::complex<double>>& block)
{
    const double turn = 2.0 * std::numbers::pi / static_cast<double>(block.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < block.size(); ++i) {
        const double weight = 0.5 - 0.5 * std::cos(turn * (static_cast<double>(i) + 0.5));
        block[i] *= weight;
        sum += weight;
    }
    return sum;
}

} // namespace

void lib_fourier_transform_t::deal_fft(std::vector<std::complex<double>>& values, unsigned int length)
{
    transform(values, length, LIB_FFT_FORWARD);
}

void lib_fourier_transform_t::deal_ifft(std::vector<std::complex<double>>& values, unsigned int length)
{
    transform(values, length, LIB_FFT_INVERSE);
    const double scale = 1.0 / static_cast<double>(values.size());
    for (std::complex<double>& value : values)
        value *= scale;
}

void lib_fourier_transform_t::fft_shift(std::vector<std::complex<double>>& values)
{
    std::rotate(values.begin(), values.end() - static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
}

void lib_fourier_transform_t::calc_freq_spectrum(lib_signal_view_t signal, std::vector<std::complex<double>>& spectrum,
                                                 bool db, unsigned int window)
{
    constexpr double k_lowest_magnitude = 1e-20; // -400 dB
    if (spectrum.data() != signal.data())
        spectrum.assign(signal.begin(), signal.end());
    double weight_sum = static_cast<double>(spectrum.size());
    if (window == LIB_SPECTRUM_WINDOW_HANN)
        weight_sum = apply_hann_window(spectrum);
    const unsigned int length = lib_common_math_t::get_min_pow_of_2(static_cast<unsigned int>(spectrum.size()), 4);
    deal_fft(spectrum, length);
    std::vector<double> magnitudes(spectrum.size());
    add_magnitudes(spectrum.data(), spectrum.size(), magnitudes.data());
    lay_out_spectrum(magnitudes, 1.0 / std::max(weight_sum, 1.0), spectrum);
    if (db)
        for (std::complex<double>& value : spectrum)
            value = 20.0 * std::log10(std::max(value.real(), k_lowest_magnitude));
}

void lib_fourier_transform_t::add_freq_spectra(lib_signal_view_t signal, unsigned int blocks,
                                               std::vector<std::complex<double>>& spectrum)
{
    const std::size_t length = blocks == 0 ? 0 : signal.size() / blocks;
    std::vector<std::complex<double>> bins(lib_common_math_t::get_min_pow_of_2(static_cast<unsigned int>(length), 4));
    std::vector<double> sums(bins.size());
    const lib_fft_plan_t& plan = lib_fft_plan_t::get(bins.size(), LIB_FFT_FORWARD);
    for (std::size_t k = 0; k < blocks; ++k) {
        const auto padding = std::copy_n(signal.data() + k * length, length, bins.begin());
        std::fill(padding, bins.end(), 0.0);
        plan.execute(bins.data(), bins.data());
        add_magnitudes(bins.data(), bins.size(), sums.data());
    }
    lay_out_spectrum(sums, 1.0 / static_cast<double>(std::max<std::size_t>(length, 1)), spectrum);
}

} // namespace vek::common_lib
