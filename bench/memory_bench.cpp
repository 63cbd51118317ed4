// What is saved where buffers of the length of a waveform are concerned, each beside the plain way: first touch in huge
// pages, results where they belong without a copy, one pair of transforms for all frames, and the block of the crest
// factor reduction that fits its transform.
#include "common/lib_common_signal_process.h"
#include "common/lib_crest_factor_reduce.h"
#include "common/lib_filter.h"
#include "common/lib_fir_filter_design.h"
#include "common/lib_large_buffer.h"
#include "phy/lib_nr_circular_addition.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <complex>
#include <random>
#include <vector>

namespace
{

using namespace vek::common_lib;
using signal_t = std::vector<std::complex<double>>;

constexpr std::size_t k_frame_samples = 1228800;
constexpr double k_sample_rate = 122.88e6;
constexpr std::size_t k_frames = 4;

signal_t make_noise(std::size_t size)
{
    std::mt19937_64 random(1);
    std::normal_distribution<double> normal;
    signal_t noise(size);
    for (auto& sample : noise)
        sample = {normal(random), normal(random)};
    return noise;
}

// 64 MB, fresh from the system each time.
constexpr std::size_t k_touched = std::size_t{4} << 20U;

void first_touch(benchmark::State& state)
{
    for (auto _ : state) {
        signal_t buffer;
        make_silent(buffer, k_touched);
        benchmark::DoNotOptimize(buffer.data());
    }
}
BENCHMARK(first_touch)->Unit(benchmark::kMillisecond);

void first_touch_plain(benchmark::State& state)
{
    for (auto _ : state) {
        signal_t buffer(k_touched);
        benchmark::DoNotOptimize(buffer.data());
    }
}
BENCHMARK(first_touch_plain)->Unit(benchmark::kMillisecond);

signal_t make_taps()
{
    lib_fir_filter_design_t design;
    design.set_filter_order(1024);
    design.set_cutoff_freq(0.8);
    design.generate_fir_filter();
    return design.get_filter_data();
}

void filter_where_it_lies(benchmark::State& state)
{
    const signal_t taps = make_taps();
    const signal_t frame = make_noise(k_frame_samples);
    signal_t main;
    signal_t head;
    signal_t tail;
    make_room(main, frame.size());
    for (auto _ : state) {
        main.assign(frame.begin(), frame.end());
        tail.clear();
        lib_filter_t::filter_frame(taps, main.data(), main.size(), head, tail);
        benchmark::DoNotOptimize(main.data());
    }
}
BENCHMARK(filter_where_it_lies)->Unit(benchmark::kMillisecond);

void filter_then_divide(benchmark::State& state)
{
    const signal_t taps = make_taps();
    const signal_t frame = make_noise(k_frame_samples);
    for (auto _ : state) {
        signal_t main(frame);
        lib_filter_t::deal_filter(taps, main, LIB_FILTER_DELAY_REMOVED);
        const auto start = main.begin() + static_cast<std::ptrdiff_t>(taps.size() / 2);
        const signal_t head(main.begin(), start);
        main.erase(main.begin(), start);
        benchmark::DoNotOptimize(main.data());
    }
}
BENCHMARK(filter_then_divide)->Unit(benchmark::kMillisecond);

void burst_where_it_lies(benchmark::State& state)
{
    const signal_t signal = make_noise(k_frame_samples);
    for (auto _ : state) {
        const lib_signal_view_t burst = lib_common_signal_process_t::find_burst(signal);
        benchmark::DoNotOptimize(burst.size());
    }
}
BENCHMARK(burst_where_it_lies)->Unit(benchmark::kMillisecond);

void burst_copied(benchmark::State& state)
{
    const signal_t signal = make_noise(k_frame_samples);
    for (auto _ : state) {
        signal_t burst;
        lib_common_signal_process_t::get_burst_signal_data(signal, burst);
        benchmark::DoNotOptimize(burst.data());
    }
}
BENCHMARK(burst_copied)->Unit(benchmark::kMillisecond);

// A quarter of a frame's length, to five quarters of its rate.
constexpr std::size_t k_own_frame = k_frame_samples / 4;
constexpr std::size_t k_buffer_samples = k_frames * k_own_frame / 4 * 5;

void lay_frame(const signal_t& frame, std::size_t place, signal_t& waveform)
{
    std::copy(frame.begin(), frame.end(), waveform.begin() + static_cast<std::ptrdiff_t>(place * k_own_frame));
}

void resample_frames_together(benchmark::State& state)
{
    const signal_t frame = make_noise(k_own_frame);
    signal_t buffer(k_buffer_samples);
    for (auto _ : state) {
        signal_t own(k_frames * k_own_frame);
        for (std::size_t f = 0; f < k_frames; ++f)
            lay_frame(frame, f, own);
        vek::nr_mod_lib::add_resampled(own, buffer);
        benchmark::DoNotOptimize(buffer.data());
    }
}
BENCHMARK(resample_frames_together)->Unit(benchmark::kMillisecond);

void resample_frame_by_frame(benchmark::State& state)
{
    const signal_t frame = make_noise(k_own_frame);
    signal_t buffer(k_buffer_samples);
    for (auto _ : state) {
        for (std::size_t f = 0; f < k_frames; ++f) {
            signal_t own(k_frames * k_own_frame);
            lay_frame(frame, f, own);
            vek::nr_mod_lib::add_resampled(own, buffer);
        }
        benchmark::DoNotOptimize(buffer.data());
    }
}
BENCHMARK(resample_frame_by_frame)->Unit(benchmark::kMillisecond);

// The default block fits a transform of 16,384; one sample more takes 32,768.
void crest_factor_reduction_in_blocks(benchmark::State& state)
{
    lib_crest_factor_reduce_setting_t setting;
    setting.init_filter_mask_data(k_sample_rate, 98.28e6);
    setting.set_signal_block_size(static_cast<unsigned int>(state.range(0)));
    lib_crest_factor_reduce_t reduction;
    reduction.set_cfr_parameter(k_sample_rate, setting);
    const signal_t frame = make_noise(k_frame_samples);
    for (auto _ : state) {
        signal_t signal = frame;
        reduction.deal_crest_factor_reduce(signal);
        benchmark::DoNotOptimize(signal.data());
    }
}
BENCHMARK(crest_factor_reduction_in_blocks)->Arg(12288)->Arg(12289)->Unit(benchmark::kMillisecond);

} // namespace
