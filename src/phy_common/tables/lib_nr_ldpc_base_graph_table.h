#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// One edge of a base graph: the block that is not null at a row and column, and its V_i,j for each lifting set. The
/// block is the identity shifted to the right by V mod Z.
struct lib_nr_ldpc_base_graph_row_t
{
    std::uint8_t row;
    std::uint8_t column;
    std::array<std::uint16_t, 8> shift;
};

/// TS 38.212 Table 5.3.2-2, by row, then column.
NR_MOD_LIB_EXPORT const std::array<lib_nr_ldpc_base_graph_row_t, 316>& lib_nr_ldpc_base_graph_1_table();
/// TS 38.212 Table 5.3.2-3, by row, then column.
NR_MOD_LIB_EXPORT const std::array<lib_nr_ldpc_base_graph_row_t, 197>& lib_nr_ldpc_base_graph_2_table();

} // namespace vek::nr_mod_lib
