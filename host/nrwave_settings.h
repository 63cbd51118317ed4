#pragma once

#include "config/cfg_nr_waveform.h"

#include <pugixml.hpp>
#include <string>
#include <vector>

namespace nrwave
{

/// The elements beside the tree in which the tool keeps its steps.
constexpr const char* k_steps_element = "nrwave_steps";
constexpr const char* k_step_element = "step";

/// A settings file that is read: the settings tree below a root of any name, and beside it the steps that the tool
/// keeps for what the tree does not hold.
class settings_file_t
{
public:
    /// What is no document is a failure; `file` is the name that failures and lines give it.
    settings_file_t(std::string file, const std::string& content);

    /// Recalls the tree. Another protocol is a failure.
    void recall(vek::nr_mod_lib::cfg_nr_waveform_t& waveform) const;
    /// The steps to take behind that, one after the other.
    std::vector<std::string> steps() const;
    /// When both are done: a line for each element and attribute that they passed over, and each value that they
    /// corrected, as "FILE: PATH: asked A, stored B". Values in a direction that the carrier does not send are not
    /// told, but for names that no enumerator has.
    std::vector<std::string> corrections(vek::nr_mod_lib::cfg_nr_waveform_t& waveform) const;

private:
    std::string m_file;
    pugi::xml_document m_document;
};

} // namespace nrwave
