#include "receiver/fft.h"

#include <cmath>
#include <cstddef>
#include <map>
#include <numbers>
#include <utility>

namespace nr_test
{

namespace
{

using complex_t = std::complex<double>;

/// exp(j 2 pi sign i / size) for every i below the size.
const signal_t& roots_of_unity(std::size_t size, int sign)
{
    static std::map<std::pair<std::size_t, int>, signal_t> tables;
    signal_t& table = tables[{size, sign}];
    for (std::size_t i = table.size(); i < size; ++i)
        table.push_back(
            std::polar(1.0, sign * 2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size)));
    return table;
}

/// The product without the detour for infinities that the operator of std::complex takes.
complex_t multiply(complex_t a, complex_t b)
{
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

std::size_t smallest_factor(std::size_t size)
{
    if (size % 4 == 0)
        return 4;
    for (std::size_t factor = 2; factor * factor <= size; ++factor)
        if (size % factor == 0)
            return factor;
    return size;
}

/// A transform over `radix` values that lie a step apart, each result turned by its twiddle and put a stride apart.
void butterfly(const complex_t* in, std::size_t step, complex_t* out, std::size_t stride, std::size_t radix,
               const complex_t* twiddles, const signal_t& small_roots, int sign)
{
    if (radix == 4) {
        const complex_t sum = in[0] + in[2 * step];
        const complex_t difference = in[0] - in[2 * step];
        const complex_t other_sum = in[step] + in[3 * step];
        const complex_t d = in[step] - in[3 * step];
        const complex_t turned = sign < 0 ? complex_t(d.imag(), -d.real()) : complex_t(-d.imag(), d.real());
        out[0] = sum + other_sum;
        out[stride] = multiply(difference + turned, twiddles[1]);
        out[2 * stride] = multiply(sum - other_sum, twiddles[2]);
        out[3 * stride] = multiply(difference - turned, twiddles[3]);
        return;
    }
    for (std::size_t k = 0; k < radix; ++k) {
        complex_t sum = 0;
        for (std::size_t j = 0; j < radix; ++j)
            sum += multiply(in[j * step], small_roots[j * k % radix]);
        out[k * stride] = multiply(sum, twiddles[k]);
    }
}

} // namespace

// Decimation in frequency, each pass sorting as it goes, so that nothing is left to reorder at the end.
void fft(signal_t& values, int sign)
{
    const std::size_t size = values.size();
    const signal_t& roots = roots_of_unity(size, sign);
    signal_t other(size);
    signal_t twiddles;
    for (std::size_t length = size, stride = 1; length > 1;) {
        const std::size_t radix = smallest_factor(length);
        const signal_t& small_roots = roots_of_unity(radix, sign);
        const std::size_t part = length / radix;
        twiddles.resize(radix);
        for (std::size_t p = 0; p < part; ++p) {
            for (std::size_t k = 0; k < radix; ++k)
                twiddles[k] = roots[p * k * stride];
            for (std::size_t q = 0; q < stride; ++q)
                butterfly(&values[q + stride * p], stride * part, &other[q + stride * radix * p], stride, radix,
                          twiddles.data(), small_roots, sign);
        }
        values.swap(other);
        length = part;
        stride *= radix;
    }
}

} // namespace nr_test
