#include "host/nrwave_figures.h"

#include "host/nrwave_digits.h"
#include "host/nrwave_summary.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace nrwave
{

namespace
{

using json_t = nlohmann::ordered_json;

std::string percent(const std::optional<double>& part) { return part ? fixed(*part, 3) + " %" : "none"; }

std::string megahertz(double hertz) { return fixed(hertz / 1e6, 3) + " MHz"; }

figure_group_t waveform_group(const measurement_t& measurement)
{
    const level_t& level = measurement.level;
    return {"",
            {{"rate", std::to_string(measurement.rate) + " Hz", "", false},
             {"length", std::to_string(measurement.samples) + " samples, " + shortest(measurement.seconds) + " s", "",
              false},
             {"peak", decibels(level.peak_dbfs(), "dBFS"), "", false},
             {"RMS", decibels(level.rms_dbfs(), "dBFS"), "", false},
             {"PAPR", decibels(level.papr_db(), "dB"),
              measurement.expected_papr_db()
                  ? fixed(*measurement.expected_papr_db(), 2) + " dB: Gaussian signal of this length"
                  : "",
              false},
             {"resolution", fixed(measurement.resolution_hz / 1e3, 2) + " kHz", "", false}}};
}

std::string text_of(const aclr_t& aclr, const carrier_measurement_t& carrier)
{
    if (!carrier.channel.is_sent)
        return "none, nothing is sent";
    return aclr.db ? fixed(*aclr.db, 2) + " dB" : "none, beyond the rate";
}

std::string limit_of(const aclr_t& aclr)
{
    return aclr.is_shared ? "no limit: another carrier sends there"
                          : "at least " + shortest(k_least_aclr_db.value) + " dB: " + k_least_aclr_db.source;
}

figure_group_t carrier_group(const carrier_measurement_t& carrier)
{
    const band_t& edges = carrier.channel.edges;
    figure_group_t group{
        carrier.channel.path,
        {{"channel", fixed(edges.low_hz / 1e6, 3) + " to " + megahertz(edges.high_hz), "", false},
         {"power", decibels(carrier.power_dbfs, "dBFS"), "", false},
         {"occupied bandwidth", carrier.occupied ? megahertz(carrier.occupied->width_hz()) : "none, nothing is sent",
          "at most " + megahertz(edges.width_hz()) + ": " + k_occupied_share.source, carrier.is_occupied_exceeded()}}};
    const std::array names = {"ACLR below", "ACLR above"};
    for (std::size_t side = 0; side < names.size(); ++side)
        group.rows.push_back({names[side], text_of(carrier.aclr[side], carrier), limit_of(carrier.aclr[side]),
                              is_exceeded(carrier.aclr[side])});
    group.rows.push_back({"EVM", percent(carrier.evm_percent), "", false});
    return group;
}

/// The entries of the channels, each with the limit of its modulation.
figure_group_t evm_group(const std::vector<channel_evm_t>& channels)
{
    figure_group_t group{"error vector magnitude", {}};
    for (const channel_evm_t& channel : channels)
        group.rows.push_back(
            {channel.path, percent(channel.percent),
             channel.limit_percent ? "at most " + shortest(*channel.limit_percent) + " %: " + k_evm_source : "",
             channel.is_exceeded()});
    return group;
}

std::size_t columns_of(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xc0) != 0x80; }));
}

std::string padded(const std::string& text, std::size_t width)
{
    return text + std::string(width - std::min(width, columns_of(text)), ' ');
}

std::string trimmed_line(std::string line)
{
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

json_t json_of(const ccdf_markers_t& markers)
{
    json_t array = json_t::array();
    for (const std::optional<double>& marker : markers)
        array.push_back(or_null(marker));
    return array;
}

json_t json_of(const carrier_measurement_t& carrier)
{
    return {{"path", carrier.channel.path},
            {"low_hz", carrier.channel.edges.low_hz},
            {"high_hz", carrier.channel.edges.high_hz},
            {"power_dbfs", or_null(carrier.power_dbfs)},
            {"occupied_bandwidth_hz", carrier.occupied ? json_t(carrier.occupied->width_hz()) : json_t()},
            {"occupied_bandwidth_limit_hz", carrier.channel.edges.width_hz()},
            {"aclr_lower_db", or_null(carrier.aclr[0].db)},
            {"aclr_upper_db", or_null(carrier.aclr[1].db)},
            {"aclr_limit_db", k_least_aclr_db.value},
            {"evm_percent", or_null(carrier.evm_percent)}};
}

} // namespace

nlohmann::ordered_json json_of(const std::vector<channel_evm_t>& channels)
{
    json_t list = json_t::array();
    for (const channel_evm_t& channel : channels)
        list.push_back({{"path", channel.path},
                        {"evm_percent", or_null(channel.percent)},
                        {"evm_limit_percent", or_null(channel.limit_percent)}});
    return list;
}

std::vector<figure_group_t> groups_of(const measurement_t& measurement)
{
    std::vector<figure_group_t> groups = {waveform_group(measurement)};
    for (const carrier_measurement_t& carrier : measurement.carriers)
        groups.push_back(carrier_group(carrier));
    if (!measurement.channels.empty())
        groups.push_back(evm_group(measurement.channels));
    return groups;
}

std::vector<std::vector<std::string>> markers_of(const measurement_t& measurement)
{
    std::vector<std::vector<std::string>> table = {{"CCDF", "mean, dBFS"}};
    for (const double probability : k_marker_probabilities)
        table.front().push_back(shortest(100.0 * probability) + " %");
    table.front().emplace_back("peak");
    for (const auto& [name, markers] :
         {std::pair{"waveform", &measurement.waveform.markers}, std::pair{"burst", &measurement.burst.markers},
          std::pair{"Gaussian", &measurement.gaussian}})
    {
        table.push_back({name});
        for (const std::optional<double>& marker : *markers)
            table.back().push_back(marker ? fixed(*marker, 2) : "none");
    }
    return table;
}

std::string text_of(const measurement_t& measurement)
{
    constexpr std::size_t k_name = 26;
    constexpr std::size_t k_value = 28;
    constexpr std::size_t k_marker = 12;
    std::string text;
    for (const figure_group_t& group : groups_of(measurement)) {
        text += group.title.empty() ? "" : '\n' + group.title + '\n';
        for (const figure_row_t& row : group.rows)
            text += trimmed_line(padded(row.name, k_name) + padded(row.value, k_value) +
                                 (row.is_exceeded ? "EXCEEDED, " : "") + row.expected);
        if (!group.title.empty())
            continue;
        text += '\n';
        for (const std::vector<std::string>& line : markers_of(measurement)) {
            std::string cells;
            for (const std::string& cell : line)
                cells += padded(cell, k_marker);
            text += trimmed_line(cells);
        }
    }
    const std::vector<std::string> exceeded = measurement.exceeded();
    return text + "\nexceeded                  " + (exceeded.empty() ? "nothing" : joined(exceeded)) + '\n';
}

nlohmann::ordered_json json_of(const measurement_t& measurement)
{
    json_t carriers = json_t::array();
    for (const carrier_measurement_t& carrier : measurement.carriers)
        carriers.push_back(json_of(carrier));
    return {{"rate", measurement.rate},
            {"samples", measurement.samples},
            {"peak_dbfs", or_null(measurement.level.peak_dbfs())},
            {"rms_dbfs", or_null(measurement.level.rms_dbfs())},
            {"papr_db", or_null(measurement.level.papr_db())},
            {"expected_papr_db", or_null(measurement.expected_papr_db())},
            {"resolution_hz", measurement.resolution_hz},
            {"ccdf",
             {{"waveform", json_of(measurement.waveform.markers)},
              {"burst", json_of(measurement.burst.markers)},
              {"gaussian", json_of(measurement.gaussian)}}},
            {"carriers", carriers},
            {"channels", json_of(measurement.channels)},
            {"exceeded", measurement.exceeded()}};
}

} // namespace nrwave
