#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

#include <cstddef>
#include <vector>

namespace vek::nr_mod_lib
{

/// Rate matching of a polar code word: sub-block interleaving, bit selection, coded bit interleaving. TS 38.212 clause
/// 5.4.1.
class NR_MOD_LIB_EXPORT lib_nr_polar_rate_match_t
{
public:
    /// Interleaving of the coded bits: 1 on, 0 off. False, and no change, above 1.
    bool set_i_bil(unsigned int i_bil);
    /// Output length E in bits, at most 8192; a printed line and false, and no change, above.
    bool set_rate_match_output_length(unsigned int output_length);
    /// Input length K of the encoder, CRC included: it decides between puncturing and shortening.
    void set_polar_coding_input_lentgh(unsigned int input_length);
    /// The sequence J(n) of clause 5.4.1.1 for n below N; empty where N isn't a multiple of 32.
    static void genreate_subblock_interleave_sequence(unsigned int coded_length, std::vector<unsigned int>& out);
    /// `out` becomes the E bits to send. Prints a line and returns false, `out` empty, where E is below K or
    /// the input isn't a power of 2 of at least 32 bits. Both may be the same vector.
    bool deal_rate_matching(const std::vector<unsigned char>& in, std::vector<unsigned char>& out);

private:
    friend struct vek::test_peer_t<lib_nr_polar_rate_match_t>;

    static bool _check_input_data_length(std::size_t length);
    static void _deal_subblock_interleave(const std::vector<unsigned char>& in, std::vector<unsigned char>& out);
    void _deal_bit_selection(const std::vector<unsigned char>& in, std::vector<unsigned char>& out) const;
    bool _deal_coded_bit_interleaving(const std::vector<unsigned char>& in, std::vector<unsigned char>& out) const;

    unsigned int m_k = 32;
    unsigned int m_e = 864;
    bool m_i_bil = false;
};

} // namespace vek::nr_mod_lib
