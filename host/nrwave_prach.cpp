#include "host/nrwave_prach.h"

#include "host/nrwave_digits.h"
#include "host/nrwave_plot.h"
#include "phy/lib_nr_prach_resource_manager.h"

#include <algorithm>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr double k_frame_ms = 10.0;

} // namespace

bool is_prach(cfg_nr_waveform_t& waveform, unsigned int carrier)
{
    return waveform.get_carrier(carrier)->get_carrier_type() == LIB_NR_PRACH;
}

prach_map_t prach_map_of(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine, unsigned int carrier,
                         unsigned int numerology, unsigned int frame)
{
    engine.waveform_config(waveform.get_waveform_manager());
    engine.deal_prach_resource_mapping(carrier, numerology, frame, waveform.get_waveform_manager());
    const auto& view = lib_nr_prach_resource_manager_t::get_inst().get_resource_mapping();
    prach_map_t map{carrier, frame, static_cast<double>(waveform.get_carrier(carrier)->get_bandwidth()), {}};
    for (std::size_t i = 0; i < view.start_times_ms.size(); ++i)
        map.bursts.push_back(
            {view.start_times_ms[i], view.end_times_ms[i], view.start_frequencies_hz[i], view.end_frequencies_hz[i]});
    return map;
}

std::string csv_of(const prach_map_t& map)
{
    std::string text = "start_ms,end_ms,low_hz,high_hz\n";
    for (const prach_burst_t& burst : map.bursts)
        text += shortest(burst.start_ms) + ',' + shortest(burst.end_ms) + ',' + shortest(burst.low_hz) + ',' +
                shortest(burst.high_hz) + '\n';
    return text;
}

std::string picture_of(const prach_map_t& map)
{
    plot_t plot(1100, 620);
    std::ostream& out = plot.script();
    out << "set title 'PRACH bursts of carrier " << map.carrier << ", frame " << map.frame
        << "'\nset xlabel 'time, ms'\nset ylabel 'frequency from the carrier centre, MHz'\nset xrange [0:" << k_frame_ms
        << "]\nset yrange [" << -map.bandwidth_hz / 2e6 << ':' << std::max(map.bandwidth_hz / 2e6, 1e-3)
        << "]\nset key outside right top reverse Left\n";
    const auto rectangle = [&](double from_ms, double to_ms, const prach_burst_t& burst) {
        out << "set object rectangle from " << from_ms << ',' << burst.low_hz / 1e6 << " to " << to_ms << ','
            << burst.high_hz / 1e6 << " fillcolor rgb '#3a78b8' fillstyle solid border lc rgb '#1f3b57'\n";
    };
    for (const prach_burst_t& burst : map.bursts) {
        if (burst.end_ms >= burst.start_ms) {
            rectangle(burst.start_ms, burst.end_ms, burst);
            continue;
        }
        rectangle(burst.start_ms, k_frame_ms, burst);
        rectangle(0.0, burst.end_ms, burst);
    }
    out << "plot NaN with boxes fs solid lc rgb '#3a78b8' title '"
        << (map.bursts.empty() ? "no burst in this frame" : "PRACH burst") << "'\n";
    return plot.drawn(picture_format_t::png);
}

} // namespace nrwave
