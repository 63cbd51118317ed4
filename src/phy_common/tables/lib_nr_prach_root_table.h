#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// TS 38.211 Table 6.3.3.1-3: root u of a sequence of length 839 by logical index. The other lengths follow a rule.
NR_MOD_LIB_EXPORT const std::array<std::uint16_t, 838>& lib_nr_prach_root_839_table();

} // namespace vek::nr_mod_lib
