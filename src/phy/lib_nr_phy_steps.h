#pragma once

#include "phy/lib_nr_phy_observer.h"

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

/// Lets a process explain what it makes, where somebody asks, until the call is over, however that ends.
template <class process_t>
class explaining_t
{
public:
    explaining_t(process_t& process, lib_nr_explanation_t* explanation) : m_process(process)
    {
        m_process.set_explanation(explanation);
    }
    ~explaining_t() { m_process.set_explanation(nullptr); }
    explaining_t(const explaining_t&) = delete;
    explaining_t& operator=(const explaining_t&) = delete;

private:
    process_t& m_process;
};

/// The line that opens a channel step.
inline void print_step(const char* step, unsigned int carrier)
{
    std::cout << "-----+++++" << step << "+++++-----" << std::endl;
    std::cout << "carrier(" << carrier << ")" << std::endl;
}

} // namespace vek::nr_mod_lib
