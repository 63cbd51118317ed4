#include "common/lib_fft_plan.h"

#include "common/lib_complex_product.h"
#include "common/lib_prime_factor.h"

#include <kissfft/kissfft.hh>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <vector>

namespace vek::common_lib
{

namespace
{

using complex_t = std::complex<double>;

// A butterfly of a prime factor p costs p operations per sample; from here on the detour by a convolution is cheaper.
constexpr std::size_t k_largest_direct_factor = 64;

// A transform of any length as a convolution with a chirp, n k = (n^2 + k^2 - (k - n)^2) / 2, by transforms whose
// length is a power of two.
class chirp_transform_t
{
public:
    chirp_transform_t(std::size_t length, bool inverse)
        : m_chirp(length),
          m_kernel(std::bit_ceil(2 * length - 1)),
          m_work(m_kernel.size()),
          m_forward(m_kernel.size(), false),
          m_inverse(m_kernel.size(), true)
    {
        // The angle is pi n^2 / length; n^2 modulo 2 length is followed in integers, so that no accuracy is lost.
        std::size_t square = 0;
        for (std::size_t n = 0; n < length; ++n) {
            const double angle = std::numbers::pi * static_cast<double>(square) / static_cast<double>(length);
            m_chirp[n] = std::polar(1.0, inverse ? angle : -angle);
            square = (square + 2 * n + 1) % (2 * length);
        }
        std::vector<complex_t> response(m_kernel.size());
        response[0] = std::conj(m_chirp[0]);
        for (std::size_t n = 1; n < length; ++n)
            response[n] = response[response.size() - n] = std::conj(m_chirp[n]);
        m_forward.transform(response.data(), m_kernel.data());
        for (complex_t& value : m_kernel)
            value /= static_cast<double>(m_kernel.size());
    }

    void transform(const complex_t* in, complex_t* out)
    {
        std::vector<complex_t> spectrum(m_kernel.size());
        std::fill(m_work.begin(), m_work.end(), complex_t());
        for (std::size_t n = 0; n < m_chirp.size(); ++n)
            m_work[n] = product(in[n], m_chirp[n]);
        m_forward.transform(m_work.data(), spectrum.data());
        for (std::size_t k = 0; k < spectrum.size(); ++k)
            spectrum[k] = product(spectrum[k], m_kernel[k]);
        m_inverse.transform(spectrum.data(), m_work.data());
        for (std::size_t n = 0; n < m_chirp.size(); ++n)
            out[n] = product(m_work[n], m_chirp[n]);
    }

private:
    std::vector<complex_t> m_chirp;
    std::vector<complex_t> m_kernel;
    std::vector<complex_t> m_work;
    kissfft<double> m_forward;
    kissfft<double> m_inverse;
};

} // namespace

struct lib_fft_plan_t::backend_t
{
    std::unique_ptr<kissfft<double>> direct;
    std::unique_ptr<chirp_transform_t> by_convolution;
    std::vector<complex_t> input; // copy of the input where the transform is in place
};

lib_fft_plan_t::lib_fft_plan_t(std::size_t length, lib_fft_direction_t direction)
    : m_length(length), m_backend(std::make_unique<backend_t>())
{
    if (length == 0)
        return;
    const bool inverse = direction == LIB_FFT_INVERSE;
    if (get_largest_prime_factor(length) <= k_largest_direct_factor)
        m_backend->direct = std::make_unique<kissfft<double>>(length, inverse);
    else
        m_backend->by_convolution = std::make_unique<chirp_transform_t>(length, inverse);
}

lib_fft_plan_t::~lib_fft_plan_t() = default;

void lib_fft_plan_t::execute(const complex_t* in, complex_t* out) const
{
    if (m_length == 0)
        return;
    if (m_backend->by_convolution) {
        m_backend->by_convolution->transform(in, out);
    }
    else if (in == out) {
        m_backend->input.assign(in, in + m_length);
        m_backend->direct->transform(m_backend->input.data(), out);
    }
    else {
        m_backend->direct->transform(in, out);
    }
}

} // namespace vek::common_lib
