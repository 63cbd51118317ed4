#include "phy_common/tables/lib_nr_ldpc_base_graph_table.h"

#include "receiver/ldpc_decoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bitset>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace
{

using nr_test::ldpc_edge_t;
using nr_test::ldpc_matrix_t;

struct largest_size_t
{
    unsigned int largest; // of a lifting set
    unsigned int small;   // another of the set
};
const std::vector<largest_size_t> k_sizes = {{256, 2}, {384, 3},  {320, 5},  {224, 7},
                                             {288, 9}, {352, 11}, {208, 13}, {240, 15}};

// Rank of the first 4Z rows over the four core parity columns.
std::size_t core_rank(const ldpc_matrix_t& matrix)
{
    std::vector<std::bitset<4 * 384>> rows(std::size_t{4} * matrix.z);
    for (const ldpc_edge_t& edge : matrix.edges)
        if (edge.row < 4 && edge.column >= matrix.information_columns)
            for (std::size_t i = 0; i < matrix.z; ++i)
                rows[edge.row * matrix.z + i].flip((edge.column - matrix.information_columns) * matrix.z +
                                                   (i + edge.shift) % matrix.z);
    std::size_t rank = 0;
    for (std::size_t column = 0; column < rows.size(); ++column) {
        std::size_t pivot = rank;
        while (pivot < rows.size() && !rows[pivot][column])
            ++pivot;
        if (pivot == rows.size())
            continue;
        std::swap(rows[pivot], rows[rank]);
        for (std::size_t row = rank + 1; row < rows.size(); ++row)
            if (rows[row][column])
                rows[row] ^= rows[rank];
        ++rank;
    }
    return rank;
}

// Cycles of length 4: pairs of rows that meet in two columns at the same distance.
unsigned int short_cycles(const ldpc_matrix_t& matrix)
{
    std::vector<std::map<unsigned int, unsigned int>> rows(matrix.rows);
    for (const ldpc_edge_t& edge : matrix.edges)
        rows[edge.row][edge.column] = edge.shift;
    unsigned int count = 0;
    for (std::size_t a = 0; a < rows.size(); ++a)
        for (std::size_t b = a + 1; b < rows.size(); ++b) {
            std::set<unsigned int> distances;
            for (const auto& [column, shift] : rows[a]) {
                const auto other = rows[b].find(column);
                if (other != rows[b].end() && !distances.insert((shift + matrix.z - other->second) % matrix.z).second)
                    ++count;
            }
        }
    return count;
}

std::vector<std::size_t> first_row_weights(unsigned int base_graph, std::size_t count)
{
    std::vector<std::size_t> weights(count);
    for (const ldpc_edge_t& edge : nr_test::ldpc_matrix(base_graph, 384).edges)
        if (edge.row < count)
            ++weights[edge.row];
    return weights;
}

// A figure that slipped breaks one of these: edges in order, the weights of the rows, no two rows that repeat a
// distance (the designers left none but one), and a core of full rank.
TEST(lib_nr_ldpc_base_graph_table, rows_cycles_and_ranks_are_those_of_the_standard)
{
    EXPECT_EQ(first_row_weights(1, 10), (std::vector<std::size_t>{19, 19, 19, 19, 3, 8, 9, 7, 10, 9}));
    EXPECT_EQ(first_row_weights(2, 8), (std::vector<std::size_t>{8, 10, 8, 10, 4, 6, 6, 6}));
    unsigned int cycles = 0;
    for (const unsigned int base_graph : {1u, 2u})
        for (const largest_size_t& sizes : k_sizes) {
            const ldpc_matrix_t matrix = nr_test::ldpc_matrix(base_graph, sizes.largest);
            EXPECT_TRUE(std::is_sorted(matrix.edges.begin(), matrix.edges.end(), [](const auto& a, const auto& b) {
                return std::pair(a.row, a.column) < std::pair(b.row, b.column);
            }));
            cycles += short_cycles(matrix);
            EXPECT_EQ(core_rank(matrix), 4 * sizes.largest) << "graph " << base_graph;
            EXPECT_EQ(core_rank(nr_test::ldpc_matrix(base_graph, sizes.small)), 4 * sizes.small)
                << "graph " << base_graph;
        }
    EXPECT_EQ(cycles, 1u); // graph 1, set 7: rows 5 and 19, columns 0 and 1
}

} // namespace
