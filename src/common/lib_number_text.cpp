#include "common/lib_number_text.h"

#include "common/lib_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace vek::common_lib
{

namespace
{

std::string_view without_blanks_before(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(k_blanks), text.size()));
    return text;
}

/// What a decimal number becomes that no double holds: nothing or without bounds, as its decimal exponent says.
double out_of_range_value(std::string_view number)
{
    const bool negative = number.front() == '-';
    const std::size_t exponent_mark = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(negative, exponent_mark - negative);

    long long exponent = 0;
    if (exponent_mark != std::string_view::npos) {
        std::string_view digits = number.substr(exponent_mark + 1);
        if (digits.front() == '+')
            digits.remove_prefix(1);
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
        if (read.ec == std::errc::result_out_of_range)
            return digits.front() == '-' ? 0.0 : std::numeric_limits<double>::infinity() * (negative ? -1.0 : 1.0);
    }
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t first_digit = mantissa.find_first_not_of("0.");
    const auto before_point = static_cast<long long>(point) - static_cast<long long>(first_digit);
    const double magnitude = before_point + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    return negative ? -magnitude : magnitude;
}

/// Reads the number at the beginning of the text; where it ends, or null where there is none.
const char* read_number(std::string_view text, double& value)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc::invalid_argument)
        return nullptr;
    if (read.ec == std::errc::result_out_of_range)
        value = out_of_range_value(text.substr(0, static_cast<std::size_t>(read.ptr - text.data())));
    return read.ptr;
}

} // namespace

std::string lib_number_text_t::double_to_text(double value)
{
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::general, 17);
    return std::string(buffer, written.ptr);
}

double lib_number_text_t::text_to_double(std::string_view text)
{
    double value = 0.0;
    return read_number(without_blanks_before(text), value) ? value : 0.0;
}

bool lib_number_text_t::text_to_double(std::string_view text, double& value)
{
    text = without_blanks_before(text);
    text = text.substr(0, text.find_last_not_of(k_blanks) + 1);
    double number = 0.0;
    const char* const end = read_number(text, number);
    if (end == nullptr || end != text.data() + text.size() || !std::isfinite(number))
        return false;
    value = number;
    return true;
}

} // namespace vek::common_lib
