#include "host/nrwave_channels.h"

#include "config/cfg_nr_enum_name_maps.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

/// A channel bandwidth in hertz: its enumerator ends in the megahertz, as LIB_NR_CHANNEL_FR2_1_100M.
double width_of(lib_nr_channel_bw_type_t bandwidth)
{
    const std::string& name = g_lib_nr_channel_bw_type_t_name_map.at(bandwidth);
    unsigned int megahertz = 0;
    std::from_chars(name.data() + name.rfind('_') + 1, name.data() + name.size(), megahertz);
    return 1e6 * megahertz;
}

/// What the enabled numerologies of a carrier may occupy round its centre.
band_t transmission_of(cfg_nr_carrier_t& carrier, double carrier_centre)
{
    constexpr double k_half_rb = 6.0;
    std::optional<band_t> all;
    for (int n = 0; n < static_cast<int>(carrier.get_numerology_number()); ++n) {
        const cfg_nr_phy_numerology_t& numerology = *carrier.get_numerology(n);
        if (!numerology.get_enable())
            continue;
        const double spacing = lib_nr_phy_common_t::get_scs_hz_value(numerology.get_scs());
        const double centre = carrier_centre + spacing * numerology.get_k0();
        const double half = spacing * k_half_rb * numerology.get_rb_size();
        const band_t own{centre - half, centre + half};
        all = all ? band_t{std::min(all->low_hz, own.low_hz), std::max(all->high_hz, own.high_hz)} : own;
    }
    return all.value_or(band_t{});
}

} // namespace

std::vector<channel_t> channels_of(cfg_nr_waveform_t& waveform, const lib_nr_phy_record_t& record)
{
    std::vector<channel_t> channels;
    for (unsigned int c = 0; c < waveform.get_carrier_number(); ++c) {
        cfg_nr_carrier_t& carrier = *waveform.get_carrier(c);
        if (!carrier.get_enable())
            continue;
        const double half = width_of(carrier.get_channel_bandwidth()) / 2.0;
        const auto centre = static_cast<double>(carrier.get_frequency_offset());
        const bool is_sent = std::any_of(record.entries.begin(), record.entries.end(),
                                         [&](const auto& entry) { return entry.carrier == c && entry.cells > 0; });
        channels.push_back({c, "carrier[" + std::to_string(c) + ']', band_t{centre - half, centre + half},
                            transmission_of(carrier, centre), is_sent});
        if (waveform.get_mirror_spectrum())
            for (band_t* band : {&channels.back().edges, &channels.back().transmission})
                *band = {-band->high_hz, -band->low_hz};
    }
    return channels;
}

} // namespace nrwave
