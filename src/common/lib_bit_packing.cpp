#include "common/lib_bit_packing.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define NR_MOD_LIB_X86_VECTORS
#include <immintrin.h>
#endif

namespace vek::common_lib
{

namespace
{

constexpr unsigned char k_filler = 255;
constexpr std::size_t k_word_bits = 64;

template <bool with_fillers>
std::uint64_t pack_some(const unsigned char* bits, std::size_t count)
{
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < count; ++i)
        if (!with_fillers || bits[i] != k_filler)
            word |= static_cast<std::uint64_t>(bits[i] & 1u) << i;
    return word;
}

// The whole words of a sequence; the rest is left to pack_some.
template <bool with_fillers>
void pack_words(const unsigned char* bits, std::size_t word_count, std::uint64_t* words)
{
    for (std::size_t w = 0; w < word_count; ++w)
        words[w] =
            with_fillers ? pack_some<true>(bits + k_word_bits * w, k_word_bits) : pack_word(bits + k_word_bits * w);
}

void unpack_words(const std::uint64_t* words, std::size_t word_count, unsigned char* bits)
{
    for (std::size_t w = 0; w < word_count; ++w)
        unpack_word(words[w], bits + k_word_bits * w);
}

#ifdef NR_MOD_LIB_X86_VECTORS

__attribute__((target("avx2"))) inline std::uint64_t pack_32_bits_avx2(const unsigned char* bits, bool with_fillers)
{
    __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bits));
    if (with_fillers)
        bytes = _mm256_andnot_si256(_mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(-1)), bytes);
    // The lowest bit of each byte moves to its highest place, where the mask is taken.
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(_mm256_slli_epi16(bytes, 7)));
}

template <bool with_fillers>
__attribute__((target("avx2"))) void pack_words_avx2(const unsigned char* bits, std::size_t word_count,
                                                     std::uint64_t* words)
{
    for (std::size_t w = 0; w < word_count; ++w)
        words[w] = pack_32_bits_avx2(bits + k_word_bits * w, with_fillers) |
                   pack_32_bits_avx2(bits + k_word_bits * w + 32, with_fillers) << 32;
}

__attribute__((target("avx2"))) inline __m256i unpack_32_bits_avx2(std::uint32_t bits)
{
    // Each byte gets the eighth of the word that its bit stands in, and keeps that bit.
    const __m256i eighths = _mm256_setr_epi64x(0, 0x0101010101010101, 0x0202020202020202, 0x0303030303030303);
    const __m256i places = _mm256_set1_epi64x(static_cast<long long>(0x8040201008040201u));
    const __m256i spread = _mm256_shuffle_epi8(_mm256_set1_epi32(static_cast<int>(bits)), eighths);
    const __m256i is_set = _mm256_cmpeq_epi8(_mm256_and_si256(spread, places), places);
    return _mm256_and_si256(is_set, _mm256_set1_epi8(1));
}

__attribute__((target("avx2"))) void unpack_words_avx2(const std::uint64_t* words, std::size_t word_count,
                                                       unsigned char* bits)
{
    for (std::size_t w = 0; w < word_count; ++w) {
        __m256i* target = reinterpret_cast<__m256i*>(bits + k_word_bits * w);
        _mm256_storeu_si256(target, unpack_32_bits_avx2(static_cast<std::uint32_t>(words[w])));
        _mm256_storeu_si256(target + 1, unpack_32_bits_avx2(static_cast<std::uint32_t>(words[w] >> 32)));
    }
}

template <bool with_fillers>
__attribute__((target("avx512bw"))) void pack_words_avx512(const unsigned char* bits, std::size_t word_count,
                                                           std::uint64_t* words)
{
    for (std::size_t w = 0; w < word_count; ++w) {
        const __m512i bytes = _mm512_loadu_si512(bits + k_word_bits * w);
        words[w] = _mm512_test_epi8_mask(bytes, _mm512_set1_epi8(1));
        if (with_fillers)
            words[w] &= _mm512_cmpneq_epi8_mask(bytes, _mm512_set1_epi8(-1));
    }
}

__attribute__((target("avx512bw"))) void unpack_words_avx512(const std::uint64_t* words, std::size_t word_count,
                                                             unsigned char* bits)
{
    for (std::size_t w = 0; w < word_count; ++w)
        _mm512_storeu_si512(bits + k_word_bits * w, _mm512_maskz_set1_epi8(words[w], 1));
}

#endif

// A unit's loop over whole words made one over a whole sequence.
template <void (*pack_whole)(const unsigned char*, std::size_t, std::uint64_t*), bool with_fillers>
void pack_sequence(const unsigned char* bits, std::size_t count, std::uint64_t* words)
{
    const std::size_t word_count = count / k_word_bits;
    if (count % k_word_bits != 0)
        words[word_count] = pack_some<with_fillers>(bits + k_word_bits * word_count, count % k_word_bits);
    pack_whole(bits, word_count, words);
}

template <void (*unpack_whole)(const std::uint64_t*, std::size_t, unsigned char*)>
void unpack_sequence(const std::uint64_t* words, std::size_t count, unsigned char* bits)
{
    const std::size_t word_count = count / k_word_bits;
    if (count % k_word_bits != 0)
        unpack_word(words[word_count], count % k_word_bits, bits + k_word_bits * word_count);
    unpack_whole(words, word_count, bits);
}

const detail::bit_packer_t& widest()
{
    static const detail::bit_packer_t packer = detail::get_bit_packers().back();
    return packer;
}

} // namespace

const std::vector<detail::bit_packer_t>& detail::get_bit_packers()
{
    static const std::vector<bit_packer_t> packers = [] {
        std::vector<bit_packer_t> found = {{pack_sequence<pack_words<false>, false>,
                                            pack_sequence<pack_words<true>, true>, unpack_sequence<unpack_words>}};
#ifdef NR_MOD_LIB_X86_VECTORS
        if (__builtin_cpu_supports("avx2"))
            found.push_back({pack_sequence<pack_words_avx2<false>, false>, pack_sequence<pack_words_avx2<true>, true>,
                             unpack_sequence<unpack_words_avx2>});
        if (__builtin_cpu_supports("avx512bw"))
            found.push_back({pack_sequence<pack_words_avx512<false>, false>,
                             pack_sequence<pack_words_avx512<true>, true>, unpack_sequence<unpack_words_avx512>});
#endif
        return found;
    }();
    return packers;
}

void pack_bits(const unsigned char* bits, std::size_t count, std::uint64_t* words)
{
    widest().pack(bits, count, words);
}

void pack_bits_with_fillers(const unsigned char* bits, std::size_t count, std::uint64_t* words)
{
    widest().pack_with_fillers(bits, count, words);
}

void unpack_bits(const std::uint64_t* words, std::size_t count, unsigned char* bits)
{
    widest().unpack(words, count, bits);
}

void append_packed_bits(const std::uint64_t* source, std::size_t first_bit, std::size_t count, std::uint64_t* target,
                        std::size_t end)
{
    const std::size_t up = end % k_word_bits;
    std::uint64_t* word = target + end / k_word_bits;
    for (std::size_t i = 0; i < count; i += k_word_bits, ++word) {
        std::uint64_t bits = read_packed_bits(source, first_bit + i);
        if (count - i < k_word_bits)
            bits &= (std::uint64_t{1} << (count - i)) - 1;
        word[0] |= bits << up;
        word[1] = (bits >> 1) >> (k_word_bits - 1 - up);
    }
}

} // namespace vek::common_lib
