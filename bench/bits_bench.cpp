// CRC, Gold sequences, modulation and polar coding through their interfaces of one bit per byte, each beside the plain
// byte-wise way of doing it.
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_polar_coding.h"
#include "phy_common/lib_nr_polar_rate_match.h"
#include "phy_common/lib_nr_sequence_generator.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <random>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using bits_t = std::vector<unsigned char>;

bits_t random_bits(std::size_t count)
{
    std::mt19937 random(1);
    bits_t bits(count);
    for (unsigned char& bit : bits)
        bit = static_cast<unsigned char>(random() & 1u);
    return bits;
}

void count_bits(benchmark::State& state, std::size_t bits_per_iteration)
{
    state.counters["bit/s"] =
        benchmark::Counter(static_cast<double>(bits_per_iteration), benchmark::Counter::kIsIterationInvariantRate);
}

void gold(benchmark::State& state)
{
    const auto length = static_cast<unsigned int>(state.range(0));
    bits_t out;
    for (auto _ : state) {
        lib_nr_sequence_generator_t::generate_pseudo_random_sequence(0x12345, length, out);
        benchmark::DoNotOptimize(out.data());
    }
    count_bits(state, length);
}

void gold_bit_serial(benchmark::State& state)
{
    const auto length = static_cast<std::size_t>(state.range(0));
    bits_t x1(length + 1631);
    bits_t x2(length + 1631);
    bits_t out(length);
    for (auto _ : state) {
        for (std::size_t i = 0; i < 31; ++i) {
            x1[i] = i == 0;
            x2[i] = (0x12345u >> i) & 1u;
        }
        for (std::size_t n = 0; n < length + 1600; ++n) {
            x1[n + 31] = x1[n + 3] ^ x1[n];
            x2[n + 31] = x2[n + 3] ^ x2[n + 2] ^ x2[n + 1] ^ x2[n];
        }
        for (std::size_t i = 0; i < length; ++i)
            out[i] = x1[i + 1600] ^ x2[i + 1600];
        benchmark::DoNotOptimize(out.data());
    }
    count_bits(state, length);
}

void crc24a(benchmark::State& state)
{
    const bits_t in = random_bits(static_cast<std::size_t>(state.range(0)));
    bits_t out;
    for (auto _ : state) {
        lib_nr_crc_calculator_t crc;
        crc.set_crc_type(LIB_NR_CRC_TYPE_24A);
        crc.deal_crc_attachment(in, out);
        benchmark::DoNotOptimize(out.data());
    }
    count_bits(state, in.size());
}

void crc24a_bit_serial(benchmark::State& state)
{
    const bits_t in = random_bits(static_cast<std::size_t>(state.range(0)));
    bits_t out;
    for (auto _ : state) {
        out.assign(in.begin(), in.end());
        out.resize(in.size() + 24);
        std::uint32_t remainder = 0;
        for (const unsigned char bit : out) {
            remainder = remainder << 1 | bit;
            if ((remainder >> 24) & 1u)
                remainder ^= 0x1864CFBu;
        }
        for (std::size_t i = 0; i < 24; ++i)
            out[in.size() + i] = (remainder >> (23 - i)) & 1u;
        benchmark::DoNotOptimize(out.data());
    }
    count_bits(state, in.size());
}

void modulate(benchmark::State& state)
{
    const bits_t bits = random_bits(960000);
    const auto type = static_cast<lib_nr_modulation_type_t>(state.range(0));
    std::vector<std::complex<double>> symbols;
    for (auto _ : state) {
        const lib_nr_modulator_t modulator(type);
        modulator.deal_nr_modulation(bits, symbols);
        benchmark::DoNotOptimize(symbols.data());
    }
    count_bits(state, bits.size());
}

void modulate_by_tree(benchmark::State& state)
{
    const bits_t bits = random_bits(960000);
    const auto type = static_cast<lib_nr_modulation_type_t>(state.range(0));
    const auto map = lib_nr_modulator_t(type).get_constellation_map();
    const std::size_t order = lib_nr_modulator_t::get_modulation_order(type);
    std::vector<std::complex<double>> symbols;
    for (auto _ : state) {
        symbols.clear();
        for (std::size_t first = 0; first + order <= bits.size(); first += order) {
            unsigned int value = 0;
            for (std::size_t i = 0; i < order; ++i)
                value = value << 1 | bits[first + i];
            symbols.push_back(map.at(value));
        }
        benchmark::DoNotOptimize(symbols.data());
    }
    count_bits(state, bits.size());
}

// Arguments: K with its CRC, E, mother code length N that follows from them.
void polar(benchmark::State& state)
{
    const bits_t in = random_bits(static_cast<std::size_t>(state.range(0)));
    bits_t out;
    for (auto _ : state) {
        lib_nr_polar_coding_t coder;
        coder.set_rate_matching_output_length(static_cast<unsigned int>(state.range(1)));
        coder.deal_polar_coding(in, out);
        benchmark::DoNotOptimize(out.data());
    }
    if (out.size() != static_cast<std::size_t>(state.range(2)))
        state.SkipWithError("unexpected mother code");
}

// The product with the generator matrix alone, byte by byte: out(i) is the sum of u(j) times row j, column i.
void polar_matrix_product(benchmark::State& state)
{
    const auto order = static_cast<std::size_t>(state.range(2));
    std::vector<bits_t> generator(order, bits_t(order));
    for (std::size_t j = 0; j < order; ++j)
        for (std::size_t i = 0; i < order; ++i)
            generator[j][i] = (i & j) == i;
    const bits_t u = random_bits(order);
    bits_t out(order);
    for (auto _ : state) {
        for (std::size_t i = 0; i < order; ++i) {
            unsigned char sum = 0;
            for (std::size_t j = 0; j < order; ++j)
                sum = static_cast<unsigned char>(sum ^ (u[j] & generator[j][i]));
            out[i] = sum;
        }
        benchmark::DoNotOptimize(out.data());
    }
}

// The same on the transposed matrix, whose rows a compiler multiplies 16 bytes at a time.
void polar_transposed_matrix_product(benchmark::State& state)
{
    const auto order = static_cast<std::size_t>(state.range(2));
    std::vector<bits_t> transposed(order, bits_t(order));
    for (std::size_t i = 0; i < order; ++i)
        for (std::size_t j = 0; j < order; ++j)
            transposed[i][j] = (i & j) == i;
    const bits_t u = random_bits(order);
    bits_t out(order);
    for (auto _ : state) {
        for (std::size_t i = 0; i < order; ++i) {
            unsigned char sum = 0;
            for (std::size_t j = 0; j < order; ++j)
                sum = static_cast<unsigned char>(sum ^ (u[j] & transposed[i][j]));
            out[i] = sum;
        }
        benchmark::DoNotOptimize(out.data());
    }
}

void polar_rate_match(benchmark::State& state)
{
    const bits_t in = random_bits(static_cast<std::size_t>(state.range(2)));
    bits_t out;
    for (auto _ : state) {
        lib_nr_polar_rate_match_t rate_match;
        rate_match.set_polar_coding_input_lentgh(static_cast<unsigned int>(state.range(0)));
        rate_match.set_rate_match_output_length(static_cast<unsigned int>(state.range(1)));
        rate_match.deal_rate_matching(in, out);
        benchmark::DoNotOptimize(out.data());
    }
}

// PBCH, then DCI of 40 bits at aggregation levels 1 to 16.
void pbch_and_dci(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Args({56, 864, 512});
    benchmark->Args({64, 108, 128})->Args({64, 216, 256})->Args({64, 432, 512});
    benchmark->Args({64, 864, 512})->Args({64, 1728, 512});
}

BENCHMARK(gold)->Arg(1000000)->Arg(1000);
BENCHMARK(gold_bit_serial)->Arg(1000000)->Arg(1000);
BENCHMARK(crc24a)->Arg(1000000)->Arg(8448);
BENCHMARK(crc24a_bit_serial)->Arg(1000000)->Arg(8448);
BENCHMARK(modulate)->DenseRange(LIB_NR_MODULATION_HALF_PI_BPSK, LIB_NR_MODULATION_1024QAM);
BENCHMARK(modulate_by_tree)->Arg(LIB_NR_MODULATION_QPSK)->Arg(LIB_NR_MODULATION_256QAM);
BENCHMARK(polar)->Apply(pbch_and_dci);
BENCHMARK(polar_matrix_product)->Apply(pbch_and_dci);
BENCHMARK(polar_transposed_matrix_product)->Apply(pbch_and_dci);
BENCHMARK(polar_rate_match)->Apply(pbch_and_dci);

} // namespace
