#include "common/lib_fft_direct.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

// Every vector unit that this machine has gives the same bits, and every machine and compiler those that were recorded
// once the values had been found right (lib_fft_plan_test.cpp).

namespace
{

using namespace vek::common_lib;
using signal_t = std::vector<std::complex<double>>;

// The same bits on every machine: both parts even from -1 to 1.
signal_t fixed_noise(std::size_t size)
{
    std::uint64_t state = size;
    const auto next = [&state] {
        state = state * 6364136223846793005U + 1442695040888963407U;
        return static_cast<double>(state >> 11U) * 0x1p-52 - 1.0;
    };
    signal_t signal(size);
    for (std::complex<double>& sample : signal) {
        const double re = next();
        sample = {re, next()};
    }
    return signal;
}

std::uint64_t digest_of(const signal_t& values, std::uint64_t digest)
{
    for (const std::complex<double>& value : values)
        for (const double part : {value.real(), value.imag()})
            digest = (digest ^ std::bit_cast<std::uint64_t>(part)) * 0x100000001B3u;
    return digest;
}

signal_t transform(const detail::fft_method_t& method, lib_fft_direction_t direction, std::size_t length, bool in_place)
{
    signal_t in = fixed_noise(length);
    signal_t out(length);
    method.execute(direction, in.data(), in_place ? in.data() : out.data());
    return in_place ? in : out;
}

TEST(lib_fft_direct, every_vector_unit_machine_and_compiler_gives_the_same_bits)
{
    std::uint64_t digest = 0xCBF29CE484222325u;
    // Every radix alone, first, in the middle and last, in blocks and in planes; single passes, pairs and more at a
    // time, up to three stages of them, with whole tiles and with one that overlaps.
    for (const std::size_t length : std::vector<std::size_t>{
             1,   2,   3,   4,   5,   6,   8,   9,    10,   12,   15,   16,   18,    20,    24,    25,     27,    30,
             32,  36,  40,  48,  54,  64,  72,  80,   81,   96,   100,  120,  125,   128,   144,   150,    162,   200,
             432, 486, 512, 640, 648, 729, 768, 1800, 2250, 2700, 3000, 4096, 65536, 91125, 98304, 100000, 112500})
    {
        const std::vector<std::size_t> radices = detail::fft_direct_t::get_radices(length);
        for (const auto direction : {LIB_FFT_FORWARD, LIB_FFT_INVERSE}) {
            const signal_t expected = transform(detail::fft_direct_t(length), direction, length, false);
            digest = digest_of(expected, digest);
            for (const detail::fft_unit_t& unit : detail::get_fft_units())
                if (unit.can_run(radices, length)) {
                    const detail::fft_direct_t method(length, unit);
                    EXPECT_EQ(transform(method, direction, length, false), expected) << length << " " << unit.width;
                    EXPECT_EQ(transform(method, direction, length, true), expected) << length << " " << unit.width;
                }
        }
    }
    EXPECT_EQ(digest, 8231691437880304223U);
}

} // namespace
