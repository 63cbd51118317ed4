#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"

#include "phy_common/lib_nr_transport_block_size.h"

#include <algorithm>
#include <cmath>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned char k_filler = 255;

// K_b of TS 38.212 clause 5.2.2; B is the size of the transport block with its CRC.
unsigned int get_information_columns(lib_nr_ldpc_base_graph_type_t base_graph, std::size_t transport_block_size)
{
    if (base_graph != LIB_NR_LDPC_BASE_GRAPH_2)
        return 22;
    if (transport_block_size > 640)
        return 10;
    if (transport_block_size > 560)
        return 9;
    return transport_block_size > 192 ? 8 : 6;
}

} // namespace

lib_nr_ldpc_code_block_segmentation_t::lib_nr_ldpc_code_block_segmentation_t()
{
    m_crc_calculator.set_crc_type(LIB_NR_CRC_TYPE_24B);
}

void lib_nr_ldpc_code_block_segmentation_t::set_base_graph_type(lib_nr_ldpc_base_graph_type_t base_graph)
{
    m_base_graph = base_graph;
    _update_code_block_size_max();
}

void lib_nr_ldpc_code_block_segmentation_t::_update_code_block_size_max()
{
    if (m_base_graph == LIB_NR_LDPC_BASE_GRAPH_1)
        m_code_block_size_max = 8448;
    else if (m_base_graph == LIB_NR_LDPC_BASE_GRAPH_2)
        m_code_block_size_max = 3840;
    else
        std::cout << "lib_nr_ldpc_code_block_segmentation_t::_update_code_block_size_max Report : Unknown LDPC Base "
                     "Graph Type!"
                  << std::endl;
}

lib_nr_ldpc_segments_t lib_nr_ldpc_code_block_segmentation_t::get_segments(std::size_t transport_block_size) const
{
    const std::size_t b = transport_block_size;
    lib_nr_ldpc_segments_t segments{1, 0, 0, 0, 0};
    if (b > m_code_block_size_max) {
        segments.crc_length = m_crc_calculator.get_crc_length();
        const std::size_t payload_max = m_code_block_size_max - segments.crc_length;
        segments.count = (b + payload_max - 1) / payload_max;
    }
    segments.used_length = (b + segments.count * segments.crc_length) / segments.count;
    segments.lifting_size = _get_ldpc_lifting_size(static_cast<unsigned int>(std::min<std::size_t>(b, 0xFFFFFFFFu)),
                                                   static_cast<unsigned int>(segments.used_length));
    segments.length = std::max<std::size_t>(
        segments.used_length,
        lib_nr_ldpc_coding_t::get_ldpc_coding_input_data_length(m_base_graph, segments.lifting_size));
    return segments;
}

void lib_nr_ldpc_code_block_segmentation_t::deal_code_block_segmentation(const std::vector<unsigned char>& in,
                                                                         std::vector<std::vector<unsigned char>>& out)
{
    const lib_nr_ldpc_segments_t segments = get_segments(in.size());
    // Built apart, since `in` may be one of the old blocks.
    std::vector<std::vector<unsigned char>> blocks(segments.count);
    auto next = in.begin();
    for (std::vector<unsigned char>& block : blocks) {
        const auto end = next + static_cast<std::ptrdiff_t>(segments.used_length - segments.crc_length);
        block.reserve(segments.length);
        block.assign(next, end);
        if (segments.count > 1)
            m_crc_calculator.deal_crc_attachment(block, block);
        block.resize(segments.length, k_filler);
        next = end;
    }
    out = std::move(blocks);
}

unsigned int lib_nr_ldpc_code_block_segmentation_t::_get_ldpc_lifting_size(unsigned int transport_block_size,
                                                                           unsigned int code_block_size) const
{
    const unsigned int columns = get_information_columns(m_base_graph, transport_block_size);
    const unsigned int minimum = code_block_size / columns + (code_block_size % columns != 0 ? 1 : 0);
    return lib_nr_ldpc_coding_t::get_min_lifting_size_value(minimum);
}

unsigned int lib_nr_ldpc_code_block_segmentation_t::get_transport_block_size(unsigned int resource_elements,
                                                                             unsigned int modulation_order,
                                                                             unsigned int layers, double code_rate)
{
    // In double precision: the product of the three may pass 32 bits.
    const double n_info = static_cast<double>(resource_elements) * modulation_order * layers * code_rate;
    return lib_nr_transport_block_size(std::trunc(n_info), code_rate);
}

} // namespace vek::nr_mod_lib
