#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_explanation.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_record.h"
#include "host/nrwave_summary.h"

#include <nlohmann/json.hpp>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

class explain_t : public command_t
{
public:
    explain_t() : command_t("explain", "Tell why the samples are what they are, slot by slot of each channel") {}

    void declare(CLI::App& app) override
    {
        m_configuration.declare_file(app);
        m_configuration.declare_steps(app);
        declare_index(app, "--carrier", m_part.carrier, "Index of a carrier; all where it is not given");
        app.add_option("--channel", m_part.channel,
                       "A channel, as carrier[0].dl_pdsch[1] or dl_pdsch; all where it is not given")
            ->type_name("PATH");
        declare_index(app, "--frame", m_part.frame, "Index of a frame; all where it is not given");
        declare_index(
            app, "--slot", m_part.slot,
            "A slot of the frame, with the channels that it leaves out and why; all sent ones where it is not "
            "given");
        app.add_flag("--json", m_json, "Tell it as a JSON array");
        app.footer("RBs and subcarriers are those of the carrier's grid, symbols those of the slot.\n"
                   "Examples:\n"
                   "  nrwave explain --recipe examples/full_cell.recipe --channel dl_pdsch --slot 1\n"
                   "  nrwave explain --recipe examples/prach_short.recipe --frame 0 --json");
    }

    void run(trace_t& trace) override
    {
        cfg_nr_waveform_t waveform;
        m_configuration.apply(waveform, trace);
        check_part(m_part, waveform);
        explanations_t explanations(m_part);
        lib_nr_phy_t engine;
        engine.set_trace_file_enable(false);
        engine.set_observer(&explanations);
        generate(waveform, engine);
        for (const std::string& line : shortfalls_of(engine.get_record()))
            m_configuration.tell(line, trace);
        const std::vector<explained_slot_t> slots = explanations.take(engine.get_record(), waveform.get_frame_number());
        trace.out << (m_json ? written(json_of(slots)) : text_of(slots));
    }

private:
    configuration_t m_configuration;
    explained_part_t m_part;
    bool m_json = false;
};

} // namespace

std::unique_ptr<command_t> explain_command() { return std::make_unique<explain_t>(); }

} // namespace nrwave
