#include "common/lib_fft_plan.h"

#include <fftw3.h>

#include <algorithm>
#include <new>

namespace vek::common_lib
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

bool is_aligned(const std::complex<double>* values)
{
    return fftw_alignment_of(reinterpret_cast<double*>(to_fftw(values))) == 0;
}

} // namespace

// One plan for each of the two ways, made when first needed, always for aligned buffers: with other plans for other
// alignments the last bits of a result would depend on where its buffer lies.
struct lib_fft_plan_t::backend_t
{
    fftw_plan_ptr_t in_place;
    fftw_plan_ptr_t out_of_place;
    std::size_t length = 0;
    int sign = FFTW_FORWARD;

    // Estimated, not measured: measuring takes seconds and its choice differs from run to run. It does not touch the
    // buffers, so these cost no memory.
    fftw_plan get_plan(bool is_in_place)
    {
        fftw_plan_ptr_t& plan = is_in_place ? in_place : out_of_place;
        if (plan == nullptr) {
            const fftw_buffer_t in = make_buffer(length);
            const fftw_buffer_t out = make_buffer(is_in_place ? 1 : length);
            const fftw_iodim64 samples = {static_cast<std::ptrdiff_t>(length), 1, 1};
            plan.reset(fftw_plan_guru64_dft(1, &samples, 0, nullptr, in.get(), is_in_place ? in.get() : out.get(), sign,
                                            FFTW_ESTIMATE));
            if (plan == nullptr)
                throw std::bad_alloc();
        }
        return plan.get();
    }
};

lib_fft_plan_t::lib_fft_plan_t(std::size_t length, lib_fft_direction_t direction)
    : m_length(length), m_backend(std::make_unique<backend_t>())
{
    m_backend->length = length;
    m_backend->sign = direction == LIB_FFT_INVERSE ? FFTW_BACKWARD : FFTW_FORWARD;
}

lib_fft_plan_t::~lib_fft_plan_t() = default;

void lib_fft_plan_t::execute(const std::complex<double>* in, std::complex<double>* out) const
{
    if (m_length == 0)
        return;
    if (is_aligned(in) && is_aligned(out)) {
        fftw_execute_dft(m_backend->get_plan(in == out), to_fftw(in), to_fftw(out));
        return;
    }
    // Vectors of samples are always aligned; this is for buffers of other origin, and takes the same plan.
    const fftw_buffer_t aligned_in = make_buffer(m_length);
    const fftw_buffer_t aligned_out = make_buffer(in == out ? 1 : m_length);
    fftw_complex* result = in == out ? aligned_in.get() : aligned_out.get();
    std::copy_n(in, m_length, reinterpret_cast<std::complex<double>*>(aligned_in.get()));
    fftw_execute_dft(m_backend->get_plan(in == out), aligned_in.get(), result);
    std::copy_n(reinterpret_cast<std::complex<double>*>(result), m_length, out);
}

} // namespace vek::common_lib
