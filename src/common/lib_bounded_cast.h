#pragma once

#include <limits>
#include <type_traits>

namespace vek::common_lib
{

/// Truncates towards zero to an integer type. What lies outside the type becomes its nearest limit, NaN becomes 0: a
/// bare cast of such a value is undefined.
template <class integer_t>
constexpr integer_t bounded_cast(double value)
{
    static_assert(std::is_integral_v<integer_t>);
    constexpr integer_t lowest = std::numeric_limits<integer_t>::min();
    constexpr integer_t highest = std::numeric_limits<integer_t>::max();
    if (value != value)
        return 0;
    if (value <= static_cast<double>(lowest))
        return lowest;
    if (value >= static_cast<double>(highest))
        return highest;
    return static_cast<integer_t>(value);
}

} // namespace vek::common_lib
