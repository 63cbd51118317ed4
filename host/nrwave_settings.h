#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

/// Recalls the settings tree from the content of a file, whatever the name of its root element, and gives the steps
/// that the file keeps beside the tree for what the tree does not hold. The caller applies them.
std::vector<std::string> recall_text(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& file,
                                     const std::string& content);

/// The content of a settings file: the tree and, beside it, the steps that a recall needs to bring back the whole
/// waveform.
std::string saved_text(vek::nr_mod_lib::cfg_nr_waveform_t& waveform);

} // namespace nrwave
