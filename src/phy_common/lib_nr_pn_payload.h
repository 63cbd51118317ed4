#pragma once

#include "common/lib_prbs_code.h"
#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_pn_seq.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// The stream of bits that fills transport blocks, DCI, UCI or the MIB: a pseudo-random sequence that runs on from call
/// to call, or the user's own bits.
///
/// The state of a sequence is a plain number, its next bits with bit 0 the first, so that one stream can run on in
/// another object: `get_seed` here, `set_seed` there.
class NR_MOD_LIB_EXPORT lib_nr_pn_payload_t
{
public:
    /// A stream at its start, the state all ones.
    explicit lib_nr_pn_payload_t(lib_nr_pn_seq_t source = LIB_NR_PN9, std::vector<unsigned char> user_bits = {});

    void set_seed(unsigned int seed) { m_seed = seed; }
    unsigned int get_seed() const { return m_seed; }

    /// Replaces `bits` by the next n of the sequence. The user's bits come from the first on in every call, zeros
    /// behind them. False for a source that is none; the sequence of `LIB_NR_PN9_ITU` stands in for it, and whoever
    /// asked tells the user.
    bool generate(unsigned int n, std::vector<unsigned char>& bits);
    /// The same in words of 64 bits, the first lowest; what stands behind the n bits does not count.
    bool generate_words(unsigned int n, std::vector<std::uint64_t>& words);
    /// As `generate`, but the user's bits repeat without end, and `bits` begins with the one at `position` of them.
    bool generate_repeated(unsigned int n, std::uint64_t position, std::vector<unsigned char>& bits);

private:
    /// The generator of the source, at the stream's state; whether the source is known.
    bool _set_up(common_lib::lib_prbs_code_t& prbs) const;
    bool _run_sequence(unsigned int n, std::vector<unsigned char>& bits);

    lib_nr_pn_seq_t m_source;
    std::vector<unsigned char> m_user_bits;
    unsigned int m_seed;
};

} // namespace vek::nr_mod_lib
