#pragma once

#include "phy_common/lib_nr_csirs_type.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// w_f(k') and w_t(l') of one port of a CDM group; 0 behind the last.
struct lib_nr_csirs_cdm_sequence_t
{
    std::array<std::int8_t, 2> wf;
    std::array<std::int8_t, 4> wt;
};

/// The sequences of a type, by index.
struct lib_nr_csirs_cdm_table_t
{
    unsigned int sequence_number;
    std::array<lib_nr_csirs_cdm_sequence_t, 8> sequences;
};

/// Null for an unknown type.
const lib_nr_csirs_cdm_table_t* get_csirs_cdm_table(csirs_cdm_type_t type);

} // namespace vek::nr_mod_lib
