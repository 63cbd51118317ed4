#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_mcs_table_type.h"

#include <array>

namespace vek::nr_mod_lib
{

/// Bits per symbol, target code rate times 1024 and bits per resource element of one MCS.
struct lib_nr_mcs_row_t
{
    unsigned int qm;
    double code_rate_x1024;
    double spectral_efficiency;
};

/// By MCS index; the rows that the standard reserves are zero.
using lib_nr_mcs_table_t = std::array<lib_nr_mcs_row_t, 29>;

/// The rows of a table; a value that is no table gets those of `TABLE_5_1_3_1_1`. The rows of Qm 1 in the tables of the
/// uplink are those of transform precoding with pi/2-BPSK.
NR_MOD_LIB_EXPORT const lib_nr_mcs_table_t& lib_nr_mcs_table(mcs_table_t table);

} // namespace vek::nr_mod_lib
