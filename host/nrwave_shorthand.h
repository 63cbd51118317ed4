#pragma once

#include "config/leaves/cfg_nr_leaf.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nrwave
{

/// A whole number with an exponent or one of the suffixes k, M and G, written out: 3.5G and 3.5e9 are 3500000000.
/// Nothing where the text is no number or has a fraction left.
std::optional<std::string> whole_number_in_full(std::string_view text);

/// The names that a text may stand for: the one that it is, in any case, or else all of which it is a tail behind an
/// underscore.
std::vector<std::string> enumerators_meant_by(const std::vector<std::string>& names, const std::string& text);
/// The end of a line on a text that stands for none: "; nearest a, b, c".
std::string nearest_enumerators(const std::vector<std::string>& names, const std::string& text);

/// The name that a name or any tail of one behind an underscore stands for, in any case; one written exactly so stands
/// for itself. What fits no name, or several, is a failure that tells the nearest, or all of them.
std::string enumerator_in_full(const std::vector<std::string>& names, const std::string& text);

/// Whether a value is the word max, where a whole number is set: whatever becomes of the largest number is asked for.
bool asks_for_most(const vek::nr_mod_lib::cfg_nr_leaf_t& leaf, const std::string& value);

/// A setting's value as the leaf tables read it. What is not of the setting's form stays as it is.
std::string value_in_full(const vek::nr_mod_lib::cfg_nr_leaf_t& leaf, const std::string& value);

} // namespace nrwave
