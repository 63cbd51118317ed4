#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_description.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

class list_t : public command_t
{
public:
    list_t() : command_t("list", "Show the paths: form, default, what is on offer, meaning") {}

    void declare(CLI::App& app) override
    {
        app.add_option("path", m_path, "Show this path and what lies below it; [i] is any entry of a list")
            ->type_name("PATH");
        app.add_flag("--manual", m_manual, "Write all settings as a document");
        m_configuration.declare_steps(app);
    }

    void run(trace_t& trace) override
    {
        if (m_manual)
            return write_manual(trace.out);
        cfg_nr_waveform_t waveform;
        m_configuration.apply(waveform, trace);
        describe(trace.out, waveform, m_path);
    }

private:
    configuration_t m_configuration;
    std::string m_path;
    bool m_manual = false;
};

} // namespace

std::unique_ptr<command_t> list_command() { return std::make_unique<list_t>(); }

} // namespace nrwave
