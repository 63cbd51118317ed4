#include "common/lib_fourier_transform.h"

#include "common/lib_fft_plan.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <random>
#include <set>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// Transforms of either backend against the sum that defines them.

namespace
{

using namespace vek::common_lib;
using signal_t = std::vector<std::complex<double>>;

signal_t noise(std::size_t size)
{
    std::mt19937 random(static_cast<unsigned int>(size));
    std::normal_distribution<double> gauss;
    signal_t signal(size);
    for (auto& sample : signal)
        sample = {gauss(random), gauss(random)};
    return signal;
}

std::complex<double> bin_by_definition(const signal_t& in, std::size_t k, double sign)
{
    std::complex<long double> sum = 0;
    for (std::size_t n = 0; n < in.size(); ++n) {
        const long double angle = sign * 2 * M_PIl * static_cast<long double>(k * n % in.size()) / in.size();
        sum += std::complex<long double>(in[n].real(), in[n].imag()) *
               std::complex<long double>(std::cos(angle), std::sin(angle));
    }
    return {static_cast<double>(sum.real()), static_cast<double>(sum.imag())};
}

double largest_difference(const signal_t& a, const signal_t& b)
{
    double largest = a.size() == b.size() ? 0.0 : INFINITY;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

TEST(lib_fourier_transform, equals_the_sum_that_defines_it_in_place_and_out_of_place)
{
    for (const std::size_t length : {1U, 2U, 3U, 4U, 5U, 7U, 12U, 30U, 97U, 128U, 540U, 1009U, 1536U, 4096U}) {
        const signal_t in = noise(length);
        for (const auto direction : {LIB_FFT_FORWARD, LIB_FFT_INVERSE}) {
            const lib_fft_plan_t& plan = lib_fft_plan_t::get(length, direction);
            signal_t out(length);
            plan.execute(in.data(), out.data());
            signal_t in_place = in;
            plan.execute(in_place.data(), in_place.data());
            EXPECT_LT(largest_difference(in_place, out), 1e-12 * static_cast<double>(length)) << length;
            // The same bits wherever the buffers lie.
            signal_t shifted(length + 1);
            std::copy(in.begin(), in.end(), shifted.begin() + 1);
            plan.execute(shifted.data() + 1, shifted.data() + 1);
            EXPECT_TRUE(std::equal(in_place.begin(), in_place.end(), shifted.begin() + 1)) << length;
            for (std::size_t k = 0; k < length; k += 1 + length / 40)
                EXPECT_LT(std::abs(out[k] - bin_by_definition(in, k, direction == LIB_FFT_FORWARD ? -1.0 : 1.0)),
                          1e-11 * std::sqrt(static_cast<double>(length)) * 10)
                    << length << ", bin " << k;
        }
    }
}

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
}

void limit_address_space(rlim_t bytes)
{
    const rlimit limits = {bytes, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limits);
}

// In a process of its own, whose heap is used up and may then grow by so many bytes: 0 where all went well, 1 for
// std::bad_alloc.
int transform_with_memory_left(std::size_t length, rlim_t bytes)
{
    const pid_t child = fork();
    if (child == 0) {
        signal_t in = noise(length);
        signal_t out(length);
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        const rlim_t used = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
        limit_address_space(used);
        for (std::size_t size = std::size_t{1} << 24U; size >= 64; size /= 2)
            while (std::malloc(size) != nullptr) {
            }
        limit_address_space(used + bytes);
        try {
            const lib_fft_plan_t plan(length, LIB_FFT_FORWARD);
            plan.execute(in.data(), out.data());
            plan.execute(in.data(), in.data());
        } catch (const std::bad_alloc&) {
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(lib_fourier_transform, tells_where_memory_is_short_and_does_not_end_the_process)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's own memory knows no limit";
#endif
    for (const std::size_t length : {100003U, 307200U}) {
        std::set<int> seen;
        for (rlim_t bytes = 0; bytes < 28U << 20U; bytes += 7U << 19U)
            seen.insert(transform_with_memory_left(length, bytes));
        EXPECT_TRUE(seen.count(-1) == 0 && seen.count(0) == 1) << length;
    }
}

} // namespace
