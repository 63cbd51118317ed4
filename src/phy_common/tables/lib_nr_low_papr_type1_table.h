#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// TS 38.211 Table 5.2.2.2-1: phi(n) by group u, in quarters of pi.
NR_MOD_LIB_EXPORT const std::array<std::array<std::int8_t, 6>, 30>& lib_nr_low_papr_type1_table_6();
/// TS 38.211 Table 5.2.2.2-2: phi(n) by group u, in quarters of pi.
NR_MOD_LIB_EXPORT const std::array<std::array<std::int8_t, 12>, 30>& lib_nr_low_papr_type1_table_12();
/// TS 38.211 Table 5.2.2.2-3: phi(n) by group u, in quarters of pi.
NR_MOD_LIB_EXPORT const std::array<std::array<std::int8_t, 18>, 30>& lib_nr_low_papr_type1_table_18();
/// TS 38.211 Table 5.2.2.2-4: phi(n) by group u, in quarters of pi.
NR_MOD_LIB_EXPORT const std::array<std::array<std::int8_t, 24>, 30>& lib_nr_low_papr_type1_table_24();

} // namespace vek::nr_mod_lib
