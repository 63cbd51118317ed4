#include "host/analysis/nrwave_resampling.h"

#include "common/lib_fft_plan.h"

#include <algorithm>

namespace nrwave
{

using vek::common_lib::lib_fft_plan_t;

namespace
{

__extension__ using wide_t = unsigned __int128;

} // namespace

std::size_t quick_length(std::size_t least)
{
    for (std::size_t half = std::max<std::size_t>(1, (least + 1) / 2);; ++half) {
        std::size_t rest = half;
        for (const std::size_t factor : {2U, 3U, 5U})
            while (rest % factor == 0)
                rest /= factor;
        if (rest == 1)
            return 2 * half;
    }
}

std::optional<std::uint64_t> samples_at(std::uint64_t to_rate, std::uint64_t samples, std::uint64_t rate)
{
    const wide_t product = static_cast<wide_t>(samples) * to_rate;
    if (rate == 0 || product % rate != 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(product / rate);
}

std::vector<std::complex<double>> resampled(vek::common_lib::lib_signal_view_t samples, std::size_t count,
                                            bool mirrored)
{
    const std::size_t before = samples.size();
    std::vector<std::complex<double>> spectrum;
    spectrum.reserve(std::max(before, count));
    spectrum.assign(samples.begin(), samples.end());
    lib_fft_plan_t(before, vek::common_lib::LIB_FFT_FORWARD).execute(spectrum.data(), spectrum.data());

    const std::size_t kept = std::min(before, count);
    const std::size_t below = mirrored ? (kept - 1) / 2 : kept / 2; // lines of negative frequency
    const std::size_t from = before - below;
    if (count > before) {
        spectrum.resize(count);
        std::copy_backward(spectrum.begin() + static_cast<std::ptrdiff_t>(from),
                           spectrum.begin() + static_cast<std::ptrdiff_t>(before), spectrum.end());
        std::fill(spectrum.begin() + static_cast<std::ptrdiff_t>(from),
                  spectrum.end() - static_cast<std::ptrdiff_t>(below), 0.0);
    }
    else {
        std::copy(spectrum.begin() + static_cast<std::ptrdiff_t>(from), spectrum.end(),
                  spectrum.begin() + static_cast<std::ptrdiff_t>(count - below));
        spectrum.resize(count);
    }
    for (std::complex<double>& line : spectrum)
        line /= static_cast<double>(before);
    lib_fft_plan_t(count, vek::common_lib::LIB_FFT_INVERSE).execute(spectrum.data(), spectrum.data());
    return spectrum;
}

} // namespace nrwave
