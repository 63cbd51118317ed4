#include "phy_common/lib_nr_packed_code_word.h"

#include "common/lib_bit_packing.h"
#include "common/lib_target_clones.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"
#include "phy_common/lib_nr_ldpc_packed_rows.h"
#include "phy_common/lib_nr_ldpc_rate_match.h"
#include "phy_common/lib_nr_sequence_generator.h"

#include <algorithm>
#include <array>
#include <bit>

namespace vek::nr_mod_lib
{

namespace
{

using common_lib::append_packed_bits;
using common_lib::read_packed_bits;

constexpr std::size_t k_word_bits = 64;

/// Words for so many bits, and one behind them.
std::size_t words_for(std::size_t bits) { return bits / k_word_bits + 2; }

/// Appends a check to the bits before it; what stood behind them goes.
void append_parity(std::vector<std::uint64_t>& bits, std::size_t first_bit, std::size_t count, lib_nr_crc_type_t type,
                   unsigned int length)
{
    const std::size_t end = first_bit + count;
    bits.resize(std::max(bits.size(), words_for(end + length)));
    bits[end / k_word_bits] &= (std::uint64_t{1} << (end % k_word_bits)) - 1;
    const std::array<std::uint64_t, 2> parity = {
        lib_nr_crc_calculator_t::get_parity(type, bits.data(), first_bit, count), 0};
    append_packed_bits(parity.data(), 0, length, bits.data(), end);
}

/// The transpose of an 8 by 8 matrix of bits, bit 8 r + c being row r, column c.
constexpr std::uint64_t transposed(std::uint64_t x)
{
    std::uint64_t t = (x ^ (x >> 7)) & 0x00AA00AA00AA00AAu;
    x ^= t ^ (t << 7);
    t = (x ^ (x >> 14)) & 0x0000CCCC0000CCCCu;
    x ^= t ^ (t << 14);
    t = (x ^ (x >> 28)) & 0x00000000F0F0F0F0u;
    return x ^ t ^ (t << 28);
}

/// 64 symbols' part of 8 bits from as many rows of bits: byte i of `parts` has bit i of each row.
NR_MOD_LIB_TARGET_CLONES
void interleave_64(const std::uint64_t* rows, unsigned char* parts)
{
    std::array<std::uint64_t, 8> blocks{};
    for (unsigned int block = 0; block < 8; ++block)
        for (unsigned int row = 0; row < 8; ++row)
            blocks[block] |= ((rows[row] >> (8 * block)) & 0xFFu) << (8 * row);
    for (unsigned int block = 0; block < 8; ++block)
        common_lib::detail::store_8_bytes(transposed(blocks[block]), parts + 8 * block);
}

/// TS 38.212 clause 5.4.2.2: bit k of symbol j is bit k E / Q_m + j.
void interleave(const std::uint64_t* selected, std::size_t columns, unsigned int q_m, std::uint16_t* symbols)
{
    std::array<std::uint64_t, 8> rows;
    std::array<unsigned char, k_word_bits> parts;
    for (unsigned int first_row = 0; first_row < q_m; first_row += 8) {
        const unsigned int row_count = std::min(q_m - first_row, 8u);
        rows.fill(0);
        for (std::size_t j = 0; j < columns; j += k_word_bits) {
            for (unsigned int row = 0; row < row_count; ++row)
                rows[row] = read_packed_bits(selected, (first_row + row) * columns + j);
            interleave_64(rows.data(), parts.data());
            const std::size_t count = std::min(columns - j, k_word_bits);
            for (std::size_t i = 0; i < count; ++i)
                symbols[j + i] = static_cast<std::uint16_t>(first_row == 0 ? parts[i] : symbols[j + i] | parts[i] << 8);
        }
    }
}

/// Adds to each symbol its bits of a packed sequence, from `first_bit` on.
void add_bits(const std::uint64_t* sequence, std::size_t first_bit, unsigned int q_m, std::size_t count,
              std::uint16_t* symbols)
{
    if constexpr (std::endian::native == std::endian::little)
        if (q_m == 8) { // whole bytes
            const unsigned char* bytes = reinterpret_cast<const unsigned char*>(sequence) + first_bit / 8;
            for (std::size_t i = 0; i < count; ++i)
                symbols[i] = static_cast<std::uint16_t>(symbols[i] ^ bytes[i]);
            return;
        }
    const std::uint64_t mask = (std::uint64_t{1} << q_m) - 1;
    const std::size_t per_word = k_word_bits / q_m;
    for (std::size_t i = 0; i < count; i += per_word) {
        std::uint64_t bits = read_packed_bits(sequence, first_bit + i * q_m);
        for (std::size_t j = i; j < std::min(i + per_word, count); ++j, bits >>= q_m)
            symbols[j] = static_cast<std::uint16_t>(symbols[j] ^ (bits & mask));
    }
}

/// A part of a circular buffer, between two of its bits.
struct part_t
{
    std::size_t begin;
    std::size_t end;
};

/// One round of the circular buffer from `start` on, without the fillers.
std::array<part_t, 4> round_of(std::size_t start, part_t fillers, std::size_t length)
{
    const auto from = [](std::size_t least, part_t part) {
        return part_t{std::max(least, part.begin), std::max({least, part.begin, part.end})};
    };
    const auto until = [](std::size_t most, part_t part) {
        return part_t{part.begin, std::clamp(most, part.begin, part.end)};
    };
    const part_t first{0, fillers.begin};
    const part_t second{fillers.end, length};
    return {from(start, first), from(start, second), until(start, first), until(start, second)};
}

} // namespace

void lib_nr_packed_code_word_t::encode(std::vector<std::uint64_t>& payload, std::size_t payload_bits,
                                       const settings_t& settings, std::vector<std::uint16_t>& symbols)
{
    const lib_nr_crc_type_t type = lib_nr_ldpc_code_block_segmentation_t::get_transport_block_crc_type(payload_bits);
    const unsigned int crc_length = lib_nr_crc_calculator_t::get_crc_length(type);
    append_parity(payload, 0, payload_bits, type, crc_length);

    lib_nr_ldpc_code_block_segmentation_t segmentation;
    segmentation.set_base_graph_type(settings.base_graph);
    m_segments = segmentation.get_segments(payload_bits + crc_length);
    m_lengths = lib_nr_ldpc_rate_match_t::get_output_lengths(settings.g, settings.q_m, settings.layers,
                                                             static_cast<unsigned int>(m_segments.count));
    m_start_index = lib_nr_ldpc_rate_match_t::get_start_index(
        settings.base_graph, m_segments.lifting_size,
        lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length(settings.base_graph, m_segments.lifting_size),
        settings.rv);

    std::size_t sent = 0;
    for (const std::uint32_t length : m_lengths)
        sent += length;
    m_scrambling.resize(words_for(sent));
    lib_nr_sequence_generator_t::generate_pseudo_random_words(settings.c_init, m_scrambling.size(),
                                                              m_scrambling.data());
    symbols.resize(sent / settings.q_m);

    std::size_t place = 0;
    for (std::size_t block = 0; block < m_segments.count; ++block) {
        const std::size_t columns = m_lengths[block] / settings.q_m;
        _encode_block(payload, block * (m_segments.used_length - m_segments.crc_length));
        _select(settings, m_lengths[block]);
        interleave(m_selected.data(), columns, settings.q_m, symbols.data() + place);
        add_bits(m_scrambling.data(), place * settings.q_m, settings.q_m, columns, symbols.data() + place);
        place += columns;
    }
}

void lib_nr_packed_code_word_t::scramble(const std::vector<std::uint64_t>& payload, const settings_t& settings,
                                         std::vector<std::uint16_t>& symbols)
{
    const std::size_t count = settings.g / settings.q_m;
    m_scrambling.resize(words_for(settings.g));
    lib_nr_sequence_generator_t::generate_pseudo_random_words(settings.c_init, m_scrambling.size(),
                                                              m_scrambling.data());
    symbols.assign(count, 0);
    add_bits(payload.data(), 0, settings.q_m, count, symbols.data());
    add_bits(m_scrambling.data(), 0, settings.q_m, count, symbols.data());
}

/// A code block with its check, zeros for fillers.
void lib_nr_packed_code_word_t::_encode_block(const std::vector<std::uint64_t>& payload, std::size_t first_bit)
{
    const std::size_t payload_bits = m_segments.used_length - m_segments.crc_length;
    m_block.assign(words_for(m_segments.length), 0);
    append_packed_bits(payload.data(), first_bit, payload_bits, m_block.data(), 0);
    if (m_segments.crc_length != 0)
        append_parity(m_block, 0, payload_bits, LIB_NR_CRC_TYPE_24B, static_cast<unsigned int>(m_segments.crc_length));
}

/// TS 38.212 clause 5.4.2.1. Parity rows are made as far as the selection reads them.
void lib_nr_packed_code_word_t::_select(const settings_t& settings, std::size_t length)
{
    const unsigned int z = m_segments.lifting_size;
    const std::size_t punctured = std::size_t{2} * z;
    const std::size_t information = m_segments.length - punctured;
    const std::size_t buffer = lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length(settings.base_graph, z);
    const auto round =
        round_of(m_start_index, {std::max(m_segments.used_length, punctured) - punctured, information}, buffer);

    std::size_t first_row = k_ldpc_max_parity_rows;
    std::size_t end_row = 0;
    std::size_t left = length;
    for (part_t part : round) {
        part.end = std::min(part.end, part.begin + left);
        left -= part.end - part.begin;
        if (part.begin < part.end && part.end > information) {
            first_row = std::min(first_row, (std::max(part.begin, information) - information) / z);
            end_row = std::max(end_row, (part.end - information + z - 1) / z);
        }
    }
    lib_nr_ldpc_packed_parity_t parity;
    const lib_nr_ldpc_row_layout_t layout(z);
    if (end_row > 0)
        lib_nr_ldpc_coding_t::encode_words(settings.base_graph, z, m_block.data(), static_cast<unsigned int>(first_row),
                                           static_cast<unsigned int>(end_row), parity);

    m_selected.resize(words_for(length) + 1);
    m_selected[0] = 0;
    std::size_t count = 0;
    const auto append = [&](const std::uint64_t* source, std::size_t first_bit, std::size_t bits) {
        bits = std::min(bits, length - count);
        append_packed_bits(source, first_bit, bits, m_selected.data(), count);
        count += bits;
    };
    for (const part_t& part : round) {
        std::size_t place = part.begin;
        if (place < std::min(part.end, information)) {
            append(m_block.data(), place + punctured, std::min(part.end, information) - place);
            place = std::min(part.end, information);
        }
        while (place < part.end && count < length) {
            const std::size_t row = (place - information) / z;
            const std::size_t skipped = place - information - row * z;
            const std::size_t bits = std::min(part.end - place, z - skipped);
            append(parity.words.data() + row * layout.words, skipped, bits);
            place += bits;
        }
    }
    // Further rounds of the buffer repeat the first; what is there doubles with each copy.
    while (count < length && count > 0)
        append(m_selected.data(), 0, count);
}

} // namespace vek::nr_mod_lib
