#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_cells.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_listing.h"
#include "host/nrwave_progress.h"
#include "host/nrwave_record.h"
#include "host/nrwave_report.h"
#include "host/nrwave_samples.h"
#include "host/nrwave_summary.h"

#include <nlohmann/json.hpp>
#include <set>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

const std::vector<reference_signal_t> k_no_references; ///< of formats that tell of none

std::string counted(std::uint64_t number, const std::string& thing)
{
    return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

/// Also names the deviations from the standard that the samples hold.
std::string description_of(const cfg_nr_waveform_t& waveform, const std::vector<lib_nr_met_deviation_t>& deviations)
{
    std::set<lib_nr_deviation_t> met;
    for (const lib_nr_met_deviation_t& deviation : deviations)
        met.insert(deviation.deviation);
    std::string names;
    for (const lib_nr_deviation_t deviation : met)
        names += (names.empty() ? "; not as the standard: " : ", ") + std::string(lib_nr_deviation_row(deviation).name);
    return "5G NR baseband waveform, " + counted(waveform.get_carrier_number(), "carrier") + ", " +
           counted(waveform.get_frame_number(), "frame") + names;
}

/// The annotations of every period.
std::vector<annotation_t> repeated(const std::vector<annotation_t>& annotations, const delivered_t& delivered)
{
    std::vector<annotation_t> all;
    for (std::uint64_t repeat = 0; repeat < delivered.repeats; ++repeat)
        for (annotation_t annotation : annotations) {
            annotation.first_sample += repeat * delivered.period.size();
            all.push_back(std::move(annotation));
        }
    return all;
}

/// Of samples that no file holds.
summary_t summary_of(const delivered_t& delivered)
{
    summary_t summary;
    summary.rate = delivered.rate;
    for (std::uint64_t repeat = 0; repeat < delivered.repeats; ++repeat)
        summary.level.add(delivered.period.data(), delivered.period.size());
    return summary;
}

class generate_t : public command_t
{
public:
    generate_t() : command_t("generate", "Generate the samples") {}

    void declare(CLI::App& app) override
    {
        m_configuration.declare_file(app);
        m_configuration.declare_steps(app);
        m_has_output = declare_output(app, m_output, "PREFIX",
                                      "What the names of the files begin with; - writes the bare samples to "
                                      "standard output; not needed beside --report")
                           ->required(false);
        app.add_option("--format", m_format, "sigmf (default), cf32, cf64, ci16, npy or csv")->type_name("FORMAT");
        declare_scale(app, m_delivery.scale_db,
                      "Put the peak of the samples this far below full scale; without it the level stays");
        declare_delivery(app, m_delivery);
        app.add_option("--report", m_report, "Folder for a report: report.html, and its pictures as PNG and SVG")
            ->type_name("DIR");
        app.add_option("--constellation", m_constellations,
                       "A channel whose constellation the report shows, such as carrier[0].dl_pdsch[0]; may be given "
                       "several times")
            ->type_name("PATH")
            ->allow_extra_args(false);
        CLI::Option* quiet = app.add_flag("--quiet", m_quiet, "Say nothing of what was written");
        app.add_flag("--json", m_json, "Say it as a JSON object")->excludes(quiet);
        app.footer("Examples:\n"
                   "  nrwave generate --set 'carrier[0].dl_ssb.enable=true' -o first --report first\n"
                   "  nrwave generate --recipe examples/full_cell.recipe --set frame_number=2 -o cell --format cf32\n"
                   "  nrwave generate --recipe examples/full_cell.recipe --report report\n"
                   "  nrwave generate settings.xml --format ci16 --scale 3 --rate 200M --multiple-of 64 -o sdr\n"
                   "  nrwave generate settings.xml --format cf32 -o - | wc -c");
    }

    void run(trace_t& trace) override
    {
        const sample_format_t format = sample_format_of(m_format);
        cfg_nr_waveform_t waveform;
        const inputs_t inputs = m_configuration.apply(waveform, trace);
        check_delivery(m_delivery, waveform);
        outputs_t outputs(inputs);
        std::optional<sample_files_t> files;
        if (m_has_output->count() > 0)
            files.emplace(outputs, m_output, format);
        if (!m_report.empty())
            outputs.make_folder(m_report);
        else if (!files)
            throw failure_t("nothing to write: -o or --report is missing");
        else if (!m_constellations.empty())
            throw failure_t("a constellation is part of a report: --report is missing");
        lib_nr_phy_t engine;
        engine.set_trace_file_enable(false); // it would lie outside the folders that the user named
        std::optional<cell_keeper_t> keeper;
        if (!m_report.empty() || (format == sample_format_t::sigmf && !is_written_through(m_output)))
            keeper.emplace(waveform, engine, !m_report.empty());
        generate(waveform, engine);
        for (const std::string& line : shortfalls_of(engine.get_record()))
            m_configuration.tell(line, trace);
        delivered_t delivered = nrwave::delivered(m_delivery, waveform, engine.get_baseband_signal_data());
        if (!m_report.empty())
            take_gain(delivered);
        metadata_t metadata;
        if (files) {
            const progress_t progress("writing");
            files->write(delivered, metadata);
        }
        else
            metadata.summary = summary_of(delivered);
        if (!m_report.empty())
            write_report(waveform, engine, {delivered.period, delivered.rate, delivered.repeats}, keeper->cells(),
                         {m_constellations.begin(), m_constellations.end()}, outputs, m_report);
        metadata.summary.files = outputs.names();
        metadata.summary.deviations = engine.get_met_deviations();
        if (files && !is_written_through(m_output))
            describe(*files, metadata, waveform, engine, keeper ? keeper->references() : k_no_references, delivered);
        if (metadata.summary.clipped > 0)
            m_configuration.tell(counted(metadata.summary.clipped, "sample") + " clipped: held at full scale", trace);
        if (!m_quiet && !is_standard_output(m_output))
            tell(metadata.summary, trace);
        outputs.keep();
    }

private:
    void describe(sample_files_t& files, metadata_t& metadata, cfg_nr_waveform_t& waveform, lib_nr_phy_t& engine,
                  const std::vector<reference_signal_t>& references, const delivered_t& delivered) const
    {
        for (const std::string& step : steps_of(waveform))
            metadata.settings += step + '\n';
        metadata.radio_frequency = waveform.get_radio_frequency();
        metadata.description = description_of(waveform, engine.get_met_deviations());
        metadata.scale_db = m_delivery.scale_db;
        metadata.annotations =
            repeated(annotations_of(waveform, engine, references, delivered.period.size()), delivered);
        files.describe(metadata);
    }

    /// Told while the files can still be taken back.
    void tell(const summary_t& summary, trace_t& trace) const
    {
        trace.out << (m_json ? written(json_of(summary)) : text_of(summary));
        trace.flush_out();
    }

    configuration_t m_configuration;
    CLI::Option* m_has_output = nullptr;
    std::string m_output;
    std::string m_format = "sigmf";
    std::string m_report;
    std::vector<std::string> m_constellations;
    delivery_t m_delivery;
    bool m_quiet = false;
    bool m_json = false;
};

} // namespace

std::unique_ptr<command_t> generate_command() { return std::make_unique<generate_t>(); }

} // namespace nrwave
