#include "host/nrwave_delivery.h"

#include "host/analysis/nrwave_resampling.h"
#include "host/nrwave_failure.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <utility>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr std::uint64_t k_most_samples = std::uint64_t{1} << 31;
constexpr double k_most_scale_db = 200.0;

/// The lowest rate that holds the occupied bands of all enabled carriers.
std::uint64_t occupied_hz(cfg_nr_waveform_t& waveform)
{
    std::uint64_t widest = 0;
    for (unsigned int i = 0; i < waveform.get_carrier_number(); ++i) {
        const cfg_nr_carrier_t& carrier = *waveform.get_carrier(i);
        if (carrier.get_enable())
            widest = std::max<std::uint64_t>(
                widest, 2 * static_cast<std::uint64_t>(std::abs(static_cast<double>(carrier.get_frequency_offset()))) +
                            carrier.get_bandwidth());
    }
    return widest;
}

/// Samples of the waveform at a rate; nothing where they are no whole number.
std::optional<std::uint64_t> samples_at(std::uint64_t rate, const cfg_nr_waveform_t& waveform)
{
    return nrwave::samples_at(rate, waveform.get_waveform_sample_points(), waveform.get_waveform_sample_rate());
}

/// How often so many samples have to come for a multiple of a number.
std::uint64_t repeats_for(std::uint64_t samples, std::uint64_t multiple_of)
{
    return samples == 0 ? 1 : multiple_of / std::gcd(samples, multiple_of);
}

double peak_of(vek::common_lib::lib_signal_view_t samples)
{
    double peak = 0.0;
    for (const std::complex<double>& sample : samples)
        peak = std::max({peak, std::fabs(sample.real()), std::fabs(sample.imag())});
    return peak;
}

} // namespace

void check_delivery(const delivery_t& delivery, cfg_nr_waveform_t& waveform)
{
    if (delivery.scale_db && !(std::fabs(*delivery.scale_db) <= k_most_scale_db))
        throw failure_t("the scale is no number of dB from -200 to 200");
    if (delivery.multiple_of == 0)
        throw failure_t("no number of samples is a multiple of 0");
    const std::uint64_t rate = delivery.rate.value_or(waveform.get_waveform_sample_rate());
    const std::uint64_t occupied = occupied_hz(waveform);
    if (delivery.rate && rate < std::max<std::uint64_t>(occupied, 1))
        throw failure_t("a rate of " + std::to_string(rate) + " Hz does not hold the occupied bands, which take " +
                        std::to_string(occupied) + " Hz");
    const auto samples = delivery.rate ? samples_at(rate, waveform) : waveform.get_waveform_sample_points();
    if (!samples)
        throw failure_t("a rate of " + std::to_string(rate) + " Hz gives no whole number of samples in " +
                        std::to_string(std::lround(waveform.get_waveform_length() * 1000)) + " ms");
    const std::uint64_t repeats = repeats_for(*samples, delivery.multiple_of);
    if (*samples > k_most_samples || (*samples != 0 && repeats > k_most_samples / *samples))
        throw failure_t("there would be more than 2^31 samples");
}

delivered_t delivered(const delivery_t& delivery, cfg_nr_waveform_t& waveform,
                      const std::vector<std::complex<double>>& samples)
{
    delivered_t result;
    result.rate = waveform.get_waveform_sample_rate();
    result.period = samples;
    if (delivery.rate && *delivery.rate != result.rate && !samples.empty()) {
        result.rate = *delivery.rate;
        result.resampled = resampled(samples, samples_at(result.rate, waveform).value_or(samples.size()),
                                     waveform.get_mirror_spectrum());
        result.period = result.resampled;
    }
    result.repeats = repeats_for(result.period.size(), delivery.multiple_of);
    const double peak = delivery.scale_db ? peak_of(result.period) : 0.0;
    if (peak > 0.0)
        result.gain = std::pow(10.0, -*delivery.scale_db / 20.0) / peak;
    return result;
}

void take_gain(delivered_t& delivered)
{
    if (delivered.gain == 1.0)
        return;
    if (delivered.resampled.empty())
        delivered.resampled.assign(delivered.period.begin(), delivered.period.end());
    for (std::complex<double>& sample : delivered.resampled)
        sample *= delivered.gain;
    delivered.period = delivered.resampled;
    delivered.gain = 1.0;
}

} // namespace nrwave
