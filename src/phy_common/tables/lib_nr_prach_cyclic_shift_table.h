#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// N_CS by zero correlation zone, then column; -1 where the standard has none.
using lib_nr_prach_cyclic_shift_table_t = std::array<std::array<std::int16_t, 3>, 16>;

/// TS 38.211 Table 6.3.3.1-5, formats 0 to 2: unrestricted, restricted set of type A, of type B.
NR_MOD_LIB_EXPORT const lib_nr_prach_cyclic_shift_table_t& lib_nr_prach_cyclic_shift_formats_0_1_2_table();
/// TS 38.211 Table 6.3.3.1-6, format 3: the same columns.
NR_MOD_LIB_EXPORT const lib_nr_prach_cyclic_shift_table_t& lib_nr_prach_cyclic_shift_format_3_table();
/// TS 38.211 Table 6.3.3.1-7, short formats: lengths 139, 571, 1151.
NR_MOD_LIB_EXPORT const lib_nr_prach_cyclic_shift_table_t& lib_nr_prach_cyclic_shift_short_table();

} // namespace vek::nr_mod_lib
