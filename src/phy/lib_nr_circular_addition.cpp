#include "phy/lib_nr_circular_addition.h"

#include "common/lib_fft_plan.h"
#include "common/lib_large_buffer.h"

#include <algorithm>
#include <cmath>

namespace vek::nr_mod_lib
{

namespace
{

using sample_t = std::complex<double>;

void add_circular(const std::vector<sample_t>& source, std::uint64_t offset, std::vector<sample_t>& buffer)
{
    if (buffer.empty())
        return;
    offset %= buffer.size();
    for (std::size_t done = 0; done < source.size(); offset = 0) {
        const std::size_t run = std::min<std::size_t>(source.size() - done, buffer.size() - offset);
        sample_t* target = buffer.data() + offset;
        for (std::size_t i = 0; i < run; ++i)
            target[i] += source[done + i];
        done += run;
    }
}

void add_ahead(const std::vector<sample_t>& head, std::uint64_t end, std::vector<sample_t>& buffer)
{
    if (!buffer.empty())
        add_circular(head, end + buffer.size() - head.size() % buffer.size(), buffer);
}

} // namespace

void frame_seams_t::open(std::uint64_t frame_length)
{
    m_frame_length = frame_length;
    m_first_head.clear();
    m_tail.clear();
}

void frame_seams_t::join(std::uint64_t frame, std::vector<sample_t>& head, std::vector<sample_t>& tail,
                         std::vector<sample_t>& waveform)
{
    const std::uint64_t begin = frame * m_frame_length;
    if (begin >= waveform.size())
        return;
    add_circular(m_tail, m_tail_begin, waveform);
    m_tail.clear();
    m_tail_begin = begin + m_frame_length;
    if (m_tail_begin <= waveform.size())
        m_tail.swap(tail);
    if (frame == 0)
        m_first_head.swap(head);
    else
        add_ahead(head, begin, waveform);
}

void frame_seams_t::close(std::vector<sample_t>& waveform)
{
    add_circular(m_tail, m_tail_begin, waveform);
    add_ahead(m_first_head, 0, waveform);
}

void add_resampled(std::vector<sample_t>& own, std::vector<sample_t>& buffer)
{
    using common_lib::lib_fft_plan_t;
    if (own.empty() || buffer.empty())
        return;
    lib_fft_plan_t(own.size(), common_lib::LIB_FFT_FORWARD).execute(own.data(), own.data());

    // Bins of positive frequency, 0 Hz among them, and of negative frequency that both rates hold.
    const std::size_t shorter = std::min(own.size(), buffer.size());
    const std::size_t positive = (shorter + 1) / 2;
    const std::size_t negative = (shorter - 1) / 2;
    std::vector<sample_t> spectrum;
    common_lib::make_silent(spectrum, buffer.size());
    // The inverse transform of an OFDM symbol is divided by the root of its length, so that a carrier's power follows
    // from its width and the rate. What came from another rate is brought to the power that this rate gives.
    const double scale = 1.0 / std::sqrt(static_cast<double>(own.size()) * static_cast<double>(buffer.size()));
    for (std::size_t k = 0; k < positive; ++k)
        spectrum[k] = scale * own[k];
    for (std::size_t k = 1; k <= negative; ++k)
        spectrum[spectrum.size() - k] = scale * own[own.size() - k];
    std::vector<sample_t>().swap(own);

    lib_fft_plan_t(spectrum.size(), common_lib::LIB_FFT_INVERSE).execute(spectrum.data(), spectrum.data());
    for (std::size_t i = 0; i < buffer.size(); ++i)
        buffer[i] += spectrum[i];
}

} // namespace vek::nr_mod_lib
