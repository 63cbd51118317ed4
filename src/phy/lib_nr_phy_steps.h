#pragma once

#include "phy/lib_nr_phy.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>

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

/// Calls a channel's process for one of its slots or blocks.
template <class call_t>
bool lib_nr_phy_t::_call(unsigned int entry, std::optional<unsigned int> slot, lib_nr_remap_mode_t mode, call_t call)
{
    m_step->entry = entry;
    m_step->slot = slot;
    return m_instead_of_calls ? m_instead_of_calls(*m_step, mode) : call();
}

} // namespace vek::nr_mod_lib
