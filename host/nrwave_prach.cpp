#include "host/nrwave_prach.h"

#include "host/nrwave_digits.h"
#include "host/nrwave_plot.h"
#include "host/nrwave_symbol_time.h"
#include "phy/lib_nr_prach_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <cmath>

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

prach_map_t prach_map_of(const lib_nr_waveform_configure_manager_t& waveform, lib_nr_phy_t& engine,
                         unsigned int carrier, unsigned int numerology, unsigned int frame)
{
    engine.waveform_config(waveform);
    engine.deal_prach_resource_mapping(carrier, numerology, frame, waveform);
    const auto& view = lib_nr_prach_resource_manager_t::get_inst().get_resource_mapping();
    prach_map_t map{carrier, frame, static_cast<double>(waveform.get_carrier(carrier).get_configured_bandwidth()), {}};
    for (std::size_t i = 0; i < view.start_times_ms.size(); ++i)
        map.bursts.push_back(
            {view.start_times_ms[i], view.end_times_ms[i], view.start_frequencies_hz[i], view.end_frequencies_hz[i]});
    return map;
}

resource_map_t cells_of(const prach_map_t& map, const lib_nr_waveform_configure_manager_t& waveform,
                        unsigned int numerology)
{
    constexpr unsigned int k_slot_symbols = 14;
    constexpr double k_rounding_ms = 1e-9;
    const auto& manager = waveform.get_carrier(map.carrier).get_numerology_manager(numerology);
    const unsigned int slots_in_subframe = 1U << manager.get_numerolgy();
    const double spacing_hz = 15e3 * slots_in_subframe;
    resource_map_t cells{map.carrier,
                         numerology,
                         map.frame,
                         lib_nr_phy_common_t::get_slot_in_frame(manager.get_numerolgy()) * k_slot_symbols,
                         12 * (manager.get_rb_start() + manager.get_rb_size()),
                         {}};
    cells.owners.resize(static_cast<std::size_t>(cells.symbols) * cells.subcarriers);
    const auto subcarrier_at = [&](double hertz) {
        return static_cast<unsigned int>(std::clamp(std::round(hertz / spacing_hz + cells.subcarriers / 2.0), 0.0,
                                                    static_cast<double>(cells.subcarriers)));
    };
    for (unsigned int symbol = 0; symbol < cells.symbols; ++symbol) {
        const unsigned int slot = symbol / k_slot_symbols;
        const unsigned int in_slot = symbol % k_slot_symbols;
        const double begin_ms = 1e3 * start_of(slot, in_slot, false, slots_in_subframe);
        const double end_ms = 1e3 * start_of(slot, in_slot + 1, false, slots_in_subframe);
        for (const prach_burst_t& burst : map.bursts) {
            const bool is_later = end_ms > burst.start_ms + k_rounding_ms;
            const bool is_earlier = begin_ms < burst.end_ms - k_rounding_ms;
            if (burst.end_ms < burst.start_ms ? is_later || is_earlier : is_later && is_earlier)
                std::fill(cells.owners.begin() + symbol * cells.subcarriers + subcarrier_at(burst.low_hz),
                          cells.owners.begin() + symbol * cells.subcarriers + subcarrier_at(burst.high_hz),
                          k_prach_owner);
        }
    }
    return cells;
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
