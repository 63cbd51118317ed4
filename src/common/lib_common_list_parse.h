#pragma once

#include "common/nr_mod_lib_export.h"

#include <string>
#include <vector>

namespace vek::common_lib
{

/// The texts in which settings hold lists: indices, bits and numbers. Static operations, no state; nothing depends on
/// the locale, and no text expands beyond the limits told here, whatever its numbers.
class NR_MOD_LIB_EXPORT lib_common_list_parse_t
{
public:
    /// Replaces `parts` by what stands between the separators, empty parts included. An empty text has no parts; with
    /// an empty separator the whole text is the one part.
    static void split_str(const std::string& text, std::vector<std::string>& parts, const std::string& separator);

    /// The inverse: the parts with the separator between them.
    static std::string combine_str(const std::vector<std::string>& parts, const std::string& separator);

    /// The whole text as a decimal integer; blanks round it and a sign are allowed. False, and `value` untouched, for
    /// anything else and for what an int cannot hold.
    static bool str_to_int(const std::string& text, int& value);

    static unsigned int _count_character_in_str(const std::string& text, char character);

    /// Replaces `bits` by the zeros and ones of the text; "100", "1,0,0" and "1 0 0" are the same. Any other character
    /// empties `bits`. False where the list is empty.
    static bool string_to_bit_list(const std::string& text, std::vector<unsigned char>& bits);

    /// One character a bit, no separators; every byte but 0 is a one.
    static std::string bit_list_to_string(const std::vector<unsigned char>& bits);

    /// As `string_to_index_list_in_range` with the range 0 to 65535.
    static bool string_to_index_list(const std::string& text, std::vector<int>& list, std::string& stored_text);
    static bool string_to_index_list(const std::string& text, std::vector<unsigned int>& list,
                                     std::string& stored_text);

    /// Replaces `list` by the indices of a text of entries separated by commas, each an index (`5`), a range
    /// (`first:last`, both included) or a stepped range (`first:step:last`). Indices outside `first` to `last` are
    /// dropped, and so are repetitions and entries of any other form, a step of 0 or less and a range that runs
    /// backwards included; the rest keeps the order of the text. `stored_text` becomes the given text without blanks
    /// where nothing was dropped, otherwise the list written by `index_list_to_string`. False where the list is empty.
    /// A list of unsigned indices begins at 0 even where `first` is negative, and a range asked for that is wider than
    /// 65536 indices ends there. `text` and `stored_text` may be the same string.
    static bool string_to_index_list_in_range(const std::string& text, std::vector<int>& list, std::string& stored_text,
                                              int first, int last);
    static bool string_to_index_list_in_range(const std::string& text, std::vector<unsigned int>& list,
                                              std::string& stored_text, int first, int last);

    /// The list in its order, separated by commas; three or more consecutive indices become `first:last`.
    static std::string index_list_to_string(const std::vector<int>& list);
    static std::string index_list_to_string(const std::vector<unsigned int>& list);

    /// Whether the text could be an index list: at least one digit, and else only commas, colons, minus signs and
    /// blanks.
    static bool check_valid_content(const std::string& text);

    /// Replaces `list` by the numbers of a text of entries separated by commas, each a number or `first:step:count`,
    /// which gives `count` values. Any other form (a number that is not finite, a count that is no whole number)
    /// is skipped with the line "cfg_custom_ofdm_common_t::_get_float_list Report : Unknown Data List String Format!".
    /// The list ends at 65536 values. False where it is empty; an empty text is an empty list and prints nothing.
    static bool string_to_float_list(const std::string& text, std::vector<double>& list);

    /// Six significant digits, as a stream writes by default in the C locale, separated by commas.
    static std::string float_list_to_string(const std::vector<double>& list);
};

} // namespace vek::common_lib
