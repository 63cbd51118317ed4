// CCDF, mixer, PRBS and crest factor reduction over a frame at 122.88 MHz, each beside the plain way of doing it.
#include "common/lib_ccdf_calculator.h"
#include "common/lib_common_signal_process.h"
#include "common/lib_crest_factor_reduce.h"
#include "common/lib_fft_plan.h"
#include "common/lib_fourier_transform.h"
#include "common/lib_normalization.h"
#include "common/lib_prbs_code.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>
#include <random>
#include <vector>

namespace
{

using namespace vek::common_lib;
using samples_t = std::vector<std::complex<double>>;
constexpr std::size_t k_frame = 1'228'800;
constexpr double k_rate = 122.88e6;
constexpr unsigned int k_prbs_bits = 1'000'000;

samples_t gaussian_frame()
{
    std::mt19937_64 random(1);
    std::normal_distribution<double> normal;
    samples_t signal(k_frame);
    for (std::complex<double>& sample : signal)
        sample = {normal(random), normal(random)};
    return signal;
}

void count_samples(benchmark::State& state)
{
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(k_frame));
}

void ccdf(benchmark::State& state)
{
    const samples_t signal = gaussian_frame();
    std::vector<double> curve;
    for (auto _ : state) {
        lib_ccdf_calculator_t::calculate_default_ccdf_data(signal, curve);
        benchmark::DoNotOptimize(curve.data());
    }
    count_samples(state);
}

void ccdf_by_logarithm(benchmark::State& state)
{
    const samples_t signal = gaussian_frame();
    for (auto _ : state) {
        double sum = 0.0;
        for (const std::complex<double>& sample : signal)
            sum += std::norm(sample);
        std::vector<double> counts(602);
        for (const std::complex<double>& sample : signal) {
            const double level = 10.0 * std::log10(std::norm(sample) / sum * static_cast<double>(k_frame));
            counts[static_cast<std::size_t>(std::clamp(std::ceil(level / 0.05), 0.0, 601.0))] += 1.0;
        }
        benchmark::DoNotOptimize(counts.data());
    }
    count_samples(state);
}

void burst(benchmark::State& state)
{
    const samples_t signal = gaussian_frame();
    samples_t out;
    for (auto _ : state) {
        lib_common_signal_process_t::get_burst_signal_data(signal, out);
        benchmark::DoNotOptimize(out.data());
    }
    count_samples(state);
}

// What is done with a frame of samples when all carriers are in it: the samples alone, and with all that may be asked
// for; beside it what cannot be left out, a pass that reads, a pass that writes, and the transforms of the spectrum.
constexpr unsigned int k_blocks = 20;

void finish_frame(benchmark::State& state)
{
    const samples_t frame = gaussian_frame();
    samples_t signal = frame;
    lib_power_pieces_t pieces{lib_common_signal_process_t::get_smoothing_width(signal.size()), {}};
    for (auto _ : state) {
        lib_normalization_t::normalize(signal, lib_normalization_t::get_largest_component(signal), signal.size(),
                                       pieces);
        if (state.range(0) == 0)
            continue;
        const lib_signal_view_t burst = lib_common_signal_process_t::find_burst(signal, pieces);
        const auto ccdf = lib_ccdf_calculator_t::calculate_ccdf(
            signal, std::accumulate(pieces.sums.begin(), pieces.sums.end(), 0.0), {burst.data(), 0}, 0.0);
        samples_t spectrum;
        lib_fourier_transform_t::add_freq_spectra(signal, k_blocks, spectrum);
        benchmark::DoNotOptimize(ccdf.first.curve.data());
        benchmark::DoNotOptimize(spectrum.data());
    }
    count_samples(state);
}

void finish_frame_unavoidable(benchmark::State& state)
{
    samples_t signal = gaussian_frame();
    const samples_t block(65536, 1.0);
    samples_t bins(block.size());
    const lib_fft_plan_t& plan = lib_fft_plan_t::get(block.size(), LIB_FFT_FORWARD);
    for (auto _ : state) {
        double sum = 0.0;
        for (const std::complex<double>& sample : signal)
            sum += sample.real();
        benchmark::DoNotOptimize(sum);
        for (std::complex<double>& sample : signal)
            sample = 0.5;
        benchmark::ClobberMemory();
        for (unsigned int k = 0; k < (state.range(0) == 0 ? 0 : k_blocks); ++k)
            plan.execute(block.data(), bins.data());
        benchmark::DoNotOptimize(bins.data());
    }
    count_samples(state);
}

void mixer(benchmark::State& state)
{
    samples_t signal = gaussian_frame();
    for (auto _ : state) {
        lib_common_signal_process_t::deal_mixer(signal, 12.345e6 / k_rate, 0.0);
        benchmark::DoNotOptimize(signal.data());
    }
    count_samples(state);
}

void mixer_by_sine_and_cosine(benchmark::State& state)
{
    samples_t signal = gaussian_frame();
    for (auto _ : state) {
        for (std::size_t i = 0; i < signal.size(); ++i) {
            const double turns = 12.345e6 / k_rate * static_cast<double>(i);
            const double angle = 2.0 * std::numbers::pi * (turns - std::floor(turns));
            signal[i] *= std::complex<double>(std::cos(angle), std::sin(angle));
        }
        benchmark::DoNotOptimize(signal.data());
    }
    count_samples(state);
}

void prbs(benchmark::State& state)
{
    lib_prbs_code_t generator;
    generator.set_custom_primitive_polynomial_enable(true);
    generator.set_prbs_primitive_polynomial({15, 14});
    std::vector<unsigned char> bits;
    for (auto _ : state) {
        benchmark::DoNotOptimize(generator.generate_prbs_code(k_prbs_bits, bits));
        benchmark::DoNotOptimize(bits.data());
    }
    state.SetItemsProcessed(state.iterations() * k_prbs_bits);
}

void prbs_bit_serial(benchmark::State& state)
{
    std::vector<unsigned char> bits(k_prbs_bits);
    for (auto _ : state) {
        unsigned int stages = 0x7FFF;
        for (unsigned char& bit : bits) {
            bit = static_cast<unsigned char>(stages & 1u);
            stages = stages >> 1 | ((stages ^ stages >> 14) & 1u) << 14;
        }
        benchmark::DoNotOptimize(bits.data());
    }
    state.SetItemsProcessed(state.iterations() * k_prbs_bits);
}

void crest_factor_reduction(benchmark::State& state)
{
    // Noise in 80 % of the rate.
    samples_t original = gaussian_frame();
    std::fill(original.begin() + k_frame * 2 / 5, original.begin() + k_frame * 3 / 5, 0.0);
    lib_fft_plan_t(k_frame, LIB_FFT_INVERSE).execute(original.data(), original.data());
    lib_crest_factor_reduce_setting_t setting;
    setting.init(k_rate, 0.8 * k_rate);
    lib_crest_factor_reduce_t reduction;
    reduction.set_cfr_parameter(k_rate, setting);
    for (auto _ : state) {
        state.PauseTiming();
        samples_t signal = original;
        state.ResumeTiming();
        reduction.deal_crest_factor_reduce(signal);
        benchmark::DoNotOptimize(signal.data());
    }
    count_samples(state);
}

void transform_of_a_frame(benchmark::State& state)
{
    samples_t signal = gaussian_frame();
    const lib_fft_plan_t plan(k_frame, LIB_FFT_FORWARD);
    samples_t spectrum(k_frame);
    for (auto _ : state) {
        plan.execute(signal.data(), spectrum.data());
        benchmark::DoNotOptimize(spectrum.data());
    }
    count_samples(state);
}

BENCHMARK(ccdf)->Unit(benchmark::kMillisecond);
BENCHMARK(ccdf_by_logarithm)->Unit(benchmark::kMillisecond);
BENCHMARK(burst)->Unit(benchmark::kMillisecond);
BENCHMARK(finish_frame)->ArgName("all")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(finish_frame_unavoidable)->ArgName("all")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(mixer)->Unit(benchmark::kMillisecond);
BENCHMARK(mixer_by_sine_and_cosine)->Unit(benchmark::kMillisecond);
BENCHMARK(prbs)->Unit(benchmark::kMillisecond);
BENCHMARK(prbs_bit_serial)->Unit(benchmark::kMillisecond);
BENCHMARK(crest_factor_reduction)->Unit(benchmark::kMillisecond);
BENCHMARK(transform_of_a_frame)->Unit(benchmark::kMillisecond);

} // namespace
