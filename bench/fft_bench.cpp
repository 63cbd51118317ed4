// Transforms of the library beside plans that FFTW has measured, and how long a plan takes to make. Lengths: a symbol
// at 30 kHz and 100 MHz, PRACH, transform precoding, a block of the filter, of the spectrum; a whole frame; primes.
#include "common/lib_fft_plan.h"
#include "support/noise.h"

#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <complex>
#include <vector>

namespace
{

using namespace vek::common_lib;
using signal_t = std::vector<std::complex<double>>;

void count_samples(benchmark::State& state) { state.SetItemsProcessed(state.iterations() * state.range(0)); }

void fft(benchmark::State& state)
{
    const auto length = static_cast<std::size_t>(state.range(0));
    const signal_t in = nr_test::noise(length);
    signal_t out(length);
    const lib_fft_plan_t plan(length, LIB_FFT_FORWARD);
    for (auto _ : state) {
        plan.execute(in.data(), out.data());
        benchmark::DoNotOptimize(out.data());
    }
    count_samples(state);
}

void fft_in_place(benchmark::State& state)
{
    const auto length = static_cast<std::size_t>(state.range(0));
    const signal_t in = nr_test::noise(length);
    signal_t out(length);
    const lib_fft_plan_t plan(length, LIB_FFT_FORWARD);
    for (auto _ : state) {
        std::copy(in.begin(), in.end(), out.begin());
        plan.execute(out.data(), out.data());
        benchmark::DoNotOptimize(out.data());
    }
    count_samples(state);
}

void fft_measured(benchmark::State& state)
{
    const auto length = static_cast<std::size_t>(state.range(0));
    signal_t in(length);
    signal_t out(length);
    const fftw_plan plan = fftw_plan_dft_1d(static_cast<int>(length), reinterpret_cast<fftw_complex*>(in.data()),
                                            reinterpret_cast<fftw_complex*>(out.data()), FFTW_FORWARD, FFTW_MEASURE);
    in = nr_test::noise(length);
    for (auto _ : state) {
        fftw_execute(plan);
        benchmark::DoNotOptimize(out.data());
    }
    fftw_destroy_plan(plan);
    count_samples(state);
}

void fft_make_plan(benchmark::State& state)
{
    for (auto _ : state) {
        const lib_fft_plan_t plan(static_cast<std::size_t>(state.range(0)), LIB_FFT_FORWARD);
        benchmark::DoNotOptimize(plan.get_length());
    }
}

void lengths(benchmark::internal::Benchmark* transform)
{
    for (const int length : {256, 600, 839, 1536, 2048, 3240, 4096, 8192, 16384, 24576, 65536, 98304, 131072, 1228800})
        transform->Arg(length);
}

} // namespace

BENCHMARK(fft)->Apply(lengths);
BENCHMARK(fft_measured)->Apply(lengths);
BENCHMARK(fft_in_place)->Arg(4096)->Arg(65536);
BENCHMARK(fft_make_plan)->Arg(4096)->Arg(65536)->Arg(1228800)->Unit(benchmark::kMillisecond);
