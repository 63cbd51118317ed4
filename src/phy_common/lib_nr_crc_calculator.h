#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Generator polynomials of TS 38.212 clause 5.1.
enum lib_nr_crc_type_t : std::uint32_t
{
    LIB_NR_CRC_TYPE_24A = 0,
    LIB_NR_CRC_TYPE_24B = 1,
    LIB_NR_CRC_TYPE_24C = 2,
    LIB_NR_CRC_TYPE_16 = 3,
    LIB_NR_CRC_TYPE_11 = 4,
    LIB_NR_CRC_TYPE_6 = 5,
};

/// Computes the cyclic redundancy check of TS 38.212 clause 5.1 over a bit sequence (one bit per byte, first bit first)
/// and appends it. Starts from remainder zero; leading ones and masks are the callers' business. A new calculator is
/// set to `LIB_NR_CRC_TYPE_24C`.
class NR_MOD_LIB_EXPORT lib_nr_crc_calculator_t
{
public:
    /// A value outside the enumeration is stored, prints two lines and leaves length and polynomial alone.
    void set_crc_type(lib_nr_crc_type_t type);
    /// Number of parity bits L.
    unsigned int get_crc_length() const;
    /// The same for a type; 24 for an unknown one.
    static unsigned int get_crc_length(lib_nr_crc_type_t type);
    /// `out` becomes `in` followed by the L parity bits, highest power first; an empty `in` gives L zeros. Both may be
    /// the same vector. Prints and returns false, `out` untouched, where the polynomial doesn't fit into 32 bits,
    /// which no type reaches.
    bool deal_crc_attachment(const std::vector<unsigned char>& in, std::vector<unsigned char>& out);

    /// The parity bits of `count` bits from `first_bit` of a packed sequence on, the first lowest, for bits in words of
    /// 64; the sequence goes on for a word behind its last bit. 24A for an unknown type.
    static std::uint32_t get_parity(lib_nr_crc_type_t type, const std::uint64_t* words, std::size_t first_bit,
                                    std::size_t count);

private:
    friend struct vek::test_peer_t<lib_nr_crc_calculator_t>;

    void _update_crc_length();
    void _update_crc_polynomial();

    lib_nr_crc_type_t m_crc_type = LIB_NR_CRC_TYPE_24C;
    std::uint32_t m_crc_length = 24;
    std::uint32_t m_crc_polynomial = 0x1B2B117; // with the term x^L
};

} // namespace vek::nr_mod_lib
