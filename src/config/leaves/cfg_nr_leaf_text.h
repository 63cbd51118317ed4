#pragma once

#include "common/lib_ofdm_windowing_method.h"
#include "common/lib_xml_common.h"
#include "config/cfg_nr_enum_name_maps.h"
#include "config/leaves/cfg_nr_leaf.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

// How the value of a setting becomes text and an element of the settings tree, and back, by its type. The texts of
// steps are strict; the elements of a file are read as leniently as pugixml reads them.

namespace vek::nr_mod_lib
{

/// One specialisation for each form of setting.
template <class value_t, class enable_t = void>
struct cfg_nr_leaf_text_t;

namespace cfg_nr_leaf_detail
{

/// Strict whole number, saturated to the range; nothing for anything but an optional sign and decimal digits.
NR_MOD_LIB_EXPORT std::optional<std::int64_t> whole_number_from_text(const std::string& text, std::int64_t least,
                                                                     std::int64_t most);
NR_MOD_LIB_EXPORT std::optional<unsigned long long> unsigned_long_from_text(const std::string& text);
/// Strict finite number; nothing for rubbish, nan and infinity.
NR_MOD_LIB_EXPORT std::optional<double> real_from_text(const std::string& text);
/// The shortest text that reads back as the same number.
NR_MOD_LIB_EXPORT std::string real_to_text(double value);
/// Splits at commas; blanks round the items are dropped, an empty text has no items.
NR_MOD_LIB_EXPORT std::vector<std::string> items_of(const std::string& text);
/// Appends an item to such a list.
NR_MOD_LIB_EXPORT void append_item(std::string& list, const std::string& item);

struct no_enumerators_t
{
    static std::vector<std::string> enumerators() { return {}; }
};

} // namespace cfg_nr_leaf_detail

template <>
struct NR_MOD_LIB_EXPORT cfg_nr_leaf_text_t<bool> : cfg_nr_leaf_detail::no_enumerators_t
{
    static constexpr cfg_nr_leaf_form_t form = cfg_nr_leaf_form_t::boolean;
    static std::string to_text(bool value) { return value ? "true" : "false"; }
    static std::optional<bool> from_text(const std::string& text);
    static void save(pugi::xml_node& block, const char* element, bool value)
    {
        block.append_child(element).text().set(value);
    }
    static bool recall(const pugi::xml_node& block, const char* element)
    {
        return block.child(element).text().as_bool();
    }
};

/// Whole numbers of up to 32 bits.
template <class value_t>
struct cfg_nr_leaf_text_t<
    value_t, std::enable_if_t<std::is_same_v<value_t, int> || std::is_same_v<value_t, unsigned> ||
                              std::is_same_v<value_t, unsigned short> || std::is_same_v<value_t, unsigned char>>>
    : cfg_nr_leaf_detail::no_enumerators_t
{
    static constexpr cfg_nr_leaf_form_t form =
        std::is_same_v<value_t, int>              ? cfg_nr_leaf_form_t::integer
        : std::is_same_v<value_t, unsigned char>  ? cfg_nr_leaf_form_t::unsigned_byte
        : std::is_same_v<value_t, unsigned short> ? cfg_nr_leaf_form_t::unsigned_short
                                                  : cfg_nr_leaf_form_t::unsigned_integer;
    static std::string to_text(value_t value) { return std::to_string(value); }
    static std::optional<value_t> from_text(const std::string& text)
    {
        const auto number = cfg_nr_leaf_detail::whole_number_from_text(text, std::numeric_limits<value_t>::min(),
                                                                       std::numeric_limits<value_t>::max());
        if (!number)
            return std::nullopt;
        return static_cast<value_t>(*number);
    }
    static void save(pugi::xml_node& block, const char* element, value_t value)
    {
        block.append_child(element).text().set(value);
    }
    static value_t recall(const pugi::xml_node& block, const char* element)
    {
        const pugi::xml_text text = block.child(element).text();
        if constexpr (std::is_same_v<value_t, int>)
            return text.as_int();
        else
            return static_cast<value_t>(std::min<unsigned int>(text.as_uint(), std::numeric_limits<value_t>::max()));
    }
};

template <>
struct cfg_nr_leaf_text_t<unsigned long long> : cfg_nr_leaf_detail::no_enumerators_t
{
    static constexpr cfg_nr_leaf_form_t form = cfg_nr_leaf_form_t::unsigned_long;
    static std::string to_text(unsigned long long value) { return std::to_string(value); }
    static std::optional<unsigned long long> from_text(const std::string& text)
    {
        return cfg_nr_leaf_detail::unsigned_long_from_text(text);
    }
    static void save(pugi::xml_node& block, const char* element, unsigned long long value)
    {
        block.append_child(element).text().set(value);
    }
    static unsigned long long recall(const pugi::xml_node& block, const char* element)
    {
        return block.child(element).text().as_ullong();
    }
};

template <>
struct NR_MOD_LIB_EXPORT cfg_nr_leaf_text_t<double> : cfg_nr_leaf_detail::no_enumerators_t
{
    static constexpr cfg_nr_leaf_form_t form = cfg_nr_leaf_form_t::real;
    static std::string to_text(double value) { return cfg_nr_leaf_detail::real_to_text(value); }
    static std::optional<double> from_text(const std::string& text) { return cfg_nr_leaf_detail::real_from_text(text); }
    static void save(pugi::xml_node& block, const char* element, double value);
    static double recall(const pugi::xml_node& block, const char* element);
};

template <>
struct cfg_nr_leaf_text_t<std::string> : cfg_nr_leaf_detail::no_enumerators_t
{
    static constexpr cfg_nr_leaf_form_t form = cfg_nr_leaf_form_t::text;
    static std::string to_text(const std::string& value) { return value; }
    static std::optional<std::string> from_text(const std::string& text) { return text; }
    static void save(pugi::xml_node& block, const char* element, const std::string& value)
    {
        block.append_child(element).text().set(value.c_str());
    }
    static std::string recall(const pugi::xml_node& block, const char* element)
    {
        return block.child(element).text().as_string();
    }
};

/// Texts of the library, read only; a null one is empty.
template <>
struct cfg_nr_leaf_text_t<const char*>
{
    static std::string to_text(const char* value) { return value ? value : ""; }
};

/// Enumerations, by their exported name tables.
template <class enum_t>
struct cfg_nr_leaf_text_t<enum_t, std::enable_if_t<std::is_enum_v<enum_t>>>
{
    static constexpr cfg_nr_leaf_form_t form = cfg_nr_leaf_form_t::enumerator;
    static std::string to_text(enum_t value) { return enum_name_map(enum_t{}).at(value); }
    static std::optional<enum_t> from_text(const std::string& text)
    {
        for (const auto& [value, name] : enum_name_map(enum_t{}))
            if (name == text)
                return value;
        return std::nullopt;
    }
    static void save(pugi::xml_node& block, const char* element, enum_t value)
    {
        block.append_child(element).text().set(to_text(value).c_str());
    }
    static enum_t recall(const pugi::xml_node& block, const char* element)
    {
        const std::string text = block.child(element).text().as_string();
        return common_lib::lib_xml_common_t::get_enum_value(enum_name_map(enum_t{}), text);
    }
    static std::vector<std::string> enumerators()
    {
        std::vector<std::string> names;
        for (const auto& [value, name] : enum_name_map(enum_t{}))
            names.push_back(name);
        return names;
    }
};

/// Lists of enumerators: names separated by commas in a step, the vector form in the tree.
template <class enum_t>
struct cfg_nr_leaf_text_t<std::vector<enum_t>, std::enable_if_t<std::is_enum_v<enum_t>>>
{
    using item_t = cfg_nr_leaf_text_t<enum_t>;
    static constexpr cfg_nr_leaf_form_t form = cfg_nr_leaf_form_t::enumerator_list;
    static std::string to_text(const std::vector<enum_t>& values)
    {
        std::string text;
        for (const enum_t value : values)
            cfg_nr_leaf_detail::append_item(text, item_t::to_text(value));
        return text;
    }
    static std::optional<std::vector<enum_t>> from_text(const std::string& text)
    {
        std::vector<enum_t> values;
        for (const std::string& item : cfg_nr_leaf_detail::items_of(text)) {
            const std::optional<enum_t> value = item_t::from_text(item);
            if (!value)
                return std::nullopt;
            values.push_back(*value);
        }
        return values;
    }
    static void save(pugi::xml_node& block, const char* element, const std::vector<enum_t>& values)
    {
        common_lib::lib_xml_common_t::save_vector(block, element, values, &enum_name_map(enum_t{}));
    }
    static std::vector<enum_t> recall(const pugi::xml_node& block, const char* element)
    {
        return common_lib::lib_xml_common_t::recall_vector(block, element, &enum_name_map(enum_t{}));
    }
    static std::vector<std::string> enumerators() { return item_t::enumerators(); }
};

/// Lists of numbers and texts, read only.
template <class item_t>
struct cfg_nr_leaf_text_t<std::vector<item_t>,
                          std::enable_if_t<std::is_arithmetic_v<item_t> || std::is_same_v<item_t, std::string>>>
{
    static std::string to_text(const std::vector<item_t>& values)
    {
        std::string text;
        for (const item_t& value : values)
            cfg_nr_leaf_detail::append_item(text, cfg_nr_leaf_text_t<item_t>::to_text(value));
        return text;
    }
};

/// Ranges by number, such as sets of resource blocks, read only: "first:last" each.
template <class key_t, class end_t>
struct cfg_nr_leaf_text_t<std::map<key_t, std::pair<end_t, end_t>>>
{
    static std::string to_text(const std::map<key_t, std::pair<end_t, end_t>>& ranges)
    {
        std::string text;
        for (const auto& [number, range] : ranges)
            cfg_nr_leaf_detail::append_item(text, std::to_string(range.first) + ':' + std::to_string(range.second));
        return text;
    }
};

/// Points of a mask. The settings tree holds none, so these have no element.
template <>
struct NR_MOD_LIB_EXPORT cfg_nr_leaf_text_t<std::vector<std::pair<double, double>>>
    : cfg_nr_leaf_detail::no_enumerators_t
{
    using points_t = std::vector<std::pair<double, double>>;
    static constexpr cfg_nr_leaf_form_t form = cfg_nr_leaf_form_t::pair_list;
    static std::string to_text(const points_t& points);
    static std::optional<points_t> from_text(const std::string& text);
    static void save(pugi::xml_node& block, const char* element, const points_t& points)
    {
        block.append_child(element).text().set(to_text(points).c_str());
    }
    static points_t recall(const pugi::xml_node& block, const char* element)
    {
        return from_text(block.child(element).text().as_string()).value_or(points_t{});
    }
};

} // namespace vek::nr_mod_lib
