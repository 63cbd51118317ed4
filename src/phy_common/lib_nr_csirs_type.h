#pragma once

#include <cstdint>

namespace vek::nr_mod_lib
{

/// Code division multiplexing of CSI-RS ports, TS 38.211 Tables 7.4.1.5.3-2 to 7.4.1.5.3-5.
enum csirs_cdm_type_t : std::uint32_t
{
    NO_CDM = 0,
    FD_CDM2 = 1,
    CDM4_FD2_TD2 = 2,
    CDM8_FD2_TD4 = 3,
};

} // namespace vek::nr_mod_lib
