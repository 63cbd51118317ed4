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

void add_circular(const sample_t* source, std::size_t count, std::size_t offset, std::vector<sample_t>& buffer)
{
    while (count != 0) {
        const std::size_t run = std::min(count, buffer.size() - offset);
        sample_t* target = buffer.data() + offset;
        for (std::size_t i = 0; i < run; ++i)
            target[i] += source[i];
        source += run;
        count -= run;
        offset = 0;
    }
}

} // namespace

void add_frame(const std::vector<sample_t>& main, const std::vector<sample_t>& head, std::uint64_t frame_length,
               std::uint64_t frame, std::vector<sample_t>& buffer)
{
    const std::uint64_t begin = frame * frame_length;
    if (begin >= buffer.size())
        return;
    const bool is_whole = begin + frame_length <= buffer.size();
    const std::size_t count = is_whole ? main.size() : std::min<std::size_t>(main.size(), buffer.size() - begin);
    add_circular(main.data(), count, begin, buffer);

    const std::size_t ahead = head.size() % buffer.size();
    add_circular(head.data(), head.size(), (begin + buffer.size() - ahead) % buffer.size(), buffer);
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
