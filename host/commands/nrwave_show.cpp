#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_cells.h"
#include "host/nrwave_channels.h"
#include "host/nrwave_figures.h"
#include "host/nrwave_generation.h"
#include "host/nrwave_record.h"
#include "host/nrwave_summary.h"

#include <nlohmann/json.hpp>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

class show_t : public command_t
{
public:
    show_t() : command_t("show", "Measure the samples: levels, CCDF, occupied bandwidth, adjacent channels, EVM") {}

    void declare(CLI::App& app) override
    {
        m_configuration.declare_file(app);
        m_configuration.declare_steps(app);
        declare_delivery(app, m_delivery);
        app.add_flag("--json", m_json, "Tell it as a JSON object");
        app.footer("Beside each figure stands the expected one; what passes a limit of TS 38.104 is\nmarked.\n"
                   "Examples:\n"
                   "  nrwave show --recipe examples/full_cell.recipe\n"
                   "  nrwave show --recipe examples/two_carriers.recipe --json");
    }

    void run(trace_t& trace) override
    {
        cfg_nr_waveform_t waveform;
        m_configuration.apply(waveform, trace);
        check_delivery(m_delivery, waveform);
        lib_nr_phy_t engine;
        engine.set_trace_file_enable(false);
        const cell_keeper_t keeper(waveform, engine);
        generate(waveform, engine);
        for (const std::string& line : shortfalls_of(engine.get_record()))
            m_configuration.tell(line, trace);
        const delivered_t delivered = nrwave::delivered(m_delivery, waveform, engine.get_baseband_signal_data());
        const signal_t signal{delivered.period, delivered.rate, delivered.repeats};
        measurement_t measurement = measured(signal, spectrum_t(signal), channels_of(waveform, engine.get_record()));
        take(evm_of({signal.period, signal.rate}, keeper.cells()), measurement);
        trace.out << (m_json ? written(json_of(measurement)) : text_of(measurement));
    }

private:
    configuration_t m_configuration;
    delivery_t m_delivery;
    bool m_json = false;
};

} // namespace

std::unique_ptr<command_t> show_command() { return std::make_unique<show_t>(); }

} // namespace nrwave
