#include "phy_ul/lib_nr_ul_phy_pre_coding.h"

#include "common/lib_complex_product.h"
#include "phy_common/tables/lib_nr_ul_precoding_matrix_table.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

/// Null where a number of antennas has no table for these layers.
const lib_nr_precoding_table_t* table_of(unsigned int layers, unsigned int antennas, bool transfer_precoding)
{
    if (antennas == 2)
        return layers == 1 ? &precoding_matrix_6_3_1_5_1() : layers == 2 ? &precoding_matrix_6_3_1_5_4() : nullptr;
    if (antennas != 4)
        return nullptr;
    switch (layers) {
    case 1:
        return transfer_precoding ? &precoding_matrix_6_3_1_5_2() : &precoding_matrix_6_3_1_5_3();
    case 2:
        return &precoding_matrix_6_3_1_5_5();
    case 3:
        return &precoding_matrix_6_3_1_5_6();
    default:
        return &precoding_matrix_6_3_1_5_7();
    }
}

} // namespace

void lib_nr_ul_phy_pre_coding_t::_updata_precoding_matrix(unsigned int layers)
{
    if (layers < 1 || layers > 4) {
        std::cout << "lib_nr_ul_phy_pre_coding_t::_updata_precoding_matrix : Error layers" << std::endl;
        return;
    }
    const lib_nr_precoding_table_t* const table = table_of(layers, m_antenna_number, m_transfer_precoding);
    if (!table) {
        std::cout << "lib_nr_ul_phy_pre_coding_t::_updata_precoding_matrix : Error antenna number" << std::endl;
        return;
    }
    const std::size_t row = m_tpmi_index < table->size() ? m_tpmi_index : 0;
    m_matrix = m_rules.pick(lib_nr_deviation_t::codebook, (*table)[row], standard_precoding_matrix(*table, row));
}

void lib_nr_ul_phy_pre_coding_t::_ul_phy_pusch_pre_coding(const streams_t& in, streams_t& out)
{
    _updata_precoding_matrix(static_cast<unsigned int>(in.size()));
    const std::size_t length = in.empty() ? 0 : in.front().size();
    out.assign(m_antenna_number, std::vector<std::complex<double>>(length));
    for (std::size_t layer = 0; layer < in.size(); ++layer)
        for (std::size_t antenna = 0; antenna < m_antenna_number; ++antenna) {
            const std::size_t place = layer * m_antenna_number + antenna;
            const std::complex<double> weight = place < m_matrix.size() ? m_matrix[place] : 0.0;
            if (weight == 0.0)
                continue;
            for (std::size_t i = 0; i < std::min(length, in[layer].size()); ++i)
                out[antenna][i] += common_lib::product(weight, in[layer][i]);
        }
}

} // namespace vek::nr_mod_lib
