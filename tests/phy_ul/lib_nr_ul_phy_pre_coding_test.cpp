#include "phy_ul/lib_nr_ul_phy_pre_coding.h"
#include "support/captured_output.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

// Matrices by their structure: every one is a set of orthogonal columns of one amplitude, no two are alike, and those
// of one layer on four antennas follow from the order of the standard's tables.

namespace
{

using namespace vek::nr_mod_lib;
using complex_t = std::complex<double>;
using matrix_t = std::vector<std::vector<complex_t>>; // [antenna][layer]

constexpr complex_t k_j{0.0, 1.0};
constexpr std::array<complex_t, 4> k_turns = {1.0, k_j, -1.0, -k_j};

/// What the precoder makes of one symbol a layer, each layer alone in its own symbol.
matrix_t matrix_of(unsigned int layers, unsigned int antennas, unsigned int tpmi, bool transfer_precoding = false)
{
    matrix_t identity(layers, std::vector<complex_t>(layers));
    for (unsigned int layer = 0; layer < layers; ++layer)
        identity[layer][layer] = 1.0;
    lib_nr_ul_phy_pre_coding_t precoder;
    precoder.set_antenna_number(antennas);
    precoder.set_tpmi_index(tpmi);
    precoder.set_transfer_precoding(transfer_precoding);
    matrix_t matrix;
    precoder._ul_phy_pusch_pre_coding(identity, matrix);
    return matrix;
}

struct table_t
{
    unsigned int layers;
    unsigned int antennas;
    unsigned int rows;
    std::vector<double> powers; ///< of a whole matrix, by TPMI; the last goes on
};

TEST(lib_nr_ul_phy_pre_coding, columns_are_orthogonal_and_matrices_differ)
{
    const std::vector<table_t> tables = {
        {1, 2, 6, {0.5, 0.5, 1}},
        {1, 4, 28, {0.25, 0.25, 0.25, 0.25, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 1}},
        {2, 2, 3, {1, 2}},
        {2, 4, 22, {0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 1, 1, 1, 1, 1, 1, 1, 1, 4}},
        {3, 4, 7, {0.75, 1, 1, 1.5}},
        {4, 4, 5, {1, 1, 1, 1}},
    };
    for (const table_t& table : tables) {
        std::vector<matrix_t> seen;
        for (unsigned int tpmi = 0; tpmi < table.rows; ++tpmi) {
            SCOPED_TRACE(testing::Message() << table.layers << " layers, " << table.antennas << " antennas, " << tpmi);
            const matrix_t matrix = matrix_of(table.layers, table.antennas, tpmi);
            ASSERT_EQ(matrix.size(), table.antennas);
            double power = 0.0;
            for (unsigned int a = 0; a < table.layers; ++a)
                for (unsigned int b = 0; b < table.layers; ++b) {
                    complex_t inner = 0.0;
                    for (const auto& row : matrix)
                        inner += row[a] * std::conj(row[b]);
                    if (a == b)
                        power += inner.real();
                    else
                        EXPECT_LT(std::abs(inner), 1e-12);
                }
            EXPECT_NEAR(power, table.powers[std::min<std::size_t>(tpmi, table.powers.size() - 1)], 1e-12);
            for (const matrix_t& other : seen)
                EXPECT_NE(matrix, other);
            seen.push_back(matrix);
        }
        EXPECT_EQ(matrix_of(table.layers, table.antennas, table.rows), seen.front());
    }
}

TEST(lib_nr_ul_phy_pre_coding, one_layer_on_four_antennas_follows_the_order_of_the_turns)
{
    for (unsigned int tpmi = 4; tpmi < 28; ++tpmi)
        for (const bool transfer_precoding : {false, true}) {
            std::array<complex_t, 4> expected{};
            if (tpmi < 12) { // pairs of antennas; 10 and 11 are swapped
                const complex_t turn = tpmi < 8 ? std::array{k_turns[0], k_turns[2], k_turns[1], k_turns[3]}[tpmi - 4]
                                       : tpmi < 10 ? k_turns[2 * (tpmi - 8)]
                                                   : k_turns[tpmi == 10 ? 3 : 1];
                expected[tpmi < 8 ? 0 : 1] = 0.5;
                expected[tpmi < 8 ? 2 : 3] = 0.5 * turn;
            }
            else {
                const complex_t second = k_turns[(tpmi - 12) / 4];
                const complex_t third = k_turns[(tpmi - 12) % 4];
                // With transform precoding real products change their sign.
                const complex_t product = second * third;
                const bool is_turned = transfer_precoding && product.imag() == 0.0;
                expected = {0.5, 0.5 * second, 0.5 * third, 0.5 * (is_turned ? -product : product)};
            }
            const matrix_t matrix = matrix_of(1, 4, tpmi, transfer_precoding);
            for (std::size_t antenna = 0; antenna < 4; ++antenna)
                EXPECT_EQ(matrix[antenna][0], expected[antenna]) << "TPMI " << tpmi << ", antenna " << antenna;
        }
}

TEST(lib_nr_ul_phy_pre_coding, numbers_without_a_table_are_told_and_send_nothing)
{
    const std::string name = "lib_nr_ul_phy_pre_coding_t::_updata_precoding_matrix : Error ";
    for (const auto& [layers, antennas, text] : {std::tuple{5u, 4u, "layers\n"},
                                                 {0u, 4u, "layers\n"},
                                                 {1u, 3u, "antenna number\n"},
                                                 {3u, 2u, "antenna number\n"}})
    {
        const nr_test::captured_output_t output;
        for (const auto& stream : matrix_of(layers, antennas, 0))
            for (const complex_t& value : stream)
                EXPECT_EQ(value, 0.0);
        EXPECT_EQ(output.text(), name + text);
    }
}

} // namespace
