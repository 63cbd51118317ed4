#pragma once

#include "config/leaves/cfg_nr_leaf.h"

#include <string>
#include <vector>

namespace nrwave
{

/// Whether a value as asked and a value as stored are the same: numbers as numbers, lists item by item.
bool same_value(vek::nr_mod_lib::cfg_nr_leaf_form_t form, const std::string& asked, const std::string& stored);

/// Whether a form is that of whole numbers.
bool is_whole(vek::nr_mod_lib::cfg_nr_leaf_form_t form);

/// What a form looks like, for the listing.
const char* form_name(vek::nr_mod_lib::cfg_nr_leaf_form_t form);

/// A text that goes on one line: newlines as \n, other control characters as \x and two digits.
std::string one_line(const std::string& text);

/// A value as a line quotes it: of a long one 200 characters, and how many it has.
std::string shortened(const std::string& value);

/// Items with a comma and a blank between them.
std::string joined(const std::vector<std::string>& items);

/// The text without blanks and newlines at either end.
std::string trimmed(const std::string& text);

} // namespace nrwave
