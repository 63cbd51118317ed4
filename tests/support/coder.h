#pragma once

#include "common/lib_test_peer.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_polar_code_block_segmentation.h"
#include "phy_common/lib_nr_polar_coding.h"
#include "phy_common/lib_nr_polar_rate_match.h"

#include <cstddef>
#include <random>
#include <vector>

namespace nr_test
{

using bits_t = std::vector<unsigned char>;

inline bits_t random_bits(std::mt19937& random, std::size_t count)
{
    bits_t bits(count);
    for (unsigned char& bit : bits)
        bit = static_cast<unsigned char>(random() & 1u);
    return bits;
}

/// The low `count` bits of a number, the highest first.
inline bits_t bits_of(unsigned long value, unsigned int count)
{
    bits_t bits(count);
    for (unsigned int i = 0; i < count; ++i)
        bits[i] = static_cast<unsigned char>(value >> (count - 1 - i) & 1u);
    return bits;
}

/// Remainder of the bits times x^L by long division; `divisor` is the polynomial, highest power first.
inline bits_t long_division(bits_t bits, const bits_t& divisor)
{
    const std::size_t length = divisor.size() - 1;
    const std::size_t message = bits.size();
    bits.resize(message + length, 0);
    for (std::size_t i = 0; i < message; ++i)
        if (bits[i] != 0)
            for (std::size_t j = 0; j <= length; ++j)
                bits[i + j] ^= divisor[j];
    return {bits.end() - static_cast<std::ptrdiff_t>(length), bits.end()};
}

} // namespace nr_test

template <>
struct vek::test_peer_t<vek::nr_mod_lib::lib_nr_crc_calculator_t>
{
    static void set_length(nr_mod_lib::lib_nr_crc_calculator_t& crc, unsigned int length) { crc.m_crc_length = length; }
    static unsigned int type(const nr_mod_lib::lib_nr_crc_calculator_t& crc) { return crc.m_crc_type; }
};

template <>
struct vek::test_peer_t<vek::nr_mod_lib::lib_nr_polar_coding_t>
{
    using coder_t = nr_mod_lib::lib_nr_polar_coding_t;
    using bits_t = nr_test::bits_t;

    static const std::vector<unsigned int>& non_frozen(const coder_t& coder) { return coder.m_non_frozen_list; }
    static const std::vector<unsigned int>& parity(const coder_t& coder) { return coder.m_parity_list; }
    static bool interleave(const coder_t& coder, const bits_t& in, bits_t& out)
    {
        return coder._deal_interleaving(in, out);
    }
    static bool multiply(const bits_t& u, bits_t& out) { return coder_t::_deal_coding_matrix_multiply(u, out); }
};

template <>
struct vek::test_peer_t<vek::nr_mod_lib::lib_nr_polar_rate_match_t>
{
    static bool interleave(const nr_mod_lib::lib_nr_polar_rate_match_t& rate_match, const nr_test::bits_t& in,
                           nr_test::bits_t& out)
    {
        return rate_match._deal_coded_bit_interleaving(in, out);
    }
};
