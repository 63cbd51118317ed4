#pragma once

#include "config/cfg_nr_waveform.h"
#include "host/nrwave_generation.h"
#include "phy/lib_nr_phy.h"

#include <string>
#include <vector>

namespace nrwave
{

/// One burst of a PRACH carrier's frame.
struct prach_burst_t
{
    double start_ms = 0.0;
    double end_ms = 0.0; ///< below the start where the burst passes the frame's end
    double low_hz = 0.0; ///< from the carrier's centre
    double high_hz = 0.0;
};

/// The bursts of one frame of a PRACH carrier.
struct prach_map_t
{
    unsigned int carrier = 0;
    unsigned int frame = 0;
    double bandwidth_hz = 0.0; ///< occupied by the carrier
    std::vector<prach_burst_t> bursts;
};

bool is_prach(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, unsigned int carrier);
/// Indices must exist. Those behind a burst that is not sent in the frame are not there.
prach_map_t prach_map_of(const vek::nr_mod_lib::lib_nr_waveform_configure_manager_t& waveform,
                         vek::nr_mod_lib::lib_nr_phy_t& engine, unsigned int carrier, unsigned int numerology,
                         unsigned int frame);
/// The same on a grid of the carrier's own symbols and subcarriers: all cells that a burst touches.
resource_map_t cells_of(const prach_map_t& map, const vek::nr_mod_lib::lib_nr_waveform_configure_manager_t& waveform,
                        unsigned int numerology);
/// start_ms,end_ms,low_hz,high_hz, a line for each burst.
std::string csv_of(const prach_map_t& map);
/// Time and frequency of the bursts as a PNG file's content.
std::string picture_of(const prach_map_t& map);

} // namespace nrwave
