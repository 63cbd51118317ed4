#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_pictures.h"
#include "host/nrwave_record.h"
#include "host/nrwave_samples.h"
#include "host/nrwave_summary.h"

#include <nlohmann/json.hpp>
#include <set>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

std::string counted(unsigned int number, const std::string& thing)
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

class generate_t : public command_t
{
public:
    generate_t() : command_t("generate", "Generate the samples") {}

    void declare(CLI::App& app) override
    {
        m_configuration.declare_file(app);
        m_configuration.declare_steps(app);
        declare_output(app, m_output, "PREFIX",
                       "What the names of the files begin with; - writes the bare samples to "
                       "standard output");
        app.add_option("--format", m_format, "sigmf (default), cf32 or cf64")->type_name("FORMAT");
        app.add_option("--report", m_report, "Folder for pictures: spectrum, CCDF, power, resource map")
            ->type_name("DIR");
        CLI::Option* quiet = app.add_flag("--quiet", m_quiet, "Say nothing of what was written");
        app.add_flag("--json", m_json, "Say it as a JSON object")->excludes(quiet);
        app.footer(
            "Examples:\n"
            "  nrwave generate --set 'carrier[0].dl_ssb.enable=true' -o first --report first\n"
            "  nrwave generate --recipe examples/full_cell.recipe --set radio_frequency=3.7G -o cell --format cf32\n"
            "  nrwave generate settings.xml --format cf32 -o - | wc -c");
    }

    void run(trace_t& trace) override
    {
        const sample_format_t format = sample_format_of(m_format);
        cfg_nr_waveform_t waveform;
        const inputs_t inputs = m_configuration.apply(waveform, trace);
        outputs_t outputs(inputs);
        sample_files_t files(outputs, m_output, format);
        if (!m_report.empty())
            outputs.make_folder(m_report);
        lib_nr_phy_t engine;
        engine.set_trace_file_enable(false); // it would lie outside the folders that the user named
        generate(waveform, engine);
        for (const std::string& line : shortfalls_of(engine.get_record()))
            m_configuration.tell(line, trace);
        if (!m_report.empty())
            draw_report(waveform, engine, outputs, m_report);
        const std::uint64_t rate = waveform.get_waveform_sample_rate();
        const level_t level =
            files.write(engine.get_baseband_signal_data(),
                        {rate, waveform.get_radio_frequency(), description_of(waveform, engine.get_met_deviations())});
        if (!m_quiet && !is_standard_output(m_output))
            tell({outputs.names(), name_of(format), rate, level, engine.get_met_deviations()}, trace);
        outputs.keep();
    }

private:
    /// Told while the files can still be taken back.
    void tell(const summary_t& summary, trace_t& trace) const
    {
        trace.out << (m_json ? written(json_of(summary)) : text_of(summary));
        trace.flush_out();
    }

    configuration_t m_configuration;
    std::string m_output;
    std::string m_format = "sigmf";
    std::string m_report;
    bool m_quiet = false;
    bool m_json = false;
};

} // namespace

std::unique_ptr<command_t> generate_command() { return std::make_unique<generate_t>(); }

} // namespace nrwave
