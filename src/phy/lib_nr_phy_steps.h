#pragma once

#include <algorithm>
#include <cmath>
#include <iostream>

// What the engine's steps share.

namespace vek::nr_mod_lib
{

/// Samples that an offset in seconds is worth, within what a shift can take.
inline int samples_of(double rate, double seconds)
{
    constexpr double k_most = 2147483647.0;
    return static_cast<int>(std::clamp(std::round(rate * seconds), -k_most, k_most));
}

/// The line that opens a channel step.
inline void print_step(const char* step, unsigned int carrier)
{
    std::cout << "-----+++++" << step << "+++++-----" << std::endl;
    std::cout << "carrier(" << carrier << ")" << std::endl;
}

} // namespace vek::nr_mod_lib
