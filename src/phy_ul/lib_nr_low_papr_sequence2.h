#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// What a low-PAPR sequence of type 2 is made from; nothing has a default.
struct low_papr_seq_2_param_t
{
    low_papr_seq_2_param_t(std::uint32_t group, std::int32_t exponent, std::uint32_t initial_value,
                           std::uint32_t length)
        : u(group), delta(exponent), c_init(initial_value), m(length)
    {}

    std::uint32_t u;      ///< group, 0 to 29; counts below 30 values
    std::int32_t delta;   ///< exponent of 2 in the length rule
    std::uint32_t c_init; ///< Gold sequence of the bits; counts from 30 values on
    std::uint32_t m;      ///< wanted number of values
};

/// Low-PAPR sequences of type 2, TS 38.211 clause 5.2.3: the DFT of a pi/2-BPSK sequence, or of tabulated phases. Mean
/// power 1. A group past 29 throws std::out_of_range where a table is read.
class NR_MOD_LIB_EXPORT lib_nr_low_papr_sequence2
{
public:
    /// Appends the sequence, as long as its base, `get_low_papr_base_length`: it is not cut to `m`.
    static void generate_low_papr_sequence_2(const low_papr_seq_2_param_t& param,
                                             std::vector<std::complex<double>>& out);
};

} // namespace vek::nr_mod_lib
