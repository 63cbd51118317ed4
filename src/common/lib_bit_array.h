#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

#include <cstddef>
#include <cstdint>

namespace vek::common_lib
{

/// Turns whole bit sequences (one bit per byte) into words of 64 bits and back, by the widest vector unit that the
/// machine has. Bit i of word w is element 64 w + i of the sequence.
class NR_MOD_LIB_EXPORT lib_bit_array_t
{
public:
    /// Of an element only the lowest bit counts. Writes ceil(count / 64) words, zeros behind the last bit.
    static void pack(const unsigned char* bits, std::size_t count, std::uint64_t* words);
    /// The same, but elements of value 255 count as 0.
    static void pack_with_fillers(const unsigned char* bits, std::size_t count, std::uint64_t* words);
    /// Writes exactly `count` elements.
    static void unpack(const std::uint64_t* words, std::size_t count, unsigned char* bits);

private:
    friend struct vek::test_peer_t<lib_bit_array_t>;

    enum vector_unit_t
    {
        PLAIN = 0,
        AVX2 = 1,
        AVX512BW = 2,
    };

    static vector_unit_t _get_widest_unit();
    template <bool with_fillers>
    static void _pack(vector_unit_t unit, const unsigned char* bits, std::size_t count, std::uint64_t* words);
    static void _unpack(vector_unit_t unit, const std::uint64_t* words, std::size_t count, unsigned char* bits);
};

} // namespace vek::common_lib
