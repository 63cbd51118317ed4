#pragma once

#include "config/cfg_nr_waveform.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace nr_test
{

/// Takes steps as the tool does: PATH=VALUE, add PATH, copy PATH[i], remove PATH[i]. A step that cannot be done throws;
/// a value that is corrected does not. Gives what the library prints.
std::string take(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::vector<std::string>& steps);

/// Brings a waveform to the content of a settings file of the tool's: what a load tells of it.
std::vector<std::string> load(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& content);

/// The default waveform after some steps.
class waveform_of_t : public vek::nr_mod_lib::cfg_nr_waveform_t
{
public:
    explicit waveform_of_t(const std::vector<std::string>& steps) { take(*this, steps); }
};

/// The setting or figure at a path, as text.
std::string value_of(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path);

/// One line of a test of settings.
struct setting_row_t
{
    const char* path; ///< of a setting; of a figure where nothing is asked; any step where nothing is stored
    const char* asked =
        nullptr; ///< what goes to the setter; without it the row only reads, as a neighbour that follows
    const char* stored = nullptr;
    bool changed = false;          ///< what the setter returns
    const char* printed = nullptr; ///< what it prints, to the letter, where the row looks at that
};

/// Runs rows in their order, each on what the rows before it left. A row that fails names itself. A path that is the
/// bare name of a setting stands for one of the façade at `facade`.
void run_rows(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::vector<setting_row_t>& rows,
              const std::string& facade = {});

} // namespace nr_test
