#pragma once

#include "config/cfg_nr_waveform.h"
#include "host/nrwave_cells.h"
#include "phy/lib_nr_phy.h"

#include <cstdint>
#include <string>
#include <vector>

namespace nrwave
{

/// A piece of the signal: what is sent there, from when to when and between which frequencies as in the air.
struct annotation_t
{
    std::uint64_t first_sample = 0;
    std::uint64_t samples = 0;
    double low_hz = 0.0;
    double high_hz = 0.0;
    std::string label; ///< the path of the channel's entry; behind it DMRS or PTRS where the piece is that alone
};

/// The pieces of one period of what an engine has generated, in the order of their start: one for each entry and run
/// of slots that follow each other, a burst of a PRACH its own, and each reference signal. What passes the period's end
/// comes back at its beginning, as a piece of its own. The samples are those at the rate at which they are delivered.
std::vector<annotation_t> annotations_of(vek::nr_mod_lib::cfg_nr_waveform_t& waveform,
                                         vek::nr_mod_lib::lib_nr_phy_t& engine,
                                         const std::vector<reference_signal_t>& references, std::uint64_t samples);

} // namespace nrwave
