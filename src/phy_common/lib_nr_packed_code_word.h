#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"
#include "phy_common/lib_nr_ldpc_coding.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// From the payload of a shared channel to the scrambled symbols of its code word, in words of 64 bits all the way:
/// what check, segmentation, LDPC coding, rate matching and scrambling give one after the other on one bit per byte,
/// several times faster. Only the parity rows that are sent are made.
///
/// A symbol is a number whose bit k is bit k of the symbol, the first lowest; so points are looked up in a table in
/// that order (`lib_nr_modulator_t::get_points`). An object keeps its storage from one code word to the next.
class NR_MOD_LIB_EXPORT lib_nr_packed_code_word_t
{
public:
    struct settings_t
    {
        lib_nr_ldpc_base_graph_type_t base_graph = LIB_NR_LDPC_BASE_GRAPH_1;
        unsigned int q_m = 2;    ///< bits of a symbol, 1 to 10
        unsigned int layers = 1; ///< 1 to 8
        unsigned int g = 0;      ///< bits sent, G
        unsigned int rv = 0;     ///< 0 to 3
        unsigned int c_init = 0; ///< of the scrambling sequence
    };

    /// TS 38.212 clauses 7.2.1 to 7.2.6, TS 38.211 clause 7.3.1.1. `payload` holds the bits of the transport block; its
    /// storage is used, and grows. `symbols` becomes as many symbols as G holds in equal shares of the layers.
    void encode(std::vector<std::uint64_t>& payload, std::size_t payload_bits, const settings_t& settings,
                std::vector<std::uint16_t>& symbols);
    /// The same without coding: the payload's G bits are those of the symbols.
    void scramble(const std::vector<std::uint64_t>& payload, const settings_t& settings,
                  std::vector<std::uint16_t>& symbols);

    // What the last code word went by; of one without coding the last of these alone.

    const lib_nr_ldpc_segments_t& get_segments() const { return m_segments; }
    /// E of each code block.
    const std::vector<std::uint32_t>& get_output_lengths() const { return m_lengths; }
    /// k_0.
    unsigned int get_start_index() const { return m_start_index; }
    /// The scrambling sequence, as far as there are bits.
    const std::vector<std::uint64_t>& get_scrambling() const { return m_scrambling; }

private:
    void _encode_block(const std::vector<std::uint64_t>& payload, std::size_t first_bit);
    void _select(const settings_t& settings, std::size_t length);

    lib_nr_ldpc_segments_t m_segments{};
    std::vector<std::uint32_t> m_lengths;
    unsigned int m_start_index = 0;
    std::vector<std::uint64_t> m_scrambling;
    std::vector<std::uint64_t> m_block;    ///< information bits of a code block, fillers as zeros
    std::vector<std::uint64_t> m_selected; ///< output of the bit selection
};

} // namespace vek::nr_mod_lib
