#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_output.h"
#include "host/nrwave_saved.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

class save_t : public command_t
{
public:
    save_t() : command_t("save", "Write a settings file") {}

    void declare(CLI::App& app) override
    {
        m_configuration.declare_file(app);
        m_configuration.declare_steps(app);
        declare_output(app, m_output, "FILE.xml", "The settings file; - writes to standard output");
        app.footer("Examples:\n"
                   "  nrwave save --recipe examples/ssb_100mhz.recipe -o settings.xml\n"
                   "  nrwave save settings.xml --set 'carrier[0].ncell_id=17' -o other.xml");
    }

    void run(trace_t& trace) override
    {
        cfg_nr_waveform_t waveform;
        const inputs_t inputs = m_configuration.apply(waveform, trace);
        const saved_settings_t saved = saved_settings(waveform);
        for (const std::string& line : saved.losses)
            m_configuration.tell(line, trace);
        write_text(m_output, saved.text, inputs);
    }

private:
    configuration_t m_configuration;
    std::string m_output;
};

} // namespace

std::unique_ptr<command_t> save_command() { return std::make_unique<save_t>(); }

} // namespace nrwave
