#include "phy_common/lib_nr_sequence_generator.h"

#include "common/lib_bit_packing.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace vek::nr_mod_lib
{

namespace
{

// The start of the sequence within the two m-sequences, N_C of TS 38.211 clause 5.2.1.
constexpr unsigned int k_n_c = 1600;

// One word of an m-sequence from the word before, the first bit lowest. Over GF(2) the square of a recursion holds
// too: x1(n+62) = x1(n+6) + x1(n) and x2(n+62) = x2(n+6) + x2(n+4) + x2(n+2) + x2(n). Bits 56 and up of the new word
// depend on its own first bits, which the shifts to the left add.
constexpr std::uint64_t next_x1(std::uint64_t word)
{
    const std::uint64_t low = (word >> 8) ^ (word >> 2);
    return low ^ (low << 56) ^ (low << 62);
}

constexpr std::uint64_t next_x2(std::uint64_t word)
{
    const std::uint64_t low = (word >> 8) ^ (word >> 6) ^ (word >> 4) ^ (word >> 2);
    return low ^ (low << 56) ^ (low << 58) ^ (low << 60) ^ (low << 62);
}

// The first word of a sequence whose 31 first bits are given.
constexpr std::uint64_t first_x1(std::uint64_t state)
{
    for (unsigned int n = 0; n < 33; ++n)
        state |= (((state >> (n + 3)) ^ (state >> n)) & 1u) << (n + 31);
    return state;
}

constexpr std::uint64_t first_x2(std::uint64_t state)
{
    for (unsigned int n = 0; n < 33; ++n)
        state |= (((state >> (n + 3)) ^ (state >> (n + 2)) ^ (state >> (n + 1)) ^ (state >> n)) & 1u) << (n + 31);
    return state;
}

constexpr std::uint64_t x1_at_n_c()
{
    std::uint64_t word = first_x1(1);
    for (unsigned int n = 0; n < k_n_c; n += 64)
        word = next_x1(word);
    return word;
}

// x2 is linear in c_init: row i holds the word at N_C for each value of byte i of c_init.
using jump_table_t = std::array<std::array<std::uint64_t, 256>, 4>;

constexpr jump_table_t make_x2_at_n_c()
{
    jump_table_t table{};
    for (unsigned int bit = 0; bit < 31; ++bit) {
        std::uint64_t word = first_x2(std::uint64_t{1} << bit);
        for (unsigned int n = 0; n < k_n_c; n += 64)
            word = next_x2(word);
        for (unsigned int byte = 0; byte < 256; ++byte)
            if (((byte >> (bit % 8)) & 1u) != 0)
                table[bit / 8][byte] ^= word;
    }
    return table;
}

constexpr std::uint64_t k_x1_at_n_c = x1_at_n_c();
constexpr jump_table_t k_x2_at_n_c = make_x2_at_n_c();

// Squared six times the recursions hold between whole words: X1(n+31) = X1(n+3) + X1(n). Words are made by windows.
constexpr std::size_t k_memory = 31;
constexpr std::size_t k_window = 256;
using window_t = std::array<std::uint64_t, k_window>;

static_assert(k_n_c % 64 == 0, "the jump goes by whole words");

/// Hands the sequence's words to `take(words, count)`, window by window.
template <class take_t>
void run_windows(unsigned int c_init, std::size_t word_count, take_t take)
{
    window_t x1;
    window_t x2;
    x1[0] = k_x1_at_n_c;
    x2[0] = k_x2_at_n_c[0][c_init & 0xFFu] ^ k_x2_at_n_c[1][(c_init >> 8) & 0xFFu] ^
            k_x2_at_n_c[2][(c_init >> 16) & 0xFFu] ^ k_x2_at_n_c[3][c_init >> 24];
    for (std::size_t i = 1; i < std::min(word_count, k_memory); ++i) {
        x1[i] = next_x1(x1[i - 1]);
        x2[i] = next_x2(x2[i - 1]);
    }
    // Each window begins with the memory that the one before left, whose words are out already.
    std::size_t first = 0;
    while (word_count > 0) {
        const std::size_t end = std::min(k_window, first + word_count);
        for (std::size_t i = k_memory; i < end; ++i) {
            x1[i] = x1[i - 28] ^ x1[i - 31];
            x2[i] = x2[i - 28] ^ x2[i - 29] ^ x2[i - 30] ^ x2[i - 31];
        }
        window_t sum;
        for (std::size_t i = first; i < end; ++i)
            sum[i] = x1[i] ^ x2[i];
        take(sum.data() + first, end - first);
        word_count -= end - first;
        std::copy(x1.end() - k_memory, x1.end(), x1.begin());
        std::copy(x2.end() - k_memory, x2.end(), x2.begin());
        first = k_memory;
    }
}

} // namespace

void lib_nr_sequence_generator_t::generate_pseudo_random_sequence(unsigned int c_init, unsigned int length,
                                                                  std::vector<unsigned char>& out)
{
    out.resize(length);
    std::size_t bit = 0;
    run_windows(c_init, (std::size_t{length} + 63) / 64, [&](const std::uint64_t* words, std::size_t count) {
        const std::size_t bits = std::min(64 * count, length - bit);
        common_lib::unpack_bits(words, bits, out.data() + bit);
        bit += bits;
    });
}

void lib_nr_sequence_generator_t::generate_pseudo_random_words(unsigned int c_init, std::size_t word_count,
                                                               std::uint64_t* out)
{
    run_windows(c_init, word_count,
                [&](const std::uint64_t* words, std::size_t count) { out = std::copy_n(words, count, out); });
}

void lib_nr_sequence_generator_t::add_pseudo_random_words(unsigned int c_init, std::size_t word_count,
                                                          std::uint64_t* bits)
{
    run_windows(c_init, word_count, [&](const std::uint64_t* words, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            bits[i] ^= words[i];
        bits += count;
    });
}

void lib_nr_sequence_generator_t::add_pseudo_random_bits(unsigned int c_init, std::size_t length,
                                                         const unsigned char* in, unsigned char* out)
{
    std::array<unsigned char, 64 * k_window> sequence;
    run_windows(c_init, (length + 63) / 64, [&](const std::uint64_t* words, std::size_t count) {
        const std::size_t bits = std::min(64 * count, length);
        common_lib::unpack_bits(words, bits, sequence.data());
        for (std::size_t i = 0; i < bits; ++i)
            out[i] = static_cast<unsigned char>((in[i] ^ sequence[i]) & 1u);
        in += bits;
        out += bits;
        length -= bits;
    });
}

} // namespace vek::nr_mod_lib
