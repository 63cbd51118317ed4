#include "common/lib_filter.h"

#include "common/lib_complex_product.h"
#include "common/lib_fft_plan.h"

#include <algorithm>
#include <bit>

namespace vek::common_lib
{

namespace
{

using complex_t = std::complex<double>;
using signal_t = std::vector<complex_t>;

bool is_not_zero(const complex_t& value) { return value.real() != 0.0 || value.imag() != 0.0; }

// A transform of about four times the filter's length: its buffers stay in the nearer caches, where longer ones save
// less than they lose. No longer than the whole result needs.
std::size_t get_block_length(std::size_t history, std::size_t result_size)
{
    return std::bit_ceil(std::min(std::max<std::size_t>(4 * history, 64), history + result_size));
}

// Convolution of a vector that already has the result's size. Sample n of the result depends on samples up to n only,
// so the blocks go forward in place, or further to the front; the inputs that the next block still needs are kept
// aside.
class overlap_save_t
{
public:
    overlap_save_t(const signal_t& taps, std::size_t result_size)
        : m_history(taps.size() - 1),
          m_block(get_block_length(m_history, result_size)),
          m_next_block(m_block.size()),
          m_spectrum(m_block.size()),
          m_response(m_block.size()),
          m_forward(lib_fft_plan_t::get(m_block.size(), LIB_FFT_FORWARD)),
          m_inverse(lib_fft_plan_t::get(m_block.size(), LIB_FFT_INVERSE))
    {
        std::copy(taps.begin(), taps.end(), m_block.begin());
        m_forward.execute(m_block.data(), m_response.data());
        const double scale = 1.0 / static_cast<double>(m_block.size());
        for (complex_t& value : m_response)
            value *= scale;
        std::fill(m_block.begin(), m_block.end(), complex_t());
    }

    // The first samples of the result fill the head, those behind it the signal from its start on.
    void run(signal_t& signal, signal_t& head)
    {
        const std::size_t step = m_block.size() - m_history;
        for (std::size_t begin = 0; begin < signal.size(); begin += step) {
            const std::size_t count = std::min(step, signal.size() - begin);
            const complex_t* result = _filter_block(signal.data() + begin, count);
            const std::size_t ahead = begin < head.size() ? std::min(count, head.size() - begin) : 0;
            std::copy_n(result, ahead, head.data() + begin);
            if (ahead < count)
                std::copy(result + ahead, result + count, signal.data() + (begin + ahead - head.size()));
        }
    }

private:
    // The head of m_block holds the last inputs of the block before. The result stands until the next call.
    const complex_t* _filter_block(const complex_t* samples, std::size_t count)
    {
        const auto fresh = m_block.begin() + static_cast<std::ptrdiff_t>(m_history);
        std::fill(std::copy_n(samples, count, fresh), m_block.end(), complex_t());
        if (std::any_of(m_block.begin(), m_block.end(), is_not_zero)) {
            m_forward.execute(m_block.data(), m_spectrum.data());
            multiply_each(m_spectrum.data(), m_spectrum.size(), m_response.data());
            std::copy(m_block.end() - static_cast<std::ptrdiff_t>(m_history), m_block.end(), m_next_block.begin());
            m_inverse.execute(m_spectrum.data(), m_block.data());
            m_block.swap(m_next_block);
            return m_next_block.data() + m_history;
        }
        return m_block.data() + m_history;
    }

    std::size_t m_history;
    signal_t m_block;
    signal_t m_next_block;
    signal_t m_spectrum;
    signal_t m_response;
    const lib_fft_plan_t& m_forward;
    const lib_fft_plan_t& m_inverse;
};

void shift_and_scale(signal_t& signal, std::size_t delay, const complex_t& gain)
{
    std::copy_backward(signal.begin(), signal.end() - static_cast<std::ptrdiff_t>(delay), signal.end());
    std::fill_n(signal.begin(), delay, complex_t());
    if (gain != 1.0)
        multiply(signal.data(), signal.size(), gain, signal.data());
}

} // namespace

void lib_filter_t::deal_filter(const std::vector<std::complex<double>>& coefficients,
                               std::vector<std::complex<double>>& signal, lib_filter_delay_type_t delay_type)
{
    if (coefficients.empty() || signal.empty())
        return;
    signal_t no_head;
    if (delay_type != LIB_FILTER_DELAY_CAUSAL)
        signal.resize(signal.size() + coefficients.size() - 1);

    const auto first = std::find_if(coefficients.begin(), coefficients.end(), is_not_zero);
    if (first == coefficients.end())
        std::fill(signal.begin(), signal.end(), complex_t());
    else if (std::none_of(first + 1, coefficients.end(), is_not_zero))
        shift_and_scale(signal, std::min(static_cast<std::size_t>(first - coefficients.begin()), signal.size()),
                        *first);
    else
        overlap_save_t(coefficients, signal.size()).run(signal, no_head);
}

void lib_filter_t::deal_filter_in_two(const std::vector<std::complex<double>>& coefficients,
                                      std::vector<std::complex<double>>& signal,
                                      std::vector<std::complex<double>>& head)
{
    head.clear();
    if (coefficients.empty() || signal.empty())
        return;
    const std::size_t lead = (coefficients.size() - 1) / 2;
    const std::size_t size = signal.size() + coefficients.size() - 1 - lead;
    head.resize(lead);
    const bool is_in_the_middle = is_not_zero(coefficients[lead]);
    if (is_in_the_middle && std::count_if(coefficients.begin(), coefficients.end(), is_not_zero) == 1) {
        multiply(signal.data(), signal.size(), coefficients[lead], signal.data());
        signal.resize(size);
        return;
    }
    signal.resize(size + lead);
    overlap_save_t(coefficients, signal.size()).run(signal, head);
    signal.resize(size);
}

} // namespace vek::common_lib
