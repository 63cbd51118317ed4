#pragma once

#include "phy_common/lib_nr_csirs_type.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// w_f(k') and w_t(l') of the ports of a CDM group, by the port's index in it; 0 behind the last.
struct csirs_wf_wt_t
{
    std::array<std::array<std::int8_t, 2>, 8> wf;
    std::array<std::array<std::int8_t, 4>, 8> wt;
};

/// Null for an unknown type.
const csirs_wf_wt_t* get_csirs_cdm_table(csirs_cdm_type_t type);

} // namespace vek::nr_mod_lib
