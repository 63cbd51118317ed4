#pragma once

#include <cstdint>

namespace vek::nr_mod_lib
{

/// Where payload bits come from: a pseudo-random sequence, or the user's own bits.
enum lib_nr_pn_seq_t : std::uint32_t
{
    LIB_NR_PN9_ITU = 0,
    LIB_NR_PN9 = 1,
    LIB_NR_PN11 = 2,
    LIB_NR_PN15 = 3,
    LIB_NR_PN23 = 4,
    LIB_NR_USER_CFG = 5,
};

} // namespace vek::nr_mod_lib
