#pragma once

#include <cstdint>

namespace vek::nr_mod_lib
{

/// Base graphs of TS 38.212 clause 5.3.2.
enum lib_nr_ldpc_base_graph_type_t : std::uint32_t
{
    LIB_NR_LDPC_BASE_GRAPH_1 = 0,
    LIB_NR_LDPC_BASE_GRAPH_2 = 1,
};

} // namespace vek::nr_mod_lib
