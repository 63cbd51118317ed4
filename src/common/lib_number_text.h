#pragma once

#include "common/nr_mod_lib_export.h"

#include <string>
#include <string_view>

namespace vek::common_lib
{

/// Doubles as text, whatever locale the host has set: always the decimal point, never a thousands separator.
class NR_MOD_LIB_EXPORT lib_number_text_t
{
public:
    /// The value with 17 significant digits, in the form of "%.17g" in the C locale, which pugixml writes as well;
    /// reading it gives the same value.
    static std::string double_to_text(double value);

    /// The decimal number at the beginning of the text, blanks before it ignored, as `strtod` reads it in the C locale:
    /// what follows the number does not count, and a text without a number is 0.
    static double text_to_double(std::string_view text);

    /// The whole text as one finite number, blanks round it and a plus sign allowed; otherwise false, and `value`
    /// untouched.
    static bool text_to_double(std::string_view text, double& value);
};

} // namespace vek::common_lib
