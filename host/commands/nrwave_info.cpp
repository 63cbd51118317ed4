#include "host/commands/nrwave_commands.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_hashing.h"
#include "host/nrwave_recording.h"
#include "host/nrwave_summary.h"
#include "host/nrwave_value.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace nrwave
{

namespace
{

/// The figures of what the file holds, and its hash.
std::pair<summary_t, std::string> measured(const recording_t& recording)
{
    sample_decoder_t decoder(recording.claim.format);
    hashing_t hash;
    std::string block;
    read_samples(recording, decoder, [&](std::string_view bytes) {
        block.assign(bytes);
        hash.add(block);
    });
    summary_t summary;
    summary.files = {recording.data, recording.meta};
    summary.format = name_of(recording.is_sigmf ? sample_format_t::sigmf : recording.claim.format);
    summary.rate = recording.claim.rate.value_or(0);
    summary.level = decoder.level();
    summary.clipped = recording.claim.clipped;
    return {summary, hash.digest()};
}

/// Adds to a line where a level is not as told; what is not told, as in silence, is not compared.
void compare(std::string& line, const char* name, const std::optional<double>& found, const std::optional<double>& told)
{
    constexpr double k_most_db = 1e-6;
    if (told && !(found && std::fabs(*found - *told) <= k_most_db))
        line += std::string(line.empty() ? "" : ", ") + name;
}

/// What of a recording is not as its metadata tells, none where all is.
std::string differences(const recording_t& recording, const summary_t& summary, const std::string& sha512)
{
    const claim_t& claim = recording.claim;
    std::string line;
    if (claim.samples && *claim.samples != summary.level.samples())
        line = "length";
    if (claim.sha512 && *claim.sha512 != sha512)
        line += line.empty() ? "hash" : ", hash";
    compare(line, "peak", summary.level.peak_dbfs(), claim.peak_dbfs);
    compare(line, "RMS", summary.level.rms_dbfs(), claim.rms_dbfs);
    return line;
}

class info_t : public command_t
{
public:
    info_t() : command_t("info", "Read samples back and hold them against what is told of them") {}

    void declare(CLI::App& app) override
    {
        app.add_option("file", m_file, "Samples, or the metadata beside them")->type_name("FILE")->required();
        CLI::Option* settings =
            app.add_flag("--settings", m_settings, "Print the recipe in the metadata instead of the figures");
        app.add_flag("--json", m_json, "Tell it as a JSON object, with ok: whether all is as told")->excludes(settings);
        app.footer("Length, hash, peak and RMS that differ from the metadata are a failure.\n"
                   "Examples:\n"
                   "  nrwave info out/cell.cf32\n"
                   "  nrwave info out/first.sigmf-meta --settings > first.recipe");
    }

    void run(trace_t& trace) override
    {
        const recording_t recording = recording_of(m_file);
        const auto [summary, sha512] = measured(recording);
        const std::string line = differences(recording, summary, sha512);
        if (m_json) {
            nlohmann::ordered_json json = json_of(summary);
            json["ok"] = line.empty();
            trace.out << written(json);
        }
        else if (!m_settings)
            trace.out << text_of(summary);
        trace.flush_out();
        if (!line.empty())
            throw failure_t(shortened(recording.data) + " is not as " + shortened(recording.meta) + " tells: " + line);
        if (!m_settings)
            return;
        if (!recording.claim.settings)
            throw failure_t(shortened(recording.meta) + " holds no settings");
        trace.out << *recording.claim.settings;
    }

private:
    std::string m_file;
    bool m_settings = false;
    bool m_json = false;
};

} // namespace

std::unique_ptr<command_t> info_command() { return std::make_unique<info_t>(); }

} // namespace nrwave
