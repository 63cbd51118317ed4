#include "common/lib_crest_factor_reduce.h"

#include "common/lib_fft_plan.h"
#include "common/lib_signal_power.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>

namespace vek::common_lib
{

namespace
{

using samples_t = std::vector<std::complex<double>>;

// The pulse of a block is cut by a Kaiser window with side lobes about 118 dB down.
constexpr double k_kaiser_beta = 12.0;
constexpr double k_active_threshold = 1e-4;      // 40 dB below the mean
constexpr double k_reached = 1.0023052380778996; // 0.01 dB above the target

// The average falls with every peak that goes. The limit follows it 2 dB down and no further, so that a target that no
// signal of this bandwidth can reach does not eat the signal.
constexpr double k_lowest_limit = 0.6309573444801932;

double ratio_of_db(double db) { return std::pow(10.0, db / 10.0); }

/// How many samples carry signal, so that a gap does not lower the average.
double count_active_samples(const samples_t& signal)
{
    const double threshold =
        k_active_threshold * sum_of_power(signal.data(), signal.size()) / static_cast<double>(signal.size());
    std::size_t count = 0;
    for (const std::complex<double>& sample : signal)
        count += power_of(sample) > threshold;
    return static_cast<double>(count);
}

/// The lag at which the pulse has fallen to half its peak: nearer peaks would be cancelled twice.
std::size_t half_width(const samples_t& pulse)
{
    const double half_power = 0.25 * power_of(pulse[0]);
    std::size_t lag = 1;
    while (lag < pulse.size() / 2 && power_of(pulse[lag]) > half_power)
        ++lag;
    return lag;
}

/// The pulse of a spectrum, its peak at 0, without the scale of the inverse transform.
samples_t pulse_of(const std::vector<double>& spectrum, const lib_fft_plan_t& inverse)
{
    samples_t pulse(spectrum.begin(), spectrum.end());
    inverse.execute(pulse.data(), pulse.data());
    return pulse;
}

/// Every value becomes the least within `radius`, round the end as well: a window that smears by no more than `radius`
/// then stays below the original.
std::vector<double> eroded(const std::vector<double>& spectrum, std::size_t radius)
{
    const std::size_t size = spectrum.size();
    std::vector<double> result(size);
    for (std::size_t i = 0; i < size; ++i) {
        double least = spectrum[i];
        for (std::size_t k = 1; k <= std::min(radius, size) && least > 0.0; ++k)
            least = std::min({least, spectrum[(i + k) % size], spectrum[(i + size - k) % size]});
        result[i] = least;
    }
    return result;
}

/// Leaves lags up to `half`, faded by the Kaiser window.
void cut_pulse(samples_t& pulse, std::size_t half)
{
    const double peak = std::cyl_bessel_i(0.0, k_kaiser_beta);
    for (std::size_t lag = 1; lag <= pulse.size() / 2; ++lag) {
        const double x = static_cast<double>(lag) / static_cast<double>(half + 1);
        const double weight = lag > half ? 0.0 : std::cyl_bessel_i(0.0, k_kaiser_beta * std::sqrt(1.0 - x * x)) / peak;
        pulse[lag] *= weight;
        if (pulse.size() - lag != lag)
            pulse[pulse.size() - lag] *= weight;
    }
}

/// A peak above the limit and what shall be taken away there.
struct peak_t
{
    std::size_t position;
    double power;
    std::complex<double> excess;
};

/// Replaces `peaks` by those above `limit` (a power) from `begin` to `end`, one for those closer than `distance`.
void find_peaks(const samples_t& signal, std::size_t begin, std::size_t end, double limit, std::size_t distance,
                std::vector<peak_t>& peaks)
{
    peaks.clear();
    for (std::size_t i = begin; i < end; ++i) {
        const double power = power_of(signal[i]);
        if (!(power > limit))
            continue;
        if (peaks.empty() || i - peaks.back().position >= distance)
            peaks.push_back({i, power, 0.0});
        else if (power > peaks.back().power)
            peaks.back() = {i, power, 0.0};
    }
    for (peak_t& peak : peaks)
        peak.excess = (1.0 - std::sqrt(limit / peak.power)) * signal[peak.position];
}

/// The factor, at most 1, with which the correction of a block meets the excess of its peaks best. Where pulses are so
/// wide that they pile up, it keeps them from doing more harm than good.
double best_factor(const std::vector<peak_t>& peaks, const std::complex<double>* correction, std::size_t begin)
{
    double wanted = 0.0;
    double taken = 0.0;
    for (const peak_t& peak : peaks) {
        const std::complex<double>& change = correction[peak.position - begin];
        wanted += peak.excess.real() * change.real() + peak.excess.imag() * change.imag();
        taken += power_of(change);
    }
    return taken > 0.0 ? std::clamp(wanted / taken, 0.0, 1.0) : 0.0;
}

/// Takes the correction, times a factor, away from the circular signal, from `position` on.
void subtract_circular(const samples_t& correction, double factor, samples_t& signal, std::size_t position)
{
    for (std::size_t done = 0; done < correction.size();) {
        const std::size_t count = std::min(correction.size() - done, signal.size() - position);
        for (std::size_t i = 0; i < count; ++i)
            signal[position + i] -= factor * correction[done + i];
        done += count;
        position = 0;
    }
}

} // namespace

void lib_crest_factor_reduce_t::set_cfr_parameter(double sample_rate, const lib_crest_factor_reduce_setting_t& setting)
{
    m_sample_rate = std::isfinite(sample_rate) && sample_rate > 0.0 ? sample_rate : 0.0;
    m_setting = setting;
}

double lib_crest_factor_reduce_t::_mask_level(double frequency) const
{
    const auto& mask = m_setting.get_filter_mask_data_arr();
    const auto above = std::upper_bound(mask.begin(), mask.end(), frequency,
                                        [](double value, const auto& point) { return value < point.first; });
    if (above == mask.begin())
        return -HUGE_VAL;
    const auto below = above - 1;
    if (below->first == frequency)
        return below->second;
    if (above == mask.end())
        return -HUGE_VAL;
    const double fraction = (frequency - below->first) / (above->first - below->first);
    return below->second + fraction * (above->second - below->second);
}

std::vector<double> lib_crest_factor_reduce_t::_mask_spectrum(std::size_t length) const
{
    std::vector<double> spectrum(length);
    double level = -HUGE_VAL;
    double amplitude = 0.0;
    for (std::size_t i = 0; i < length; ++i) {
        const double bin = static_cast<double>(i) - (2 * i < length ? 0.0 : static_cast<double>(length));
        const double here = _mask_level(bin / static_cast<double>(length) * m_sample_rate);
        if (here != level) {
            level = here;
            amplitude = std::sqrt(ratio_of_db(level));
        }
        spectrum[i] = amplitude;
    }
    return spectrum;
}

lib_crest_factor_reduce_t::kernel_t lib_crest_factor_reduce_t::_make_whole_kernel(std::size_t signal_length) const
{
    kernel_t kernel;
    kernel.block_size = signal_length;
    std::vector<double> spectrum = _mask_spectrum(signal_length);
    const samples_t pulse = pulse_of(spectrum, lib_fft_plan_t(signal_length, LIB_FFT_INVERSE));
    if (!(pulse[0].real() > 0.0))
        return kernel;
    for (double& value : spectrum)
        value /= pulse[0].real();
    kernel.peak_distance = half_width(pulse);
    kernel.spectrum = std::move(spectrum);
    return kernel;
}

lib_crest_factor_reduce_t::kernel_t lib_crest_factor_reduce_t::_make_block_kernel(std::size_t signal_length) const
{
    kernel_t kernel;
    kernel.block_size = m_setting.get_signal_block_size();
    // A quarter of the transform at least is for the pulse, which reaches out of the block on both sides.
    const std::size_t length = std::bit_ceil(kernel.block_size + (kernel.block_size + 2) / 3);
    if (kernel.block_size == 0 || length >= signal_length)
        return kernel;
    const std::size_t pulse_length = length - kernel.block_size;
    kernel.lead = pulse_length / 2;

    // Half the main lobe of the window's spectrum, in bins of the transform.
    const double lobe = std::hypot(1.0, k_kaiser_beta / std::numbers::pi) * static_cast<double>(length) /
                        static_cast<double>(2 * kernel.lead + 1);
    std::vector<double> spectrum = eroded(_mask_spectrum(length), static_cast<std::size_t>(std::ceil(lobe)));
    samples_t pulse = pulse_of(spectrum, lib_fft_plan_t::get(length, LIB_FFT_INVERSE));
    if (!(pulse[0].real() > 0.0))
        return kernel;
    const double peak = pulse[0].real();
    cut_pulse(pulse, kernel.lead);
    kernel.peak_distance = half_width(pulse);
    lib_fft_plan_t::get(length, LIB_FFT_FORWARD).execute(pulse.data(), pulse.data());
    for (std::size_t i = 0; i < length; ++i)
        spectrum[i] = pulse[i].real() / (peak * static_cast<double>(length));
    kernel.spectrum = std::move(spectrum);
    return kernel;
}

void lib_crest_factor_reduce_t::deal_crest_factor_reduce(std::vector<std::complex<double>>& signal)
{
    const double share = m_setting.get_cancel_percent() / 100.0;
    const auto& mask = m_setting.get_filter_mask_data_arr();
    if (signal.empty() || m_sample_rate == 0.0 || share == 0.0 || m_setting.get_max_iteration() == 0 ||
        mask.front().first == mask.back().first)
        return;

    kernel_t kernel = _make_block_kernel(signal.size());
    if (kernel.spectrum.empty())
        kernel = _make_whole_kernel(signal.size());
    if (kernel.spectrum.empty())
        return;

    const std::size_t length = kernel.spectrum.size();
    const lib_fft_plan_t forward(length, LIB_FFT_FORWARD);
    const lib_fft_plan_t inverse(length, LIB_FFT_INVERSE);
    const double target = ratio_of_db(m_setting.get_target_peak_to_average_power_ratio());
    const double active_samples = count_active_samples(signal);
    samples_t buffer(length);
    samples_t spectrum(length);
    std::vector<peak_t> peaks;
    double first_limit = 0.0;
    double last_excess = HUGE_VAL;

    for (unsigned int iteration = 0; iteration < m_setting.get_max_iteration(); ++iteration) {
        const double mean_limit = target * sum_of_power(signal.data(), signal.size()) / active_samples;
        const double limit = std::max(mean_limit, k_lowest_limit * first_limit);
        first_limit = std::max(first_limit, limit);
        bool is_reached = true;
        double excess = 0.0;
        for (std::size_t begin = 0; begin < signal.size(); begin += kernel.block_size) {
            const std::size_t end = std::min(begin + kernel.block_size, signal.size());
            find_peaks(signal, begin, end, limit, kernel.peak_distance, peaks);
            if (std::none_of(peaks.begin(), peaks.end(),
                             [&](const peak_t& peak) { return peak.power > k_reached * limit; }))
                continue;
            is_reached = false;

            std::fill(buffer.begin(), buffer.end(), 0.0);
            for (const peak_t& peak : peaks) {
                buffer[kernel.lead + peak.position - begin] = peak.excess;
                excess += power_of(peak.excess) / limit;
            }
            forward.execute(buffer.data(), spectrum.data());
            for (std::size_t i = 0; i < length; ++i)
                spectrum[i] *= kernel.spectrum[i];
            inverse.execute(spectrum.data(), buffer.data());
            subtract_circular(buffer, share * best_factor(peaks, buffer.data() + kernel.lead, begin), signal,
                              (begin + signal.size() - kernel.lead) % signal.size());
        }
        if (is_reached || !(excess < last_excess))
            return;
        last_excess = excess;
    }
}

} // namespace vek::common_lib
