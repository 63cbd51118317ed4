#include "host/nrwave_pictures.h"

#include "host/analysis/nrwave_ccdf.h"
#include "host/analysis/nrwave_power.h"
#include "host/analysis/nrwave_spectrum.h"
#include "host/nrwave_plot.h"
#include "host/nrwave_prach.h"
#include "host/nrwave_record.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr const char* k_dark = "#1f3b57";
constexpr const char* k_accent = "#c8102e";

/// One colour for each owner, in the order of their values.
constexpr std::array<const char*, k_owners> k_colours = {"#f4f6f8", "#e6a817", "#8e5bb5", "#2f9e8f", "#3a78b8",
                                                         "#d66a2c", "#5b8c3a", "#8aa9c8", "#b5577f", "#d00000"};

/// The bands that the carriers occupy, in MHz from the centre, shaded and named.
void shade_carriers(std::ostream& out, cfg_nr_waveform_t& waveform)
{
    const double side = waveform.get_mirror_spectrum() ? -1 : 1;
    for (unsigned int c = 0; c < waveform.get_carrier_number(); ++c) {
        const cfg_nr_carrier_t& carrier = *waveform.get_carrier(c);
        if (!carrier.get_enable())
            continue;
        const double centre = side * static_cast<double>(carrier.get_frequency_offset()) / 1e6;
        const double half = carrier.get_bandwidth() / 2e6;
        out << "set object rectangle from " << centre - half << ", graph 0 to " << centre + half
            << ", graph 1 behind fillcolor rgb '#eaf1f8' fillstyle solid noborder\nset label 'carrier " << c << "' at "
            << centre << ", graph 0.96 center textcolor rgb '#5a6b7b'\n";
    }
}

std::string spectrum_picture(cfg_nr_waveform_t& waveform, const lib_nr_phy_t& engine)
{
    constexpr std::size_t k_points = 4096;
    const double rate = static_cast<double>(waveform.get_waveform_sample_rate());
    const auto points = thinned_spectrum(engine.get_frequency_spectrum_data(), rate, k_points);

    plot_t plot(1100, 520);
    std::ostream& out = plot.script();
    shade_carriers(out, waveform);
    out << "set title 'Spectrum round " << static_cast<double>(waveform.get_radio_frequency()) / 1e6
        << " MHz, first frame, occupied bands shaded'\nset xlabel 'frequency from the centre, MHz'\n"
        << "set ylabel 'magnitude, dB of the peak'\nset yrange [-120:10]\nset xrange [" << -rate / 2e6 << ':'
        << std::max(rate, 1.0) / 2e6 << "]\nplot '-' with lines lc rgb '" << k_dark << "' lw 1 notitle\n";
    for (const spectrum_point_t& point : points)
        out << point.frequency_hz / 1e6 << ' ' << db_of_power(point.power) << '\n';
    out << (points.empty() ? "0 -140\n" : "") << "e\n";
    return plot.drawn();
}

/// Points of a curve that a logarithmic axis can show; one far below where there is none.
void write_curve(std::ostream& out, const std::vector<double>& curve)
{
    const auto points = ccdf_points(curve);
    for (const ccdf_point_t& point : points)
        out << point.above_mean_db << ' ' << point.probability << '\n';
    out << (points.empty() ? "0 1e-9\n" : "") << "e\n";
}

std::string ccdf_picture(const lib_nr_phy_t& engine)
{
    constexpr double k_division_db = 2;
    constexpr double k_least_probability = 1e-6;
    const double end = std::max({12.0, ccdf_end_db(engine.get_waveform_ccdf_cruve_data(), k_least_probability),
                                 ccdf_end_db(engine.get_burst_ccdf_cruve_data(), k_least_probability)});
    plot_t plot(800, 560);
    std::ostream& out = plot.script();
    out << "set title 'CCDF of the first frame'\nset xlabel 'power above the mean, dB'\n"
        << "set ylabel 'probability of more power'\nset logscale y\nset format y '10^{%T}'\nset yrange ["
        << k_least_probability << ":1]\n"
        << "set xtics " << k_division_db << "\nset xrange [0:" << k_division_db * std::ceil(end / k_division_db)
        << "]\nset key top right reverse Left opaque\nplot '-' with lines lc rgb '" << k_dark
        << "' lw 2 title 'whole frame', '-' with lines lc rgb '" << k_accent
        << "' lw 2 dt 2 title 'burst', exp(-10**(x/10)) with lines lc rgb '#808080' lw 1 title 'Gaussian noise'\n";
    write_curve(out, engine.get_waveform_ccdf_cruve_data());
    write_curve(out, engine.get_burst_ccdf_cruve_data());
    return plot.drawn();
}

std::string power_picture(cfg_nr_waveform_t& waveform, const lib_nr_phy_t& engine)
{
    constexpr std::size_t k_points = 2000;
    const auto& samples = engine.get_baseband_signal_data();
    const double rate = std::max(static_cast<double>(waveform.get_waveform_sample_rate()), 1.0);

    plot_t plot(1100, 460);
    std::ostream& out = plot.script();
    out << "set title 'Power against time'\nset xlabel 'time, ms'\nset ylabel 'power, dB of full scale'\n"
        << "set yrange [-80:5]\nset key bottom right reverse Left opaque\nset xrange [0:"
        << std::max(static_cast<double>(samples.size()), 1.0) / rate * 1e3 << "]\n$power << EOD\n";
    for (const power_point_t& point : power_against_time(samples, k_points))
        out << static_cast<double>(point.first_sample) / rate * 1e3 << ' ' << db_of_power(point.mean) << ' '
            << db_of_power(point.peak) << '\n';
    out << (samples.empty() ? "0 -140 -140\n" : "") << "EOD\nplot $power using 1:3 with lines lc rgb '#a9bdd0' title "
        << "'peak', $power using 1:2 with lines lc rgb '" << k_dark << "' title 'mean'\n";
    return plot.drawn();
}

/// A map no finer than a picture shows, column by column.
struct raster_t
{
    unsigned int columns = 0;
    unsigned int rows = 0;
    std::vector<std::uint8_t> owners;
};

/// Of the cells that fall together it is the rarest owner's that shows, so that no thin channel gets lost; a conflict
/// shows always.
raster_t raster_of(const resource_map_t& map, const std::array<std::size_t, k_owners>& cells)
{
    constexpr unsigned int k_columns = 840;
    constexpr unsigned int k_rows = 480;
    std::array<std::size_t, k_owners> rank{};
    for (unsigned int owner = 1; owner < k_owners; ++owner)
        rank[owner] = map.owners.size() + 1 - cells[owner];
    rank[k_owners - 1] = map.owners.size() + 2;

    raster_t raster{std::min(map.symbols, k_columns), std::min(map.subcarriers, k_rows), {}};
    raster.owners.resize(std::size_t{raster.columns} * raster.rows);
    for (std::size_t symbol = 0; symbol < map.symbols; ++symbol) {
        std::uint8_t* column = &raster.owners[symbol * raster.columns / map.symbols * raster.rows];
        for (std::size_t subcarrier = 0; subcarrier < map.subcarriers; ++subcarrier) {
            std::uint8_t& shown = column[subcarrier * raster.rows / map.subcarriers];
            const std::uint8_t owner = map.owners[symbol * map.subcarriers + subcarrier];
            if (rank[owner] > rank[shown])
                shown = owner;
        }
    }
    return raster;
}

} // namespace

std::string csv_of(const resource_map_t& map)
{
    std::string text = "symbol,subcarrier,owner\n";
    for (std::size_t cell = 0; cell < map.owners.size(); ++cell)
        if (map.owners[cell] != 0)
            text += std::to_string(cell / map.subcarriers) + ',' + std::to_string(cell % map.subcarriers) + ',' +
                    owner_name(map.owners[cell]) + '\n';
    return text;
}

std::string picture_of(const resource_map_t& map)
{
    constexpr unsigned int k_frame_ms = 10;
    constexpr unsigned int k_subcarriers_per_rb = 12;
    std::array<std::size_t, k_owners> cells{};
    for (const std::uint8_t owner : map.owners)
        ++cells[owner];
    const raster_t raster = raster_of(map, cells);
    const unsigned int symbols = std::max(map.symbols, 1U);
    const unsigned int subcarriers = std::max(map.subcarriers, 1U);

    plot_t plot(1100, 620);
    std::ostream& out = plot.script();
    out << "set title 'Resource map of carrier " << map.carrier << ", numerology " << map.numerology << ", frame "
        << map.frame
        << "' offset 0,0.6\nset xlabel 'symbol in the frame'\nset x2label 'time, ms'\nset ylabel 'subcarrier'\n"
        << "set y2label 'resource block'\nset x2tics 1\nset y2tics\nset tics out\nset key spacing 1.2\nunset "
           "grid\nunset colorbox\n"
        << "set key outside right top reverse Left\nset cbrange [-0.5:" << k_owners - 0.5 << "]\nset palette maxcolors "
        << k_owners << " defined (";
    for (unsigned int owner = 0; owner < k_owners; ++owner)
        out << (owner ? "," : "") << owner << " '" << k_colours[owner] << '\'';
    out << ")\nset xrange [-0.5:" << symbols - 0.5 << "]\nset yrange [-0.5:" << subcarriers - 0.5
        << "]\nset x2range [0:" << k_frame_ms
        << "]\nset y2range [0:" << static_cast<double>(subcarriers) / k_subcarriers_per_rb << "]\nplot ";
    if (!raster.owners.empty()) {
        const double width = static_cast<double>(symbols) / raster.columns;
        const double height = static_cast<double>(subcarriers) / raster.rows;
        out << "'-' binary array=(" << raster.columns << ',' << raster.rows << ") scan=yx dx=" << width
            << " dy=" << height << " origin=(" << width / 2 - 0.5 << ',' << height / 2 - 0.5
            << ") format='%uchar' with image notitle, ";
    }
    for (unsigned int owner = 1; owner < k_owners; ++owner)
        if (cells[owner] != 0)
            out << "NaN with boxes fs solid noborder lc rgb '" << k_colours[owner] << "' title '"
                << owner_name(static_cast<std::uint8_t>(owner)) << "', ";
    out << "NaN with boxes fillcolor rgb '" << k_colours[0] << "' fs solid border lc rgb '#909090' title 'empty'\n";
    out.write(reinterpret_cast<const char*>(raster.owners.data()), static_cast<std::streamsize>(raster.owners.size()));
    return plot.drawn();
}

void draw_report(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine, outputs_t& outputs,
                 const std::filesystem::path& folder)
{
    outputs.add(folder / "spectrum.png").write(spectrum_picture(waveform, engine));
    outputs.add(folder / "ccdf.png").write(ccdf_picture(engine));
    outputs.add(folder / "power.png").write(power_picture(waveform, engine));
    if (const auto& deviations = engine.get_met_deviations(); !deviations.empty()) {
        std::string lines;
        for (const auto& met : deviations)
            lines += text_of(met) + '\n';
        outputs.add(folder / "deviations.txt").write(lines);
    }

    for (unsigned int carrier = 0; carrier < waveform.get_carrier_number(); ++carrier) {
        if (!waveform.get_carrier(carrier)->get_enable())
            continue;
        unsigned int numerology = 0;
        while (!waveform.get_carrier(carrier)->get_numerology(static_cast<int>(numerology))->get_enable())
            ++numerology;
        outputs.add(folder / "resource_map.png")
            .write(is_prach(waveform, carrier) ? picture_of(prach_map_of(waveform, engine, carrier, numerology, 0))
                                               : picture_of(map_of(waveform, engine, carrier, numerology, 0)));
        break;
    }
}

} // namespace nrwave
