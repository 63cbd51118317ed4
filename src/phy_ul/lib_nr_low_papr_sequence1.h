#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Length of the base sequence behind a low-PAPR sequence of `length` values: the least multiple of 12 / 2^delta that
/// is not below it.
NR_MOD_LIB_EXPORT std::uint32_t get_low_papr_base_length(std::uint32_t length, std::int32_t delta);

/// What a low-PAPR sequence of type 1 is made from. Nothing has a default: a delta of 0 that stands for another one
/// gives the right sequence at most lengths, and a wrong one at the rest.
struct low_papr_seq_1_param_t
{
    low_papr_seq_1_param_t(std::uint32_t group, std::uint32_t number, double shift, std::int32_t exponent,
                           std::uint32_t length)
        : u(group), v(number), alpha(shift), delta(exponent), m(length)
    {}

    std::uint32_t u;    ///< group, 0 to 29
    std::uint32_t v;    ///< number within the group, 0 or 1
    double alpha;       ///< cyclic shift in radians
    std::int32_t delta; ///< exponent of 2 in the length rule: log2 of the comb that the values stand on
    std::uint32_t m;    ///< number of values
};

/// Low-PAPR sequences of type 1, TS 38.211 clause 5.2.2: Zadoff-Chu sequences from 36 on, tables and one closed form
/// below. All values have magnitude 1. A group past 29 throws std::out_of_range where a table is read.
class NR_MOD_LIB_EXPORT lib_nr_low_papr_sequence1
{
public:
    /// Replaces `out` by the `m` values of the base sequence; alpha is not read.
    static void generate_basic_sequence(const low_papr_seq_1_param_t& param, std::vector<std::complex<double>>& out);
    /// Appends the `m` values of the base sequence, each turned by alpha times its index.
    static void generate_low_papr_sequence_1(const low_papr_seq_1_param_t& param,
                                             std::vector<std::complex<double>>& out);
};

} // namespace vek::nr_mod_lib
