#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_prach_type.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// A cell that the standard prints as "-".
inline constexpr std::uint8_t k_prach_no_value = 255;

/// One row of a random access configuration table.
struct lib_nr_prach_configuration_row_t
{
    /// One format, or two: the second is that of the last occasion of a slot. Both alike where there is one.
    std::array<prach_format_t, 2> formats;
    /// Frames n_f with n_f mod x = y; the second y is `k_prach_no_value` where there is one.
    std::uint8_t x;
    std::array<std::uint8_t, 2> y;
    /// Bit i: subframe i of the frame, or slot i of the 60 kHz slots of the frame in FR2.
    std::uint64_t subframes_or_slots;
    std::uint8_t starting_symbol;
    std::uint8_t slots_per_subframe_or_60khz_slot;
    /// Occasions in time within a PRACH slot.
    std::uint8_t occasions_per_slot;
    /// Symbols of an occasion; 0 for the long formats.
    std::uint8_t duration;
};

/// TS 38.211 Table 6.3.3.2-2: FR1, paired spectrum and supplementary uplink.
NR_MOD_LIB_EXPORT const std::array<lib_nr_prach_configuration_row_t, 256>&
lib_nr_prach_configuration_fr1_paired_table();
/// TS 38.211 Table 6.3.3.2-3: FR1, unpaired spectrum.
NR_MOD_LIB_EXPORT const std::array<lib_nr_prach_configuration_row_t, 263>&
lib_nr_prach_configuration_fr1_unpaired_table();
/// TS 38.211 Table 6.3.3.2-4: FR2, unpaired spectrum.
NR_MOD_LIB_EXPORT const std::array<lib_nr_prach_configuration_row_t, 256>& lib_nr_prach_configuration_fr2_table();

} // namespace vek::nr_mod_lib
