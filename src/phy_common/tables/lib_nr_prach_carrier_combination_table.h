#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_prach_type.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// A sequence length and spacing of the preamble on a carrier of a spacing.
struct lib_nr_prach_carrier_combination_t
{
    prach_lra_type_t lra;
    prach_scs_type_t prach_scs;
    /// Spacing of the carrier's uplink.
    std::uint16_t carrier_scs_khz;
    /// Resource blocks of the carrier that the preamble takes.
    std::uint8_t rb_number;
    /// Unused PRACH subcarriers below the preamble.
    std::uint8_t k_bar;
};

/// TS 38.211 Table 6.3.3.2-1, by length 839, 139, 571, 1151, then rising preamble spacing, then rising carrier spacing.
NR_MOD_LIB_EXPORT const std::array<lib_nr_prach_carrier_combination_t, 39>& lib_nr_prach_carrier_combination_table();

} // namespace vek::nr_mod_lib
