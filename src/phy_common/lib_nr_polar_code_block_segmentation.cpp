#include "phy_common/lib_nr_polar_code_block_segmentation.h"

#include <cstddef>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::size_t k_max_input_length = 176;

} // namespace

lib_nr_polar_code_block_segmentation_t::lib_nr_polar_code_block_segmentation_t()
{
    m_crc_calculator.set_crc_type(LIB_NR_CRC_TYPE_6);
}

bool lib_nr_polar_code_block_segmentation_t::set_i_seg(unsigned int i_seg)
{
    if (i_seg > 1)
        return false;
    m_i_seg = i_seg;
    _update_segment_number();
    return true;
}

void lib_nr_polar_code_block_segmentation_t::set_crc_type(lib_nr_crc_type_t type)
{
    m_crc_calculator.set_crc_type(type);
}

bool lib_nr_polar_code_block_segmentation_t::deal_code_block_segementation(const std::vector<unsigned char>& in,
                                                                           std::vector<std::vector<unsigned char>>& out)
{
    if (in.size() > k_max_input_length) {
        out.clear();
        std::cout << "lib_nr_polar_code_block_segmentation_t::deal_code_block_segementation Report : input data length "
                     "out of range!"
                  << std::endl;
        return false;
    }
    const std::size_t block_length = (in.size() + m_segment_number - 1) / m_segment_number;
    std::vector<unsigned char> padded(m_segment_number * block_length - in.size(), 0);
    padded.insert(padded.end(), in.begin(), in.end());

    out.clear();
    out.resize(m_segment_number);
    for (std::size_t r = 0; r < m_segment_number; ++r) {
        const auto first = padded.begin() + static_cast<std::ptrdiff_t>(r * block_length);
        out[r].assign(first, first + static_cast<std::ptrdiff_t>(block_length));
        m_crc_calculator.deal_crc_attachment(out[r], out[r]);
    }
    return true;
}

void lib_nr_polar_code_block_segmentation_t::_update_segment_number() { m_segment_number = m_i_seg + 1; }

} // namespace vek::nr_mod_lib
