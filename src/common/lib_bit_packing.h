#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

// Between the library's bit sequences (one bit per byte) and words of 64 bits: bit i of word w is element 64 w + i of
// the sequence. Of an element only the lowest bit counts. Whole sequences go by the widest vector unit that the machine
// has; a word or less in line.
namespace vek::common_lib
{

/// Writes ceil(count / 64) words, zeros behind the last bit.
NR_MOD_LIB_EXPORT void pack_bits(const unsigned char* bits, std::size_t count, std::uint64_t* words);
/// The same, but elements of value 255 count as 0.
NR_MOD_LIB_EXPORT void pack_bits_with_fillers(const unsigned char* bits, std::size_t count, std::uint64_t* words);
/// Writes exactly `count` elements.
NR_MOD_LIB_EXPORT void unpack_bits(const std::uint64_t* words, std::size_t count, unsigned char* bits);

/// Appends bits: `count` of those from `first_bit` of a packed sequence on go to place `end` of another, whose bits
/// from there on are zeros. The source goes on for a word behind its last bit, and so does the target, where zeros
/// stay.
NR_MOD_LIB_EXPORT void append_packed_bits(const std::uint64_t* source, std::size_t first_bit, std::size_t count,
                                          std::uint64_t* target, std::size_t end);

/// The 64 bits from a place of a packed sequence on; the sequence goes on for a word behind the one of that place.
inline std::uint64_t read_packed_bits(const std::uint64_t* words, std::size_t first_bit)
{
    const std::uint64_t* word = words + first_bit / 64;
    const std::size_t down = first_bit % 64;
    return (word[0] >> down) | ((word[1] << 1) << (63 - down));
}

namespace detail
{

/// The three operations above for one vector unit.
struct bit_packer_t
{
    void (*pack)(const unsigned char* bits, std::size_t count, std::uint64_t* words);
    void (*pack_with_fillers)(const unsigned char* bits, std::size_t count, std::uint64_t* words);
    void (*unpack)(const std::uint64_t* words, std::size_t count, unsigned char* bits);
};

/// Those that this machine can run: the plain one first, the widest last.
NR_MOD_LIB_EXPORT const std::vector<bit_packer_t>& get_bit_packers();

inline constexpr std::uint64_t k_one_per_byte = 0x0101010101010101u;

/// Eight bytes as one number, the first byte lowest.
inline std::uint64_t load_8_bytes(const unsigned char* bytes)
{
    std::uint64_t value = 0;
    std::memcpy(&value, bytes, sizeof(value));
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    value = __builtin_bswap64(value);
#endif
    return value;
}

inline void store_8_bytes(std::uint64_t value, unsigned char* bytes)
{
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    value = __builtin_bswap64(value);
#endif
    std::memcpy(bytes, &value, sizeof(value));
}

constexpr std::array<std::uint64_t, 256> make_spread_bytes()
{
    std::array<std::uint64_t, 256> spread{};
    for (std::uint64_t value = 0; value < 256; ++value)
        for (unsigned int i = 0; i < 8; ++i)
            spread[value] |= ((value >> i) & 1u) << (8 * i);
    return spread;
}

inline constexpr std::array<std::uint64_t, 256> k_spread_bytes = make_spread_bytes();

/// Eight bits as a number, the first bit lowest. The product moves byte i's bit to place 56 + i; no two of its terms
/// meet, so nothing carries.
inline std::uint64_t pack_8_bits(const unsigned char* bits)
{
    return ((load_8_bytes(bits) & k_one_per_byte) * 0x0102040810204080u) >> 56;
}

} // namespace detail

/// Eight bits as a number, the first bit highest.
inline std::uint64_t pack_8_bits_first_highest(const unsigned char* bits)
{
    return ((detail::load_8_bytes(bits) & detail::k_one_per_byte) * 0x8040201008040201u) >> 56;
}

/// 64 bits, the first lowest.
inline std::uint64_t pack_word(const unsigned char* bits)
{
    std::uint64_t word = 0;
#ifdef __SSE2__
    for (unsigned int i = 0; i < 4; ++i) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bits + 16 * i));
        const auto packed = static_cast<unsigned int>(_mm_movemask_epi8(_mm_slli_epi16(bytes, 7)));
        word |= std::uint64_t{packed} << (16 * i);
    }
#else
    for (unsigned int i = 0; i < 8; ++i)
        word |= detail::pack_8_bits(bits + 8 * i) << (8 * i);
#endif
    return word;
}

/// Fewer than 64 bits, the first lowest, zeros above.
inline std::uint64_t pack_word(const unsigned char* bits, std::size_t count)
{
    std::uint64_t word = 0;
    std::size_t i = 0;
    for (; i + 8 <= count; i += 8)
        word |= detail::pack_8_bits(bits + i) << i;
    for (; i < count; ++i)
        word |= static_cast<std::uint64_t>(bits[i] & 1u) << i;
    return word;
}

/// 64 bytes from one word.
inline void unpack_word(std::uint64_t word, unsigned char* bits)
{
    for (unsigned int i = 0; i < 8; ++i)
        detail::store_8_bytes(detail::k_spread_bytes[(word >> (8 * i)) & 0xFFu], bits + 8 * i);
}

/// The first `count` bits of a word, at most 64.
inline void unpack_word(std::uint64_t word, std::size_t count, unsigned char* bits)
{
    std::size_t i = 0;
    for (; i + 8 <= count; i += 8)
        detail::store_8_bytes(detail::k_spread_bytes[(word >> i) & 0xFFu], bits + i);
    for (; i < count; ++i)
        bits[i] = static_cast<unsigned char>((word >> i) & 1u);
}

} // namespace vek::common_lib
