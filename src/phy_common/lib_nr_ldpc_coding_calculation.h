#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_ldpc_type.h"

#include <vector>

// The steps of the LDPC encoder on bit sequences of one bit per byte, for callers with matrices of their own. Of a byte
// only the lowest bit counts. Input and output may be the same vector.
namespace vek::nr_mod_lib
{

/// Block multiplication: `out` becomes z bits for each row, the sum modulo 2 of the blocks of `in`, each rotated left
/// by the entry of its column modulo z; -1 is a null block. An empty matrix prints a line and leaves `out` empty. Where
/// the columns don't fit the input a line is printed, and bits that are missing count as 0.
NR_MOD_LIB_EXPORT void deal_ldpc_base_matrix_multiply(const std::vector<std::vector<int>>& matrix,
                                                      const std::vector<unsigned char>& in, unsigned int z,
                                                      std::vector<unsigned char>& out);

/// Solves the four core rows: `core` becomes the parity blocks p0 to p3 for the sums s0 to s3 over the information
/// columns. An unknown graph or set, or a length other than 4z, prints a line and leaves `core` empty.
NR_MOD_LIB_EXPORT void deal_ldpc_core_matrix_solution(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int set_index,
                                                      unsigned int z, const std::vector<unsigned char>& s,
                                                      std::vector<unsigned char>& core);

} // namespace vek::nr_mod_lib
