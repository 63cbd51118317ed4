#include "host/nrwave_summary.h"

#include "host/nrwave_digits.h"
#include "host/nrwave_record.h"
#include "host/nrwave_value.h"

#include <nlohmann/json.hpp>

namespace nrwave
{

using namespace vek::nr_mod_lib;

std::string text_of(const summary_t& summary)
{
    const std::string rate = summary.rate == 0 ? "not told" : std::to_string(summary.rate) + " Hz";
    const std::string seconds = summary.rate == 0 ? "" : ", " + shortest(summary.seconds()) + " s";
    std::string text = "files   " + one_line(joined(summary.files)) + "\nrate    " + rate + "\nlength  " +
                       std::to_string(summary.level.samples()) + " samples" + seconds + "\npeak    " +
                       decibels(summary.level.peak_dbfs(), "dBFS") + "\nRMS     " +
                       decibels(summary.level.rms_dbfs(), "dBFS") + "\nPAPR    " +
                       decibels(summary.level.papr_db(), "dB") + "\nclip    " + std::to_string(summary.clipped) +
                       " samples\n";
    if (summary.deviations)
        for (const auto& met : *summary.deviations)
            text += text_of(met) + '\n';
    return text;
}

nlohmann::ordered_json json_of(const summary_t& summary)
{
    nlohmann::ordered_json json = {
        {"files", summary.files},
        {"format", summary.format.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(summary.format)},
        {"rate", summary.rate},
        {"samples", summary.level.samples()},
        {"seconds", summary.seconds()},
        {"peak_dbfs", or_null(summary.level.peak_dbfs())},
        {"rms_dbfs", or_null(summary.level.rms_dbfs())},
        {"papr_db", or_null(summary.level.papr_db())},
        {"clipped", summary.clipped}};
    if (summary.rate == 0)
        json["rate"] = json["seconds"] = nullptr;
    if (summary.deviations) {
        nlohmann::ordered_json& deviations = json["deviations"] = nlohmann::ordered_json::array();
        for (const auto& met : *summary.deviations)
            deviations.push_back({{"entry", path_of(met)}, {"name", lib_nr_deviation_row(met.deviation).name}});
    }
    return json;
}

nlohmann::ordered_json or_null(const std::optional<double>& level)
{
    return level ? nlohmann::ordered_json(*level) : nlohmann::ordered_json();
}

std::string written(const nlohmann::ordered_json& json)
{
    return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}

} // namespace nrwave
