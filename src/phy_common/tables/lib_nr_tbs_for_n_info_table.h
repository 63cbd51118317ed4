#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// TS 38.214 Table 5.1.3.2-1, ascending.
NR_MOD_LIB_EXPORT const std::array<std::uint16_t, 93>& lib_nr_tbs_for_n_info_table();

} // namespace vek::nr_mod_lib
