#pragma once

#include "config/cfg_nr_waveform.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace nrwave
{

/// One line of the listing: a setting, a figure, a step, a list or a façade.
struct description_row_t
{
    std::string path;                    ///< [i] is any entry of a list
    std::string form;                    ///< what its values look like, or what can be done to it; empty for a façade
    std::optional<std::string> standard; ///< what a fresh waveform has; nothing where there is no one value
    std::vector<std::string> values;     ///< the names that an enumeration knows
    std::vector<std::string> on_offer;   ///< what a list says may be set in this waveform
    std::string meaning;
};

/// A path and all below it. [i] in the path is any entry of a list.
std::vector<description_row_t> described(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path);

/// A row on one line: its form with the enumerators, the default, what is on offer where that is less, the meaning.
std::string line_of(const description_row_t& row);

/// All settings as a document, docs/settings.md.
void write_manual(std::ostream& out);

} // namespace nrwave
