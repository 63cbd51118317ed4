#include "common/lib_fft_plan.h"

#include "support/noise.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <new>
#include <set>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

// Transforms of either backend: against the sum that defines them, by several threads, where memory is short.

namespace
{

// Allocations that may still succeed, none where negative, and blocks that are not yet given back.
std::atomic<long> allocations_left = -1;
std::atomic<long> blocks = 0;

void* allocate(std::size_t size, std::size_t alignment)
{
    if (allocations_left == 0)
        throw std::bad_alloc();
    if (allocations_left > 0)
        --allocations_left;
    void* block = std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
    if (block == nullptr)
        throw std::bad_alloc();
    ++blocks;
    return block;
}

void release(void* block)
{
    blocks -= block != nullptr;
    std::free(block);
}

} // namespace

void* operator new(std::size_t size) { return allocate(size, alignof(std::max_align_t)); }
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return allocate(size, static_cast<std::size_t>(alignment));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
try {
    return operator new(size);
} catch (const std::bad_alloc&) {
    return nullptr;
}
void operator delete(void* block, const std::nothrow_t&) noexcept { release(block); }
void operator delete(void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }

namespace
{

using namespace vek::common_lib;
using nr_test::noise;
using signal_t = std::vector<std::complex<double>>;

std::complex<long double> bin_by_definition(const signal_t& in, std::size_t k, double sign)
{
    std::complex<long double> sum = 0;
    for (std::size_t n = 0; n < in.size(); ++n) {
        const long double angle = sign * 2 * M_PIl * static_cast<long double>(k * n % in.size()) / in.size();
        sum += std::complex<long double>(in[n].real(), in[n].imag()) *
               std::complex<long double>(std::cos(angle), std::sin(angle));
    }
    return sum;
}

// Against the mean power of all bins, of some bins.
double relative_error(const signal_t& in, const signal_t& out, double sign)
{
    const std::size_t bins = in.size() > 10000 ? 5 : 40;
    long double error = 0;
    long double count = 0;
    for (std::size_t k = 0; k < in.size(); k += 1 + in.size() / bins, ++count)
        error += std::norm(std::complex<long double>(out[k]) - bin_by_definition(in, k, sign));
    long double power = 0;
    for (const std::complex<double>& value : in)
        power += std::norm(value);
    return static_cast<double>(std::sqrt(error / count / power));
}

TEST(lib_fft_plan, equals_the_sum_that_defines_it_in_place_and_out_of_place)
{
    // By passes, in two steps, by a convolution, and by mixtures of these.
    std::vector<std::size_t> lengths = {375,  432,  486,   512,   540,    640,    648,    729,
                                        768,  839,  1009,  1800,  2250,   2700,   3000,   3584,
                                        4096, 6075, 65536, 91125, 112500, 115200, 153600, 170000};
    for (std::size_t length = 1; length <= 200; ++length)
        lengths.push_back(length);
    for (const std::size_t length : lengths) {
        const signal_t in = noise(length);
        for (const auto direction : {LIB_FFT_FORWARD, LIB_FFT_INVERSE}) {
            const lib_fft_plan_t& plan = lib_fft_plan_t::get(length, direction);
            signal_t out(length);
            plan.execute(in.data(), out.data());
            EXPECT_LT(relative_error(in, out, direction == LIB_FFT_FORWARD ? -1.0 : 1.0), 6e-16) << length;
            signal_t in_place = in;
            plan.execute(in_place.data(), in_place.data());
            EXPECT_LT(nr_test::largest_difference(in_place, out), 1e-12 * std::sqrt(static_cast<double>(length)));
            // The same bits wherever the buffers lie.
            signal_t shifted(length + 1);
            std::copy(in.begin(), in.end(), shifted.begin() + 1);
            plan.execute(shifted.data() + 1, shifted.data() + 1);
            EXPECT_TRUE(std::equal(in_place.begin(), in_place.end(), shifted.begin() + 1)) << length;
        }
    }
}

TEST(lib_fft_plan, threads_ask_for_plans_and_run_them_at_once)
{
#ifdef NR_MOD_LIB_FFT_FFTW3
    GTEST_SKIP() << "FFTW's planner is no such thing";
#endif
    const std::size_t lengths[] = {1504, 1620, 2880, 1013, 6000}; // no other test's
    std::vector<signal_t> results(4);
    std::vector<std::thread> threads;
    for (signal_t& result : results)
        threads.emplace_back([&] {
            for (const std::size_t length : lengths)
                for (int round = 0; round < 50; ++round) {
                    signal_t values = noise(length);
                    lib_fft_plan_t::get(length, LIB_FFT_FORWARD).execute(values.data(), values.data());
                    if (round == 0)
                        result.insert(result.end(), values.begin(), values.end());
                    else if (!std::equal(values.begin(), values.end(), result.end() - values.size()))
                        result.clear();
                }
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const signal_t& result : results)
        EXPECT_TRUE(!result.empty() && result == results.front());
}

TEST(lib_fft_plan, loses_nothing_where_any_allocation_fails)
{
    // The first round makes what the process keeps for transforms within transforms.
    for (const std::size_t length : {1014U, 1014U, 1500U, 1500U, 4800U, 4800U, 162000U, 162000U}) {
        static std::size_t last_length = 0;
        const bool is_first_round = std::exchange(last_length, length) != length;
        signal_t values = noise(length);
        long failures = 0;
        for (bool is_done = false; !is_done; ++failures) {
            const long before = blocks;
            allocations_left = failures;
            try {
                const lib_fft_plan_t plan(length, LIB_FFT_INVERSE);
                plan.execute(values.data(), values.data());
                is_done = true;
            } catch (const std::bad_alloc&) {
            }
            allocations_left = -1;
            // The thread keeps a buffer.
            EXPECT_TRUE(is_first_round || blocks <= before + (is_done ? 1 : 0)) << length << " " << failures;
        }
        EXPECT_GT(failures, 1) << length; // FFTW allocates by itself, out of our sight
    }
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
        signal_t in = nr_test::noise(length);
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

TEST(lib_fft_plan, tells_where_memory_is_short_and_does_not_end_the_process)
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
