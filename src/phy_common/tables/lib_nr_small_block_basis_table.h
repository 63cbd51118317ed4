#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// TS 38.212 Table 5.3.3.3-1, by output bit i, then input bit n: M(i, n).
NR_MOD_LIB_EXPORT const std::array<std::array<std::uint8_t, 11>, 32>& lib_nr_small_block_basis_table();

} // namespace vek::nr_mod_lib
