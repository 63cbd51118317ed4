#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_pictures.h"
#include "host/nrwave_record.h"
#include "host/nrwave_samples.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

std::string counted(unsigned int number, const std::string& thing)
{
    return std::to_string(number) + ' ' + thing + (number == 1 ? "" : "s");
}

std::string description_of(const cfg_nr_waveform_t& waveform)
{
    return "5G NR baseband waveform, " + counted(waveform.get_carrier_number(), "carrier") + ", " +
           counted(waveform.get_frame_number(), "frame");
}

class generate_t : public command_t
{
public:
    generate_t() : command_t("generate", "Generate the samples") {}

    void declare(CLI::App& app) override
    {
        m_configuration.declare_file(app);
        m_configuration.declare_steps(app);
        app.add_option("-o,--output", m_output, "What the names of the files begin with")
            ->type_name("PREFIX")
            ->required();
        app.add_option("--format", m_format, "sigmf (default), cf32 or cf64")->type_name("FORMAT");
        app.add_option("--report", m_report, "Folder for pictures: spectrum, CCDF, power, resource map")
            ->type_name("DIR");
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
        files.write(engine.get_baseband_signal_data(),
                    {waveform.get_waveform_sample_rate(), waveform.get_radio_frequency(), description_of(waveform)});
        outputs.keep();
    }

private:
    configuration_t m_configuration;
    std::string m_output;
    std::string m_format = "sigmf";
    std::string m_report;
};

} // namespace

std::unique_ptr<command_t> generate_command() { return std::make_unique<generate_t>(); }

} // namespace nrwave
