#include "phy_common/lib_nr_ldpc_packed_rows.h"

#include "common/lib_target_clones.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_word_bits = 64;

std::uint64_t read_word(const std::uint64_t* words, unsigned int bit)
{
    return (words[0] >> bit) | ((words[1] << 1) << (k_word_bits - 1 - bit));
}

// The sum stays in registers while a row's terms go by.
template <unsigned int word_count>
[[gnu::always_inline]] inline void sum_rows(const lib_nr_ldpc_term_t* terms, std::uint32_t first_term,
                                            const std::uint32_t* term_ends, unsigned int row_count,
                                            const std::uint64_t* doubled, std::uint64_t* rows)
{
    std::uint32_t term = first_term;
    for (unsigned int row = 0; row < row_count; ++row) {
        std::uint64_t sum[word_count] = {};
        for (; term < term_ends[row]; ++term) {
            const std::uint64_t* words = doubled + terms[term].word;
            const std::uint64_t down = terms[term].bit;
            const std::uint64_t up = k_word_bits - 1 - down;
            for (unsigned int w = 0; w < word_count; ++w)
                sum[w] ^= (words[w] >> down) | ((words[w + 1] << 1) << up);
        }
        for (unsigned int w = 0; w < word_count; ++w)
            rows[row * word_count + w] = sum[w];
    }
}

NR_MOD_LIB_TARGET_CLONES
void sum_rows_of_4_words(const lib_nr_ldpc_term_t* terms, std::uint32_t first_term, const std::uint32_t* term_ends,
                         unsigned int row_count, const std::uint64_t* doubled, std::uint64_t* rows)
{
    sum_rows<4>(terms, first_term, term_ends, row_count, doubled, rows);
}

NR_MOD_LIB_TARGET_CLONES
void sum_rows_of_8_words(const lib_nr_ldpc_term_t* terms, std::uint32_t first_term, const std::uint32_t* term_ends,
                         unsigned int row_count, const std::uint64_t* doubled, std::uint64_t* rows)
{
    sum_rows<8>(terms, first_term, term_ends, row_count, doubled, rows);
}

void sum_wide_rows(unsigned int word_count, const lib_nr_ldpc_term_t* terms, std::uint32_t first_term,
                   const std::uint32_t* term_ends, unsigned int row_count, const std::uint64_t* doubled,
                   std::uint64_t* rows)
{
    std::uint32_t term = first_term;
    for (unsigned int row = 0; row < row_count; ++row, rows += word_count) {
        std::fill_n(rows, word_count, 0);
        for (; term < term_ends[row]; ++term)
            for (unsigned int w = 0; w < word_count; ++w)
                rows[w] ^= read_word(doubled + terms[term].word + w, terms[term].bit);
    }
}

} // namespace

lib_nr_ldpc_row_layout_t::lib_nr_ldpc_row_layout_t(unsigned int lifting_size) : z(lifting_size)
{
    const unsigned int used_words = z / k_word_bits + (z % k_word_bits != 0 ? 1 : 0);
    // A rotated read begins at most one word before the end of the first copy and takes `words` + 1 words.
    words = used_words <= 4 ? 4 : used_words <= 8 ? 8 : used_words + 1;
    doubled_words = 2 * words;
}

lib_nr_ldpc_term_t lib_nr_ldpc_rotated_row(const lib_nr_ldpc_row_layout_t& layout, unsigned int column,
                                           unsigned int rotation)
{
    return {column * layout.doubled_words + rotation / k_word_bits, rotation % k_word_bits};
}

void lib_nr_ldpc_double_row(const lib_nr_ldpc_row_layout_t& layout, const std::uint64_t* bits, std::size_t first_bit,
                            std::uint64_t* doubled)
{
    const std::uint64_t* words = bits + first_bit / k_word_bits;
    const unsigned int down = static_cast<unsigned int>(first_bit % k_word_bits);
    const unsigned int whole_words = layout.z / k_word_bits;
    const unsigned int rest = layout.z % k_word_bits;
    for (unsigned int w = 0; w < whole_words; ++w)
        doubled[w] = read_word(words + w, down);
    if (rest == 0) {
        std::copy_n(doubled, whole_words, doubled + whole_words);
        std::fill(doubled + 2 * whole_words, doubled + layout.doubled_words, 0);
        return;
    }
    const std::uint64_t last = read_word(words + whole_words, down) & ((std::uint64_t{1} << rest) - 1);
    doubled[whole_words] = last;
    std::fill(doubled + whole_words + 1, doubled + layout.doubled_words, 0);
    for (unsigned int w = 0; w < whole_words; ++w) {
        doubled[whole_words + w] |= doubled[w] << rest;
        doubled[whole_words + w + 1] |= doubled[w] >> (k_word_bits - rest);
    }
    doubled[2 * whole_words] |= last << rest;
    doubled[2 * whole_words + 1] |= last >> (k_word_bits - rest);
}

void lib_nr_ldpc_sum_rows(const lib_nr_ldpc_row_layout_t& layout, const lib_nr_ldpc_term_t* terms,
                          std::uint32_t first_term, const std::uint32_t* term_ends, unsigned int row_count,
                          const std::uint64_t* doubled, std::uint64_t* rows)
{
    if (layout.words == 4)
        sum_rows_of_4_words(terms, first_term, term_ends, row_count, doubled, rows);
    else if (layout.words == 8)
        sum_rows_of_8_words(terms, first_term, term_ends, row_count, doubled, rows);
    else
        sum_wide_rows(layout.words, terms, first_term, term_ends, row_count, doubled, rows);
}

void lib_nr_ldpc_solve_core(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int set_index,
                            const lib_nr_ldpc_row_layout_t& layout, const std::uint64_t* s, std::uint64_t* parity,
                            std::uint64_t* doubled)
{
    // TS 38.212 clause 5.3.2: the first parity column stands in the rows 0 and 3, shifted alike, and in one row between
    // (1 in graph 1, 2 in graph 2); the next three form a double diagonal. The sum of all rows leaves the first alone.
    const bool is_graph_1 = base_graph == LIB_NR_LDPC_BASE_GRAPH_1;
    unsigned int outer_shift = 1;
    unsigned int inner_shift = 0;
    if (is_graph_1 ? set_index == 6 : (set_index != 3 && set_index != 7)) {
        outer_shift = 0;
        inner_shift = (is_graph_1 ? 105 : 1) % layout.z;
    }
    const auto rotate = [&](const std::uint64_t* row, unsigned int left, std::uint64_t* out) {
        lib_nr_ldpc_double_row(layout, row, 0, doubled);
        const lib_nr_ldpc_term_t term = lib_nr_ldpc_rotated_row(layout, 0, left);
        for (unsigned int w = 0; w < layout.words; ++w)
            out[w] = read_word(doubled + term.word + w, term.bit);
    };
    const std::size_t words = layout.words;
    const std::uint64_t* s0 = s;
    const std::uint64_t* s1 = s + words;
    const std::uint64_t* s2 = s + 2 * words;
    const std::uint64_t* s3 = s + 3 * words;
    std::uint64_t* p0 = parity;
    std::uint64_t* p1 = parity + words;
    std::uint64_t* p2 = parity + 2 * words;
    std::uint64_t* p3 = parity + 3 * words;

    std::uint64_t* sum = p2;
    for (std::size_t w = 0; w < words; ++w)
        sum[w] = s0[w] ^ s1[w] ^ s2[w] ^ s3[w];
    rotate(sum, (layout.z - inner_shift) % layout.z, p0);
    std::uint64_t* outer = p3;
    rotate(p0, outer_shift % layout.z, outer);
    for (std::size_t w = 0; w < words; ++w) {
        p1[w] = s0[w] ^ outer[w];
        p2[w] = s1[w] ^ p1[w] ^ (is_graph_1 ? sum[w] : 0);
        p3[w] = is_graph_1 ? s2[w] ^ p2[w] : s3[w] ^ outer[w];
    }
}

} // namespace vek::nr_mod_lib
