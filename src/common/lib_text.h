#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

// What every reader of texts needs.

namespace vek::common_lib
{

inline constexpr std::string_view k_blanks = " \t\n\v\f\r";

/// Without the blanks at both ends.
inline std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(k_blanks), text.size()));
    return text.substr(0, text.find_last_not_of(k_blanks) + 1);
}

/// What stands between the separators, empty parts included; a text without any is one part.
inline std::vector<std::string_view> split(std::string_view text, std::string_view separator)
{
    std::vector<std::string_view> parts;
    for (std::size_t end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + separator.size());
    }
    parts.push_back(text);
    return parts;
}

/// The whole text as a decimal integer, blanks round it and a sign allowed. What is too large becomes the nearest of
/// +-2^61, so that sums of two numbers cannot overflow.
inline std::optional<std::int64_t> read_whole_number(std::string_view text)
{
    constexpr std::int64_t limit = std::int64_t{1} << 61;
    text = trimmed(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    std::int64_t value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc::invalid_argument || read.ptr != text.data() + text.size())
        return std::nullopt;
    if (read.ec == std::errc::result_out_of_range)
        return text.front() == '-' ? -limit : limit;
    return std::clamp(value, -limit, limit);
}

} // namespace vek::common_lib
