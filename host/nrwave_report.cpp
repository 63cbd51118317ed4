#include "host/nrwave_report.h"

#include "host/analysis/nrwave_measurement.h"
#include "host/nrwave_channels.h"
#include "host/nrwave_curves.h"
#include "host/nrwave_digits.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_figures.h"
#include "host/nrwave_mending.h"
#include "host/nrwave_pictures.h"
#include "host/nrwave_plot.h"
#include "host/nrwave_prach.h"
#include "host/nrwave_record.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr const char* k_head =
    "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>5G NR baseband waveform</title>\n"
    "<link rel=\"icon\" href=\"data:,\">\n<style>\n"
    "body{font:15px/1.45 system-ui,sans-serif;color:#1b2733;margin:2em auto;width:1100px}\n"
    "h1,h2,h3{color:#1f3b57;font-weight:600;margin:1.6em 0 .5em}h1{margin-top:0}h3{font-size:1em}\n"
    "table{border-collapse:collapse}th,td{text-align:left;padding:.2em 1.4em .2em 0;border-bottom:1px solid #d8dde2}\n"
    "td{font-variant-numeric:tabular-nums}.exceeded td{color:#c8102e;font-weight:600}figure{margin:0 0 1.5em}\n"
    "img{display:block}figcaption,.expected{color:#5a6b7b}pre{background:#f4f6f8;padding:1em;white-space:pre-wrap;"
    "overflow-wrap:anywhere}\n"
    "</style>\n</head>\n<body>\n<h1>5G NR baseband waveform</h1>\n";

std::string escaped(std::string_view text)
{
    std::string all;
    for (const char c : text)
        switch (c) {
        case '&':
            all += "&amp;";
            break;
        case '<':
            all += "&lt;";
            break;
        case '"':
            all += "&quot;";
            break;
        default:
            all += c;
        }
    return all;
}

std::string base64_of(std::string_view bytes)
{
    constexpr std::string_view k_digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t k_group = 3;
    std::string text;
    for (std::size_t begin = 0; begin < bytes.size(); begin += k_group) {
        const std::string_view group = bytes.substr(begin, k_group);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < k_group; ++i)
            bits = bits << 8 | (i < group.size() ? static_cast<unsigned char>(group[i]) : 0U);
        for (std::size_t i = 0; i <= k_group; ++i)
            text += i <= group.size() ? k_digits[bits >> (18 - 6 * i) & 63U] : '=';
    }
    return text;
}

/// The page, written from its top to its end.
class page_t
{
public:
    page_t() : m_text(k_head) {}

    void heading(const std::string& text) { m_text += "<h2>" + escaped(text) + "</h2>\n"; }
    void paragraph(const std::string& text) { m_text += "<p>" + escaped(text) + "</p>\n"; }
    void figures(const figure_group_t& group)
    {
        m_text += (group.title.empty() ? "" : "<h3>" + escaped(group.title) + "</h3>\n") + "<table>\n";
        for (const figure_row_t& row : group.rows)
            m_text += std::string("<tr") + (row.is_exceeded ? " class=\"exceeded\"" : "") + "><th>" +
                      escaped(row.name) + "</th><td>" + escaped(row.value) + "</td><td class=\"expected\">" +
                      (row.is_exceeded ? "exceeded, " : "") + escaped(row.expected) + "</td></tr>\n";
        m_text += "</table>\n";
    }
    void table(const std::vector<std::vector<std::string>>& lines)
    {
        m_text += "<table>\n";
        for (const auto& line : lines) {
            m_text += "<tr>";
            for (const std::string& cell : line) {
                const char* kind = &line == &lines.front() || &cell == &line.front() ? "th>" : "td>";
                m_text += '<' + (kind + escaped(cell)) + "</" + kind;
            }
            m_text += "</tr>\n";
        }
        m_text += "</table>\n";
    }
    /// A PNG at its natural size, which its head tells.
    void picture(const std::string& name, std::string_view png)
    {
        const auto number = [&](std::size_t place) {
            return std::to_string(static_cast<unsigned char>(png[place]) << 8 |
                                  static_cast<unsigned char>(png[place + 1]));
        };
        m_text += "<figure><img alt=\"" + escaped(name) + "\" width=\"" + number(18) + "\" height=\"" + number(22) +
                  "\" src=\"data:image/png;base64," + base64_of(png) + "\"></figure>\n";
    }
    void links(const std::vector<std::string>& files)
    {
        m_text += "<p>";
        for (const std::string& file : files)
            m_text += "<a href=\"" + escaped(file) + "\">" + escaped(file) + "</a> ";
        m_text += "</p>\n";
    }
    void lines(const std::vector<std::string>& lines)
    {
        m_text += "<pre>";
        for (const std::string& line : lines)
            m_text += escaped(line) + '\n';
        m_text += "</pre>\n";
    }
    std::string whole() const { return m_text + "</body>\n</html>\n"; }

private:
    std::string m_text;
};

/// Draws each of the maps and has it taken.
template <class take_t>
void draw_maps(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine, take_t take)
{
    for (unsigned int carrier = 0; carrier < waveform.get_carrier_number(); ++carrier)
        for (unsigned int numerology = 0; numerology < waveform.get_carrier(carrier)->get_numerology_number();
             ++numerology)
            for (unsigned int frame = 0; frame < waveform.get_frame_number(); ++frame)
                if (waveform.get_carrier(carrier)->get_enable() &&
                    waveform.get_carrier(carrier)->get_numerology(static_cast<int>(numerology))->get_enable())
                    take(std::to_string(carrier) + '_' + std::to_string(numerology) + '_' + std::to_string(frame),
                         is_prach(waveform, carrier)
                             ? picture_of(
                                   prach_map_of(waveform.get_waveform_manager(), engine, carrier, numerology, frame))
                             : picture_of(map_of(waveform.get_waveform_manager(), engine, carrier, numerology, frame)));
}

void add_maps(page_t& page, cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine, outputs_t& outputs,
              const std::filesystem::path& folder)
{
    constexpr std::size_t k_most_shown = 8;
    std::size_t shown = 0;
    std::vector<std::string> linked;
    page.heading("Resource maps");
    draw_maps(waveform, engine, [&](const std::string& place, const std::string& png) {
        const std::string file = shown == 0 ? "resource_map.png" : "resource_map_" + place + ".png";
        outputs.add(folder / file).write(png);
        if (shown < k_most_shown) {
            page.picture("resource map " + place, png);
            ++shown;
        }
        else
            linked.push_back(file);
    });
    if (!linked.empty())
        page.links(linked);
}

void add_curve(page_t& page, const std::string& name, const plot_t& plot, outputs_t& outputs,
               const std::filesystem::path& folder)
{
    const std::string png = plot.drawn(picture_format_t::png);
    outputs.add(folder / (name + ".png")).write(png);
    outputs.add(folder / (name + ".svg")).write(plot.drawn(picture_format_t::svg));
    page.picture(name, png);
    page.links({name + ".svg"});
}

void add_constellations(page_t& page, const evm_t& evm, const std::set<std::string>& chosen, outputs_t& outputs,
                        const std::filesystem::path& folder)
{
    if (!chosen.empty())
        page.heading("Constellations");
    for (const std::string& path : chosen) {
        const auto found = std::find_if(evm.constellations.begin(), evm.constellations.end(),
                                        [&](const constellation_t& own) { return own.path == path; });
        if (found == evm.constellations.end() || found->sent.empty())
            throw failure_t("no constellation of " + shortened(one_line(path)) + ": it sends no cell");
        add_curve(page, "constellation_" + path, constellation_plot(*found), outputs, folder);
    }
}

} // namespace

void write_report(cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine, const signal_t& signal, const mapped_t& cells,
                  const std::set<std::string>& chosen, outputs_t& outputs, const std::filesystem::path& folder)
{
    const spectrum_t spectrum(signal);
    measurement_t measurement = measured(signal, spectrum, channels_of(waveform, engine.get_record()));
    const evm_t evm = evm_of({signal.period, signal.rate}, cells, chosen);
    take(evm, measurement);
    const auto radio_frequency = static_cast<double>(waveform.get_radio_frequency());

    page_t page;
    page.paragraph(std::to_string(waveform.get_carrier_number()) + " carrier(s) and " +
                   std::to_string(waveform.get_frame_number()) + " frame(s) round " + shortest(radio_frequency / 1e6) +
                   " MHz");
    for (const figure_group_t& group : groups_of(measurement))
        page.figures(group);
    page.heading("Spectrum, CCDF, power");
    add_curve(page, "spectrum", spectrum_plot(spectrum, measurement, radio_frequency), outputs, folder);
    page.table(markers_of(measurement));
    add_curve(page, "ccdf", ccdf_plot(measurement), outputs, folder);
    add_curve(page, "power", power_plot(signal, measurement), outputs, folder);
    add_constellations(page, evm, chosen, outputs, folder);
    add_maps(page, waveform, engine, outputs, folder);
    std::vector<std::string> deviations;
    for (const lib_nr_met_deviation_t& met : engine.get_met_deviations())
        deviations.push_back(text_of(met));
    if (!deviations.empty()) {
        page.heading("Deviations from the standard");
        page.lines(deviations);
    }
    page.heading("Settings that differ from the default");
    cfg_nr_waveform_t fresh;
    page.lines(mending_steps(waveform, fresh));
    outputs.add(folder / "report.html").write(page.whole());
}

} // namespace nrwave
