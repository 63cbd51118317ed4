#pragma once

#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_phy.h"

#include <cstdint>
#include <vector>

namespace nrwave
{

/// Runs an engine over a waveform. More than 2^31 samples, a failed allocation, an exception, a channel step that
/// fails, a frame that the modulator refuses and a resource conflict are failures; they name channel, carrier and
/// frame, or who meets whom where.
void generate(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, vek::nr_mod_lib::lib_nr_phy_t& engine);

/// The owner of a cell that two channels claim; cells with reference signals have the owners behind it.
constexpr std::uint8_t k_conflict_owner = 9;
/// The owner of a cell that a PRACH burst touches.
constexpr std::uint8_t k_prach_owner = 17;
/// How many owners there are, the empty cell among them.
constexpr unsigned int k_owners = 18;

/// The owners of one frame's cells, row by row: `owners[symbol * subcarriers + subcarrier]`.
struct resource_map_t
{
    unsigned int carrier = 0;
    unsigned int numerology = 0;
    unsigned int frame = 0;
    unsigned int symbols = 0;
    unsigned int subcarriers = 0;
    std::vector<std::uint8_t> owners;
};

/// An index past the end is a failure.
void check_place(const vek::nr_mod_lib::lib_nr_waveform_configure_manager_t& waveform, unsigned int carrier,
                 unsigned int numerology, unsigned int frame);

/// The allocation of one frame of one numerology of a carrier; the indices must exist.
resource_map_t map_of(const vek::nr_mod_lib::lib_nr_waveform_configure_manager_t& waveform,
                      vek::nr_mod_lib::lib_nr_phy_t& engine, unsigned int carrier, unsigned int numerology,
                      unsigned int frame);

/// An owner's name: its enumerator without the common prefix, or the channel and its reference signal.
const char* owner_name(std::uint8_t owner);
} // namespace nrwave
