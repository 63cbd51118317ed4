#include "host/commands/nrwave_commands.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_preset.h"
#include "host/nrwave_summary.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace nrwave
{

namespace
{

void write_lines(std::ostream& out, const std::vector<preset_t>& presets)
{
    for (const preset_t& preset : presets)
        out << preset.family << ' ' << name_of_preset(preset.name) << "  " << preset.bandwidths.text() << "; "
            << preset.spacings.text() << "; " << preset.duplex_types.text() << '\n';
}

void write_json(std::ostream& out, const std::vector<preset_t>& presets)
{
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    for (const preset_t& preset : presets)
        list.push_back({{"family", preset.family},
                        {"name", preset.name},
                        {"ntn", preset.ntn},
                        {"bandwidths", preset.bandwidths.taken},
                        {"spacings", preset.spacings.taken},
                        {"duplex_types", preset.duplex_types.taken}});
    out << written(list);
}

class presets_t : public command_t
{
public:
    presets_t() : command_t("presets", "Show the presets, and what each can be chosen with") {}

    void declare(CLI::App& app) override
    {
        app.add_option("name", m_name,
                       "dl_tm, dl_frc, ul_frc, ul_rmc or pucch_test_model: the presets of this family; "
                       "NAME[:bandwidth=B,scs=S,duplex=D]: the steps that it stands for; none: all presets")
            ->type_name("FAMILY|NAME");
        app.add_flag("--ntn", m_ntn, "Those of non-terrestrial mode instead of the others");
        app.add_flag("--json", m_json, "The list, or the steps, as a JSON array");
        app.footer("Examples:\n"
                   "  nrwave presets dl_tm\n"
                   "  nrwave presets NR-FR1-TM3.1a:bandwidth=100M,scs=30k,duplex=tdd > tm31a.recipe");
    }

    void run(trace_t& trace) override
    {
        const std::vector<std::string> families = preset_families();
        if (!m_name.empty() && std::find(families.begin(), families.end(), m_name) == families.end()) {
            const std::vector<std::string> steps = preset_steps(m_name, m_ntn);
            if (m_json)
                trace.out << written(steps);
            else
                for (const std::string& step : steps)
                    trace.out << step << '\n';
            return;
        }
        const std::vector<preset_t> presets = presets_of(m_name, m_ntn);
        m_json ? write_json(trace.out, presets) : write_lines(trace.out, presets);
    }

private:
    std::string m_name;
    bool m_ntn = false;
    bool m_json = false;
};

} // namespace

std::unique_ptr<command_t> presets_command() { return std::make_unique<presets_t>(); }

} // namespace nrwave
