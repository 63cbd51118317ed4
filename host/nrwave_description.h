#pragma once

#include "config/cfg_nr_waveform.h"

#include <ostream>
#include <string>

namespace nrwave
{

/// Tells the paths at and below a path, one a line: the form of a setting with the enumerators that it knows, what a
/// fresh waveform has, what is on offer in this one, and what it means. [i] in the path is any entry of a list.
void describe(std::ostream& out, vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path);

/// All settings as a document, docs/settings.md.
void write_manual(std::ostream& out);

} // namespace nrwave
