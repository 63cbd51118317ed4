#pragma once

#include <cstdint>

namespace vek::nr_mod_lib
{

enum lib_nr_duplex_type_t : std::uint32_t
{
    LIB_NR_DUPLEX_TYPE_TDD = 0,
    LIB_NR_DUPLEX_TYPE_FDD = 1,
};

} // namespace vek::nr_mod_lib
