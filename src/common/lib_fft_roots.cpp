#include "common/lib_fft_roots.h"

#include <array>
#include <cmath>
#include <numbers>

namespace vek::common_lib::detail
{

namespace
{

using complex_t = std::complex<double>;

// Up to an eighth of a turn, eight terms of the series are exact to a tenth of a unit of the last place.
constexpr std::size_t k_terms = 8;
using series_t = std::array<double, k_terms>;

// 1 / n!, -1 / (n + 2)!, 1 / (n + 4)! ...
constexpr series_t make_series(unsigned int n)
{
    series_t series{};
    double factorial = 1.0;
    unsigned int done = 1;
    for (std::size_t i = 0; i < k_terms; ++i) {
        for (; done <= n + 2 * i; ++done)
            factorial *= done;
        series[i] = (i % 2 == 0 ? 1.0 : -1.0) / factorial;
    }
    return series;
}

double sum_up(const series_t& series, double z)
{
    double sum = series.back();
    for (std::size_t i = k_terms - 1; i-- > 0;)
        sum = sum * z + series[i];
    return sum;
}

// Cosine and sine of so many turns, at most an eighth.
complex_t point_in_first_octant(std::size_t numerator, std::size_t denominator)
{
    static constexpr series_t k_sine_series = make_series(3);   // sin x = x - x z (1 / 3! - z / 5! + ...), z = x^2
    static constexpr series_t k_cosine_series = make_series(4); // cos x = 1 - z / 2 + z^2 (1 / 4! - z / 6! + ...)

    // The angle is the sum of two numbers, the second below the last place of the first. (A fused multiply-add is exact
    // everywhere, in hardware or not.)
    constexpr double k_turn = 2.0 * std::numbers::pi;
    constexpr double k_rest_of_turn = 2.4492935982947064e-16;
    const auto dividend = static_cast<double>(numerator);
    const auto divisor = static_cast<double>(denominator);
    const double fraction = dividend / divisor;
    const double rest_of_fraction = std::fma(-fraction, divisor, dividend) / divisor;
    const double angle = k_turn * fraction;
    const double rest = std::fma(k_turn, fraction, -angle) + (k_turn * rest_of_fraction + k_rest_of_turn * fraction);

    const double z = angle * angle;
    const double sine = angle + (rest - angle * (z * sum_up(k_sine_series, z)));
    const double half = 0.5 * z;
    const double most = 1.0 - half;
    const double cosine = most + (((1.0 - most) - half) + (z * z * sum_up(k_cosine_series, z) - angle * rest));
    return {cosine, sine};
}

} // namespace

complex_t root_of_unity(std::size_t k, std::size_t length)
{
    const std::size_t octant = 8 * k / length;
    const std::size_t past = 8 * k - octant * length; // the octant's begin, in parts of 8 length
    const complex_t point = point_in_first_octant(octant % 2 == 0 ? past : length - past, 8 * length);
    const bool is_steep = octant % 4 == 1 || octant % 4 == 2;
    const double re = is_steep ? point.imag() : point.real();
    const double im = is_steep ? point.real() : point.imag();
    return {octant >= 2 && octant < 6 ? -re : re, octant < 4 ? -im : im};
}

std::vector<complex_t> make_roots_of_unity(std::size_t length)
{
    std::vector<complex_t> roots(length);
    if (length % 8 != 0) {
        for (std::size_t k = 0; k < length; ++k)
            roots[k] = root_of_unity(k, length);
        return roots;
    }
    // The seven other octants are mirror images.
    const std::size_t quarter = length / 4;
    for (std::size_t k = 0; k <= length / 8; ++k) {
        const complex_t point = point_in_first_octant(k, length);
        const double c = point.real();
        const double s = point.imag();
        if (k > 0)
            roots[length - k] = {c, s};
        roots[3 * quarter + k] = {s, c};
        roots[3 * quarter - k] = {-s, c};
        roots[2 * quarter + k] = {-c, s};
        roots[2 * quarter - k] = {-c, -s};
        roots[quarter + k] = {-s, -c};
        roots[quarter - k] = {s, -c};
        roots[k] = {c, -s};
    }
    return roots;
}

} // namespace vek::common_lib::detail
