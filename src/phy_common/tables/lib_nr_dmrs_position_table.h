#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// The DMRS positions of a shared channel behind its first, from a least length on. A position is the symbol of a
/// single-symbol DMRS, the first of two of a double one.
struct lib_nr_dmrs_position_row_t
{
    std::uint8_t additional_position; ///< setting dmrs-AdditionalPosition that the row belongs to
    std::uint8_t least_length;        ///< l_d
    std::uint8_t number;
    std::array<std::uint8_t, 3> positions; ///< type A: in the slot, type B: in the allocation
};

/// The row of a table for a setting and a length; null where the length has no DMRS. A setting past the table's last
/// counts as 0. A table lists the rows of each setting by rising length, the settings in their order.
const lib_nr_dmrs_position_row_t* find_dmrs_position_row(const lib_nr_dmrs_position_row_t* rows, std::size_t row_number,
                                                         unsigned int additional_position, unsigned int length);

/// The row of TS 38.211 Tables 7.4.1.1.2-3 and 7.4.1.1.2-4 for a PDSCH of length l_d, which type A counts from the
/// start of the slot; null where the length has no DMRS. Where the standard leaves the choice between symbols 11 and 12
/// it is 11.
NR_MOD_LIB_EXPORT const lib_nr_dmrs_position_row_t*
get_pdsch_dmrs_position_row(bool is_double, bool is_type_b, unsigned int additional_position, unsigned int length);

/// The same of TS 38.211 Tables 6.4.1.1.3-3 and 6.4.1.1.3-4 for a PUSCH. Other than the standard, a single symbol has
/// none at length 4 of type A and at length 1 of type B.
NR_MOD_LIB_EXPORT const lib_nr_dmrs_position_row_t*
get_pusch_dmrs_position_row(bool is_double, bool is_type_b, unsigned int additional_position, unsigned int length);

} // namespace vek::nr_mod_lib
