#include "host/commands/nrwave_commands.h"
#include "host/commands/nrwave_configuration.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_output.h"
#include "host/nrwave_pictures.h"
#include "host/nrwave_prach.h"
#include "host/nrwave_value.h"

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

class map_t : public command_t
{
public:
    map_t() : command_t("map", "Write the resource map of a frame as a table or a picture") {}

    void declare(CLI::App& app) override
    {
        m_configuration.declare_file(app);
        m_configuration.declare_steps(app);
        declare_number(app, "--carrier", m_carrier, "Index of the carrier, 0 where it is not given");
        declare_number(app, "--numerology", m_numerology, "Index of the numerology, likewise");
        declare_number(app, "--frame", m_frame, "Index of the frame, likewise");
        declare_output(app, m_output, "FILE", "FILE.csv or FILE.png; - writes the table to standard output");
        app.footer("Examples:\n"
                   "  nrwave map --recipe examples/full_cell.recipe -o map.png\n"
                   "  nrwave map --recipe examples/full_cell.recipe --frame 0 -o - | grep -c PDSCH");
    }

    void run(trace_t& trace) override
    {
        const bool picture = m_output.ends_with(".png");
        if (!picture && !m_output.ends_with(".csv") && !is_written_through(m_output))
            throw failure_t("a map is a .csv or a .png file, not " + shortened(m_output));
        cfg_nr_waveform_t waveform;
        const inputs_t inputs = m_configuration.apply(waveform, trace);
        lib_nr_phy_t engine;
        check_place(waveform.get_waveform_manager(), m_carrier, m_numerology, m_frame);
        const auto write = [&](const auto& map) {
            write_text(m_output, picture ? picture_of(map) : csv_of(map), inputs);
        };
        if (is_prach(waveform, m_carrier))
            write(prach_map_of(waveform.get_waveform_manager(), engine, m_carrier, m_numerology, m_frame));
        else
            write(map_of(waveform.get_waveform_manager(), engine, m_carrier, m_numerology, m_frame));
    }

private:
    configuration_t m_configuration;
    std::string m_output;
    unsigned int m_carrier = 0;
    unsigned int m_numerology = 0;
    unsigned int m_frame = 0;
};

} // namespace

std::unique_ptr<command_t> map_command() { return std::make_unique<map_t>(); }

} // namespace nrwave
