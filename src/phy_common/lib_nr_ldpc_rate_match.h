#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_ldpc_coding.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Rate matching of all code blocks of a transport block, TS 38.212 clause 5.4.2: output length of each block, bit
/// selection from the circular buffer, interleaving by modulation order. Fillers (255) are never selected.
class NR_MOD_LIB_EXPORT lib_nr_ldpc_rate_match_t
{
public:
    lib_nr_ldpc_rate_match_t();

    /// 1 limits the circular buffer to 25344 bits, which no code word exceeds; false, and no change, above 1.
    bool set_i_lbrm(unsigned int i_lbrm);
    /// Bits per symbol; 0 is refused with a printed line.
    bool set_q_m(unsigned int q_m);
    /// Layers; 0 is refused with a printed line.
    bool set_n_l(unsigned int n_l);
    /// Output bits of the whole transport block.
    void set_g(unsigned int g);
    /// Code blocks; 0 is refused with a printed line.
    bool set_c(unsigned int c);
    /// An unknown graph is stored and prints two lines; every input is then refused.
    void set_base_graph_type(lib_nr_ldpc_base_graph_type_t base_graph);
    /// Redundancy version; above 3 it becomes 3.
    void set_rv_id(unsigned int rv_id);

    /// `out` becomes one block of E bits for each code word. A block of fillers alone gives an empty one. False, with a
    /// line and `out` empty, where the code words are not C in number, not of one length, or of a length that is not 66
    /// (graph 1) or 50 lifting sizes.
    bool deal_rate_match(const std::vector<std::vector<unsigned char>>& in,
                         std::vector<std::vector<unsigned char>>& out);

    /// The output bits E of each of C code blocks; C, layers and order are not 0.
    static std::vector<std::uint32_t> get_output_lengths(unsigned int g, unsigned int q_m, unsigned int n_l,
                                                         unsigned int c);
    /// k_0, the bit of a circular buffer of N_cb bits that the output begins with; for known graphs and versions.
    static unsigned int get_start_index(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z, unsigned int n_cb,
                                        unsigned int rv_id);

private:
    bool _set_input_data_length(const std::vector<std::vector<unsigned char>>& in);
    bool _set_lifting_size(unsigned int z);
    void _update_code_block_size();
    void _update_version_start_index();
    void _update_rate_matching_output_length();
    void _deal_bit_selection(const std::vector<unsigned char>& in, unsigned int length,
                             std::vector<unsigned char>& selected) const;
    void _deal_bit_interleaving(const std::vector<unsigned char>& selected, std::vector<unsigned char>& out) const;

    lib_nr_ldpc_base_graph_type_t m_base_graph = LIB_NR_LDPC_BASE_GRAPH_1;
    std::uint32_t m_i_lbrm = 1;
    std::uint32_t m_lifting_size = 64;
    std::uint32_t m_q_m = 8;
    std::uint32_t m_n_l = 1;
    std::uint32_t m_g = 4224;
    std::uint32_t m_c = 1;
    std::uint32_t m_rv_minimum = 0;
    std::uint32_t m_rv_maximum = 3;
    std::uint32_t m_rv_id = 0;
    std::uint32_t m_circular_buffer_length = 0;      // N_cb
    std::vector<std::uint32_t> m_output_length_list; // E of each block
    std::uint32_t m_start_index = 0;                 // k_0
};

} // namespace vek::nr_mod_lib
