#pragma once

#include "common/nr_mod_lib_export.h"

#include <vector>

namespace vek::common_lib
{

/// Packs bits, one a byte, into the symbol values that index a constellation.
class NR_MOD_LIB_EXPORT lib_symbol_data_t
{
public:
    /// Replaces `symbols` by `symbol_count` values; value i holds the `bits_per_symbol` bits from
    /// `offset` + i x `bits_per_symbol` on, the first in the most significant place. Only the lowest bit of a byte
    /// counts, bits past the end of `bits` are 0, and of more than 32 bits per symbol the last 32 remain.
    static void generate_symbol_arr_by_bit_arr(std::vector<unsigned int>& symbols,
                                               const std::vector<unsigned char>& bits, unsigned int symbol_count,
                                               unsigned int bits_per_symbol, unsigned int offset);
};

} // namespace vek::common_lib
