#include "phy_ul/lib_nr_ul_phy_pre_coding.h"
#include "support/captured_output.h"

#include <gtest/gtest.h>

#include <complex>
#include <tuple>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using complex_t = std::complex<double>;
using matrix_t = std::vector<std::vector<complex_t>>; // [antenna][layer]

/// What the precoder makes of one symbol a layer, each layer alone in its own symbol.
matrix_t matrix_of(unsigned int layers, unsigned int antennas, unsigned int tpmi)
{
    matrix_t identity(layers, std::vector<complex_t>(layers));
    for (unsigned int layer = 0; layer < layers; ++layer)
        identity[layer][layer] = 1.0;
    lib_nr_ul_phy_pre_coding_t precoder;
    precoder.set_antenna_number(antennas);
    precoder.set_tpmi_index(tpmi);
    matrix_t matrix;
    precoder._ul_phy_pusch_pre_coding(identity, matrix);
    return matrix;
}

TEST(lib_nr_ul_phy_pre_coding, a_matrix_past_the_last_is_the_first)
{
    for (const auto& [layers, antennas, rows] :
         {std::tuple{1u, 2u, 6u}, {1u, 4u, 28u}, {2u, 2u, 3u}, {2u, 4u, 22u}, {3u, 4u, 7u}, {4u, 4u, 5u}})
    {
        EXPECT_EQ(matrix_of(layers, antennas, rows), matrix_of(layers, antennas, 0)) << layers << ' ' << antennas;
        EXPECT_NE(matrix_of(layers, antennas, rows - 1), matrix_of(layers, antennas, 0)) << layers << ' ' << antennas;
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
