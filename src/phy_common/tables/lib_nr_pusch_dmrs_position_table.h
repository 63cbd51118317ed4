#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// The DMRS symbols of a PUSCH behind its first, from a least length on.
struct lib_nr_pusch_dmrs_position_row_t
{
    std::uint8_t additional_position; ///< setting dmrs-AdditionalPosition that the row belongs to
    std::uint8_t least_length;        ///< l_d
    std::uint8_t number;
    std::array<std::uint8_t, 3> positions; ///< type A: in the slot, type B: in the allocation; firsts of pairs
};

/// The row of TS 38.211 Tables 6.4.1.1.3-3 and 6.4.1.1.3-4 for a length l_d, which type A counts from the start of the
/// slot; null where the length has no DMRS. Other than the standard, a single symbol has none at length 4 of type A
/// and at length 1 of type B. A setting past the table's last counts as 0.
NR_MOD_LIB_EXPORT const lib_nr_pusch_dmrs_position_row_t*
get_pusch_dmrs_position_row(bool is_double, bool is_type_b, unsigned int additional_position, unsigned int length);

} // namespace vek::nr_mod_lib
