#include "host/commands/nrwave_configuration.h"

#include "host/nrwave_failure.h"
#include "host/nrwave_preset.h"
#include "host/nrwave_shorthand.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_value.h"

namespace nrwave
{

CLI::Option* declare_output(CLI::App& app, std::string& place, const char* type, const char* help)
{
    return app.add_option("-o,--output", place, help)
        ->type_name(type)
        ->required()
        ->transform([](const std::string& name) { return name == "-" ? "/dev/stdout" : name; });
}

void declare_delivery(CLI::App& app, delivery_t& delivery)
{
    const auto in_full = [](const std::string& text) { return whole_number_in_full(text).value_or(text); };
    app.add_option("--rate", delivery.rate,
                   "Samples a second, any whole number that holds the occupied bands; by resampling of the periodic "
                   "waveform")
        ->type_name("HZ")
        ->transform(in_full);
    app.add_option("--multiple-of", delivery.multiple_of,
                   "Repeat the waveform until the number of samples is a multiple of this")
        ->type_name("NUMBER")
        ->transform(in_full);
}

namespace
{

template <class number_t>
void declare_whole_number(CLI::App& app, const char* name, number_t& number, const char* help)
{
    app.add_option(name, number, help)->type_name("NUMBER")->transform([](const std::string& text) {
        return whole_number_in_full(text).value_or(text);
    });
}

} // namespace

void declare_number(CLI::App& app, const char* name, unsigned int& number, const char* help)
{
    declare_whole_number(app, name, number, help);
}

void declare_index(CLI::App& app, const char* name, std::optional<unsigned int>& index, const char* help)
{
    declare_whole_number(app, name, index, help);
}

void configuration_t::declare_file(CLI::App& app)
{
    app.add_option("file", m_file, "Settings file to begin with")->type_name("FILE.xml");
}

void configuration_t::declare_steps(CLI::App& app)
{
    app.add_option("--preset", m_presets,
                   "A preset on carrier 0, NAME[:bandwidth=B,scs=S,duplex=D], the name as the standard has it; 'nrwave "
                   "presets' lists them")
        ->type_name("PRESET")
        ->allow_extra_args(false);
    app.add_option("--recipe", m_recipes, "Text file of steps, one a line; may be given several times")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--set", m_steps,
                   "One step: 'PATH=VALUE', 'add PATH', 'copy PATH[i]', 'remove PATH[i]', 'apply PRESET', "
                   "'load FILE.xml', 'include RECIPE'")
        ->type_name("STEP")
        ->allow_extra_args(false);
    app.add_flag("--strict", m_strict,
                 "Fail where the library corrects a value, or a channel is not sent or not all of it");
}

inputs_t configuration_t::apply(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, trace_t& trace) const
{
    stepper_t stepper(waveform, [&](const std::string& line) { tell(line, trace); });
    if (m_file)
        stepper.load(*m_file);
    for (const std::string& preset : m_presets)
        for (const std::string& step : preset_steps(preset, waveform.get_nr_ntn()))
            stepper.apply(step);
    for (const std::string& recipe : m_recipes)
        stepper.apply_recipe(recipe);
    for (const std::string& step : m_steps)
        stepper.apply(step);
    stepper.tell_resets();
    return stepper.inputs();
}

void configuration_t::tell(const std::string& line, trace_t& trace) const
{
    if (m_strict)
        throw failure_t(line);
    trace.err << one_line(line) << std::endl;
}

} // namespace nrwave
