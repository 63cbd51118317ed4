#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"
#include "phy_common/lib_nr_ldpc_coding.h"
#include "phy_common/lib_nr_ldpc_rate_match.h"
#include "receiver/ldpc_decoder.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

struct transmission_row_t
{
    unsigned int base_graph;
    std::size_t size; // of the transport block
    unsigned int order;
    unsigned int layers;
    double rate;                   // size / G
    std::vector<unsigned int> rvs; // sent one after the other
    bool decodes;
};

std::ostream& operator<<(std::ostream& out, const transmission_row_t& row)
{
    out << "graph " << row.base_graph << ", size " << row.size << ", order " << row.order << ", layers " << row.layers
        << ", rate " << row.rate << ", rv";
    for (const unsigned int rv : row.rvs)
        out << " " << rv;
    return out;
}

lib_nr_ldpc_base_graph_type_t graph_of(unsigned int base_graph)
{
    return base_graph == 1 ? LIB_NR_LDPC_BASE_GRAPH_1 : LIB_NR_LDPC_BASE_GRAPH_2;
}

/// The code words of a transport block.
std::vector<bits_t> encode(unsigned int base_graph, const bits_t& payload)
{
    const auto graph = graph_of(base_graph);
    lib_nr_crc_calculator_t crc;
    crc.set_crc_type(payload.size() > 3824 ? LIB_NR_CRC_TYPE_24A : LIB_NR_CRC_TYPE_16);
    bits_t with_crc;
    crc.deal_crc_attachment(payload, with_crc);
    lib_nr_ldpc_code_block_segmentation_t segmentation;
    segmentation.set_base_graph_type(graph);
    std::vector<bits_t> blocks;
    segmentation.deal_code_block_segmentation(with_crc, blocks);
    lib_nr_ldpc_coding_t coder;
    coder.set_base_graph_type(graph);
    std::vector<bits_t> words(blocks.size());
    for (std::size_t i = 0; i < blocks.size(); ++i)
        EXPECT_TRUE(coder.deal_ldpc_coding(blocks[i], words[i]));
    return words;
}

// Sends a random transport block in the versions of a row; whether the receiver gets the same one back.
bool arrives(const transmission_row_t& row, std::mt19937& random)
{
    bits_t payload(row.size);
    for (unsigned char& bit : payload)
        bit = static_cast<unsigned char>(random() & 1u);
    const std::vector<bits_t> words = encode(row.base_graph, payload);
    nr_test::ldpc_receiver_t receiver(row.base_graph, row.size);
    const std::size_t unit = std::size_t{row.order} * row.layers;
    for (const unsigned int rv : row.rvs) {
        const std::size_t G = static_cast<std::size_t>(static_cast<double>(row.size) / row.rate) / unit * unit;
        lib_nr_ldpc_rate_match_t rate_match;
        rate_match.set_base_graph_type(graph_of(row.base_graph));
        EXPECT_TRUE(rate_match.set_i_lbrm(1));
        EXPECT_TRUE(rate_match.set_c(static_cast<unsigned int>(words.size())));
        EXPECT_TRUE(rate_match.set_q_m(row.order));
        EXPECT_TRUE(rate_match.set_n_l(row.layers));
        rate_match.set_g(static_cast<unsigned int>(G));
        rate_match.set_rv_id(rv);
        std::vector<bits_t> matched;
        EXPECT_TRUE(rate_match.deal_rate_match(words, matched));
        std::vector<double> soft_bits;
        for (const bits_t& block : matched)
            for (const unsigned char bit : block)
                soft_bits.push_back(bit == 0 ? 1.0 : bit == 1 ? -1.0 : 0.0);
        EXPECT_TRUE(receiver.add({G, row.order, row.layers, rv}, soft_bits)) << row;
    }
    const auto decoded = receiver.decode();
    return decoded && *decoded == payload;
}

TEST(ldpc_chain, transport_blocks_arrive)
{
    std::mt19937 random(11);
    std::vector<transmission_row_t> rows;
    // Every version, order and layer count. Version 0 sends a part of the buffer, the others come round it again.
    for (const unsigned int graph : {1u, 2u})
        for (unsigned int rv = 0; rv < 4; ++rv)
            for (const unsigned int order : {1u, 2u, 4u, 6u, 8u, 10u}) {
                const double rate = rv == 0 ? 0.37 : 0.15;
                rows.push_back({graph, 301 + 40 * order, order, 1 + (order + rv) % 4, rate, {rv}, true});
            }
    rows.insert(rows.end(), {{1, 8424, 2, 1, 0.8, {0}, true},            // one block without filler
                             {1, 8424, 4, 3, 0.12, {3}, true},           // and twice round the buffer
                             {1, 8432, 6, 2, 0.8, {0}, true},            // two blocks
                             {1, 30000, 8, 4, 0.9, {0}, true},           // four of unequal length
                             {2, 3824, 4, 1, 0.6, {0}, true},            // one block of graph 2
                             {2, 3832, 2, 1, 0.2, {1}, true},            // two
                             {2, 10992, 10, 3, 0.25, {2}, true},         // three of unequal length
                             {2, 24, 2, 1, 0.1, {0}, true},              // the shortest
                             {2, 176, 2, 1, 0.3, {0}, true},             // B = 192, 6 columns
                             {2, 177, 2, 1, 0.3, {0}, true},             // 8 columns
                             {2, 544, 4, 1, 0.3, {0}, true},             // B = 560
                             {2, 545, 4, 1, 0.3, {0}, true},             // 9 columns
                             {2, 624, 6, 1, 0.3, {0}, true},             // B = 640
                             {2, 625, 6, 1, 0.3, {0}, true},             // 10 columns
                             {1, 5000, 4, 2, 1.3, {0}, false},           // fewer bits than the payload has
                             {1, 5000, 4, 2, 1.3, {0, 2}, true},         // which a second version mends
                             {2, 2000, 2, 1, 1.2, {3, 0, 1, 2}, true}}); // and a third and a fourth
    for (const transmission_row_t& row : rows)
        EXPECT_EQ(arrives(row, random), row.decodes) << row;
}

} // namespace
