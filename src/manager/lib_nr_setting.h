#pragma once

#include "common/lib_common_list_parse.h"
#include "phy_common/lib_nr_enumerator.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

namespace vek::nr_mod_lib
{

/// Stores a setting and tells whether that changed it. NaN changes nothing.
template <class field_t>
bool assign(field_t& field, const std::common_type_t<field_t>& value)
{
    if constexpr (std::is_floating_point_v<field_t>) {
        if (value != value)
            return false;
    }
    if (field == value)
        return false;
    field = value;
    return true;
}

/// Powers of carriers and channels lie within 40 dB.
inline double limited_power(double power) { return std::clamp(power, -40.0, 40.0); }

inline bool assign_power(double& field, double power) { return assign(field, limited_power(power)); }

/// Reads a selection, such as the slots "0:2,5", of the indices below `count` from a text; a text without any of them
/// leaves list and stored text as they are. True where either changed.
template <class index_t>
bool assign_index_text(std::vector<index_t>& list, std::string& stored_text, const std::string& text,
                       unsigned int count)
{
    std::vector<index_t> read;
    std::string read_text;
    if (!common_lib::lib_common_list_parse_t::string_to_index_list_in_range(text, read, read_text, 0,
                                                                            static_cast<int>(count) - 1))
        return false;
    const bool changed = assign(stored_text, read_text);
    return assign(list, read) || changed;
}

/// Appends an index to a text of indices.
inline void append_index(std::string& text, unsigned int index)
{
    if (!text.empty())
        text += ',';
    text += std::to_string(index);
}

/// The text of a slot selection whose span of frames has changed: its own while one of its slots lies in the first
/// frame, otherwise slot 0.
template <class index_t>
std::string slot_text_of_new_span(const std::vector<index_t>& slots, const std::string& text,
                                  unsigned int slots_in_frame)
{
    const auto smallest = static_cast<unsigned int>(*std::min_element(slots.begin(), slots.end()));
    return smallest < slots_in_frame ? text : "0";
}

constexpr std::size_t k_bits_as_given = std::numeric_limits<std::size_t>::max();

/// Reads bits, such as "100", from a text, cut or padded with zeros to `count` of them; the text is stored without
/// separators. A text without bits leaves both as they are. True where the bits changed.
template <class bit_t>
bool assign_bit_text(std::vector<bit_t>& bits, std::string& stored_text, const std::string& text,
                     std::size_t count = k_bits_as_given)
{
    std::vector<unsigned char> read;
    if (!common_lib::lib_common_list_parse_t::string_to_bit_list(text, read))
        return false;
    if (count != k_bits_as_given)
        read.resize(count);
    stored_text = common_lib::lib_common_list_parse_t::bit_list_to_string(read);
    return assign(bits, std::vector<bit_t>(read.begin(), read.end()));
}

/// The entry at the index, or the last one for an index past the end. The list must not be empty.
template <class list_t>
auto& entry_or_last(list_t& list, std::size_t index)
{
    return list[std::min(index, list.size() - 1)];
}

/// Builds an entry, runs its `init` with the same arguments and appends it.
template <class entry_t, class... arguments_t>
entry_t& append_entry(std::vector<entry_t>& list, const arguments_t&... arguments)
{
    list.emplace_back(arguments...).init(arguments...);
    return list.back();
}

/// Appends a deep copy of an entry; false for an index past the end.
template <class entry_t>
bool append_copy(std::vector<entry_t>& list, std::size_t index)
{
    if (index >= list.size())
        return false;
    list.push_back(list[index]);
    return true;
}

/// Erases an entry, the later ones move down. False, and nothing happens, for an index past the end and where the list
/// would fall below the smallest size.
template <class entry_t>
bool remove_entry(std::vector<entry_t>& list, std::size_t index, std::size_t smallest_size = 1)
{
    if (index >= list.size() || list.size() <= smallest_size)
        return false;
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

} // namespace vek::nr_mod_lib
