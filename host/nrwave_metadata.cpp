#include "host/nrwave_metadata.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace nrwave
{

namespace
{

using json_t = nlohmann::ordered_json;

/// Kinds of samples by SigMF's names; those that a machine has no order of bytes for do without one.
constexpr std::array<std::pair<const char*, sample_format_t>, 3> k_datatypes = {{
    {"cf32_le", sample_format_t::cf32},
    {"cf64_le", sample_format_t::cf64},
    {"ci16_le", sample_format_t::ci16},
}};

json_t json_of(const std::vector<annotation_t>& annotations)
{
    json_t list = json_t::array();
    for (const annotation_t& annotation : annotations)
        list.push_back({{"core:sample_start", annotation.first_sample},
                        {"core:sample_count", annotation.samples},
                        {"core:freq_lower_edge", annotation.low_hz},
                        {"core:freq_upper_edge", annotation.high_hz},
                        {"core:label", annotation.label}});
    return list;
}

/// An object out of a file; anything else is a failure.
json_t object_in(const std::string& file, const std::string& content)
{
    json_t json = json_t::parse(content, nullptr, false);
    if (!json.is_object())
        throw failure_t(shortened(file) + " holds no JSON object");
    return json;
}

/// The value of a key, nothing where it is missing or null; one of another kind is a failure.
template <class value_t>
std::optional<value_t> value_of(const json_t& json, const char* key, const std::string& file)
{
    const auto found = json.find(key);
    if (found == json.end() || found->is_null())
        return std::nullopt;
    const bool fits = std::is_same_v<value_t, std::string> ? found->is_string()
                      : std::is_same_v<value_t, double>    ? found->is_number()
                                                           : found->is_number_unsigned();
    if (!fits)
        throw failure_t(shortened(file) + ": " + key + " is not of its kind");
    return found->template get<value_t>();
}

std::optional<std::uint64_t> whole_rate(const json_t& global, const std::string& file)
{
    const auto rate = value_of<double>(global, "core:sample_rate", file);
    if (!rate)
        return std::nullopt;
    if (!(*rate >= 0.0 && *rate < 1e18))
        throw failure_t(shortened(file) + ": core:sample_rate is no rate");
    return static_cast<std::uint64_t>(std::llround(*rate));
}

} // namespace

std::string sigmf_meta_of(const metadata_t& metadata)
{
    const summary_t& summary = metadata.summary;
    const json_t meta = {
        {"global",
         {{"core:datatype", "cf32_le"},
          {"core:version", "1.2.0"},
          {"core:num_channels", 1},
          {"core:sample_rate", summary.rate},
          {"core:description", metadata.description},
          {"core:recorder", NRWAVE_VERSION},
          {"core:sha512", metadata.sha512},
          {"core:extensions", json_t::array({{{"name", "nrwave"}, {"version", "1.0.0"}, {"optional", true}}})},
          {"nrwave:settings", metadata.settings},
          {"nrwave:samples", summary.level.samples()},
          {"nrwave:peak_dbfs", or_null(summary.level.peak_dbfs())},
          {"nrwave:rms_dbfs", or_null(summary.level.rms_dbfs())},
          {"nrwave:scale_db", or_null(metadata.scale_db)}}},
        {"captures", {{{"core:sample_start", 0}, {"core:frequency", metadata.radio_frequency}}}},
        {"annotations", json_of(metadata.annotations)},
    };
    return written(meta);
}

std::string sidecar_of(const metadata_t& metadata)
{
    json_t json = json_of(metadata.summary);
    json["sha512"] = metadata.sha512;
    json["settings"] = metadata.settings;
    return written(json);
}

claim_t claim_of_sigmf(const std::string& file, const std::string& content)
{
    const json_t json = object_in(file, content);
    const auto global = json.find("global");
    if (global == json.end() || !global->is_object())
        throw failure_t(shortened(file) + " holds no SigMF metadata: there is no global object");
    const std::string datatype = value_of<std::string>(*global, "core:datatype", file).value_or("");
    const auto kind =
        std::find_if(k_datatypes.begin(), k_datatypes.end(), [&](const auto& row) { return row.first == datatype; });
    if (kind == k_datatypes.end())
        throw failure_t(shortened(file) + ": samples of the kind " + shortened(one_line(datatype)) +
                        " cannot be read; nearest cf32_le, cf64_le, ci16_le");
    if (value_of<std::uint64_t>(*global, "core:num_channels", file).value_or(1) != 1)
        throw failure_t(shortened(file) + ": samples of several channels cannot be read");
    claim_t claim;
    claim.format = kind->second;
    claim.rate = whole_rate(*global, file);
    claim.samples = value_of<std::uint64_t>(*global, "nrwave:samples", file);
    claim.peak_dbfs = value_of<double>(*global, "nrwave:peak_dbfs", file);
    claim.rms_dbfs = value_of<double>(*global, "nrwave:rms_dbfs", file);
    claim.sha512 = value_of<std::string>(*global, "core:sha512", file);
    claim.settings = value_of<std::string>(*global, "nrwave:settings", file);
    return claim;
}

claim_t claim_of_sidecar(const std::string& file, const std::string& content)
{
    const json_t json = object_in(file, content);
    claim_t claim;
    claim.rate = value_of<std::uint64_t>(json, "rate", file);
    claim.samples = value_of<std::uint64_t>(json, "samples", file);
    claim.peak_dbfs = value_of<double>(json, "peak_dbfs", file);
    claim.rms_dbfs = value_of<double>(json, "rms_dbfs", file);
    claim.clipped = value_of<std::uint64_t>(json, "clipped", file).value_or(0);
    claim.sha512 = value_of<std::string>(json, "sha512", file);
    claim.settings = value_of<std::string>(json, "settings", file);
    const auto format = value_of<std::string>(json, "format", file);
    if (!format || !claim.rate || !claim.samples || !claim.sha512)
        throw failure_t(shortened(file) + " tells of no samples: format, rate, samples or sha512 is missing");
    claim.format = sample_format_of(*format);
    return claim;
}

} // namespace nrwave
