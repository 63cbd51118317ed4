#pragma once

#include <cstddef>
#include <cstdint>

// Whole bit sequences (one bit per byte) to and from words of 64 bits, by the widest vector unit that the machine has.
// Bit i of word w is element 64 w + i of the sequence.
namespace vek::common_lib
{

/// Of an element only the lowest bit counts. Writes ceil(count / 64) words, zeros behind the last bit.
void pack_bit_array(const unsigned char* bits, std::size_t count, std::uint64_t* words);
/// The same, but elements of value 255 count as 0.
void pack_bit_array_with_fillers(const unsigned char* bits, std::size_t count, std::uint64_t* words);
/// Writes exactly `count` elements.
void unpack_bit_array(const std::uint64_t* words, std::size_t count, unsigned char* bits);

} // namespace vek::common_lib
