#include "receiver/ldpc_decoder.h"

#include "phy_common/tables/lib_nr_ldpc_base_graph_table.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace nr_test
{

namespace
{

/// The matrix from a table whose rows have a row, a column and a value V for each set: the shift is V mod Z.
template <typename table_t>
ldpc_matrix_t make_ldpc_matrix(const table_t& table, std::size_t set, unsigned int z)
{
    ldpc_matrix_t matrix;
    matrix.z = z;
    matrix.information_columns = table.size() == 316 ? 22 : 10;
    for (const auto& edge : table) {
        matrix.edges.push_back({edge.row, edge.column, edge.shift[set] % z});
        matrix.rows = edge.row + 1u;
    }
    return matrix;
}

constexpr double k_certain = 1e6;

// Table 5.3.2-1: the sets begin with 2 and the odd numbers from 3 on; each size is twice the one before.
unsigned int lifting_set(unsigned int z)
{
    while (z % 2 == 0 && z > 2)
        z /= 2;
    return z == 2 ? 0 : (z - 1) / 2;
}

bool is_lifting_size(unsigned int z)
{
    unsigned int odd = z;
    while (odd % 2 == 0)
        odd /= 2;
    return z >= 2 && z <= 384 && odd <= 15;
}

std::size_t divide_up(std::size_t value, std::size_t divisor) { return (value + divisor - 1) / divisor; }

// Clause 5.2.2, where B counts the CRC of the transport block.
std::size_t information_columns_in_use(unsigned int base_graph, std::size_t b)
{
    if (base_graph == 1)
        return 22;
    return b > 640 ? 10 : b > 560 ? 9 : b > 192 ? 8 : 6;
}

// One row of the matrix at one place: its bits' indices in the word.
std::vector<std::vector<std::size_t>> checks_of(const ldpc_matrix_t& matrix)
{
    std::vector<std::vector<std::size_t>> checks(std::size_t{matrix.rows} * matrix.z);
    for (const ldpc_edge_t& edge : matrix.edges)
        for (std::size_t i = 0; i < matrix.z; ++i)
            checks[edge.row * matrix.z + i].push_back(edge.column * matrix.z + (i + edge.shift) % matrix.z);
    return checks;
}

bits_t hard_bits(const std::vector<double>& soft_bits)
{
    bits_t bits(soft_bits.size());
    for (std::size_t i = 0; i < bits.size(); ++i)
        bits[i] = soft_bits[i] < 0;
    return bits;
}

bool satisfies(const std::vector<std::vector<std::size_t>>& checks, const bits_t& bits)
{
    for (const std::vector<std::size_t>& check : checks) {
        unsigned int sum = 0;
        for (const std::size_t bit : check)
            sum += bits[bit];
        if (sum % 2 != 0)
            return false;
    }
    return true;
}

} // namespace

bool satisfies_every_check(const ldpc_matrix_t& matrix, const bits_t& word)
{
    return satisfies(checks_of(matrix), word);
}

ldpc_matrix_t ldpc_matrix(unsigned int base_graph, unsigned int z)
{
    using namespace vek::nr_mod_lib;
    return base_graph == 1 ? make_ldpc_matrix(lib_nr_ldpc_base_graph_1_table(), lifting_set(z), z)
                           : make_ldpc_matrix(lib_nr_ldpc_base_graph_2_table(), lifting_set(z), z);
}

ldpc_segmentation_t::ldpc_segmentation_t(unsigned int base_graph, std::size_t transport_block_size)
{
    crc_length = transport_block_size > 3824 ? 24 : 16;
    const std::size_t b = transport_block_size + crc_length;
    const std::size_t largest = base_graph == 1 ? 8448 : 3840;
    block_crc_length = b > largest ? 24 : 0;
    block_count = b > largest ? divide_up(b, largest - 24) : 1;
    used_length = (b + block_count * block_crc_length) / block_count;
    z = 2;
    while (!is_lifting_size(z) || information_columns_in_use(base_graph, b) * z < used_length)
        ++z;
    block_length = (base_graph == 1 ? 22 : 10) * std::size_t{z};
}

ldpc_receiver_t::ldpc_receiver_t(unsigned int base_graph, std::size_t transport_block_size)
    : m_transport_block_size(transport_block_size),
      m_segmentation(base_graph, transport_block_size),
      m_matrix(ldpc_matrix(base_graph, m_segmentation.z)),
      m_words(m_segmentation.block_count, std::vector<double>(std::size_t{m_matrix.columns()} * m_matrix.z))
{
    for (std::vector<double>& word : m_words)
        for (std::size_t i = m_segmentation.used_length; i < m_segmentation.block_length; ++i)
            word[i] = k_certain;
}

bool ldpc_receiver_t::add(const ldpc_transmission_t& transmission, const std::vector<double>& soft_bits)
{
    const bool is_graph_1 = m_matrix.information_columns == 22;
    const std::size_t z = m_matrix.z;
    const std::size_t hidden = 2 * z;
    const std::size_t buffer_length = m_words.front().size() - hidden;
    // Table 5.4.2.1-2 for a buffer that is not limited.
    const std::size_t start[4] = {0, is_graph_1 ? 17 * z : 13 * z, is_graph_1 ? 33 * z : 25 * z,
                                  is_graph_1 ? 56 * z : 43 * z};
    const std::size_t unit = std::size_t{transmission.order} * transmission.layers;
    const std::size_t units = transmission.G / unit;
    const std::size_t blocks = m_words.size();

    bool is_consistent = true;
    std::size_t first = 0;
    for (std::size_t block = 0; block < blocks; ++block) {
        const bool is_longer = block >= blocks - units % blocks;
        const std::size_t length = unit * (is_longer ? divide_up(units, blocks) : units / blocks);
        if (first + length > soft_bits.size())
            return false;
        std::size_t place = start[transmission.rv];
        const std::size_t columns = length / transmission.order;
        for (std::size_t k = 0; k < length; ++k, ++place) {
            auto is_filler = [&] {
                const std::size_t bit = place % buffer_length + hidden;
                return bit >= m_segmentation.used_length && bit < m_segmentation.block_length;
            };
            while (is_filler())
                ++place;
            double& known = m_words[block][place % buffer_length + hidden];
            const double heard = soft_bits[first + k % columns * transmission.order + k / columns];
            is_consistent = is_consistent && known * heard >= 0;
            known += heard;
        }
        first += length;
    }
    return is_consistent && first == soft_bits.size();
}

std::optional<bits_t> ldpc_receiver_t::decode() const
{
    bits_t joined;
    for (const std::vector<double>& word : m_words) {
        std::optional<bits_t> bits = ldpc_decode(m_matrix, word);
        if (!bits)
            return std::nullopt;
        bits->resize(m_segmentation.used_length);
        if (m_segmentation.block_crc_length != 0 && !passes_crc(*bits, 0x1800063, 24))
            return std::nullopt;
        const std::size_t payload = m_segmentation.used_length - m_segmentation.block_crc_length;
        joined.insert(joined.end(), bits->begin(), bits->begin() + static_cast<std::ptrdiff_t>(payload));
    }
    const bool is_long = m_segmentation.crc_length == 24;
    if (joined.size() != m_transport_block_size + m_segmentation.crc_length ||
        !passes_crc(joined, is_long ? 0x1864CFB : 0x11021, is_long ? 24 : 16))
        return std::nullopt;
    joined.resize(m_transport_block_size);
    return joined;
}

std::optional<bits_t> ldpc_decode(const ldpc_matrix_t& matrix, std::vector<double> soft_bits)
{
    constexpr unsigned int k_max_iterations = 60;
    constexpr double k_normalisation = 0.8;
    const std::vector<std::vector<std::size_t>> checks = checks_of(matrix);
    std::vector<std::vector<double>> messages;
    for (const auto& check : checks)
        messages.emplace_back(check.size());

    for (unsigned int iteration = 0; iteration < k_max_iterations; ++iteration) {
        bool is_done = true;
        for (std::size_t c = 0; c < checks.size(); ++c) {
            const std::vector<std::size_t>& check = checks[c];
            bool is_odd = false;
            bool has_unknown = false;
            double least = std::numeric_limits<double>::max();
            double second = least;
            bool sign = false;
            for (std::size_t e = 0; e < check.size(); ++e) {
                double& soft = soft_bits[check[e]];
                is_odd ^= soft < 0;
                has_unknown |= soft == 0;
                soft -= messages[c][e];
                sign ^= soft < 0;
                const double size = std::abs(soft);
                second = std::min(second, std::max(size, least));
                least = std::min(least, size);
            }
            for (std::size_t e = 0; e < check.size(); ++e) {
                double& soft = soft_bits[check[e]];
                const double size = k_normalisation * (std::abs(soft) == least ? second : least);
                messages[c][e] = sign != (soft < 0) ? -size : size;
                soft += messages[c][e];
            }
            is_done = is_done && !is_odd && !has_unknown;
        }
        // What one check has corrected may have upset an earlier one.
        if (is_done && satisfies(checks, hard_bits(soft_bits)))
            return hard_bits(soft_bits);
    }
    return std::nullopt;
}

} // namespace nr_test
