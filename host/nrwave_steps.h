#pragma once

#include "config/cfg_nr_waveform.h"
#include "host/nrwave_input.h"
#include "host/nrwave_stored.h"

#include <functional>
#include <string>
#include <vector>

namespace nrwave
{

/// Applies steps to a waveform: PATH=VALUE, add PATH, copy PATH[i], remove PATH[i], load FILE.xml, include FILE, and
/// the verbs of the façades, such as apply carrier[0].dl_tm. Values may be short: 3.5G, the unique tail of an
/// enumerator, and max for the largest whole number.
///
/// The library corrects rather than refuses: a value that reads back otherwise is told to `on_correction` as
/// "PATH: asked A, stored B". What cannot be done at all is a failure, as is a control character in a step.
class stepper_t
{
public:
    using on_correction_t = std::function<void(const std::string& line)>;

    stepper_t(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, on_correction_t on_correction);

    /// One step; files that it names are relative to a folder, its path begins at that of a section.
    void apply(const std::string& step, const std::string& folder = {}, const std::string& section = {});
    /// A recipe: one step a line; blank lines and lines that begin with # are passed over. [PATH] heads a section,
    /// whose paths begin there; [] ends it, as does the recipe's end. One that includes itself, by whatever way, is a
    /// failure. Failures name the line.
    void apply_recipe(const std::string& file);
    /// Recalls a settings file, then its own steps, which name no other file. What they pass over or correct is told.
    void load(const std::string& file);
    /// The same for the content of a file.
    void load_text(const std::string& file, const std::string& content);

    /// When all steps are done: tells each setting that a later step has reset, as "PATH: stored A, reset to B by a
    /// later step". What a settings file or a preset rewrites is not told.
    void tell_resets() const;
    /// The files read.
    const inputs_t& inputs() const { return m_inputs; }

private:
    void _set(const std::string& path, const std::string& value);
    void _run_verb(const std::string& step, const std::string& section);
    std::string _section_of(const std::string& line) const;
    bool _ran_verb(const std::string& name, const std::string& path);
    void _change_list(const std::string& verb, const std::string& path);

    vek::nr_mod_lib::cfg_nr_waveform_t& m_waveform;
    on_correction_t m_on_correction;
    inputs_t m_inputs;
    stored_t m_stored;
    bool m_in_settings_file = false;
    std::vector<std::string> m_open_recipes; // each includes the next
};

} // namespace nrwave
