#include "common/lib_complex_product.h"
#include "common/lib_fft_direct.h"
#include "common/lib_fft_method.h"
#include "common/lib_fft_roots.h"

#include <algorithm>
#include <cmath>
#include <vector>

// The library's own transforms: by passes where the length has small prime factors and its values fit into the caches;
// in two steps where it is longer, or has such a factor and another one; by a convolution for what is left.

namespace vek::common_lib::detail
{

namespace
{

using complex_t = std::complex<double>;
using signal_t = std::vector<complex_t>;

constexpr std::size_t k_longest_direct = std::size_t{1} << 17U;

/// With N = rows columns, n = columns n1 + n2 and k = k1 + rows k2: transforms over n1 for each n2, roots w^(n2 k1),
/// transforms over n2 for each k1. What lies far apart is taken by whole cache lines.
class fft_two_step_t : public fft_method_t
{
public:
    fft_two_step_t(std::size_t rows, std::size_t columns)
        : m_rows(rows),
          m_columns(columns),
          m_over_rows(make_fft_method(rows)),
          m_over_columns(make_fft_method(columns)),
          m_fine_roots(static_cast<std::size_t>(std::sqrt(static_cast<double>(rows * columns))) + 1)
    {
        const std::size_t length = rows * columns;
        for (std::size_t k = 0; k < m_fine_roots.size(); ++k)
            m_fine_roots[k] = root_of_unity(k % length, length);
        for (std::size_t k = 0; k < length; k += m_fine_roots.size())
            m_coarse_roots.push_back(root_of_unity(k, length));
    }

    void execute(lib_fft_direction_t direction, const complex_t* in, complex_t* out) const override
    {
        signal_t between(m_rows * m_columns);
        signal_t lines(k_together * std::max(m_rows, m_columns));
        for (std::size_t n2 = 0; n2 < m_columns; n2 += k_together) {
            const std::size_t count = std::min(k_together, m_columns - n2);
            gather(in + n2, m_columns, m_rows, count, lines.data());
            for (std::size_t i = 0; i < count; ++i) {
                complex_t* const row = between.data() + m_rows * (n2 + i);
                m_over_rows->execute(direction, lines.data() + m_rows * i, row);
                _turn(direction, n2 + i, row);
            }
        }
        for (std::size_t k1 = 0; k1 < m_rows; k1 += k_together) {
            const std::size_t count = std::min(k_together, m_rows - k1);
            gather(between.data() + k1, m_rows, m_columns, count, lines.data());
            for (std::size_t i = 0; i < count; ++i)
                m_over_columns->execute(direction, lines.data() + m_columns * i, lines.data() + m_columns * i);
            scatter(lines.data(), m_columns, count, out + k1, m_rows);
        }
    }

private:
    static constexpr std::size_t k_together = 8;

    /// `count` neighbouring columns to lines.
    static void gather(const complex_t* in, std::size_t step, std::size_t length, std::size_t count, complex_t* lines)
    {
        for (std::size_t n = 0; n < length; ++n)
            for (std::size_t i = 0; i < count; ++i)
                lines[length * i + n] = in[step * n + i];
    }

    static void scatter(const complex_t* lines, std::size_t length, std::size_t count, complex_t* out, std::size_t step)
    {
        for (std::size_t n = 0; n < length; ++n)
            for (std::size_t i = 0; i < count; ++i)
                out[step * n + i] = lines[length * i + n];
    }

    /// By w^(n2 k1), a product of two roots from tables of the length's square root.
    void _turn(lib_fft_direction_t direction, std::size_t n2, complex_t* row) const
    {
        std::size_t coarse = 0;
        std::size_t fine = 0;
        const std::size_t coarse_step = n2 / m_fine_roots.size();
        const std::size_t fine_step = n2 % m_fine_roots.size();
        for (std::size_t k1 = 0; k1 < m_rows; ++k1) {
            const complex_t root = product(m_coarse_roots[coarse], m_fine_roots[fine]);
            row[k1] = product(row[k1], direction == LIB_FFT_INVERSE ? std::conj(root) : root);
            coarse += coarse_step;
            fine += fine_step;
            if (fine >= m_fine_roots.size()) {
                fine -= m_fine_roots.size();
                ++coarse;
            }
        }
    }

    std::size_t m_rows;
    std::size_t m_columns;
    std::shared_ptr<const fft_method_t> m_over_rows;
    std::shared_ptr<const fft_method_t> m_over_columns;
    signal_t m_fine_roots;
    signal_t m_coarse_roots;
};

std::size_t without_small_factors(std::size_t length)
{
    for (const std::size_t factor : {2U, 3U, 5U})
        while (length % factor == 0)
            length /= factor;
    return length;
}

/// As a convolution with a chirp (Bluestein), n k = (n^2 + k^2 - (k - n)^2) / 2, by transforms of the next length with
/// small prime factors.
class fft_chirp_t : public fft_method_t
{
public:
    explicit fft_chirp_t(std::size_t length) : m_chirp(length), m_kernel(convolution_length(length))
    {
        m_convolution = make_fft_method(m_kernel.size());
        // n^2 / 2 turns over the length, followed in integers so that no accuracy is lost.
        std::size_t square = 0;
        for (std::size_t n = 0; n < length; ++n) {
            m_chirp[n] = root_of_unity(square, 2 * length);
            square = (square + 2 * n + 1) % (2 * length);
        }
        const double scale = 1.0 / static_cast<double>(m_kernel.size());
        m_kernel[0] = scale * std::conj(m_chirp[0]);
        for (std::size_t n = 1; n < length; ++n)
            m_kernel[n] = m_kernel[m_kernel.size() - n] = scale * std::conj(m_chirp[n]);
        m_convolution->execute(LIB_FFT_FORWARD, m_kernel.data(), m_kernel.data());
    }

    void execute(lib_fft_direction_t direction, const complex_t* in, complex_t* out) const override
    {
        // The inverse transform is the forward one with real and imaginary parts exchanged at both ends.
        const auto exchanged = [direction](const complex_t& value) {
            return direction == LIB_FFT_INVERSE ? complex_t(value.imag(), value.real()) : value;
        };
        signal_t work(m_kernel.size());
        for (std::size_t n = 0; n < m_chirp.size(); ++n)
            work[n] = product(exchanged(in[n]), m_chirp[n]);
        m_convolution->execute(LIB_FFT_FORWARD, work.data(), work.data());
        multiply_each(work.data(), work.size(), m_kernel.data());
        m_convolution->execute(LIB_FFT_INVERSE, work.data(), work.data());
        for (std::size_t k = 0; k < m_chirp.size(); ++k)
            out[k] = exchanged(product(work[k], m_chirp[k]));
    }

private:
    static std::size_t convolution_length(std::size_t length)
    {
        std::size_t result = (2 * length - 1 + 7) / 8 * 8;
        while (without_small_factors(result) != 1)
            result += 8;
        return result;
    }

    signal_t m_chirp;
    signal_t m_kernel;
    std::shared_ptr<const fft_method_t> m_convolution;
};

/// The largest divisor up to the square root of a length with small prime factors, of those that are multiples of 8 if
/// there is one.
std::size_t divisor_near_root(std::size_t length)
{
    std::size_t best = 1;
    for (std::size_t divisor = 1; divisor * divisor <= length; ++divisor)
        if (length % divisor == 0 && (divisor % 8 == 0 || best % 8 != 0))
            best = divisor;
    return best;
}

} // namespace

std::shared_ptr<const fft_method_t> make_fft_method(std::size_t length)
{
    const std::size_t rest = without_small_factors(length);
    if (rest == 1 && length <= k_longest_direct)
        return std::make_shared<fft_direct_t>(length);
    if (rest == length)
        return std::make_shared<fft_chirp_t>(length);
    const std::size_t rows = rest == 1 ? divisor_near_root(length) : rest;
    return std::make_shared<fft_two_step_t>(rows, length / rows);
}

} // namespace vek::common_lib::detail
