// Low-PAPR sequences of type 1 beside the clause written down: two exponentials a sample.
#include "phy_ul/lib_nr_low_papr_sequence1.h"

#include <benchmark/benchmark.h>

#include <complex>
#include <numbers>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

constexpr std::uint32_t k_length = 1632;
constexpr std::uint32_t k_prime = 1627;
constexpr double k_alpha = 1.25;

void low_papr_type_1(benchmark::State& state)
{
    std::vector<std::complex<double>> out;
    for (auto _ : state) {
        out.clear();
        lib_nr_low_papr_sequence1::generate_low_papr_sequence_1({17, 0, k_alpha, 0, k_length}, out);
        benchmark::DoNotOptimize(out.data());
    }
}

void low_papr_type_1_by_exponentials(benchmark::State& state)
{
    std::vector<std::complex<double>> out;
    for (auto _ : state) {
        out.clear();
        for (std::uint32_t n = 0; n < k_length; ++n) {
            const double m = n % k_prime;
            const std::complex<double> base =
                std::exp(std::complex<double>(0.0, -std::numbers::pi * 945.0 * m * (m + 1.0) / k_prime));
            out.push_back(std::exp(std::complex<double>(0.0, k_alpha * n)) * base);
        }
        benchmark::DoNotOptimize(out.data());
    }
}

} // namespace

BENCHMARK(low_papr_type_1);
BENCHMARK(low_papr_type_1_by_exponentials);
