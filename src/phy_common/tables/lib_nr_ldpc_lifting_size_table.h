#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// TS 38.212 Table 5.3.2-1, by set index: ascending sizes, then zeros.
NR_MOD_LIB_EXPORT const std::array<std::array<std::uint16_t, 8>, 8>& lib_nr_ldpc_lifting_size_table();

} // namespace vek::nr_mod_lib
