#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_ldpc_coding.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// How a transport block with its CRC is divided, TS 38.212 clause 5.2.2.
struct lib_nr_ldpc_segments_t
{
    std::size_t count;         ///< C
    std::size_t crc_length;    ///< of each code block, 0 or 24
    std::size_t used_length;   ///< K', the CRC included
    std::size_t length;        ///< K, fillers included
    unsigned int lifting_size; ///< 0 where there is none for that length
};

/// Divides a transport block with its CRC into code blocks for the LDPC encoder, TS 38.212 clause 5.2.2: with a CRC24B
/// of its own for each of several blocks, and the filler marker 255 up to the encoder's input length.
class NR_MOD_LIB_EXPORT lib_nr_ldpc_code_block_segmentation_t
{
public:
    lib_nr_ldpc_code_block_segmentation_t();

    /// An unknown graph is stored and prints a line; the largest code block size stays the old one.
    void set_base_graph_type(lib_nr_ldpc_base_graph_type_t base_graph);
    /// `out` becomes the code blocks, all of one length. An empty `in` gives one block of fillers. The last input bits
    /// are left out where they don't divide evenly among the blocks, which no transport block size brings about. With
    /// an unknown graph the blocks get no filler.
    void deal_code_block_segmentation(const std::vector<unsigned char>& in,
                                      std::vector<std::vector<unsigned char>>& out);
    /// The division of a transport block of B bits, CRC included.
    lib_nr_ldpc_segments_t get_segments(std::size_t transport_block_size) const;
    /// The smallest lifting size that holds K' bits in the K_b information columns that a transport block of B bits
    /// uses; 0 and a printed line where there is none.
    unsigned int _get_ldpc_lifting_size(unsigned int transport_block_size, unsigned int code_block_size) const;

    /// The check of a transport block of A bits (TS 38.212 clause 7.2.1): 16 bits up to A = 3824, else 24A.
    static lib_nr_crc_type_t get_transport_block_crc_type(std::size_t transport_block_size)
    {
        return transport_block_size <= 3824 ? LIB_NR_CRC_TYPE_16 : LIB_NR_CRC_TYPE_24A;
    }
    /// Transport block size for N_info = resource elements x modulation order x layers x code rate, cut to an integer
    /// (TS 38.214 clause 5.1.3.2). The three factors may come in any order.
    static unsigned int get_transport_block_size(unsigned int resource_elements, unsigned int modulation_order,
                                                 unsigned int layers, double code_rate);

private:
    void _update_code_block_size_max();

    lib_nr_ldpc_base_graph_type_t m_base_graph = LIB_NR_LDPC_BASE_GRAPH_1;
    std::uint32_t m_code_block_size_max = 8448; // K_cb
    lib_nr_crc_calculator_t m_crc_calculator;
};

} // namespace vek::nr_mod_lib
