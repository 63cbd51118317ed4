#pragma once

#include "phy/lib_nr_resource_manager.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>

// What the engine's channel steps share.

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

/// Whether a channel of this BWP belongs into the pass that the grid is set up for.
template <class bwp_t>
bool is_pass_of(const bwp_t& bwp)
{
    return lib_nr_channel_resource_manager_t::get_inst().is_pass_of(bwp.get_numerology(), bwp.get_cp_type());
}

/// The slot in its frame where an allocation's slot falls into frame `frame`: an allocation of one frame repeats in
/// every frame, a longer one counts its slots from the start of the waveform.
template <class slot_t>
std::optional<unsigned int> slot_in_frame(slot_t slot, bool one_frame_period, unsigned int slots_per_frame,
                                          unsigned int frame)
{
    const unsigned int first = one_frame_period ? 0 : frame * slots_per_frame;
    const auto index = static_cast<unsigned int>(slot);
    if (index < first || index - first >= slots_per_frame)
        return std::nullopt;
    return index % slots_per_frame;
}

} // namespace vek::nr_mod_lib
