#include "phy_common/lib_nr_polar_coding.h"

#include "common/lib_bit_packing.h"
#include "phy_common/lib_nr_polar_rate_match.h"
#include "phy_common/tables/polar_tables.h"

#include <algorithm>
#include <array>
#include <bit>
#include <iostream>
#include <iterator>
#include <utility>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_min_order_log2 = 5;
constexpr unsigned int k_max_order_log2 = 10;
constexpr unsigned int k_max_order = 1u << k_max_order_log2;
constexpr std::size_t k_max_interleaved_length = 164;

// What depends on the mother code alone.
struct mother_code_t
{
    std::vector<std::uint16_t> by_reliability; // the indices below N, most reliable first
    std::vector<unsigned int> subblock_interleaver;
};

const mother_code_t& mother_code(unsigned int order)
{
    static const std::array<mother_code_t, k_max_order_log2 - k_min_order_log2 + 1> codes = [] {
        std::array<mother_code_t, k_max_order_log2 - k_min_order_log2 + 1> built;
        for (unsigned int i = 0; i < built.size(); ++i) {
            const unsigned int n = 1u << (i + k_min_order_log2);
            const auto& sequence = polar_reliability_sequence();
            std::copy_if(sequence.rbegin(), sequence.rend(), std::back_inserter(built[i].by_reliability),
                         [n](unsigned int index) { return index < n; });
            lib_nr_polar_rate_match_t::genreate_subblock_interleave_sequence(n, built[i].subblock_interleaver);
        }
        return built;
    }();
    return codes[static_cast<std::size_t>(std::countr_zero(order)) - k_min_order_log2];
}

// The input interleaver of TS 38.212 clause 5.3.1.1 for every input length.
const std::vector<std::uint8_t>& input_interleaver(std::size_t length)
{
    static const std::vector<std::vector<std::uint8_t>> interleavers = [] {
        std::vector<std::vector<std::uint8_t>> built(k_max_interleaved_length + 1);
        for (std::size_t k = 0; k <= k_max_interleaved_length; ++k) {
            const std::size_t unused = k_max_interleaved_length - k;
            built[k].reserve(k);
            for (const std::uint8_t place : polar_input_interleaver())
                if (place >= unused)
                    built[k].push_back(static_cast<std::uint8_t>(place - unused));
        }
        return built;
    }();
    return interleavers[length];
}

// u times G_N in place, on bits packed first lowest. Stage s adds bit i + 2^s to bit i wherever i lacks that power:
// the six stages inside a word by shifts, the rest word by word.
void multiply_by_generator(std::uint64_t* words, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        std::uint64_t word = words[i];
        word ^= (word >> 1) & 0x5555555555555555u;
        word ^= (word >> 2) & 0x3333333333333333u;
        word ^= (word >> 4) & 0x0F0F0F0F0F0F0F0Fu;
        word ^= (word >> 8) & 0x00FF00FF00FF00FFu;
        word ^= (word >> 16) & 0x0000FFFF0000FFFFu;
        word ^= word >> 32;
        words[i] = word;
    }
    for (std::size_t half = 1; half < count; half *= 2)
        for (std::size_t block = 0; block < count; block += 2 * half)
            for (std::size_t i = block; i < block + half; ++i)
                words[i] ^= words[i + half];
}

unsigned int ceil_log2(std::uint64_t value)
{
    return value < 2 ? 0 : static_cast<unsigned int>(std::bit_width(value - 1));
}

bool is_order(std::size_t length)
{
    return std::has_single_bit(length) && length >= (1u << k_min_order_log2) && length <= k_max_order;
}

} // namespace

bool deal_matrix_transform(const std::vector<std::vector<unsigned char>>& matrix,
                           std::map<unsigned int, lib_nr_packed_matrix_t>& store)
{
    const std::size_t order = matrix.size();
    if (std::any_of(matrix.begin(), matrix.end(), [order](const auto& row) { return row.size() != order; })) {
        std::cout << "lib_nr_polar_coding.cpp::deal_matrix_transform Report : Input Matrix shold be Square Matrix!"
                  << std::endl;
        return false;
    }
    if (order < 32 || !std::has_single_bit(order)) {
        std::cout << "lib_nr_polar_coding.cpp::deal_matrix_transform Report : Unexpected Input Matrix Order!"
                  << std::endl;
        return false;
    }
    lib_nr_packed_matrix_t packed(order, std::vector<std::uint32_t>(order / 32));
    for (std::size_t row = 0; row < order; ++row)
        for (std::size_t column = 0; column < order; ++column)
            packed[row][column / 32] = (packed[row][column / 32] << 1) | (matrix[row][column] & 1u);
    store[static_cast<unsigned int>(order)] = std::move(packed);
    return true;
}

bool lib_nr_polar_coding_t::set_n_max(unsigned int n_max)
{
    if (n_max < k_min_order_log2 || n_max > k_max_order_log2)
        return false;
    m_n_max = n_max;
    return true;
}

bool lib_nr_polar_coding_t::set_i_il(unsigned int i_il)
{
    if (i_il > 1)
        return false;
    m_i_il = i_il;
    return true;
}

void lib_nr_polar_coding_t::set_n_pc(unsigned int n_pc)
{
    if (n_pc == m_n_pc)
        return;
    m_n_pc = n_pc;
    m_non_frozen_list_valid = false;
    m_parity_list_valid = false;
}

bool lib_nr_polar_coding_t::set_n_pc_wm(unsigned int n_pc_wm)
{
    if (n_pc_wm > m_n_pc)
        return false;
    if (n_pc_wm != m_n_pc_wm) {
        m_n_pc_wm = n_pc_wm;
        m_parity_list_valid = false;
    }
    return true;
}

void lib_nr_polar_coding_t::set_rate_matching_output_length(unsigned int output_length)
{
    if (output_length == m_e)
        return;
    m_e = output_length;
    m_non_frozen_list_valid = false;
    m_parity_list_valid = false;
}

bool lib_nr_polar_coding_t::deal_polar_coding(const std::vector<unsigned char>& in, std::vector<unsigned char>& out)
{
    std::vector<unsigned char> interleaved;
    const std::size_t length = in.size();
    const bool valid = _check_input_data_length(length) && _deal_interleaving(in, interleaved);
    out.clear();
    if (!valid)
        return false;
    _set_input_data_length(static_cast<unsigned int>(length));
    _init_process_parameter();
    _generate_u_sequence(interleaved, out);
    return _deal_coding_matrix_multiply(out, out);
}

const std::vector<unsigned int>& lib_nr_polar_coding_t::get_polar_sequence()
{
    static const std::vector<unsigned int> sequence(polar_reliability_sequence().begin(),
                                                    polar_reliability_sequence().end());
    return sequence;
}

const std::vector<unsigned int>& lib_nr_polar_coding_t::get_interleaving_pattern()
{
    static const std::vector<unsigned int> pattern(polar_input_interleaver().begin(), polar_input_interleaver().end());
    return pattern;
}

const std::map<unsigned int, lib_nr_packed_matrix_t>& lib_nr_polar_coding_t::get_coding_matrix()
{
    static const auto matrices = _init_coding_matrix();
    return matrices;
}

const std::map<unsigned int, std::map<unsigned int, unsigned int>>& lib_nr_polar_coding_t::get_row_weight_data()
{
    static const auto weights = _init_row_weight_data();
    return weights;
}

std::map<unsigned int, lib_nr_packed_matrix_t> lib_nr_polar_coding_t::_init_coding_matrix()
{
    std::map<unsigned int, lib_nr_packed_matrix_t> matrices;
    std::vector<std::vector<unsigned char>> rows = {{1, 1}, {0, 1}};
    while (rows.size() < k_max_order) {
        const std::size_t order = rows.size();
        rows.resize(2 * order);
        for (std::size_t i = 0; i < order; ++i) {
            rows[i + order].assign(order, 0);
            rows[i + order].insert(rows[i + order].end(), rows[i].begin(), rows[i].end());
            rows[i].insert(rows[i].end(), rows[i + order].begin() + static_cast<std::ptrdiff_t>(order),
                           rows[i + order].end());
        }
        if (is_order(rows.size()))
            deal_matrix_transform(rows, matrices);
    }
    return matrices;
}

std::map<unsigned int, std::map<unsigned int, unsigned int>> lib_nr_polar_coding_t::_init_row_weight_data()
{
    std::map<unsigned int, std::map<unsigned int, unsigned int>> weights;
    for (const auto& [order, matrix] : get_coding_matrix())
        for (unsigned int j = 0; j < order; ++j)
            weights[order][j] =
                static_cast<unsigned int>(std::count_if(matrix.begin(), matrix.end(), [j](const auto& row) {
                    return ((row[j / 32] >> (31 - j % 32)) & 1u) != 0;
                }));
    return weights;
}

bool lib_nr_polar_coding_t::_check_input_data_length(std::size_t length) const
{
    if (m_e < m_n_pc + std::uint64_t{length}) {
        std::cout << "lib_nr_polar_coding_t::_check_input_data_length Report : Output Sequence is Overlength!"
                  << std::endl;
        return false;
    }
    if (m_i_il != 0 && length > k_max_interleaved_length) {
        std::cout << "lib_nr_polar_coding_t::_check_input_data_length Report : Input Sequence For Interleaving is "
                     "Overlength!"
                  << std::endl;
        return false;
    }
    return true;
}

void lib_nr_polar_coding_t::_set_input_data_length(unsigned int length)
{
    if (length == m_k)
        return;
    m_k = length;
    m_non_frozen_list_valid = false;
    m_parity_list_valid = false;
}

void lib_nr_polar_coding_t::_init_process_parameter()
{
    _calculate_coding_output_length();
    _generate_non_frozen_bit_index_arr();
    _generate_parity_check_bit_index_arr();
}

// The rates are compared in whole numbers, which is exact.
void lib_nr_polar_coding_t::_calculate_coding_output_length()
{
    const std::uint64_t e = m_e;
    const std::uint64_t k = m_k;
    unsigned int n_e = ceil_log2(e);
    if (n_e > 0 && 8 * e <= 9 * (std::uint64_t{1} << (n_e - 1)) && 16 * k < 9 * e)
        --n_e;
    const unsigned int n_k = ceil_log2(8 * k);
    const unsigned int n = std::max(std::min({n_e, n_k, m_n_max}), k_min_order_log2);
    if (m_n == 1u << n)
        return;
    m_n = 1u << n;
    m_non_frozen_list_valid = false;
    m_parity_list_valid = false;
}

// TS 38.212 clause 5.4.1.1: bits that rate matching drops are frozen, and so are those that puncturing spoils.
void lib_nr_polar_coding_t::_generate_non_frozen_bit_index_arr()
{
    if (m_non_frozen_list_valid)
        return;
    const mother_code_t& code = mother_code(m_n);
    std::array<unsigned char, k_max_order> frozen;
    std::fill_n(frozen.begin(), m_n, static_cast<unsigned char>(0));
    if (m_e < m_n) {
        const auto& dropped = code.subblock_interleaver;
        if (std::uint64_t{16} * m_k > std::uint64_t{7} * m_e) { // shortening
            for (unsigned int i = m_e; i < m_n; ++i)
                frozen[dropped[i]] = 1;
        }
        else {
            for (unsigned int i = 0; i < m_n - m_e; ++i)
                frozen[dropped[i]] = 1;
            const unsigned int first_usable = 4 * m_e >= 3 * m_n ? 3 * m_n / 4 - m_e / 2 : 9 * m_n / 16 - m_e / 4;
            std::fill_n(frozen.begin(), first_usable, static_cast<unsigned char>(1));
        }
    }
    // Each index is written where the next non-frozen one belongs; a frozen one is written over.
    const std::size_t wanted = std::min<std::uint64_t>(std::uint64_t{m_k} + m_n_pc, m_n);
    m_non_frozen_list.resize(wanted);
    std::size_t found = 0;
    for (std::size_t i = 0; i < m_n && found < wanted; ++i) {
        const unsigned int index = code.by_reliability[i];
        m_non_frozen_list[found] = index;
        found += 1u - frozen[index];
    }
    m_non_frozen_list.resize(found);
    m_non_frozen_list_valid = true;
}

// TS 38.212 clause 5.3.1.2. The weight of row j of G_N is 2 to the number of ones in j, so bit counts order as weights.
void lib_nr_polar_coding_t::_generate_parity_check_bit_index_arr()
{
    if (m_parity_list_valid)
        return;
    m_parity_list.clear();
    m_parity_list_valid = true;
    if (m_n_pc == 0)
        return;
    const std::size_t by_weight = std::min(m_n_pc_wm, m_n_pc);
    const std::size_t least_reliable = std::min<std::size_t>(m_n_pc - by_weight, m_non_frozen_list.size());
    m_parity_list.assign(m_non_frozen_list.end() - static_cast<std::ptrdiff_t>(least_reliable),
                         m_non_frozen_list.end());

    const std::size_t candidates = std::min<std::size_t>(m_k, m_non_frozen_list.size());
    std::size_t placed = 0;
    for (int weight_log2 = 0; weight_log2 <= static_cast<int>(k_max_order_log2); ++weight_log2)
        for (std::size_t i = 0; i < candidates && placed < by_weight; ++i)
            if (std::popcount(m_non_frozen_list[i]) == weight_log2) {
                m_parity_list.push_back(m_non_frozen_list[i]);
                ++placed;
            }
}

bool lib_nr_polar_coding_t::_deal_interleaving(const std::vector<unsigned char>& in,
                                               std::vector<unsigned char>& out) const
{
    if (m_i_il == 0) {
        out = in;
        return true;
    }
    if (in.size() > k_max_interleaved_length) {
        std::cout << "lib_nr_polar_coding_t::_deal_interleaving Report : Input Data is Too Long for Polar Coding with "
                     "Interleaving!"
                  << std::endl;
        return false;
    }
    const std::vector<std::uint8_t>& interleaver = input_interleaver(in.size());
    out.resize(in.size());
    std::transform(interleaver.begin(), interleaver.end(), out.begin(),
                   [source = in.data()](std::size_t k) { return source[k]; });
    return true;
}

// TS 38.212 clause 5.3.1.2. The register y of five places turns by one at each n, so its place 0 is the running sum of
// the input bits at indices equal to n modulo 5.
void lib_nr_polar_coding_t::_generate_u_sequence(const std::vector<unsigned char>& in,
                                                 std::vector<unsigned char>& u) const
{
    constexpr unsigned char input = 1;
    constexpr unsigned char parity = 3; // odd as well: both leave a mark below
    std::array<unsigned char, k_max_order> kind;
    const std::size_t scanned = std::max(m_n, 64u);
    std::fill_n(kind.begin(), scanned, static_cast<unsigned char>(0));
    for (const unsigned int index : m_non_frozen_list)
        kind[index] = input;
    for (const unsigned int index : m_parity_list)
        kind[index] = parity;

    u.assign(m_n, 0);
    // Plain pointers: through the vectors each byte stored would have the compiler read their fields anew.
    unsigned char* const target = u.data();
    const unsigned char* source = in.data();
    const unsigned char* const source_end = source + in.size();
    std::array<unsigned char, 5> sums{};
    const bool has_parity = !m_parity_list.empty();
    for (std::size_t first = 0; first < scanned; first += 64)
        for (std::uint64_t marks = common_lib::pack_word(kind.data() + first); marks != 0; marks &= marks - 1) {
            const std::size_t n = first + static_cast<std::size_t>(std::countr_zero(marks));
            if (has_parity && kind[n] == parity) {
                target[n] = sums[n % 5];
                continue;
            }
            target[n] = source != source_end ? *source++ : 0;
            if (has_parity)
                sums[n % 5] ^= target[n];
        }
}

bool lib_nr_polar_coding_t::_deal_coding_matrix_multiply(const std::vector<unsigned char>& u,
                                                         std::vector<unsigned char>& out)
{
    const std::size_t order = u.size();
    if (!is_order(order)) {
        std::cout << "lib_nr_polar_coding_t::_deal_coding_matrix_multiply Report : Unexpected Input Sequence Length!"
                  << std::endl;
        return false;
    }
    std::array<std::uint64_t, k_max_order / 64> words;
    const std::size_t word_count = (order + 63) / 64;
    common_lib::pack_bits(u.data(), order, words.data());
    multiply_by_generator(words.data(), word_count);
    out.resize(order);
    common_lib::unpack_bits(words.data(), order, out.data());
    return true;
}

} // namespace vek::nr_mod_lib
