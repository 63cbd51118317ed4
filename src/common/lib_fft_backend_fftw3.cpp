#include "common/lib_fft_method.h"

#include <fftw3.h>

#include <algorithm>
#include <new>

namespace vek::common_lib::detail
{

namespace
{

struct fftw_free_t
{
    void operator()(fftw_complex* buffer) const { fftw_free(buffer); }
};
using fftw_buffer_t = std::unique_ptr<fftw_complex[], fftw_free_t>;

struct fftw_destroy_t
{
    void operator()(fftw_plan plan) const { fftw_destroy_plan(plan); }
};
using fftw_plan_ptr_t = std::unique_ptr<fftw_plan_s, fftw_destroy_t>;

fftw_buffer_t make_buffer(std::size_t length)
{
    fftw_complex* buffer = fftw_alloc_complex(length);
    if (buffer == nullptr)
        throw std::bad_alloc();
    return fftw_buffer_t(buffer);
}

fftw_complex* to_fftw(const std::complex<double>* values)
{
    return reinterpret_cast<fftw_complex*>(const_cast<std::complex<double>*>(values));
}

// FFTW ends the process where an allocation of its own fails. So what it may take is asked for ahead, and given back at
// once: where that fails, std::bad_alloc tells.
void make_sure_of(std::size_t bytes) { make_buffer(bytes / sizeof(fftw_complex) + 1); }

std::size_t get_largest_prime_factor(std::size_t number)
{
    std::size_t largest = 1;
    for (std::size_t factor = 2; factor * factor <= number; ++factor)
        for (; number % factor == 0; number /= factor)
            largest = factor;
    return std::max(largest, number);
}

// Bounds of what FFTW was seen to take, with a margin. Lengths of small prime factors cost tables of a fraction of
// their size; others take the detour by a convolution. The constants are the planner's own.
constexpr std::size_t k_largest_direct_factor = 31;
constexpr std::size_t k_longest_without_buffer = std::size_t{1} << 17U;
constexpr std::size_t k_planner_bytes = std::size_t{2} << 20U;
constexpr std::size_t k_buffer_bytes = std::size_t{1} << 19U;

bool is_aligned(const std::complex<double>* values)
{
    return fftw_alignment_of(reinterpret_cast<double*>(to_fftw(values))) == 0;
}

/// One plan for each of the four ways, made when first needed, always for aligned buffers: with other plans for other
/// alignments the last bits of a result would depend on where its buffer lies.
class fftw_method_t : public fft_method_t
{
public:
    explicit fftw_method_t(std::size_t length)
        : m_length(length), m_is_direct(get_largest_prime_factor(length) <= k_largest_direct_factor)
    {}

    void execute(lib_fft_direction_t direction, const std::complex<double>* in,
                 std::complex<double>* out) const override
    {
        if (is_aligned(in) && is_aligned(out)) {
            _execute_aligned(direction, to_fftw(in), to_fftw(out));
            return;
        }
        // Vectors of samples are always aligned; this is for buffers of other origin, and takes the same plan.
        const fftw_buffer_t aligned_in = make_buffer(m_length);
        const fftw_buffer_t aligned_out = make_buffer(in == out ? 1 : m_length);
        fftw_complex* result = in == out ? aligned_in.get() : aligned_out.get();
        std::copy_n(in, m_length, reinterpret_cast<std::complex<double>*>(aligned_in.get()));
        _execute_aligned(direction, aligned_in.get(), result);
        std::copy_n(reinterpret_cast<std::complex<double>*>(result), m_length, out);
    }

private:
    void _execute_aligned(lib_fft_direction_t direction, fftw_complex* in, fftw_complex* out) const
    {
        fftw_plan_ptr_t& plan = (in == out ? m_in_place : m_out_of_place)[direction];
        const std::size_t bytes = m_length * sizeof(fftw_complex);
        if (plan == nullptr) {
            make_sure_of((m_is_direct ? 2 : 8) * bytes + k_planner_bytes);
            // Estimated, not measured: measuring takes seconds and its choice differs from run to run. It does not
            // touch the buffers.
            const fftw_iodim64 samples = {static_cast<std::ptrdiff_t>(m_length), 1, 1};
            plan.reset(fftw_plan_guru64_dft(1, &samples, 0, nullptr, in, out,
                                            direction == LIB_FFT_INVERSE ? FFTW_BACKWARD : FFTW_FORWARD,
                                            FFTW_ESTIMATE));
            if (plan == nullptr)
                throw std::bad_alloc();
        }
        // The plans of the hot loops take no buffer.
        if (in == out || !m_is_direct || m_length > k_longest_without_buffer)
            make_sure_of(3 * bytes + k_buffer_bytes);
        fftw_execute_dft(plan.get(), in, out);
    }

    std::size_t m_length;
    bool m_is_direct;
    mutable fftw_plan_ptr_t m_in_place[2];
    mutable fftw_plan_ptr_t m_out_of_place[2];
};

} // namespace

std::shared_ptr<const fft_method_t> make_fft_method(std::size_t length)
{
    return std::make_shared<fftw_method_t>(length);
}

} // namespace vek::common_lib::detail
