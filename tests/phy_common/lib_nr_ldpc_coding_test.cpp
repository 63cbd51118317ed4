#include "phy_common/lib_nr_ldpc_coding.h"

#include "phy_common/lib_nr_ldpc_coding_calculation.h"
#include "phy_common/tables/lib_nr_ldpc_base_graph_table.h"
#include "phy_common/tables/lib_nr_ldpc_lifting_size_table.h"
#include "support/coder.h"

#include "support/captured_output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

template <>
struct vek::test_peer_t<lib_nr_ldpc_coding_t>
{
    static unsigned int set_index(const lib_nr_ldpc_coding_t& coder) { return coder.m_lifting_size_set_index; }
    static std::pair<unsigned int, unsigned int> lengths(const lib_nr_ldpc_coding_t& coder)
    {
        return {coder.m_parity_check_bit_number, coder.m_output_data_length};
    }
    static const auto& matrix(lib_nr_ldpc_base_graph_type_t graph, unsigned int set)
    {
        return lib_nr_ldpc_coding_t::_get_base_matrix(graph, set);
    }
};

namespace
{

using peer_t = vek::test_peer_t<lib_nr_ldpc_coding_t>;

constexpr auto k_unknown_graph = static_cast<lib_nr_ldpc_base_graph_type_t>(2);

struct graph_t
{
    lib_nr_ldpc_base_graph_type_t type;
    unsigned int information_columns;
    unsigned int rows;
    std::vector<lib_nr_ldpc_base_graph_row_t> edges;
};

const std::vector<graph_t>& graphs()
{
    const auto& one = lib_nr_ldpc_base_graph_1_table();
    const auto& two = lib_nr_ldpc_base_graph_2_table();
    static const std::vector<graph_t> both = {{LIB_NR_LDPC_BASE_GRAPH_1, 22, 46, {one.begin(), one.end()}},
                                              {LIB_NR_LDPC_BASE_GRAPH_2, 10, 42, {two.begin(), two.end()}}};
    return both;
}

// The standard's own definition, bit by bit: H times the word, of which `head` is what isn't sent. Counts the checks
// that fail.
unsigned int failed_checks(const graph_t& graph, std::size_t set, std::size_t z, const bits_t& head, const bits_t& out)
{
    bits_t word(head.begin(), head.begin() + static_cast<std::ptrdiff_t>(2 * z));
    word.insert(word.end(), out.begin(), out.end());
    std::replace(word.begin(), word.end(), static_cast<unsigned char>(255), static_cast<unsigned char>(0));
    bits_t checks(graph.rows * z);
    for (const auto& edge : graph.edges)
        for (std::size_t k = 0; k < z; ++k)
            checks[edge.row * z + k] ^= word.at(edge.column * z + (k + edge.shift[set]) % z);
    return static_cast<unsigned int>(std::count(checks.begin(), checks.end(), 1));
}

using nr_test::printed_by;

TEST(lib_nr_ldpc_coding, every_word_meets_every_check_of_the_standard)
{
    std::mt19937 random(5);
    for (const graph_t& graph : graphs()) {
        lib_nr_ldpc_coding_t coder;
        coder.set_base_graph_type(graph.type);
        unsigned int sizes = 0;
        for (std::size_t set = 0; set < 8; ++set)
            for (const std::size_t z : lib_nr_ldpc_lifting_size_table()[set]) {
                if (z == 0)
                    continue;
                ++sizes;
                SCOPED_TRACE("graph " + std::to_string(graph.type + 1) + ", Z = " + std::to_string(z));
                const std::size_t length = graph.information_columns * z;
                // Without fillers, with them at the end, and strewn about behind the part that isn't sent.
                for (int fillers = 0; fillers < 3; ++fillers) {
                    bits_t in = nr_test::random_bits(random, length);
                    for (std::size_t i = 2 * z; i < length; ++i)
                        if ((fillers == 1 && i >= length - length / 3) || (fillers == 2 && random() % 4 == 0))
                            in[i] = 255;
                    bits_t out = {7};
                    ASSERT_TRUE(coder.deal_ldpc_coding(in, out));
                    ASSERT_EQ(out.size(), (graph.information_columns - 2 + graph.rows) * z);
                    ASSERT_TRUE(std::equal(in.begin() + static_cast<std::ptrdiff_t>(2 * z), in.end(), out.begin()));
                    ASSERT_LE(*std::max_element(out.begin() + static_cast<std::ptrdiff_t>(length - 2 * z), out.end()),
                              1);
                    ASSERT_EQ(failed_checks(graph, set, z, in, out), 0u);
                    ASSERT_EQ(peer_t::set_index(coder), set);
                    ASSERT_EQ(peer_t::lengths(coder), std::make_pair(static_cast<unsigned int>(graph.rows * z),
                                                                     static_cast<unsigned int>(out.size())));
                    ASSERT_TRUE(coder.deal_ldpc_coding(in, in)); // in place
                    ASSERT_EQ(in, out);
                }
            }
        EXPECT_EQ(sizes, 51u);
        std::set<std::pair<unsigned int, unsigned int>> places;
        for (const auto& edge : graph.edges) {
            EXPECT_TRUE(places.emplace(edge.row, edge.column).second);
            for (std::size_t set = 0; set < 8; ++set)
                EXPECT_LT(edge.shift[set], *std::ranges::max_element(lib_nr_ldpc_lifting_size_table()[set]));
        }
    }
}

TEST(lib_nr_ldpc_coding, wrong_input_prints_its_lines_and_changes_nothing)
{
    const std::string length_line =
        "lib_nr_ldpc_coding_t::_update_input_data_length Report : Illegal input data length!\n";
    const std::string size_line = "lib_nr_ldpc_coding_t::_update_input_data_length Report : Illegal lifting size!\n";
    const std::string last = "lib_nr_ldpc_coding_t::deal_ldpc_coding Report : Input Data Length Error!\n";
    const std::string parity_line =
        "lib_nr_ldpc_coding_t::get_ldpc_parity_check_bit_number Report : Unknown LDPC Base Graph Type!\n";
    const std::string output_line =
        "lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length Report : Unknown LDPC Base Graph Type!\n";
    const std::string input_line =
        "lib_nr_ldpc_coding_calculation.cpp::_deal_ldpc_base_matrix_division Report : Unknown LDPC Base Graph Type!\n";

    lib_nr_ldpc_coding_t coder;
    const auto refused = [&coder](std::size_t length) {
        bits_t out = {1, 2, 3};
        const std::string text = printed_by([&] { EXPECT_FALSE(coder.deal_ldpc_coding(bits_t(length), out)); });
        EXPECT_EQ(out, (bits_t{1, 2, 3}));
        return text;
    };
    for (const std::size_t length : {1u, 43u, 45u, 22u * 384 + 1})
        EXPECT_EQ(refused(length), length_line + last) << length;
    for (const std::size_t length : {0u, 22u, 22u * 17, 22u * 385, 22u * 768})
        EXPECT_EQ(refused(length), size_line + last) << length;
    EXPECT_EQ(peer_t::lengths(coder), std::make_pair(92u, 132u));

    EXPECT_EQ(printed_by([&] { coder.set_base_graph_type(k_unknown_graph); }), parity_line + output_line);
    EXPECT_EQ(peer_t::lengths(coder), std::make_pair(0u, 0u));
    EXPECT_EQ(refused(44), input_line + length_line + last);
    EXPECT_EQ(printed_by(
                  [] { EXPECT_EQ(&peer_t::matrix(k_unknown_graph, 3), &peer_t::matrix(LIB_NR_LDPC_BASE_GRAPH_1, 0)); }),
              "lib_nr_ldpc_coding.cpp::get_base_matrix Report : Unknown Base Graph Type!\n");
    EXPECT_THROW(peer_t::matrix(LIB_NR_LDPC_BASE_GRAPH_2, 8), std::out_of_range);
}

TEST(lib_nr_ldpc_coding, lengths_and_lifting_sizes)
{
    EXPECT_EQ(lib_nr_ldpc_coding_t::get_ldpc_coding_input_data_length(LIB_NR_LDPC_BASE_GRAPH_1, 384), 8448u);
    EXPECT_EQ(lib_nr_ldpc_coding_t::get_ldpc_coding_input_data_length(LIB_NR_LDPC_BASE_GRAPH_2, 384), 3840u);
    EXPECT_EQ(lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length(LIB_NR_LDPC_BASE_GRAPH_1, 3), 198u);
    EXPECT_EQ(lib_nr_ldpc_coding_t::get_ldpc_coding_output_data_length(LIB_NR_LDPC_BASE_GRAPH_2), 50u);

    // Table 5.3.2-1 is a * 2^j up to 384.
    std::set<unsigned int> sizes;
    for (unsigned int a : {2u, 3u, 5u, 7u, 9u, 11u, 13u, 15u})
        for (; a <= 384; a *= 2)
            sizes.insert(a);
    for (unsigned int value = 0; value <= 384; ++value) {
        ASSERT_EQ(lib_nr_ldpc_coding_t::get_min_lifting_size_value(value), *sizes.lower_bound(value));
        ASSERT_EQ(lib_nr_ldpc_coding_t::check_lifting_size_value(value), sizes.count(value) != 0);
    }
    EXPECT_FALSE(lib_nr_ldpc_coding_t::check_lifting_size_value(768));
    EXPECT_EQ(printed_by([] { EXPECT_EQ(lib_nr_ldpc_coding_t::get_min_lifting_size_value(385), 0u); }),
              "lib_nr_ldpc_coding_t::get_min_ldpc_lifting_size Report : Input Parameter is out of range!\n");
}

TEST(lib_nr_ldpc_coding, steps_of_the_calculation_serve_any_matrix_and_refuse_what_does_not_fit)
{
    const std::string prefix = "lib_nr_ldpc_coding_calculation.cpp::";
    const std::string core_prefix = prefix + "deal_ldpc_core_matrix_solution";
    const std::string misfit = prefix + "deal_matrix_multiply : Input Vector Length Not Match!\n";

    // Rotations at, below and above Z, null blocks, ragged rows; Z of one word, several, and beyond any lifting size.
    std::mt19937 random(7);
    for (const unsigned int z : {1u, 13u, 64u, 100u, 384u, 600u}) {
        const int last = static_cast<int>(z) - 1;
        const std::vector<std::vector<int>> matrix = {{0, last + 1, 5}, {-1, 383, -1}, {-1, -1, -1}, {last}};
        for (const std::size_t length : {3 * z, 2 * z, 0u, 4 * z + 1}) {
            const bits_t in = nr_test::random_bits(random, length);
            bits_t expected(matrix.size() * z);
            for (std::size_t r = 0; r < matrix.size(); ++r)
                for (std::size_t c = 0; c < matrix[r].size(); ++c)
                    for (std::size_t k = 0; k < z && matrix[r][c] != -1; ++k) {
                        const std::size_t from = c * z + (k + static_cast<std::size_t>(matrix[r][c])) % z;
                        if (from < length)
                            expected[r * z + k] ^= in[from];
                    }
            bits_t out = in;
            EXPECT_EQ(printed_by([&] { deal_ldpc_base_matrix_multiply(matrix, out, z, out); }),
                      length == 3 * z ? "" : misfit);
            EXPECT_EQ(out, expected) << "Z = " << z << ", " << length << " bits";
        }
    }
    bits_t out;
    EXPECT_EQ(printed_by([&] { deal_ldpc_base_matrix_multiply({}, {1}, 2, out); }),
              prefix + "deal_matrix_multiply : Empty Matrix!\n");
    EXPECT_TRUE(out.empty());

    const auto refused = [](lib_nr_ldpc_base_graph_type_t graph, unsigned int set, std::size_t length) {
        bits_t core = {1};
        const std::string text =
            printed_by([&] { deal_ldpc_core_matrix_solution(graph, set, 2, bits_t(length), core); });
        EXPECT_TRUE(core.empty());
        return text;
    };
    const std::string size_line = " Report : Input Vector Size Error!\n";
    for (const std::size_t length : {0u, 7u, 9u}) {
        EXPECT_EQ(refused(LIB_NR_LDPC_BASE_GRAPH_1, 0, length), core_prefix + "_for_type_0" + size_line);
        EXPECT_EQ(refused(LIB_NR_LDPC_BASE_GRAPH_1, 6, length), core_prefix + "_for_type_1" + size_line);
        EXPECT_EQ(refused(LIB_NR_LDPC_BASE_GRAPH_2, 3, length), core_prefix + "_for_type_1" + size_line);
    }
    EXPECT_EQ(refused(LIB_NR_LDPC_BASE_GRAPH_2, 8, 8), core_prefix + " Report : Unknown Lifting Size Set!\n");
    EXPECT_EQ(refused(k_unknown_graph, 0, 8), core_prefix + " Report : Unknown Base Graph Type!\n");
}

// The core's columns of the standard's matrix times the solution give back the sums.
TEST(lib_nr_ldpc_coding, core_solution_solves_the_core_of_every_set)
{
    std::mt19937 random(8);
    for (const graph_t& graph : graphs())
        for (unsigned int set = 0; set < 8; ++set)
            for (const unsigned int z : lib_nr_ldpc_lifting_size_table()[set]) {
                const bits_t sums = nr_test::random_bits(random, std::size_t{4} * z);
                bits_t core;
                deal_ldpc_core_matrix_solution(graph.type, set, z, sums, core);
                ASSERT_EQ(core.size(), sums.size());
                bits_t back(sums.size());
                for (const auto& edge : graph.edges)
                    if (edge.row < 4 && edge.column >= graph.information_columns)
                        for (std::size_t k = 0; k < z; ++k)
                            back[edge.row * z + k] ^=
                                core.at((edge.column - graph.information_columns) * z + (k + edge.shift[set]) % z);
                EXPECT_EQ(back, sums) << "graph " << graph.type + 1 << ", Z = " << z;
            }
}

} // namespace
