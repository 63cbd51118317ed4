#include "host/analysis/nrwave_measurement.h"

#include "common/lib_common_signal_process.h"

#include <algorithm>
#include <cmath>

namespace nrwave
{

namespace
{

band_t moved(const band_t& band, double hertz) { return {band.low_hz + hertz, band.high_hz + hertz}; }

bool overlap(const band_t& one, const band_t& other)
{
    return one.low_hz < other.high_hz && other.low_hz < one.high_hz;
}

/// 10 log10 of a ratio of powers; nothing where there is none.
std::optional<double> decibels(double power, double reference)
{
    const double ratio = power / reference;
    return ratio > 0.0 && std::isfinite(ratio) ? std::optional(10.0 * std::log10(ratio)) : std::nullopt;
}

/// What counts as a carrier's own: half way into the gaps to its neighbours, or all the rate.
band_t own_part(const channel_t& own, const std::vector<channel_t>& channels, double rate_hz)
{
    band_t part{-rate_hz / 2.0, rate_hz / 2.0};
    for (const channel_t& other : channels) {
        if (other.edges.high_hz <= own.edges.low_hz)
            part.low_hz = std::max(part.low_hz, (other.edges.high_hz + own.edges.low_hz) / 2.0);
        else if (other.edges.low_hz >= own.edges.high_hz)
            part.high_hz = std::min(part.high_hz, (own.edges.high_hz + other.edges.low_hz) / 2.0);
        else if (&other != &own) // overlapping channels have no gap
            part = {std::max(part.low_hz, own.edges.low_hz), std::min(part.high_hz, own.edges.high_hz)};
    }
    return part;
}

aclr_t aclr_of(const spectrum_t& spectrum, const channel_t& own, double channels_off,
               const std::vector<channel_t>& channels)
{
    aclr_t aclr{moved(own.transmission, channels_off * own.edges.width_hz()), std::nullopt, false};
    if (own.is_sent && overlap(aclr.band, {-spectrum.rate_hz() / 2.0, spectrum.rate_hz() / 2.0}))
        aclr.db = decibels(spectrum.power_between(own.transmission), spectrum.power_between(aclr.band));
    aclr.is_shared = std::any_of(channels.begin(), channels.end(), [&](const channel_t& other) {
        return &other != &own && other.is_sent && overlap(aclr.band, other.transmission);
    });
    return aclr;
}

carrier_measurement_t measured(const spectrum_t& spectrum, const channel_t& own, const std::vector<channel_t>& channels)
{
    carrier_measurement_t carrier{
        own,
        std::nullopt,
        std::nullopt,
        {aclr_of(spectrum, own, -1.0, channels), aclr_of(spectrum, own, 1.0, channels)},
    };
    if (own.is_sent) {
        carrier.power_dbfs = decibels(spectrum.power_between(own.edges), 1.0);
        carrier.occupied = spectrum.occupied(own_part(own, channels, spectrum.rate_hz()), k_occupied_share.value);
    }
    return carrier;
}

} // namespace

std::vector<std::string> measurement_t::exceeded() const
{
    std::vector<std::string> names;
    for (const carrier_measurement_t& carrier : carriers) {
        if (carrier.is_occupied_exceeded())
            names.push_back(carrier.channel.path + ".occupied_bandwidth_hz");
        if (is_exceeded(carrier.aclr[0]))
            names.push_back(carrier.channel.path + ".aclr_lower_db");
        if (is_exceeded(carrier.aclr[1]))
            names.push_back(carrier.channel.path + ".aclr_upper_db");
    }
    for (const channel_evm_t& channel : channels)
        if (channel.is_exceeded())
            names.push_back(channel.path + ".evm_percent");
    return names;
}

measurement_t measured(const signal_t& signal, const spectrum_t& spectrum, const std::vector<channel_t>& channels)
{
    measurement_t all;
    all.samples = signal.samples();
    all.seconds = signal.seconds();
    all.rate = signal.rate;
    all.level.add(signal.period.data(), signal.period.size());
    all.resolution_hz = spectrum.resolution_hz();
    all.waveform = ccdf_of(signal.period);
    all.burst = ccdf_of(vek::common_lib::lib_common_signal_process_t::find_burst(signal.period));
    all.gaussian = gaussian_markers(all.waveform.markers.front(), signal.samples());
    for (const channel_t& channel : channels)
        all.carriers.push_back(measured(spectrum, channel, channels));
    return all;
}

} // namespace nrwave
