#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_crc_calculator.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Code block segmentation ahead of the polar encoder, with a CRC on each block: TS 38.212 clause 5.2.1.
class NR_MOD_LIB_EXPORT lib_nr_polar_code_block_segmentation_t
{
public:
    lib_nr_polar_code_block_segmentation_t();

    /// Two blocks for 1, one for 0. False, and no change, above 1.
    bool set_i_seg(unsigned int i_seg);
    /// CRC of each block; unknown types as in `lib_nr_crc_calculator_t::set_crc_type`. `LIB_NR_CRC_TYPE_6` at first.
    void set_crc_type(lib_nr_crc_type_t type);
    /// `out` becomes the blocks with their CRC; an odd number of bits in two blocks gets a zero in front. More than 176
    /// bits print a line and return false, `out` empty.
    bool deal_code_block_segementation(const std::vector<unsigned char>& in,
                                       std::vector<std::vector<unsigned char>>& out);

private:
    void _update_segment_number();

    unsigned int m_i_seg = 0;
    unsigned int m_segment_number = 1;
    lib_nr_crc_calculator_t m_crc_calculator;
};

} // namespace vek::nr_mod_lib
