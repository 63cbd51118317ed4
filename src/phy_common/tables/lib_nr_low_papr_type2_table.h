#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// TS 38.211 Table 5.2.3.2-1: phi(n) by group u, in eighths of pi.
NR_MOD_LIB_EXPORT const std::array<std::array<std::int8_t, 6>, 30>& lib_nr_low_papr_type2_table_6();
/// TS 38.211 Table 5.2.3.2-2: b(n) by group u.
NR_MOD_LIB_EXPORT const std::array<std::array<std::uint8_t, 12>, 30>& lib_nr_low_papr_type2_table_12();
/// TS 38.211 Table 5.2.3.2-3: b(n) by group u.
NR_MOD_LIB_EXPORT const std::array<std::array<std::uint8_t, 18>, 30>& lib_nr_low_papr_type2_table_18();
/// TS 38.211 Table 5.2.3.2-4: b(n) by group u.
NR_MOD_LIB_EXPORT const std::array<std::array<std::uint8_t, 24>, 30>& lib_nr_low_papr_type2_table_24();

} // namespace vek::nr_mod_lib
