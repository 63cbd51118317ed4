// LDPC rate matching of one code word of base graph 1 at Z = 384 with fillers, redundancy version 2, beside a loop that
// takes an index modulo for each bit. The arguments are Qm and the output length in percent of the circular buffer.
#include "phy_common/lib_nr_ldpc_rate_match.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using bits_t = std::vector<unsigned char>;

constexpr std::size_t k_z = 384;
constexpr std::size_t k_filler_count = 300;

bits_t code_word()
{
    std::mt19937 random(1);
    bits_t bits(66 * k_z);
    for (unsigned char& bit : bits)
        bit = static_cast<unsigned char>(random() & 1u);
    std::fill_n(bits.begin() + (20 * k_z - k_filler_count), k_filler_count, static_cast<unsigned char>(255));
    return bits;
}

std::size_t output_length(const benchmark::State& state)
{
    const auto order = static_cast<std::size_t>(state.range(0));
    return 66 * k_z * static_cast<std::size_t>(state.range(1)) / 100 / order * order;
}

void count_bits(benchmark::State& state)
{
    state.counters["bit/s"] =
        benchmark::Counter(static_cast<double>(output_length(state)), benchmark::Counter::kIsIterationInvariantRate);
}

void rate_match(benchmark::State& state)
{
    const std::vector<bits_t> in(1, code_word());
    std::vector<bits_t> out;
    lib_nr_ldpc_rate_match_t matcher;
    matcher.set_q_m(static_cast<unsigned int>(state.range(0)));
    matcher.set_g(static_cast<unsigned int>(output_length(state)));
    matcher.set_rv_id(2);
    for (auto _ : state) {
        matcher.deal_rate_match(in, out);
        benchmark::DoNotOptimize(out.data());
    }
    count_bits(state);
}

void rate_match_index_modulo(benchmark::State& state)
{
    const bits_t in = code_word();
    const std::size_t length = output_length(state);
    const auto order = static_cast<std::size_t>(state.range(0));
    bits_t selected(length);
    bits_t out(length);
    for (auto _ : state) {
        std::size_t count = 0;
        for (std::size_t j = 33 * k_z; count < length; ++j)
            if (in[j % in.size()] != 255)
                selected[count++] = in[j % in.size()];
        const std::size_t columns = length / order;
        for (std::size_t j = 0; j < columns; ++j)
            for (std::size_t i = 0; i < order; ++i)
                out[i + j * order] = selected[i * columns + j];
        benchmark::DoNotOptimize(out.data());
        benchmark::ClobberMemory();
    }
    count_bits(state);
}

void orders_and_lengths(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgsProduct({{1, 2, 4, 6, 8, 10}, {40, 150}});
}

BENCHMARK(rate_match)->Apply(orders_and_lengths);
BENCHMARK(rate_match_index_modulo)->Apply(orders_and_lengths);

} // namespace
