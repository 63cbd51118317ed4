#pragma once

#include "phy_common/lib_nr_ldpc_type.h"

#include <array>
#include <cstddef>
#include <cstdint>

// Rows of Z bits in words of 64 bits, bit k of the row being bit k mod 64 of word k / 64. What a row is rotated from
// lies doubled, the Z bits twice in a run, so that a rotation is a read from the middle. Bits behind a row's Z are
// whatever the arithmetic left there.
namespace vek::nr_mod_lib
{

/// Largest lifting size, base graph and space that the encoder needs.
inline constexpr unsigned int k_ldpc_max_lifting_size = 384;
inline constexpr unsigned int k_ldpc_max_row_words = 8;
inline constexpr unsigned int k_ldpc_max_parity_rows = 46;
inline constexpr unsigned int k_ldpc_max_doubled_rows = 22 + 4;

struct lib_nr_ldpc_row_layout_t
{
    explicit lib_nr_ldpc_row_layout_t(unsigned int lifting_size);

    unsigned int z;
    unsigned int words;         // from row to row; 4 and 8 have loops of their own
    unsigned int doubled_words; // from doubled row to doubled row
};

/// Where a rotated row begins among doubled rows.
struct lib_nr_ldpc_term_t
{
    std::uint32_t word;
    std::uint32_t bit;
};

/// The parity blocks of one code block.
struct lib_nr_ldpc_packed_parity_t
{
    std::array<std::uint64_t, std::size_t{k_ldpc_max_parity_rows} * k_ldpc_max_row_words> words;
};

/// The row in doubled column `column`, rotated left by `rotation`, which is below Z.
lib_nr_ldpc_term_t lib_nr_ldpc_rotated_row(const lib_nr_ldpc_row_layout_t& layout, unsigned int column,
                                           unsigned int rotation);
/// Doubles the Z bits that begin at a bit of a packed sequence; the sequence must go on for a word behind them.
void lib_nr_ldpc_double_row(const lib_nr_ldpc_row_layout_t& layout, const std::uint64_t* bits, std::size_t first_bit,
                            std::uint64_t* doubled);
/// Row r becomes the sum of its terms; those of row r end before `term_ends[r]`, the first row's begin at `first_term`.
void lib_nr_ldpc_sum_rows(const lib_nr_ldpc_row_layout_t& layout, const lib_nr_ldpc_term_t* terms,
                          std::uint32_t first_term, const std::uint32_t* term_ends, unsigned int row_count,
                          const std::uint64_t* doubled, std::uint64_t* rows);
/// Solves the core of a known graph and set (0 to 7): four parity rows from the sums of the four core rows over the
/// information columns. `doubled` is room for one doubled row and a word.
void lib_nr_ldpc_solve_core(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int set_index,
                            const lib_nr_ldpc_row_layout_t& layout, const std::uint64_t* s, std::uint64_t* parity,
                            std::uint64_t* doubled);

} // namespace vek::nr_mod_lib
