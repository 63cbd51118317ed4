#include "host/commands/nrwave_configuration.h"

#include "common/lib_number_text.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_preset.h"
#include "host/nrwave_shorthand.h"
#include "host/nrwave_steps.h"
#include "host/nrwave_value.h"

#include <charconv>

namespace nrwave
{

CLI::Option* declare_output(CLI::App& app, std::string& place, const char* type, const char* help)
{
    return app.add_option("-o,--output", place, help)
        ->type_name(type)
        ->required()
        ->transform([](const std::string& name) { return name == "-" ? "/dev/stdout" : name; });
}

namespace
{

std::string named(const std::string& text) { return text.empty() ? "an empty value" : shortened(text); }

/// Takes a whole number with an exponent or suffix too. What is none, or more than the option can hold, is told in the
/// tool's own words.
template <class number_t>
CLI::Option* takes_whole_number(CLI::Option* option, const char* type)
{
    return option->type_name(type)->transform([](const std::string& text) {
        std::string digits = whole_number_in_full(text).value_or(text);
        number_t number = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (error == std::errc::result_out_of_range)
            throw CLI::ValidationError(named(text) + " is too large");
        if (error != std::errc{} || end != digits.data() + digits.size())
            throw CLI::ValidationError(named(text) + " is no whole number from 0");
        return digits;
    });
}

} // namespace

void declare_delivery(CLI::App& app, delivery_t& delivery)
{
    declare_rate(app, delivery.rate,
                 "Samples a second, any whole number that holds the occupied bands; by resampling of the periodic "
                 "waveform");
    takes_whole_number<std::uint64_t>(
        app.add_option("--multiple-of", delivery.multiple_of,
                       "Repeat the waveform until the number of samples is a multiple of this"),
        "NUMBER");
}

void declare_scale(CLI::App& app, std::optional<double>& scale_db, const char* help)
{
    app.add_option("--scale", scale_db, help)->type_name("DB")->transform([](const std::string& text) {
        double number = 0.0;
        if (!vek::common_lib::lib_number_text_t::text_to_double(text, number))
            throw CLI::ValidationError(named(text) + " is no number of dB");
        return text;
    });
}

void declare_rate(CLI::App& app, std::optional<std::uint64_t>& rate, const char* help)
{
    takes_whole_number<std::uint64_t>(app.add_option("--rate", rate, help), "HZ");
}

void declare_number(CLI::App& app, const char* name, unsigned int& number, const char* help)
{
    takes_whole_number<unsigned int>(app.add_option(name, number, help), "NUMBER");
}

void declare_index(CLI::App& app, const char* name, std::optional<unsigned int>& index, const char* help)
{
    takes_whole_number<unsigned int>(app.add_option(name, index, help), "NUMBER");
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
