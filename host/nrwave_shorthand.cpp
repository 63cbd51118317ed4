#include "host/nrwave_shorthand.h"

#include "common/lib_text.h"
#include "host/nrwave_failure.h"
#include "host/nrwave_nearest.h"
#include "host/nrwave_value.h"

#include <algorithm>
#include <charconv>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr std::string_view k_digits = "0123456789";
// Forms that hold less take their own largest number.
constexpr const char* k_most = "18446744073709551615";

/// The exponent that a suffix stands for; 0 where the letter is none.
int exponent_of_suffix(char letter)
{
    switch (letter) {
    case 'k':
        return 3;
    case 'M':
        return 6;
    case 'G':
        return 9;
    default:
        return 0;
    }
}

bool is_in_digits(std::string_view text) { return text.find_first_not_of(k_digits) == std::string_view::npos; }

/// Takes a sign off the front: true for a minus.
bool take_sign(std::string_view& text)
{
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    return negative;
}

/// Takes a suffix or exponent off the end; nothing where what stands behind an e is no number.
std::optional<int> take_exponent(std::string_view& text)
{
    if (const int suffix = text.empty() ? 0 : exponent_of_suffix(text.back()); suffix != 0) {
        text.remove_suffix(1);
        return suffix;
    }
    const std::size_t letter = text.find_first_of("eE");
    if (letter == std::string_view::npos)
        return 0;
    std::string_view digits = text.substr(letter + 1);
    if (digits.size() > 1 && digits[0] == '+' && digits[1] != '-')
        digits.remove_prefix(1);
    int exponent = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
    if (error != std::errc{} || end != digits.data() + digits.size())
        return std::nullopt;
    text = text.substr(0, letter);
    return exponent;
}

/// 1.5k as 1500, in digits or with an exponent, for the reading of numbers with a fraction.
std::string real_in_full(const std::string& value)
{
    const std::string text = trimmed(value);
    const int exponent = text.empty() ? 0 : exponent_of_suffix(text.back());
    std::string_view number = std::string_view(text).substr(0, text.empty() ? 0 : text.size() - 1);
    take_sign(number);
    if (exponent == 0 || number.empty() || number.find_first_not_of("0123456789.") != std::string_view::npos)
        return value;
    return text.substr(0, text.size() - 1) + 'e' + std::to_string(exponent);
}

bool is_tail(std::string_view tail, std::string_view name)
{
    return tail.size() < name.size() && name[name.size() - tail.size() - 1] == '_' &&
           same_in_any_case(name.substr(name.size() - tail.size()), tail);
}

/// How far a text is from a name or the nearest of its tails.
unsigned int distance_to_enumerator(std::string_view text, std::string_view name)
{
    unsigned int distance = distance_between(text, name);
    for (std::size_t place = name.find('_'); place != std::string_view::npos; place = name.find('_', place + 1))
        distance = std::min(distance, distance_between(text, name.substr(place + 1)));
    return distance;
}

} // namespace

std::optional<std::string> whole_number_in_full(std::string_view text)
{
    // More zeros than any type has digits: the number is as large with all of them.
    constexpr std::ptrdiff_t k_most_zeros = 40;

    text = vek::common_lib::trimmed(text);
    const bool negative = take_sign(text);
    const std::optional<int> exponent = take_exponent(text);
    const std::size_t point = std::min(text.find('.'), text.size());
    const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
    std::string digits(text.substr(0, point));
    digits += fraction;
    if (!exponent || digits.empty() || !is_in_digits(digits))
        return std::nullopt;

    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    std::ptrdiff_t zeros = *exponent - static_cast<std::ptrdiff_t>(fraction.size());
    for (; zeros < 0 && !digits.empty() && digits.back() == '0'; ++zeros)
        digits.pop_back();
    if (digits.empty())
        return "0";
    if (zeros < 0)
        return std::nullopt;
    digits.append(static_cast<std::size_t>(std::min(zeros, k_most_zeros)), '0');
    if (negative)
        digits.insert(digits.begin(), '-');
    return digits;
}

std::vector<std::string> enumerators_meant_by(const std::vector<std::string>& names, const std::string& text)
{
    if (std::find(names.begin(), names.end(), text) != names.end())
        return {text};
    std::vector<std::string> meant;
    for (const std::string& name : names) {
        if (same_in_any_case(name, text))
            return {name};
        if (is_tail(text, name))
            meant.push_back(name);
    }
    return meant;
}

std::string nearest_enumerators(const std::vector<std::string>& names, const std::string& text)
{
    return nearest_by([&](const std::string& name) { return distance_to_enumerator(text, name); }, names);
}

std::string enumerator_in_full(const std::vector<std::string>& names, const std::string& text)
{
    const std::vector<std::string> meant = enumerators_meant_by(names, text);
    if (meant.size() == 1)
        return meant.front();
    if (!meant.empty())
        throw failure_t(shortened(text) + " may be any of " + joined(meant));
    throw failure_t(shortened(text) + " is not among its enumerators" + nearest_enumerators(names, text));
}

bool asks_for_most(const cfg_nr_leaf_t& leaf, const std::string& value)
{
    return is_whole(leaf.form) && same_in_any_case(trimmed(value), "max");
}

std::string value_in_full(const cfg_nr_leaf_t& leaf, const std::string& value)
{
    if (trimmed(value).empty())
        return value;
    if (is_whole(leaf.form))
        return asks_for_most(leaf, value) ? k_most : whole_number_in_full(value).value_or(value);
    switch (leaf.form) {
    case cfg_nr_leaf_form_t::real:
        return real_in_full(value);
    case cfg_nr_leaf_form_t::enumerator:
        return enumerator_in_full(leaf.enumerators(), trimmed(value));
    case cfg_nr_leaf_form_t::enumerator_list: {
        std::string list;
        for (const std::string_view item : vek::common_lib::split(value, ",")) {
            if (!list.empty())
                list += ',';
            list += enumerator_in_full(leaf.enumerators(), trimmed(std::string(item)));
        }
        return list;
    }
    default:
        return value;
    }
}

} // namespace nrwave
