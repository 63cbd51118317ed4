#include "phy_common/lib_nr_ldpc_rate_match.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned char k_filler = 255;
constexpr unsigned int k_circular_buffer_limit = 25344;

const unsigned char* find_filler(const unsigned char* first, const unsigned char* last)
{
    if (first == last)
        return last;
    const void* found = std::memchr(first, k_filler, static_cast<std::size_t>(last - first));
    return found == nullptr ? last : static_cast<const unsigned char*>(found);
}

const unsigned char* skip_fillers(const unsigned char* first, const unsigned char* last)
{
    constexpr std::array<unsigned char, 16> k_run = {255, 255, 255, 255, 255, 255, 255, 255,
                                                     255, 255, 255, 255, 255, 255, 255, 255};
    while (last - first >= std::ptrdiff_t{16} && std::memcmp(first, k_run.data(), k_run.size()) == 0)
        first += k_run.size();
    while (first != last && *first == k_filler)
        ++first;
    return first;
}

// Copies at most `room` elements that are not fillers, run by run; the number copied.
std::size_t copy_without_fillers(const unsigned char* first, const unsigned char* last, unsigned char* out,
                                 std::size_t room)
{
    std::size_t copied = 0;
    while (true) {
        first = skip_fillers(first, last);
        const std::size_t limit = std::min(room - copied, static_cast<std::size_t>(last - first));
        if (limit == 0)
            return copied;
        const unsigned char* run_end = find_filler(first, first + limit);
        const std::size_t length = static_cast<std::size_t>(run_end - first);
        std::memcpy(out + copied, first, length);
        copied += length;
        first = run_end;
    }
}

constexpr std::size_t k_vector_size = 16;
typedef unsigned char byte_vector_t __attribute__((vector_size(k_vector_size)));

// Columns of `row_count` bytes each, from as many rows of 16: a perfect shuffle repeated log2(row_count) times.
template <unsigned int row_count>
[[gnu::always_inline]] inline void transpose(std::array<byte_vector_t, row_count>& rows)
{
    for (unsigned int stage = 1; stage < row_count; stage *= 2) {
        std::array<byte_vector_t, row_count> shuffled;
        for (unsigned int i = 0; i < row_count / 2; ++i) {
            const byte_vector_t a = rows[i];
            const byte_vector_t b = rows[i + row_count / 2];
            shuffled[2 * i] = __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
            shuffled[2 * i + 1] =
                __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31);
        }
        rows = shuffled;
    }
}

// Bytes `first_row` to `first_row` + `band` - 1 of each column of `order` bytes, from rows of `columns` bytes. With
// `padded_band` above `band` each column is written with a few bytes too many, which the next column puts right.
template <unsigned int band, unsigned int padded_band>
void interleave_band(const unsigned char* in, std::size_t columns, unsigned int order, unsigned char* out)
{
    std::size_t column = 0;
    const std::size_t spill = padded_band == band ? 0 : 1;
    for (; column + k_vector_size + spill <= columns; column += k_vector_size) {
        std::array<byte_vector_t, padded_band> rows{};
        for (unsigned int row = 0; row < band; ++row)
            std::memcpy(&rows[row], in + row * columns + column, k_vector_size);
        transpose<padded_band>(rows);
        unsigned char* target = out + column * order;
        if (order == padded_band) {
            std::memcpy(target, rows.data(), sizeof(rows));
            continue;
        }
        std::array<unsigned char, k_vector_size * padded_band> bytes;
        std::memcpy(bytes.data(), rows.data(), sizeof(rows));
        for (std::size_t i = 0; i < k_vector_size; ++i)
            std::memcpy(target + i * order, bytes.data() + i * padded_band, padded_band);
    }
    for (; column < columns; ++column)
        for (unsigned int row = 0; row < band; ++row)
            out[column * order + row] = in[row * columns + column];
}

} // namespace

lib_nr_ldpc_rate_match_t::lib_nr_ldpc_rate_match_t()
{
    _update_code_block_size();
    _update_version_start_index();
    _update_rate_matching_output_length();
}

bool lib_nr_ldpc_rate_match_t::set_i_lbrm(unsigned int i_lbrm)
{
    if (i_lbrm > 1)
        return false;
    m_i_lbrm = i_lbrm;
    _update_code_block_size();
    _update_version_start_index();
    return true;
}

bool lib_nr_ldpc_rate_match_t::set_q_m(unsigned int q_m)
{
    if (q_m == 0) {
        std::cout << "lib_nr_ldpc_rate_match_t::set_q_m Report : Invalid Modulation Order!" << std::endl;
        return false;
    }
    m_q_m = q_m;
    return true;
}

bool lib_nr_ldpc_rate_match_t::set_n_l(unsigned int n_l)
{
    if (n_l == 0) {
        std::cout << "lib_nr_ldpc_rate_match_t::set_q_m Report : Invalid Layer Number!" << std::endl;
        return false;
    }
    m_n_l = n_l;
    return true;
}

void lib_nr_ldpc_rate_match_t::set_g(unsigned int g) { m_g = g; }

bool lib_nr_ldpc_rate_match_t::set_c(unsigned int c)
{
    if (c == 0) {
        std::cout << "lib_nr_ldpc_rate_match_t::set_q_m Report : Invalid Code Block Number!" << std::endl;
        return false;
    }
    m_c = c;
    return true;
}

void lib_nr_ldpc_rate_match_t::set_base_graph_type(lib_nr_ldpc_base_graph_type_t base_graph)
{
    m_base_graph = base_graph;
    _update_code_block_size();
    _update_version_start_index();
}

void lib_nr_ldpc_rate_match_t::set_rv_id(unsigned int rv_id)
{
    m_rv_id = std::clamp(rv_id, m_rv_minimum, m_rv_maximum);
    _update_version_start_index();
}

bool lib_nr_ldpc_rate_match_t::deal_rate_match(const std::vector<std::vector<unsigned char>>& in,
                                               std::vector<std::vector<unsigned char>>& out)
{
    if (!_set_input_data_length(in)) {
        std::cout << "lib_nr_ldpc_rate_match_t::deal_ldpc_rate_match Report : Input Code block Length Error!"
                  << std::endl;
        out.clear();
        return false;
    }
    _update_rate_matching_output_length();
    // Built apart, since `out` may be `in`.
    std::vector<std::vector<unsigned char>> matched(in.size());
    std::vector<unsigned char> selected;
    for (std::size_t block = 0; block < in.size(); ++block) {
        _deal_bit_selection(in[block], m_output_length_list[block], selected);
        _deal_bit_interleaving(selected, matched[block]);
    }
    out = std::move(matched);
    return true;
}

bool lib_nr_ldpc_rate_match_t::_set_input_data_length(const std::vector<std::vector<unsigned char>>& in)
{
    if (in.size() != m_c)
        return false;
    const std::size_t length = in.front().size();
    for (const auto& block : in) {
        if (block.size() != length) {
            std::cout << "lib_nr_ldpc_rate_match_t::_set_input_data_length Report : LDPC Encoded Sequence Length NOT "
                         "Equal!"
                      << std::endl;
            return false;
        }
    }
    const unsigned int columns = lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length(m_base_graph);
    if (columns == 0 || length % columns != 0) {
        std::cout << "lib_nr_ldpc_rate_match_t::_set_input_data_length Report : Illegal LDPC Encoded Sequence Length!"
                  << std::endl;
        return false;
    }
    const std::size_t z = length / columns;
    if (z > k_circular_buffer_limit || !_set_lifting_size(static_cast<unsigned int>(z))) {
        std::cout << "lib_nr_ldpc_rate_match_t::_set_input_data_length Report : Illegal LDPC Matrix Lifting Size!"
                  << std::endl;
        return false;
    }
    return true;
}

bool lib_nr_ldpc_rate_match_t::_set_lifting_size(unsigned int z)
{
    if (!lib_nr_ldpc_coding_t::check_lifting_size_value(z))
        return false;
    m_lifting_size = z;
    _update_code_block_size();
    _update_version_start_index();
    return true;
}

void lib_nr_ldpc_rate_match_t::_update_code_block_size()
{
    m_circular_buffer_length = lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length(m_base_graph, m_lifting_size);
    if (m_i_lbrm != 0)
        m_circular_buffer_length = std::min(m_circular_buffer_length, k_circular_buffer_limit);
}

void lib_nr_ldpc_rate_match_t::_update_version_start_index()
{
    if (m_base_graph != LIB_NR_LDPC_BASE_GRAPH_1 && m_base_graph != LIB_NR_LDPC_BASE_GRAPH_2) {
        std::cout << "lib_nr_ldpc_rate_match_t::_update_version_start_index Report : Unknown Base Graph Type!"
                  << std::endl;
        return;
    }
    if (m_rv_id > 3) {
        std::cout << "lib_nr_ldpc_rate_match_t::_update_version_start_index Report : Invalid m_redundancy "
                     "verison_index!"
                  << std::endl;
        return;
    }
    m_start_index = get_start_index(m_base_graph, m_lifting_size, m_circular_buffer_length, m_rv_id);
}

unsigned int lib_nr_ldpc_rate_match_t::get_start_index(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z,
                                                       unsigned int n_cb, unsigned int rv_id)
{
    // TS 38.212 Table 5.4.2.1-2, in units of N_cb / (66 Z) and N_cb / (50 Z).
    constexpr std::array<unsigned int, 4> k_graph_1 = {0, 17, 33, 56};
    constexpr std::array<unsigned int, 4> k_graph_2 = {0, 13, 25, 43};
    const bool is_graph_1 = base_graph == LIB_NR_LDPC_BASE_GRAPH_1;
    const unsigned int numerator = (is_graph_1 ? k_graph_1 : k_graph_2)[rv_id] * n_cb;
    return numerator / ((is_graph_1 ? 66 : 50) * z) * z;
}

void lib_nr_ldpc_rate_match_t::_update_rate_matching_output_length()
{
    m_output_length_list = get_output_lengths(m_g, m_q_m, m_n_l, m_c);
}

std::vector<std::uint32_t> lib_nr_ldpc_rate_match_t::get_output_lengths(unsigned int g, unsigned int q_m,
                                                                        unsigned int n_l, unsigned int c)
{
    const std::uint64_t bits_per_unit = std::uint64_t{n_l} * q_m;
    const std::uint64_t units = g / bits_per_unit;
    const std::uint64_t longer_blocks = units % c;
    const std::uint64_t short_length = bits_per_unit * (units / c);
    // Where no block is longer the second length is not used; it need not fit.
    std::vector<std::uint32_t> lengths(c, static_cast<std::uint32_t>(short_length));
    std::fill(lengths.end() - static_cast<std::ptrdiff_t>(longer_blocks), lengths.end(),
              static_cast<std::uint32_t>(short_length + bits_per_unit));
    return lengths;
}

void lib_nr_ldpc_rate_match_t::_deal_bit_selection(const std::vector<unsigned char>& in, unsigned int length,
                                                   std::vector<unsigned char>& selected) const
{
    selected.resize(length);
    const unsigned char* buffer = in.data();
    std::size_t count =
        copy_without_fillers(buffer + m_start_index, buffer + m_circular_buffer_length, selected.data(), length);
    count += copy_without_fillers(buffer, buffer + m_start_index, selected.data() + count, length - count);
    if (count == 0) {
        selected.clear();
        return;
    }
    // Further rounds of the buffer repeat the first; what is there doubles with each copy.
    while (count < length) {
        const std::size_t repeated = std::min<std::size_t>(count, length - count);
        std::memcpy(selected.data() + count, selected.data(), repeated);
        count += repeated;
    }
}

void lib_nr_ldpc_rate_match_t::_deal_bit_interleaving(const std::vector<unsigned char>& selected,
                                                      std::vector<unsigned char>& out) const
{
    out.resize(selected.size());
    const std::size_t columns = selected.size() / m_q_m;
    if (columns == 0)
        return;
    const unsigned char* in = selected.data();
    if (m_q_m == 6) {
        interleave_band<6, 8>(in, columns, m_q_m, out.data());
        return;
    }
    unsigned int row = 0;
    for (; m_q_m - row >= 8; row += 8)
        interleave_band<8, 8>(in + row * columns, columns, m_q_m, out.data() + row);
    for (; m_q_m - row >= 4; row += 4)
        interleave_band<4, 4>(in + row * columns, columns, m_q_m, out.data() + row);
    for (; m_q_m - row >= 2; row += 2)
        interleave_band<2, 2>(in + row * columns, columns, m_q_m, out.data() + row);
    for (; row < m_q_m; ++row)
        interleave_band<1, 1>(in + row * columns, columns, m_q_m, out.data() + row);
}

} // namespace vek::nr_mod_lib
