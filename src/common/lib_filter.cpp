#include "common/lib_filter.h"

#include "common/lib_complex_product.h"
#include "common/lib_fft_plan.h"
#include "common/lib_signal_power.h"

#include <algorithm>
#include <bit>
#include <utility>

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

/// A signal that lies in two pieces, one behind the other.
struct pieces_t
{
    complex_t* first;
    std::size_t first_size;
    complex_t* second;
    std::size_t second_size;

    std::size_t size() const { return first_size + second_size; }
    /// The piece that holds a sample, and how many are left in it from there on.
    std::pair<complex_t*, std::size_t> at(std::size_t place) const
    {
        if (place < first_size)
            return {first + place, first_size - place};
        return {second + (place - first_size), size() - place};
    }
};

// Convolution of a signal that already has the result's size. Sample n of the result depends on samples up to n only,
// so the blocks go forward in place, or further to the front by the length of the head. What a block would write over
// inputs that the next one needs is held back until that has read them.
class overlap_save_t
{
public:
    overlap_save_t(const signal_t& taps, const pieces_t& signal, signal_t& head)
        : m_signal(signal),
          m_head(head),
          m_history(taps.size() - 1),
          m_input(get_block_length(m_history, signal.size() + head.size())),
          m_output(m_input.size()),
          m_next_output(m_input.size()),
          m_spectrum(m_input.size()),
          m_response(m_input.size()),
          m_forward(lib_fft_plan_t::get(m_input.size(), LIB_FFT_FORWARD)),
          m_inverse(lib_fft_plan_t::get(m_input.size(), LIB_FFT_INVERSE))
    {
        std::copy(taps.begin(), taps.end(), m_input.begin());
        m_forward.execute(m_input.data(), m_response.data());
        const double scale = 1.0 / static_cast<double>(m_input.size());
        for (complex_t& value : m_response)
            value *= scale;
    }

    void run()
    {
        const std::size_t step = m_input.size() - m_history;
        const std::size_t held = m_history - m_head.size();
        const std::size_t end = m_signal.size() + m_head.size();
        bool is_held = false;
        for (std::size_t begin = 0; begin < end; begin += step) {
            const complex_t* const input = _get_input(begin, step);
            const bool is_silent = common_lib::is_silent({input, m_input.size()});
            if (!is_silent) {
                m_forward.execute(input, m_spectrum.data());
                multiply_each(m_spectrum.data(), m_spectrum.size(), m_response.data());
            }
            if (is_held)
                _write(m_output.data() + (m_output.size() - held), held, begin - held);
            is_held = !is_silent && begin + step < end;
            if (is_silent) // and so is the result, which stands there
                continue;
            m_inverse.execute(m_spectrum.data(), m_next_output.data());
            m_output.swap(m_next_output);
            _write(m_output.data() + m_history, is_held ? step - held : step, begin);
        }
    }

private:
    /// A block's fresh samples from `begin` on, and ahead of them those that the filter still remembers.
    const complex_t* _get_input(std::size_t begin, std::size_t step)
    {
        if (begin >= m_history && begin + step <= m_signal.first_size)
            return m_signal.first + (begin - m_history);
        const std::size_t missing = m_history - std::min(begin, m_history);
        std::fill_n(m_input.begin(), missing, complex_t());
        std::size_t filled = missing;
        for (std::size_t place = begin + missing - m_history; filled < m_input.size() && place < m_signal.size();) {
            const auto [samples, left] = m_signal.at(place);
            const std::size_t count = std::min(left, m_input.size() - filled);
            std::copy_n(samples, count, m_input.data() + filled);
            filled += count;
            place += count;
        }
        std::fill(m_input.begin() + static_cast<std::ptrdiff_t>(filled), m_input.end(), complex_t());
        return m_input.data();
    }

    /// The first samples of the result fill the head, those behind it the signal from its start on.
    void _write(const complex_t* result, std::size_t count, std::size_t place)
    {
        const std::size_t ahead = place < m_head.size() ? std::min(count, m_head.size() - place) : 0;
        std::copy_n(result, ahead, m_head.data() + place);
        place += ahead;
        for (std::size_t done = ahead; done < count && place - m_head.size() < m_signal.size();) {
            const auto [samples, left] = m_signal.at(place - m_head.size());
            const std::size_t run = std::min(left, count - done);
            std::copy_n(result + done, run, samples);
            done += run;
            place += run;
        }
    }

    pieces_t m_signal;
    signal_t& m_head;
    std::size_t m_history;
    signal_t m_input; // where a block does not lie in one piece
    signal_t m_output;
    signal_t m_next_output;
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
        overlap_save_t(coefficients, {signal.data(), signal.size(), nullptr, 0}, no_head).run();
}

void lib_filter_t::filter_frame(const std::vector<std::complex<double>>& coefficients, std::complex<double>* frame,
                                std::size_t count, std::vector<std::complex<double>>& head,
                                std::vector<std::complex<double>>& tail)
{
    head.clear();
    if (coefficients.empty())
        return;
    const std::size_t lead = (coefficients.size() - 1) / 2;
    head.resize(lead);
    tail.resize(tail.size() + coefficients.size() - 1 - lead);
    const complex_t middle = coefficients[lead];
    if (is_not_zero(middle) && std::count_if(coefficients.begin(), coefficients.end(), is_not_zero) == 1) {
        if (middle != 1.0) {
            multiply(frame, count, middle, frame);
            multiply(tail.data(), tail.size(), middle, tail.data());
        }
        return;
    }
    overlap_save_t(coefficients, {frame, count, tail.data(), tail.size()}, head).run();
}

} // namespace vek::common_lib
