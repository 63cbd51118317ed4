#include "receiver/fft.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <numbers>
#include <stdexcept>
#include <utility>

namespace nr_test
{

namespace
{

const signal_t& roots_of_unity(std::size_t size)
{
    static std::map<std::size_t, signal_t> tables;
    signal_t& table = tables[size];
    for (std::size_t i = table.size(); i < size / 2; ++i)
        table.push_back(std::polar(1.0, -2.0 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(size)));
    return table;
}

/// The product without the detour for infinities that the operator of std::complex takes.
std::complex<double> multiply(std::complex<double> a, std::complex<double> b)
{
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// A length of three times as much: the transforms of every third value, put together.
void fft_by_thirds(signal_t& values, int sign)
{
    const std::size_t third = values.size() / 3;
    std::array<signal_t, 3> parts;
    for (std::size_t i = 0; i < values.size(); ++i)
        parts[i % 3].push_back(values[i]);
    for (signal_t& part : parts)
        fft(part, sign);
    const double turn = sign * 2.0 * std::numbers::pi / static_cast<double>(values.size());
    for (std::size_t k = 0; k < values.size(); ++k) {
        const std::complex<double> root = std::polar(1.0, turn * static_cast<double>(k));
        values[k] = parts[0][k % third] + multiply(root, parts[1][k % third]) +
                    multiply(multiply(root, root), parts[2][k % third]);
    }
}

} // namespace

void fft(signal_t& values, int sign)
{
    const std::size_t size = values.size();
    if (size == 0 || (size & (size - 1)) != 0) {
        if (size == 0 || size % 3 != 0)
            throw std::invalid_argument("fft: the length is no product of twos and threes");
        fft_by_thirds(values, sign);
        return;
    }

    for (std::size_t i = 1, reversed = 0; i < size; ++i) {
        std::size_t bit = size >> 1;
        for (; reversed & bit; bit >>= 1)
            reversed ^= bit;
        reversed ^= bit;
        if (i < reversed)
            std::swap(values[i], values[reversed]);
    }
    const signal_t& roots = roots_of_unity(size);
    for (std::size_t half = 1; half < size; half *= 2) {
        const std::size_t step = size / (2 * half);
        for (std::size_t block = 0; block < size; block += 2 * half)
            for (std::size_t i = 0; i < half; ++i) {
                const std::complex<double> root = sign < 0 ? roots[i * step] : std::conj(roots[i * step]);
                const std::complex<double> odd = multiply(values[block + half + i], root);
                values[block + half + i] = values[block + i] - odd;
                values[block + i] += odd;
            }
    }
}

} // namespace nr_test
