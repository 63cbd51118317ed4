#include "host/nrwave_value.h"

#include "common/lib_number_text.h"
#include "common/lib_text.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace nrwave
{

using vek::nr_mod_lib::cfg_nr_leaf_form_t;

namespace
{

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> items;
    for (const std::string_view item : vek::common_lib::split(text, {&separator, 1}))
        items.emplace_back(vek::common_lib::trimmed(item));
    return items;
}

std::optional<double> number(std::string_view text)
{
    double value = 0;
    return vek::common_lib::lib_number_text_t::text_to_double(text, value) ? std::optional(value) : std::nullopt;
}

/// Sign and digits without leading zeros: whole numbers of any size compare as texts.
std::string canonical_whole(const std::string& text)
{
    std::string digits = trimmed(text);
    const bool negative = !digits.empty() && digits.front() == '-';
    if (!digits.empty() && (digits.front() == '-' || digits.front() == '+'))
        digits.erase(0, 1);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return digits.empty() ? "0" : (negative ? "-" : "") + digits;
}

bool same_item(const std::string& asked, const std::string& stored)
{
    if (asked == stored)
        return true;
    const std::optional<double> a = number(asked);
    const std::optional<double> b = number(stored);
    return a && b && *a == *b;
}

bool same_items(const std::vector<std::string>& asked, const std::vector<std::string>& stored)
{
    return std::equal(asked.begin(), asked.end(), stored.begin(), stored.end(), same_item);
}

/// A list of bits without its separators; nothing where the text is anything else.
std::optional<std::string> bits_of(const std::string& text)
{
    std::string bits;
    for (const char c : text)
        if (c == '0' || c == '1')
            bits += c;
        else if (c != ',' && c != ' ')
            return std::nullopt;
    return bits;
}

bool same_text(const std::string& asked, const std::string& stored)
{
    if (same_items(split(asked, ','), split(stored, ',')))
        return true;
    const auto a = bits_of(asked);
    return a && stored.find(',') == std::string::npos && a == bits_of(stored);
}

std::vector<std::pair<double, double>> points_of(const std::string& text)
{
    std::vector<std::pair<double, double>> points;
    for (const std::string& item : split(text, ',')) {
        const std::vector<std::string> pair = split(item, ':');
        if (pair.size() == 2)
            points.emplace_back(number(pair[0]).value_or(0), number(pair[1]).value_or(0));
    }
    std::sort(points.begin(), points.end());
    return points;
}

} // namespace

std::string one_line(const std::string& text)
{
    constexpr const char* k_digits = "0123456789abcdef";
    std::string line;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n')
            line += "\\n";
        else if (byte < ' ' || byte == 0x7f)
            line.append("\\x").append(1, k_digits[byte / 16]).append(1, k_digits[byte % 16]);
        else
            line += c;
    }
    return line;
}

std::string shortened(const std::string& value)
{
    constexpr std::size_t k_most = 200;
    if (value.size() <= k_most)
        return value;
    const auto goes_on = [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0) == 0x80; }; // in UTF-8
    std::size_t cut = k_most;
    while (cut > k_most - 4 && goes_on(value[cut]))
        --cut;
    const auto characters = std::count_if(value.begin(), value.end(), std::not_fn(goes_on));
    return value.substr(0, cut) + "... (" + std::to_string(characters) + " characters)";
}

std::string joined(const std::vector<std::string>& items)
{
    std::string text;
    for (const std::string& item : items)
        text += (text.empty() ? "" : ", ") + item;
    return text;
}

std::string trimmed(const std::string& text) { return std::string(vek::common_lib::trimmed(text)); }

bool is_whole(cfg_nr_leaf_form_t form)
{
    switch (form) {
    case cfg_nr_leaf_form_t::integer:
    case cfg_nr_leaf_form_t::unsigned_integer:
    case cfg_nr_leaf_form_t::unsigned_short:
    case cfg_nr_leaf_form_t::unsigned_byte:
    case cfg_nr_leaf_form_t::unsigned_long:
        return true;
    default:
        return false;
    }
}

bool same_value(cfg_nr_leaf_form_t form, const std::string& asked, const std::string& stored)
{
    if (is_whole(form))
        return canonical_whole(asked) == canonical_whole(stored);
    switch (form) {
    case cfg_nr_leaf_form_t::boolean: {
        const std::string word = trimmed(asked);
        return (word == "true" || word == "1") == (stored == "true");
    }
    case cfg_nr_leaf_form_t::real:
        return same_item(trimmed(asked), stored);
    case cfg_nr_leaf_form_t::pair_list:
        return points_of(asked) == points_of(stored);
    default:
        return same_text(asked, stored);
    }
}

const char* form_name(cfg_nr_leaf_form_t form)
{
    switch (form) {
    case cfg_nr_leaf_form_t::boolean:
        return "true or false";
    case cfg_nr_leaf_form_t::integer:
        return "whole number";
    case cfg_nr_leaf_form_t::unsigned_integer:
    case cfg_nr_leaf_form_t::unsigned_long:
        return "whole number from 0";
    case cfg_nr_leaf_form_t::unsigned_short:
        return "whole number, 0 to 65535";
    case cfg_nr_leaf_form_t::unsigned_byte:
        return "whole number, 0 to 255";
    case cfg_nr_leaf_form_t::real:
        return "number";
    case cfg_nr_leaf_form_t::text:
        return "text";
    case cfg_nr_leaf_form_t::enumerator:
        return "one of";
    case cfg_nr_leaf_form_t::enumerator_list:
        return "list of";
    case cfg_nr_leaf_form_t::pair_list:
        return "pairs f:v, comma separated";
    }
    return "";
}

} // namespace nrwave
