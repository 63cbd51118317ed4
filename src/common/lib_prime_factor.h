#pragma once

#include <algorithm>
#include <cstddef>

namespace vek::common_lib
{

/// 1 for 0 and 1.
inline std::size_t get_largest_prime_factor(std::size_t number)
{
    std::size_t largest = 1;
    for (std::size_t factor = 2; factor * factor <= number; ++factor)
        for (; number % factor == 0; number /= factor)
            largest = factor;
    return std::max(largest, number);
}

} // namespace vek::common_lib
