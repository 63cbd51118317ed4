#include "host/nrwave_curves.h"

#include "host/analysis/nrwave_power.h"
#include "host/nrwave_digits.h"

#include <algorithm>
#include <cmath>

namespace nrwave
{

namespace
{

constexpr const char* k_grey = "#5a6b7b";

double down_to(double value, double step) { return step * std::floor(value / step); }

/// Marks a band in MHz over the height of the picture.
void shade(std::ostream& out, const band_t& band, const char* colour)
{
    out << "set object rectangle from " << band.low_hz / 1e6 << ", graph 0 to " << band.high_hz / 1e6
        << ", graph 1 behind fillcolor rgb '" << colour << "' fillstyle solid noborder\n";
}

void label(std::ostream& out, const std::string& text, double hertz, double height, const char* colour = k_grey)
{
    out << "set label \"" << text << "\" at " << hertz / 1e6 << ", graph " << height << " center front textcolor rgb '"
        << colour << "'\n";
}

/// The power in an adjacent channel, in the part of it that the rate holds, where a label has room.
void mark_adjacent(std::ostream& out, const aclr_t& aclr, const char* colour, double rate_hz)
{
    constexpr double k_least_share = 0.07;
    const band_t held{std::max(aclr.band.low_hz, -rate_hz / 2.0), std::min(aclr.band.high_hz, rate_hz / 2.0)};
    if (!aclr.db || aclr.is_shared)
        return;
    shade(out, held, "#f7f3ea");
    if (held.width_hz() > k_least_share * rate_hz)
        label(out, "ACLR\\n" + fixed(*aclr.db, 1) + " dB", (held.low_hz + held.high_hz) / 2.0, 0.96, colour);
}

/// Without texts where there is no room for them.
void mark_carrier(std::ostream& out, const carrier_measurement_t& carrier, double rate_hz, bool is_named)
{
    const band_t& edges = carrier.channel.edges;
    const double centre = (edges.low_hz + edges.high_hz) / 2.0;
    for (const aclr_t& aclr : carrier.aclr)
        mark_adjacent(out, aclr, is_exceeded(aclr) ? k_accent : k_grey, rate_hz);
    shade(out, edges, "#eaf1f8");
    for (const double edge : {edges.low_hz, edges.high_hz})
        out << "set arrow from " << edge / 1e6 << ", graph 0 to " << edge / 1e6 << ", graph 1 nohead lc rgb '" << k_grey
            << "' lw 1 dt 3\n";
    if (!is_named)
        return;
    label(out, carrier.channel.path + (carrier.power_dbfs ? "\\n" + fixed(*carrier.power_dbfs, 2) + " dBFS" : ""),
          centre, 0.96);
    if (!carrier.occupied)
        return;
    const char* colour = carrier.is_occupied_exceeded() ? k_accent : k_dark;
    out << "set arrow from " << carrier.occupied->low_hz / 1e6 << ", graph 0.82 to " << carrier.occupied->high_hz / 1e6
        << ", graph 0.82 heads size screen 0.006,20 front lc rgb '" << colour << "'\n";
    label(out, "99 %: " + fixed(carrier.occupied->width_hz() / 1e6, 3) + " MHz",
          (carrier.occupied->low_hz + carrier.occupied->high_hz) / 2.0, 0.85, colour);
}

/// Limits of the level's axis that keep the upper fifth free for marks.
std::pair<double, double> level_range(const std::vector<spectrum_point_t>& points)
{
    constexpr double k_most_db = 140.0;
    constexpr double k_step_db = 10.0;
    double peak = 0.0;
    double least = HUGE_VAL;
    for (const spectrum_point_t& point : points) {
        peak = std::max(peak, point.peak);
        least = std::min(least, point.mean);
    }
    if (!(peak > 0.0))
        return {k_floor_db, 0.0};
    const double top = 10.0 * std::log10(peak);
    const double bottom = std::max(least > 0.0 ? 10.0 * std::log10(least) : -HUGE_VAL, top - k_most_db);
    return {down_to(bottom, k_step_db), down_to(top + (top - bottom) * 0.27, k_step_db) + k_step_db};
}

/// A curve as an inline data block; one point far below where there is none.
void write_points(std::ostream& out, const char* name, const std::vector<ccdf_point_t>& points)
{
    out << '$' << name << " << EOD\n";
    for (const ccdf_point_t& point : points)
        out << point.above_mean_db << ' ' << point.probability << '\n';
    out << (points.empty() ? "0 1e-9\n" : "") << "EOD\n";
}

std::vector<ccdf_point_t> points_of(const ccdf_markers_t& markers)
{
    std::vector<ccdf_point_t> points;
    for (std::size_t i = 0; i < k_marker_probabilities.size(); ++i)
        if (markers[i + 1])
            points.push_back({*markers[i + 1], k_marker_probabilities[i]});
    return points;
}

std::string with_peak(const char* name, const ccdf_markers_t& markers)
{
    return name + (markers.back() ? ", peak " + fixed(*markers.back(), 2) + " dB" : std::string(", silent"));
}

} // namespace

plot_t spectrum_plot(const spectrum_t& spectrum, const measurement_t& measurement, double radio_frequency_hz)
{
    constexpr std::size_t k_points = 2048;
    constexpr std::size_t k_most_named = 4;
    const auto points = spectrum.points(k_points);
    const auto [bottom, top] = level_range(points);
    const double half = std::max(spectrum.rate_hz() / 2e6, 1e-3);

    plot_t plot(1100, 560);
    std::ostream& out = plot.script();
    for (const carrier_measurement_t& carrier : measurement.carriers)
        mark_carrier(out, carrier, spectrum.rate_hz(), measurement.carriers.size() <= k_most_named);
    out << "set title 'Spectrum round " << shortest(radio_frequency_hz / 1e6)
        << " MHz'\nset xlabel 'frequency from the centre, MHz'\nset ylabel 'power in "
        << fixed(spectrum.resolution_hz() / 1e3, 2) << " kHz, dBFS'\nset ytics 20\nset mytics 2\nset yrange [" << bottom
        << ':' << top << "]\nset xrange [" << -half << ':' << half
        << "]\nset key bottom right reverse Left opaque\n$spectrum << EOD\n";
    for (const spectrum_point_t& point : points)
        out << point.frequency_hz / 1e6 << ' ' << db_of_power(point.mean, bottom) << ' '
            << db_of_power(point.peak, bottom) << '\n';
    out << (points.empty() ? "0 -200 -200\n" : "") << "EOD\nplot $spectrum using 1:3 with lines lc rgb '" << k_pale
        << "' lw 1 title 'largest', $spectrum using 1:2 with lines lc rgb '" << k_dark << "' lw 1 title 'mean'\n";
    return plot;
}

plot_t ccdf_plot(const measurement_t& measurement)
{
    constexpr double k_division_db = 2.0;
    double end = 14.0;
    for (const ccdf_t* ccdf : {&measurement.waveform, &measurement.burst})
        end = std::max(end, ccdf->markers.back().value_or(0.0));
    plot_t plot(800, 560);
    std::ostream& out = plot.script();
    write_points(out, "waveform", measurement.waveform.points);
    write_points(out, "burst", measurement.burst.points);
    write_points(out, "waveform_markers", points_of(measurement.waveform.markers));
    write_points(out, "burst_markers", points_of(measurement.burst.markers));
    out << "set title 'CCDF of the power'\nset xlabel 'power above the mean, dB'\n"
        << "set ylabel 'probability of more power'\nset logscale y\nset yrange [1e-6:1]\n"
        << "set ytics ('100 %%' 1, '10 %%' 1e-1, '1 %%' 1e-2, '0.1 %%' 1e-3, '0.01 %%' 1e-4, '0.001 %%' 1e-5, "
        << "'0.0001 %%' 1e-6)\nset xtics " << k_division_db
        << "\nset xrange [0:" << k_division_db * std::ceil(end / k_division_db)
        << "]\nset samples 400\nset key top right reverse Left opaque box lc rgb '#d8dde2'\n"
        << "plot exp(-10**(x/10)) with lines lc rgb '#808080' lw 1 title '"
        << with_peak("Gaussian noise", measurement.gaussian) << " expected', $waveform with lines lc rgb '" << k_dark
        << "' lw 2 title '" << with_peak("waveform", measurement.waveform.markers) << "', $burst with lines lc rgb '"
        << k_accent << "' lw 2 dt 2 title '" << with_peak("burst", measurement.burst.markers)
        << "', $waveform_markers with points pt 7 ps 0.9 lc rgb '" << k_dark
        << "' notitle, $burst_markers with points pt 6 ps 1.2 lc rgb '" << k_accent << "' notitle\n";
    return plot;
}

plot_t power_plot(const signal_t& signal, const measurement_t& measurement)
{
    constexpr std::size_t k_points = 2000;
    constexpr double k_lowest_db = -80.0;
    constexpr double k_least_range_db = 50.0;
    const double rate = std::max(static_cast<double>(signal.rate), 1.0);
    const auto points = power_against_time(signal.period, k_points);
    double bottom = -k_least_range_db;
    for (const power_point_t& point : points)
        bottom = std::max(std::min(bottom, down_to(db_of_power(point.mean), 10.0)), k_lowest_db);

    plot_t plot(1100, 460);
    std::ostream& out = plot.script();
    out << "set title 'Power against time'\nset xlabel 'time, ms'\nset ylabel 'power, dBFS'\nset yrange [" << bottom
        << ":5]\nset key bottom right reverse Left opaque\nset xrange [0:"
        << std::max(static_cast<double>(signal.period.size()) / rate * 1e3, 1e-3) << "]\n$power << EOD\n";
    for (const power_point_t& point : points)
        out << static_cast<double>(point.first_sample) / rate * 1e3 << ' ' << db_of_power(point.mean) << ' '
            << db_of_power(point.peak) << '\n';
    const double piece_us = points.size() > 1 ? static_cast<double>(points[1].first_sample) / rate * 1e6 : 0.0;
    out << (points.empty() ? "0 -140 -140\n" : "") << "EOD\nplot $power using 1:3 with lines lc rgb '" << k_pale
        << "' title 'peak in " << fixed(piece_us, 2) << " us', $power using 1:2 with lines lc rgb '" << k_dark
        << "' title 'mean'";
    if (const auto rms = measurement.level.rms_dbfs())
        out << ", " << *rms << " with lines dt 2 lc rgb '" << k_accent << "' title 'RMS " << fixed(*rms, 2) << " dBFS'";
    out << '\n';
    return plot;
}

plot_t constellation_plot(const constellation_t& constellation)
{
    constexpr double k_room = 1.15;
    double reach = 0.0;
    const auto write = [&](std::ostream& out, const char* name, const std::vector<std::complex<double>>& points) {
        out << '$' << name << " << EOD\n";
        for (const std::complex<double>& point : points) {
            reach = std::max({reach, std::fabs(point.real()), std::fabs(point.imag())});
            out << point.real() << ' ' << point.imag() << '\n';
        }
        out << "EOD\n";
    };
    plot_t plot(640, 700);
    std::ostream& out = plot.script();
    write(out, "received", constellation.received);
    write(out, "sent", constellation.sent);
    reach = std::max(k_room * reach, 1e-3);
    out << "set title 'Constellation of " << constellation.path << "' noenhanced\nset xlabel 'I'\nset ylabel 'Q'\n"
        << "set size ratio -1\nset xrange [" << -reach << ':' << reach << "]\nset yrange [" << -reach << ':' << reach
        << "]\nset key outside bottom center horizontal\nplot $received with points pt 7 ps 0.3 lc rgb '" << k_dark
        << "' title 'received', $sent with points pt 1 ps 1 lc rgb '" << k_accent << "' title 'sent'\n";
    return plot;
}

} // namespace nrwave
