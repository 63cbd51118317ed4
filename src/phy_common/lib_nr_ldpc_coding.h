#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_ldpc_type.h"

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace vek::nr_mod_lib
{

struct lib_nr_ldpc_packed_parity_t;

/// LDPC encoder of one code block, TS 38.212 clause 5.3.2. A bit is one byte: 0, 1, or the filler marker 255, which
/// counts as 0 and stays in the code word. The tables behind it are built by the first encoder and shared by all.
class NR_MOD_LIB_EXPORT lib_nr_ldpc_coding_t
{
public:
    lib_nr_ldpc_coding_t();

    /// An unknown graph is stored and prints two lines; the lengths become 0, so that every block is refused.
    void set_base_graph_type(lib_nr_ldpc_base_graph_type_t base_graph);
    /// Encodes one code block of 22Z (graph 1) or 10Z bits, Z being a lifting size: `out` becomes the block without its
    /// first 2Z bits, followed by the parity bits. Any other length prints two lines and returns false, `out`
    /// untouched. Both may be the same vector.
    bool deal_ldpc_coding(const std::vector<unsigned char>& in, std::vector<unsigned char>& out);

    /// 22Z or 10Z; 0 and a printed line for an unknown graph.
    static unsigned int get_ldpc_coding_input_data_length(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z);
    /// 66 or 50; 0 and a printed line for an unknown graph.
    static unsigned int get_ldpc_coding_output_data_length(lib_nr_ldpc_base_graph_type_t base_graph);
    /// 66Z or 50Z; 0 and a printed line for an unknown graph.
    static unsigned int get_ldpc_coding_output_data_length(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z);
    /// The smallest lifting size of any set that is not below the argument; 0 and a printed line above 384.
    static unsigned int get_min_lifting_size_value(unsigned int minimum);
    static bool check_lifting_size_value(unsigned int z);

    /// The same for a block in words of 64 bits, the first lowest, fillers being zeros, that goes on for a word behind
    /// its last bit: the four core parity rows, and of the others those from `first_row` to `end_row` - 1. Graph and
    /// lifting size must be known.
    static void encode_words(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z, const std::uint64_t* block,
                             unsigned int first_row, unsigned int end_row, lib_nr_ldpc_packed_parity_t& parity);

private:
    friend struct vek::test_peer_t<lib_nr_ldpc_coding_t>;

    using lifting_size_map_t = std::map<unsigned int, std::vector<unsigned int>>;
    /// The blocks of a row that are not null: (column, V).
    using base_matrix_row_t = std::vector<std::pair<unsigned int, unsigned int>>;
    using base_matrix_t = std::vector<base_matrix_row_t>;
    using base_matrix_store_t = std::map<unsigned int, base_matrix_t>;

    static const lifting_size_map_t& _init_nr_ldpc_lifting_size_map();
    static const std::vector<unsigned int>& _get_sorted_lifting_size_list();
    static const base_matrix_store_t& _init_nr_ldpc_base_matrix_data(lib_nr_ldpc_base_graph_type_t base_graph);
    /// One complete matrix. An unknown graph prints a line and gives graph 1, set 0; an unknown set throws
    /// std::out_of_range.
    static const base_matrix_t& _get_base_matrix(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int set_index);
    static unsigned int _get_ldpc_parity_check_bit_number(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z);
    struct encoding_plan_t;
    static const encoding_plan_t& _get_encoding_plan(lib_nr_ldpc_base_graph_type_t base_graph, unsigned int z);

    bool _set_input_data_length(std::size_t length);
    bool _set_lifting_size(unsigned int z);
    void _update_lifting_size_set_index();
    void _update_data_length();
    void _generate_parity_check_bit_data(const std::vector<unsigned char>& in,
                                         lib_nr_ldpc_packed_parity_t& parity) const;
    void _combine_parity_check_data(const std::vector<unsigned char>& in, const lib_nr_ldpc_packed_parity_t& parity,
                                    std::vector<unsigned char>& out) const;

    lib_nr_ldpc_base_graph_type_t m_base_graph = LIB_NR_LDPC_BASE_GRAPH_1;
    std::uint32_t m_lifting_size = 2;
    std::uint32_t m_lifting_size_set_index = 0;
    std::uint32_t m_parity_check_bit_number = 0;
    std::uint32_t m_output_data_length = 0;
};

} // namespace vek::nr_mod_lib
