#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// m_SRS,b and N_b of one C_SRS, by B_SRS.
struct lib_nr_srs_bandwidth_row_t
{
    std::array<std::uint16_t, 4> m_srs;
    std::array<std::uint8_t, 4> n;
};

/// TS 38.211 Table 6.4.1.4.3-1, by C_SRS.
NR_MOD_LIB_EXPORT const std::array<lib_nr_srs_bandwidth_row_t, 64>& lib_nr_srs_bandwidth_table();

} // namespace vek::nr_mod_lib
