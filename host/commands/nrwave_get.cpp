#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_listing.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

class get_t : public command_t
{
public:
    get_t() : command_t("get", "Print settings as steps, and single figures") {}

    void declare(CLI::App& app) override
    {
        app.add_option("words", m_words, "A settings file to begin with, then paths; no path: everything")
            ->type_name("[FILE.xml] [PATH]");
        m_configuration.declare_steps(app);
        app.footer("Examples:\n"
                   "  nrwave get --recipe examples/full_cell.recipe                     everything, as a recipe\n"
                   "  nrwave get --recipe examples/full_cell.recipe 'carrier[0].dl_ssb' waveform_sample_rate\n"
                   "  nrwave get settings.xml > settings.recipe");
    }

    void run(trace_t& trace) override
    {
        if (!m_words.empty() && m_words.front().ends_with(".xml")) {
            m_configuration.set_file(m_words.front());
            m_words.erase(m_words.begin());
        }
        cfg_nr_waveform_t waveform;
        m_configuration.apply(waveform, trace);
        std::vector<std::string> steps;
        for (const std::string& path : m_words)
            for (std::string& step : steps_at(waveform, path))
                steps.push_back(std::move(step));
        if (m_words.empty())
            steps = steps_of(waveform);
        for (const std::string& step : steps)
            trace.out << step << '\n';
    }

private:
    configuration_t m_configuration;
    std::vector<std::string> m_words;
};

} // namespace

std::unique_ptr<command_t> get_command() { return std::make_unique<get_t>(); }

} // namespace nrwave
