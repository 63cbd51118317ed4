#pragma once

#include "config/cfg_nr_waveform.h"
#include "host/nrwave_delivery.h"
#include "host/nrwave_input.h"
#include "host/nrwave_trace.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace nrwave
{

/// -o, where - stands for standard output.
CLI::Option* declare_output(CLI::App& app, std::string& place, const char* type, const char* help);
/// --scale.
void declare_scale(CLI::App& app, std::optional<double>& scale_db, const char* help);
/// --rate alone.
void declare_rate(CLI::App& app, std::optional<std::uint64_t>& rate, const char* help);
/// --rate and --multiple-of.
void declare_delivery(CLI::App& app, delivery_t& delivery);
/// A whole number, which may have an exponent or a suffix as the values of settings.
void declare_number(CLI::App& app, const char* name, unsigned int& number, const char* help);
/// The same for a number that need not be given.
void declare_index(CLI::App& app, const char* name, std::optional<unsigned int>& index, const char* help);

/// What configures a waveform on the command line: a settings file, presets, recipes and single steps, in that
/// order.
class configuration_t
{
public:
    /// The settings file as the first word behind the command.
    void declare_file(CLI::App& app);
    /// --preset, --recipe, --set and --strict.
    void declare_steps(CLI::App& app);
    /// A settings file that the command has found among its own words.
    void set_file(const std::string& file) { m_file = file; }

    /// Configures a fresh waveform, tells its corrections and gives the files read on the way.
    inputs_t apply(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, trace_t& trace) const;
    /// Tells a line on standard error that the user should know; under --strict it is a failure.
    void tell(const std::string& line, trace_t& trace) const;

private:
    std::optional<std::string> m_file;
    std::vector<std::string> m_presets;
    std::vector<std::string> m_recipes;
    std::vector<std::string> m_steps;
    bool m_strict = false;
};

} // namespace nrwave
