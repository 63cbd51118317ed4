#pragma once

#include "config/cfg_nr_waveform.h"

#include <filesystem>
#include <string>
#include <vector>

namespace nrwave
{

/// Recalls the settings tree of a file, whatever the name of its root element, and gives the steps that the file keeps
/// beside the tree for what the tree does not hold. The caller applies them.
std::vector<std::string> recall_file(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::filesystem::path& file);

/// Saves the settings tree and, beside it, the steps that a recall needs to bring back the whole waveform.
void save_file(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::filesystem::path& file);

} // namespace nrwave
