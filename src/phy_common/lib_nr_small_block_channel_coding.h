#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Channel coding of small block lengths, TS 38.212 clause 5.3.3: 1 bit by repetition, 2 bits by the simplex code, 3 to
/// 11 by the (32, K) code. Beside bits an output holds two placeholders: 254 (y) repeats the preceding scrambled bit,
/// 255 (x) is a filler. Repetition to the length that a channel needs is the caller's business.
class NR_MOD_LIB_EXPORT lib_nr_small_block_channel_coding_t
{
public:
    /// Modulation order 1, 2, 4, 6 or 8 (1 at first); any other value prints a line, changes nothing and gives false.
    bool set_modulation_order(unsigned int order);
    /// `out` becomes the code word. False, with a printed line and `out` empty, for 0 or more than 11 bits. Both may be
    /// the same vector.
    bool deal_small_block_channel_coding(const std::vector<unsigned char>& in, std::vector<unsigned char>& out);

private:
    friend struct vek::test_peer_t<lib_nr_small_block_channel_coding_t>;

    bool _deal_repetition_coding(const std::vector<unsigned char>& in, std::vector<unsigned char>& out) const;
    bool _deal_simplex_coding(const std::vector<unsigned char>& in, std::vector<unsigned char>& out) const;
    bool _deal_reed_muller_coding(const std::vector<unsigned char>& in, std::vector<unsigned char>& out) const;

    std::uint32_t m_modulation_order = 1;
};

/// The basis sequences of the (32, K) code: 32 rows of 11 bits, M(i, n) of TS 38.212 Table 5.3.3.3-1.
NR_MOD_LIB_EXPORT const std::vector<std::vector<unsigned char>>& get_reed_muller_basis_sequence_vector();

} // namespace vek::nr_mod_lib
