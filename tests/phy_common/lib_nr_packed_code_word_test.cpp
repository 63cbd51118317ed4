#include "phy_common/lib_nr_packed_code_word.h"

#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"
#include "phy_common/lib_nr_ldpc_rate_match.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_pn_payload.h"
#include "phy_common/lib_nr_sequence_generator.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace
{

using namespace vek::nr_mod_lib;
using bits_t = std::vector<unsigned char>;
using settings_t = lib_nr_packed_code_word_t::settings_t;

constexpr std::array<unsigned int, 6> k_orders = {1, 2, 4, 6, 8, 10};
constexpr std::array k_modulations = {LIB_NR_MODULATION_HALF_PI_BPSK, LIB_NR_MODULATION_QPSK,
                                      LIB_NR_MODULATION_16QAM,        LIB_NR_MODULATION_64QAM,
                                      LIB_NR_MODULATION_256QAM,       LIB_NR_MODULATION_1024QAM};

/// The prescribed operations one after the other, one bit per byte.
bits_t coded_bits(const bits_t& payload, const settings_t& settings, std::set<unsigned int>& lifting_sizes)
{
    bits_t block;
    lib_nr_crc_calculator_t crc;
    crc.set_crc_type(payload.size() <= 3824 ? LIB_NR_CRC_TYPE_16 : LIB_NR_CRC_TYPE_24A);
    crc.deal_crc_attachment(payload, block);
    std::vector<bits_t> blocks;
    lib_nr_ldpc_code_block_segmentation_t segmentation;
    segmentation.set_base_graph_type(settings.base_graph);
    segmentation.deal_code_block_segmentation(block, blocks);
    lifting_sizes.insert(
        static_cast<unsigned int>(blocks[0].size() / (settings.base_graph == LIB_NR_LDPC_BASE_GRAPH_1 ? 22 : 10)));
    lib_nr_ldpc_coding_t coder;
    coder.set_base_graph_type(settings.base_graph);
    for (bits_t& code_block : blocks)
        coder.deal_ldpc_coding(code_block, code_block);
    lib_nr_ldpc_rate_match_t rate_match;
    rate_match.set_base_graph_type(settings.base_graph);
    rate_match.set_c(static_cast<unsigned int>(blocks.size()));
    rate_match.set_q_m(settings.q_m);
    rate_match.set_n_l(settings.layers);
    rate_match.set_g(settings.g);
    rate_match.set_rv_id(settings.rv);
    rate_match.deal_rate_match(blocks, blocks);
    bits_t bits;
    for (const bits_t& matched : blocks)
        bits.insert(bits.end(), matched.begin(), matched.end());
    return bits;
}

void expect_points(const std::vector<std::uint16_t>& symbols, bits_t bits, std::size_t order, unsigned int c_init)
{
    lib_nr_sequence_generator_t::add_pseudo_random_bits(c_init, bits.size(), bits.data(), bits.data());
    const lib_nr_modulator_t modulator(k_modulations[order]);
    std::vector<std::complex<double>> expected;
    modulator.deal_nr_modulation(bits, expected);
    const std::vector<std::complex<double>> points = modulator.get_points(1.0);
    ASSERT_EQ(symbols.size(), expected.size());
    for (std::size_t i = 0; i < symbols.size(); ++i)
        ASSERT_EQ(points[symbols[i] | (order == 0 ? (i % 2) << 1 : 0)], expected[i]) << i;
}

// Every lifting size of both graphs that a transport block can have, several blocks, every order and version, few bits
// sent and several rounds of the buffer, layers that leave a rest.
TEST(lib_nr_packed_code_word, equals_the_operations_on_bytes)
{
    std::minstd_rand random(7);
    lib_nr_packed_code_word_t coder;
    std::set<unsigned int> lifting_sizes[2];
    for (unsigned int i = 0; i < 1200; ++i) {
        settings_t settings;
        settings.base_graph = i % 2 == 0 ? LIB_NR_LDPC_BASE_GRAPH_1 : LIB_NR_LDPC_BASE_GRAPH_2;
        const std::size_t order = random() % k_orders.size();
        settings.q_m = k_orders[order];
        settings.layers = 1 + static_cast<unsigned int>(random() % 4);
        settings.rv = static_cast<unsigned int>(random() % 4);
        settings.c_init = static_cast<unsigned int>(random());
        const unsigned int most = i % 20 == 0                                       ? 60000u
                                  : settings.base_graph == LIB_NR_LDPC_BASE_GRAPH_1 ? 8424u
                                                                                    : 3816u;
        unsigned int size = 24 + static_cast<unsigned int>(random() % most) / 8 * 8;
        size = static_cast<unsigned int>(std::pow(size, (i % 5 + 1) / 5.0)) / 8 * 8 + 24;
        settings.g = static_cast<unsigned int>(size * std::exp2(static_cast<double>(random() % 800) / 100 - 1));
        SCOPED_TRACE(testing::Message() << i << ": " << size << " bits to " << settings.g << ", order " << settings.q_m
                                        << ", layers " << settings.layers << ", version " << settings.rv);
        lib_nr_pn_payload_t stream(LIB_NR_PN23);
        lib_nr_pn_payload_t packed_stream(LIB_NR_PN23);
        bits_t payload;
        std::vector<std::uint64_t> words;
        stream.generate(size, payload);
        packed_stream.generate_words(size, words);
        ASSERT_EQ(stream.get_seed(), packed_stream.get_seed());

        std::vector<std::uint16_t> symbols;
        coder.encode(words, size, settings, symbols);
        expect_points(symbols, coded_bits(payload, settings, lifting_sizes[i % 2]), order, settings.c_init);
        if (testing::Test::HasFatalFailure())
            return;
    }
    EXPECT_GE(lifting_sizes[0].size(), 40u);
    EXPECT_GE(lifting_sizes[1].size(), 40u);
}

TEST(lib_nr_packed_code_word, scrambles_what_is_not_coded)
{
    for (std::size_t order = 0; order < k_orders.size(); ++order)
        for (const unsigned int count : {1u, 63u, 64u, 1001u}) {
            settings_t settings;
            settings.q_m = k_orders[order];
            settings.g = count * settings.q_m;
            settings.c_init = 12345 + count;
            bits_t bits;
            std::vector<std::uint64_t> words;
            lib_nr_pn_payload_t(LIB_NR_PN9).generate(settings.g, bits);
            lib_nr_pn_payload_t(LIB_NR_PN9).generate_words(settings.g, words);
            std::vector<std::uint16_t> symbols;
            lib_nr_packed_code_word_t().scramble(words, settings, symbols);
            expect_points(symbols, bits, order, settings.c_init);
        }
}

} // namespace
