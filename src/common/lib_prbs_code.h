#pragma once

#include "common/nr_mod_lib_export.h"

#include <cstdint>
#include <vector>

namespace vek::common_lib
{

/// Pseudo-random binary sequences of linear feedback shift registers, as ITU-T O.150 and O.152 describe them.
///
/// The taps are the exponents of the characteristic polynomial, the constant term left out: taps (n, k) give
/// s(i + n) = s(i + k) xor s(i). The state is the next n bits of the output, bit 0 being the first; bits above do not
/// count, so that 0xFFFFFFFF means all ones for every length. An all-zero state gives zeros for ever.
class NR_MOD_LIB_EXPORT lib_prbs_code_t
{
public:
    lib_prbs_code_t();

    /// Off, the initial state: the taps are (9, 4), the 511-bit sequence of ITU-T O.150, whatever the stored taps are.
    void set_custom_primitive_polynomial_enable(bool enable);

    /// Exponents from 1 to 32, in any order; the largest is the length of the register. An exponent twice cancels
    /// itself, 0 is the constant term that every polynomial has anyway. A list that leaves no exponent, or holds one
    /// above 32, is unusable: the stored taps stay.
    void set_prbs_primitive_polynomial(const std::vector<unsigned int>& taps);

    void set_prbs_seed(unsigned int state);

    /// All ones.
    void set_prbs_seed_to_default();

    /// Replaces `bits` by the next n bits, one a byte, and returns the state behind them for a later `set_prbs_seed`.
    /// The object's own state stays: a second call gives the same bits.
    unsigned int generate_prbs_code(unsigned int n, std::vector<unsigned char>& bits) const;
    /// The same with 64 bits a word, the first lowest; what stands behind the n bits does not count.
    unsigned int generate_prbs_words(unsigned int n, std::vector<std::uint64_t>& words) const;

private:
    bool m_custom_primitive_polynomial_enable;
    std::uint64_t m_primitive_polynomial; ///< bit k stands for the exponent k
    unsigned int m_seed;
};

} // namespace vek::common_lib
