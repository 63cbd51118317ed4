#include "host/nrwave_pictures.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_output.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <csignal>
#include <cstdio>
#include <locale>
#include <sstream>
#include <vector>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr double k_floor_db = -140.0;
constexpr const char* k_dark = "#1f3b57";
constexpr const char* k_accent = "#c8102e";

/// One colour for each owner, in the order of their values.
constexpr std::array<const char*, k_owners> k_colours = {"#f4f6f8", "#e6a817", "#8e5bb5", "#2f9e8f", "#3a78b8",
                                                         "#d66a2c", "#5b8c3a", "#8aa9c8", "#b5577f", "#d00000"};

/// A run of the plotter: a script on its standard input, a PNG that appears whole or not at all.
class plot_t
{
public:
    plot_t(const std::filesystem::path& place, unsigned int width, unsigned int height) : m_file(place)
    {
        m_script.imbue(std::locale::classic());
        m_script.precision(10);
        m_script << "set terminal pngcairo size " << width << ',' << height << " font 'sans,11' background '#ffffff'\n"
                 << "set output '" << quoted(m_file.beside().string()) << "'\n"
                 << "set border lw 1 lc rgb '#404040'\nset tics nomirror\nset grid lc rgb '#d8dde2' lw 1 lt 1\n";
    }

    std::ostream& script() { return m_script; }

    void keep()
    {
        // A plotter that ends early must not end us.
        const auto before = std::signal(SIGPIPE, SIG_IGN);
        std::FILE* plotter = ::popen("gnuplot >/dev/null 2>&1", "w");
        const std::string text = m_script.str();
        const bool sent = plotter && std::fwrite(text.data(), 1, text.size(), plotter) == text.size();
        const int status = plotter ? ::pclose(plotter) : -1;
        std::signal(SIGPIPE, before);
        if (!sent || status != 0)
            throw failure_t("gnuplot could not draw " + m_file.place().string() + "; is it installed?");
        m_file.keep();
    }

    static std::string quoted(const std::string& text)
    {
        std::string result;
        for (const char c : text) {
            result += c;
            if (c == '\'')
                result += c;
        }
        return result;
    }

private:
    output_file_t m_file;
    std::ostringstream m_script;
};

double db_of_power(double power) { return power > 0 ? std::max(10 * std::log10(power), k_floor_db) : k_floor_db; }

void draw_spectrum(cfg_nr_waveform_t& waveform, const lib_nr_phy_t& engine, const std::filesystem::path& place)
{
    // 0 Hz stands in the middle. At most so many points as the picture resolves, each the largest of its neighbours.
    constexpr std::size_t k_points = 4096;
    const auto& spectrum = engine.get_frequency_spectrum_data();
    const double rate = static_cast<double>(waveform.get_waveform_sample_rate());
    const std::size_t size = spectrum.size();
    const std::size_t group = std::max<std::size_t>(1, size / k_points);

    plot_t plot(place, 1100, 520);
    std::ostream& out = plot.script();
    out << "set title 'Spectrum'\nset xlabel 'frequency from the centre, MHz'\nset ylabel 'magnitude, dB of the peak'\n"
        << "set yrange [-120:5]\nset xrange [" << -rate / 2e6 << ':' << std::max(rate, 1.0) / 2e6 << "]\n"
        << "plot '-' with lines lc rgb '" << k_dark << "' lw 1 notitle\n";
    for (std::size_t begin = 0; begin < size; begin += group) {
        double power = 0;
        for (std::size_t i = begin; i < std::min(begin + group, size); ++i)
            power = std::max(power, std::norm(spectrum[i]));
        const double offset = static_cast<double>(begin) - static_cast<double>(size / 2);
        out << offset / static_cast<double>(size) * rate / 1e6 << ' ' << db_of_power(power) << '\n';
    }
    out << (size == 0 ? "0 -140\n" : "") << "e\n";
    plot.keep();
}

/// Points of a curve that a logarithmic axis can show; one far below where there is none.
void write_curve(std::ostream& out, const std::vector<double>& curve)
{
    constexpr double k_step_db = 0.05;
    bool any = false;
    for (std::size_t i = 0; i < curve.size(); ++i)
        if (curve[i] > 0) {
            out << k_step_db * static_cast<double>(i) << ' ' << curve[i] << '\n';
            any = true;
        }
    out << (any ? "" : "0 1e-9\n") << "e\n";
}

void draw_ccdf(const lib_nr_phy_t& engine, const std::filesystem::path& place)
{
    plot_t plot(place, 800, 560);
    std::ostream& out = plot.script();
    out << "set title 'CCDF of the first frame'\nset xlabel 'power above the mean, dB'\nset ylabel 'probability'\n"
        << "set logscale y\nset format y '10^{%T}'\nset yrange [1e-6:1]\nset xrange [0:20]\nset key top right\n"
        << "plot '-' with lines lc rgb '" << k_dark << "' lw 2 title 'waveform', '-' with lines lc rgb '" << k_accent
        << "' lw 2 dt 2 title 'burst', exp(-10**(x/10)) with lines lc rgb '#808080' lw 1 title 'Gaussian'\n";
    write_curve(out, engine.get_waveform_ccdf_cruve_data());
    write_curve(out, engine.get_burst_ccdf_cruve_data());
    plot.keep();
}

void draw_power(cfg_nr_waveform_t& waveform, const lib_nr_phy_t& engine, const std::filesystem::path& place)
{
    constexpr std::size_t k_points = 2000;
    const auto& samples = engine.get_baseband_signal_data();
    const double rate = std::max(static_cast<double>(waveform.get_waveform_sample_rate()), 1.0);
    const std::size_t group = std::max<std::size_t>(1, (samples.size() + k_points - 1) / k_points);

    plot_t plot(place, 1100, 460);
    std::ostream& out = plot.script();
    out << "set title 'Power against time'\nset xlabel 'time, ms'\nset ylabel 'power, dB of full scale'\n"
        << "set yrange [-80:5]\nset key bottom right\nset xrange [0:"
        << std::max(static_cast<double>(samples.size()), 1.0) / rate * 1e3 << "]\n$power << EOD\n";
    for (std::size_t begin = 0; begin < samples.size(); begin += group) {
        const std::size_t end = std::min(begin + group, samples.size());
        double sum = 0;
        double peak = 0;
        for (std::size_t i = begin; i < end; ++i) {
            const double power = std::norm(samples[i]);
            sum += power;
            peak = std::max(peak, power);
        }
        out << static_cast<double>(begin) / rate * 1e3 << ' ' << db_of_power(sum / static_cast<double>(end - begin))
            << ' ' << db_of_power(peak) << '\n';
    }
    out << (samples.empty() ? "0 -140 -140\n" : "") << "EOD\nplot $power using 1:3 with lines lc rgb '#a9bdd0' title "
        << "'peak', $power using 1:2 with lines lc rgb '" << k_dark << "' title 'mean'\n";
    plot.keep();
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

void draw_map(const resource_map_t& map, const std::string& title, const std::filesystem::path& place)
{
    std::array<bool, k_owners> present{};
    for (const std::uint8_t owner : map.owners)
        present[std::min<std::size_t>(owner, k_owners - 1)] = true;

    plot_t plot(place, 1100, 620);
    std::ostream& out = plot.script();
    out << "set title '" << plot_t::quoted(title) << "' noenhanced\nset xlabel 'symbol in the frame'\n"
        << "set ylabel 'subcarrier'\nunset grid\nunset colorbox\nset cbrange [0:" << k_owners - 1
        << "]\nset key outside right top\nset palette maxcolors " << k_owners << " defined (";
    for (unsigned int owner = 0; owner < k_owners; ++owner)
        out << (owner ? "," : "") << owner << " '" << k_colours[owner] << '\'';
    out << ")\nset xrange [-0.5:" << std::max(map.symbols, 1U) - 0.5
        << "]\nset yrange [-0.5:" << std::max(map.subcarriers, 1U) - 0.5 << "]\nplot ";
    if (!map.owners.empty())
        out << "'-' binary array=(" << map.symbols << ',' << map.subcarriers
            << ") scan=yx format='%uchar' with image notitle, ";
    for (unsigned int owner = 1; owner < k_owners; ++owner)
        if (present[owner])
            out << "NaN with boxes fs solid noborder lc rgb '" << k_colours[owner] << "' title '"
                << owner_name(static_cast<std::uint8_t>(owner)) << "', ";
    out << "NaN notitle\n";
    out.write(reinterpret_cast<const char*>(map.owners.data()), static_cast<std::streamsize>(map.owners.size()));
    plot.keep();
}

void draw_report(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine, const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw failure_t("cannot make the folder " + folder.string());
    draw_spectrum(waveform, engine, folder / "spectrum.png");
    draw_ccdf(engine, folder / "ccdf.png");
    draw_power(waveform, engine, folder / "power.png");

    for (unsigned int carrier = 0; carrier < waveform.get_carrier_number(); ++carrier) {
        if (!waveform.get_carrier(carrier)->get_enable())
            continue;
        unsigned int numerology = 0;
        while (!waveform.get_carrier(carrier)->get_numerology(static_cast<int>(numerology))->get_enable())
            ++numerology;
        draw_map(map_of(waveform, engine, carrier, numerology, 0),
                 "Resource map of carrier " + std::to_string(carrier) + ", first frame", folder / "resource_map.png");
        break;
    }
}

} // namespace nrwave
