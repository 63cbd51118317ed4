#pragma once

#include "phy_common/lib_nr_numerology_type.h"

namespace vek::nr_mod_lib
{

/// Interlaces of resource blocks, TS 38.211 Table 4.4.4.6-1: interlace m holds every `get_interlace_number`-th resource
/// block from the m-th on. 0 for a spacing without interlaces.
constexpr unsigned int get_interlace_number(lib_nr_numerology_type_t numerology)
{
    return numerology == LIB_NR_SCS_15K ? 10 : numerology == LIB_NR_SCS_30K ? 5 : 0;
}

/// The number that the settings of a PUSCH count with, which it keeps at other spacings: there it is that of 30 kHz.
constexpr unsigned int get_pusch_interlace_number(lib_nr_numerology_type_t numerology)
{
    return get_interlace_number(numerology == LIB_NR_SCS_15K ? LIB_NR_SCS_15K : LIB_NR_SCS_30K);
}

} // namespace vek::nr_mod_lib
