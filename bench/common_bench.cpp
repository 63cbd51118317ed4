#include "common/lib_fft_plan.h"
#include "common/lib_filter.h"
#include "common/lib_fir_filter_design.h"
#include "common/lib_normalization.h"
#include "common/lib_ofdm_modulator.h"

#include <benchmark/benchmark.h>

#include <random>

namespace
{

using namespace vek::common_lib;
using signal_t = std::vector<std::complex<double>>;

// A frame at 100 MHz and 30 kHz: 280 symbols of 3276 subcarriers, 1,228,800 samples.
constexpr unsigned int k_fft_length = 4096;
constexpr unsigned int k_subcarriers = 3276;
constexpr unsigned int k_symbols = 280;
constexpr std::size_t k_frame_samples = 1228800;

signal_t make_noise(std::size_t size)
{
    std::mt19937_64 random(1);
    std::normal_distribution<double> normal;
    signal_t noise(size);
    for (auto& sample : noise)
        sample = {normal(random), normal(random)};
    return noise;
}

void count_samples(benchmark::State& state, std::size_t samples)
{
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(samples));
}

void filter_frame(benchmark::State& state)
{
    lib_fir_filter_design_t design;
    design.set_filter_order(1024);
    design.set_cutoff_freq(0.8);
    design.generate_fir_filter();
    const signal_t frame = make_noise(k_frame_samples);
    signal_t signal;
    signal.reserve(k_frame_samples + 1024);
    for (auto _ : state) {
        signal.assign(frame.begin(), frame.end());
        lib_filter_t::deal_filter(design.get_filter_data(), signal, LIB_FILTER_DELAY_REMOVED);
        benchmark::DoNotOptimize(signal.data());
    }
    count_samples(state, k_frame_samples);
}
BENCHMARK(filter_frame)->Unit(benchmark::kMillisecond);

// What the filter cannot do without: the copy of the frame and its transforms there and back in blocks of 4096.
void filter_frame_transforms_alone(benchmark::State& state)
{
    constexpr std::size_t k_block = 4096;
    const signal_t frame = make_noise(k_frame_samples);
    signal_t signal(frame);
    signal_t spectrum(k_block);
    signal_t result(k_block);
    const lib_fft_plan_t& forward = lib_fft_plan_t::get(k_block, LIB_FFT_FORWARD);
    const lib_fft_plan_t& inverse = lib_fft_plan_t::get(k_block, LIB_FFT_INVERSE);
    for (auto _ : state) {
        signal.assign(frame.begin(), frame.end());
        for (std::size_t begin = 0; begin + k_block <= signal.size(); begin += k_block - 1024) {
            forward.execute(signal.data() + begin, spectrum.data());
            inverse.execute(spectrum.data(), result.data());
        }
        benchmark::DoNotOptimize(signal.data());
    }
    count_samples(state, k_frame_samples);
}
BENCHMARK(filter_frame_transforms_alone)->Unit(benchmark::kMillisecond);

void ofdm_frame(benchmark::State& state)
{
    const std::vector<signal_t> payload(k_symbols, make_noise(k_subcarriers));
    lib_ofdm_modulator_t modulator;
    modulator.set_fft_length(k_fft_length);
    modulator.set_symbol_number(k_symbols);
    modulator.set_cyclic_prefix_config(lib_ofdm_cyclic_config_t(288.0 / k_fft_length));
    modulator.set_window_beta(static_cast<double>(state.range(0)) / 100.0);
    signal_t main;
    signal_t head;
    signal_t tail;
    for (auto _ : state) {
        modulator.deal_ofdm_modulation(payload, main, head, tail);
        benchmark::DoNotOptimize(main.data());
    }
    count_samples(state, k_frame_samples);
}
BENCHMARK(ofdm_frame)->Arg(0)->Arg(2)->Unit(benchmark::kMillisecond);

void ofdm_frame_transforms_alone(benchmark::State& state)
{
    const signal_t in = make_noise(k_fft_length);
    signal_t main(k_frame_samples);
    const lib_fft_plan_t& plan = lib_fft_plan_t::get(k_fft_length, LIB_FFT_INVERSE);
    for (auto _ : state) {
        for (std::size_t l = 0; l < k_symbols; ++l)
            plan.execute(in.data(), main.data() + l * (k_fft_length + 288));
        benchmark::DoNotOptimize(main.data());
    }
    count_samples(state, k_frame_samples);
}
BENCHMARK(ofdm_frame_transforms_alone)->Unit(benchmark::kMillisecond);

void normalize_frame(benchmark::State& state)
{
    signal_t signal = make_noise(k_frame_samples);
    for (auto _ : state) {
        lib_normalization_t::iq_value_max_normalize(signal);
        benchmark::DoNotOptimize(signal.data());
    }
    count_samples(state, k_frame_samples);
}
BENCHMARK(normalize_frame)->Unit(benchmark::kMillisecond);

} // namespace
