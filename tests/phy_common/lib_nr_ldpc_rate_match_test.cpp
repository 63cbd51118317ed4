#include "phy_common/lib_nr_ldpc_rate_match.h"
#include "support/captured_output.h"
#include "support/coder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using blocks_t = std::vector<bits_t>;

struct setting_t
{
    lib_nr_ldpc_base_graph_type_t graph = LIB_NR_LDPC_BASE_GRAPH_1;
    unsigned int i_lbrm = 0;
    unsigned int Z = 2;
    unsigned int Qm = 1;
    unsigned int layers = 1;
    unsigned int G = 0;
    unsigned int C = 1;
    unsigned int rv = 0;
};

std::string text_of(const setting_t& s)
{
    return "graph " + std::to_string(s.graph + 1) + " Z " + std::to_string(s.Z) + " Qm " + std::to_string(s.Qm) +
           " layers " + std::to_string(s.layers) + " G " + std::to_string(s.G) + " C " + std::to_string(s.C) + " rv " +
           std::to_string(s.rv);
}

lib_nr_ldpc_rate_match_t matcher(const setting_t& s)
{
    lib_nr_ldpc_rate_match_t rate_match;
    rate_match.set_base_graph_type(s.graph);
    rate_match.set_i_lbrm(s.i_lbrm);
    rate_match.set_q_m(s.Qm);
    rate_match.set_n_l(s.layers);
    rate_match.set_g(s.G);
    rate_match.set_c(s.C);
    rate_match.set_rv_id(s.rv);
    return rate_match;
}

// TS 38.212 clauses 5.4.2.1 and 5.4.2.2, one index at a time.
bits_t rate_matched(const setting_t& s, const bits_t& d, unsigned int r)
{
    const std::vector<unsigned int> starts = s.graph == LIB_NR_LDPC_BASE_GRAPH_1
                                                 ? std::vector<unsigned int>{0, 17, 33, 56}
                                                 : std::vector<unsigned int>{0, 13, 25, 43};
    const unsigned int N_cb = static_cast<unsigned int>(d.size()); // 25344 limits no code word
    const unsigned int k0 = starts[s.rv] * s.Z;
    const unsigned int units = s.G / (s.layers * s.Qm);
    unsigned int E = units / s.C * s.layers * s.Qm;
    if (r >= s.C - units % s.C)
        E += s.layers * s.Qm;
    bits_t e;
    for (unsigned int j = 0; e.size() < E; ++j)
        if (d[(k0 + j) % N_cb] != 255)
            e.push_back(d[(k0 + j) % N_cb]);
    bits_t f(E);
    for (unsigned int j = 0; j < E / s.Qm; ++j)
        for (unsigned int i = 0; i < s.Qm; ++i)
            f[i + j * s.Qm] = e[i * (E / s.Qm) + j];
    return f;
}

blocks_t code_words(std::mt19937& random, const setting_t& s)
{
    const unsigned int columns = s.graph == LIB_NR_LDPC_BASE_GRAPH_1 ? 66 : 50;
    const unsigned int information = (columns == 66 ? 20 : 8) * s.Z; // the first 2 Z are not sent
    const unsigned int fillers = static_cast<unsigned int>(random()) % information;
    blocks_t blocks;
    for (unsigned int r = 0; r < s.C; ++r) {
        blocks.push_back(nr_test::random_bits(random, columns * s.Z));
        std::fill_n(blocks.back().begin() + (information - fillers), fillers, static_cast<unsigned char>(255));
    }
    return blocks;
}

void expect_matched(const setting_t& s, const blocks_t& in)
{
    blocks_t out = in; // one list as input and output
    ASSERT_TRUE(matcher(s).deal_rate_match(out, out)) << text_of(s);
    ASSERT_EQ(out.size(), s.C);
    for (unsigned int r = 0; r < s.C; ++r)
        ASSERT_EQ(out[r], rate_matched(s, in[r], r)) << text_of(s) << ", block " << r;
}

TEST(lib_nr_ldpc_rate_match, every_order_version_and_length_equals_the_standard_index_by_index)
{
    std::mt19937 random(38212);
    // Short, one bit to a column; one column more and less than a vector; longer than the buffer, and many times it.
    for (const unsigned int columns : {0u, 1u, 5u, 15u, 16u, 17u, 18u, 31u, 33u, 100u, 801u, 5000u})
        for (const unsigned int Qm : {1u, 2u, 3u, 4u, 6u, 8u, 10u})
            for (unsigned int rv = 0; rv < 4; ++rv)
                for (const auto graph : {LIB_NR_LDPC_BASE_GRAPH_1, LIB_NR_LDPC_BASE_GRAPH_2}) {
                    const setting_t s = {graph, 1, 13, Qm, 1, columns * Qm, 1, rv};
                    ASSERT_NO_FATAL_FAILURE(expect_matched(s, code_words(random, s)));
                }
}

TEST(lib_nr_ldpc_rate_match, random_transport_blocks_equal_the_standard)
{
    std::mt19937 random(542);
    const std::vector<unsigned int> sizes = {2, 3, 7, 15, 22, 36, 60, 112, 208, 384};
    const std::vector<unsigned int> orders = {1, 2, 4, 6, 8, 10};
    const auto below = [&random](unsigned int limit) { return static_cast<unsigned int>(random()) % limit; };
    for (unsigned int round = 0; round < 400; ++round) {
        setting_t s;
        s.graph = static_cast<lib_nr_ldpc_base_graph_type_t>(below(2));
        s.i_lbrm = below(2);
        s.Z = sizes[below(10)];
        s.Qm = orders[below(6)];
        s.layers = 1 + below(4);
        s.C = 1 + below(5);
        s.G = below(s.C * s.Z * 150);
        s.rv = below(4);
        blocks_t in = code_words(random, s);
        if (round % 8 == 0) // fillers anywhere, also in runs of one
            for (bits_t& block : in)
                for (unsigned char& bit : block)
                    if (below(3) == 0)
                        bit = 255;
        ASSERT_NO_FATAL_FAILURE(expect_matched(s, in));
    }
}

TEST(lib_nr_ldpc_rate_match, later_blocks_take_the_rest_and_fillers_alone_give_nothing)
{
    blocks_t out;
    lib_nr_ldpc_rate_match_t rate_match = matcher({LIB_NR_LDPC_BASE_GRAPH_2, 0, 2, 2, 1, 20, 3, 0});
    rate_match.set_rv_id(7); // as 3
    blocks_t in(3, bits_t(100, 0));
    in[0][86] = 1; // k0 = 43 Z
    ASSERT_TRUE(rate_match.deal_rate_match(in, out));
    ASSERT_EQ(out.size(), 3u);
    EXPECT_EQ(out[0], (bits_t{1, 0, 0, 0, 0, 0}));
    EXPECT_EQ(out[1].size(), 6u);
    EXPECT_EQ(out[2].size(), 8u);

    ASSERT_TRUE(rate_match.deal_rate_match(blocks_t(3, bits_t(100, 255)), out));
    EXPECT_EQ(out, blocks_t(3));
    rate_match.set_g(0);
    ASSERT_TRUE(rate_match.deal_rate_match(blocks_t(3, bits_t(100, 0)), out));
    EXPECT_EQ(out, blocks_t(3));

    // What the input fixed is forgotten with the next input; the last of all sums still fits.
    setting_t s = {LIB_NR_LDPC_BASE_GRAPH_2, 1, 3, 4, 2, 64, 3, 2};
    in.assign(3, bits_t(150, 1));
    rate_match = matcher(s);
    ASSERT_TRUE(rate_match.deal_rate_match(blocks_t(3, bits_t(100, 0)), out));
    ASSERT_TRUE(rate_match.deal_rate_match(in, out));
    for (unsigned int r = 0; r < 3; ++r)
        EXPECT_EQ(out[r], rate_matched(s, in[r], r));
    rate_match.set_q_m(~0u);
    rate_match.set_n_l(~0u);
    ASSERT_TRUE(rate_match.deal_rate_match(in, out));
    EXPECT_EQ(out, blocks_t(3));
}

TEST(lib_nr_ldpc_rate_match, wrong_inputs_print_their_lines_and_change_nothing)
{
    const std::string name = "lib_nr_ldpc_rate_match_t::";
    const std::string refused = name + "deal_ldpc_rate_match Report : Input Code block Length Error!\n";
    const std::string length = name + "_set_input_data_length Report : ";
    const std::string unknown = "lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length Report : Unknown LDPC Base "
                                "Graph Type!\n";
    lib_nr_ldpc_rate_match_t rate_match = matcher({LIB_NR_LDPC_BASE_GRAPH_1, 1, 2, 2, 1, 40, 2, 1});
    const auto deal = [&rate_match](const blocks_t& in) {
        blocks_t out(1, bits_t(1));
        const bool result = rate_match.deal_rate_match(in, out);
        EXPECT_TRUE(result || out.empty());
        return result;
    };
    struct row_t
    {
        std::string text;
        std::function<bool()> run;
    };
    const std::vector<row_t> rows = {
        {"", [&] { return rate_match.set_i_lbrm(2); }},
        {name + "set_q_m Report : Invalid Modulation Order!\n", [&] { return rate_match.set_q_m(0); }},
        {name + "set_q_m Report : Invalid Layer Number!\n", [&] { return rate_match.set_n_l(0); }},
        {name + "set_q_m Report : Invalid Code Block Number!\n", [&] { return rate_match.set_c(0); }},
        {refused, [&] { return deal({}); }},
        {refused, [&] { return deal(blocks_t(3, bits_t(132))); }},
        {length + "LDPC Encoded Sequence Length NOT Equal!\n" + refused,
         [&] {
             return deal({bits_t(132), bits_t(198)});
         }},
        {length + "Illegal LDPC Encoded Sequence Length!\n" + refused, [&] { return deal(blocks_t(2, bits_t(100))); }},
        {length + "Illegal LDPC Matrix Lifting Size!\n" + refused, [&] { return deal(blocks_t(2)); }},
        {length + "Illegal LDPC Matrix Lifting Size!\n" + refused, [&] { return deal(blocks_t(2, bits_t(66 * 17))); }},
        {length + "Illegal LDPC Matrix Lifting Size!\n" + refused, [&] { return deal(blocks_t(2, bits_t(66 * 768))); }},
        {unknown + name + "_update_version_start_index Report : Unknown Base Graph Type!\n" + unknown + length +
             "Illegal LDPC Encoded Sequence Length!\n" + refused,
         [&] {
             lib_nr_ldpc_rate_match_t kept = rate_match;
             rate_match.set_base_graph_type(static_cast<lib_nr_ldpc_base_graph_type_t>(2));
             const bool result = deal(blocks_t(2, bits_t(132)));
             rate_match = kept;
             return result;
         }},
    };
    for (const row_t& row : rows) {
        nr_test::captured_output_t output;
        EXPECT_FALSE(row.run()) << row.text;
        EXPECT_EQ(output.text(), row.text);
    }
    blocks_t in(2, bits_t(132, 0));
    in[1][34] = 1;
    blocks_t out;
    ASSERT_TRUE(rate_match.deal_rate_match(in, out));
    const setting_t s = {LIB_NR_LDPC_BASE_GRAPH_1, 1, 2, 2, 1, 40, 2, 1};
    EXPECT_EQ(out[1], rate_matched(s, in[1], 1));
}

} // namespace
