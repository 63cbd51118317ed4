#pragma once

#include <optional>
#include <string>

namespace nrwave
{

/// The shortest text that reads back as the number, whatever the locale.
std::string shortest(double number);
/// A number with so many digits behind the point, whatever the locale.
std::string fixed(double number, int digits);
/// A level with two digits behind the point and its unit; what silence has none of is told so.
std::string decibels(const std::optional<double>& level, const char* unit);

} // namespace nrwave
