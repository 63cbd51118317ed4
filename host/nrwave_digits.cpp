#include "host/nrwave_digits.h"

#include <charconv>
#include <cmath>

namespace nrwave
{

std::string shortest(double number)
{
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

std::string fixed(double number, int digits)
{
    char text[352]; // the largest double has 309 digits ahead of the point
    const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, digits).ptr;
    const std::string all(text, end);
    // What rounds to nothing has no sign.
    return all.find_first_of("123456789n") == std::string::npos && all.front() == '-' ? all.substr(1) : all;
}

std::string decibels(const std::optional<double>& level, const char* unit)
{
    return level ? fixed(*level, 2) + ' ' + unit : "none, silence";
}

} // namespace nrwave
