#include "config/leaves/cfg_nr_leaf_text.h"

#include "common/lib_number_text.h"
#include "common/lib_text.h"

#include <array>
#include <charconv>
#include <string_view>

namespace vek::nr_mod_lib
{

namespace cfg_nr_leaf_detail
{

namespace
{

/// Takes the sign off; true where it was a minus.
bool take_sign(std::string_view& digits)
{
    const bool negative = !digits.empty() && digits.front() == '-';
    if (negative || (!digits.empty() && digits.front() == '+'))
        digits.remove_prefix(1);
    return negative;
}

/// The magnitude of a string of decimal digits, saturated to 64 bits; nothing for anything else.
std::optional<std::uint64_t> magnitude(std::string_view digits)
{
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    std::uint64_t value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return result.ec == std::errc::result_out_of_range ? std::numeric_limits<std::uint64_t>::max() : value;
}

} // namespace

std::optional<std::int64_t> whole_number_from_text(const std::string& text, std::int64_t least, std::int64_t most)
{
    const std::optional<std::int64_t> value = common_lib::read_whole_number(text);
    return value ? std::optional(std::clamp(*value, least, most)) : std::nullopt;
}

std::optional<unsigned long long> unsigned_long_from_text(const std::string& text)
{
    std::string_view digits = common_lib::trimmed(text);
    const bool negative = take_sign(digits);
    const std::optional<std::uint64_t> value = magnitude(digits);
    if (!value)
        return std::nullopt;
    return negative ? 0 : *value;
}

std::optional<double> real_from_text(const std::string& text)
{
    double value = 0;
    if (!common_lib::lib_number_text_t::text_to_double(text, value))
        return std::nullopt;
    return value + 0.0; // no negative zero, which equals zero but reads otherwise
}

std::string real_to_text(double value)
{
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), result.ptr};
}

std::vector<std::string> items_of(const std::string& text)
{
    std::vector<std::string> items;
    if (common_lib::trimmed(text).empty())
        return items;
    for (const std::string_view item : common_lib::split(text, ","))
        items.emplace_back(common_lib::trimmed(item));
    return items;
}

void append_item(std::string& list, const std::string& item)
{
    if (!list.empty())
        list += ',';
    list += item;
}

} // namespace cfg_nr_leaf_detail

std::optional<bool> cfg_nr_leaf_text_t<bool>::from_text(const std::string& text)
{
    const std::string_view word = common_lib::trimmed(text);
    if (word == "true" || word == "1")
        return true;
    if (word == "false" || word == "0")
        return false;
    return std::nullopt;
}

// pugixml's own conversions of doubles follow the C locale of the host; the text is the same, without the locale.
void cfg_nr_leaf_text_t<double>::save(pugi::xml_node& block, const char* element, double value)
{
    block.append_child(element).text().set(common_lib::lib_number_text_t::double_to_text(value).c_str());
}

double cfg_nr_leaf_text_t<double>::recall(const pugi::xml_node& block, const char* element)
{
    return common_lib::lib_number_text_t::text_to_double(block.child(element).text().as_string());
}

std::string cfg_nr_leaf_text_t<std::vector<std::pair<double, double>>>::to_text(const points_t& points)
{
    std::string text;
    for (const auto& [frequency, value] : points)
        cfg_nr_leaf_detail::append_item(text, cfg_nr_leaf_detail::real_to_text(frequency) + ':' +
                                                  cfg_nr_leaf_detail::real_to_text(value));
    return text;
}

std::optional<std::vector<std::pair<double, double>>>
cfg_nr_leaf_text_t<std::vector<std::pair<double, double>>>::from_text(const std::string& text)
{
    points_t points;
    for (const std::string& item : cfg_nr_leaf_detail::items_of(text)) {
        const std::size_t colon = item.find(':');
        if (colon == std::string::npos)
            return std::nullopt;
        const std::optional<double> frequency = cfg_nr_leaf_detail::real_from_text(item.substr(0, colon));
        const std::optional<double> value = cfg_nr_leaf_detail::real_from_text(item.substr(colon + 1));
        if (!frequency || !value)
            return std::nullopt;
        points.emplace_back(*frequency, *value);
    }
    return points;
}

} // namespace vek::nr_mod_lib
