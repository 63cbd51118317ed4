#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace vek::nr_mod_lib
{

/// Rows of a binary matrix, 32 columns a word, the first column highest.
using lib_nr_packed_matrix_t = std::vector<std::vector<std::uint32_t>>;

/// Packs a matrix of one byte per element and puts it into `store` under its order. Prints a line and returns
/// false, nothing stored, where it isn't square or its order isn't a power of 2 of at least 32.
NR_MOD_LIB_EXPORT bool deal_matrix_transform(const std::vector<std::vector<unsigned char>>& matrix,
                                             std::map<unsigned int, lib_nr_packed_matrix_t>& store);

/// Polar encoder of TS 38.212 clause 5.3.1 for PBCH, DCI and UCI: built for a block, set, and thrown away. Bits are one
/// per byte, CRC already attached.
class NR_MOD_LIB_EXPORT lib_nr_polar_coding_t
{
public:
    /// log2 of the largest mother code, 5 to 10, at first 9. False, and no change, outside.
    bool set_n_max(unsigned int n_max);
    /// Input interleaving: 1 on (at first), 0 off. False, and no change, above 1.
    bool set_i_il(unsigned int i_il);
    /// Number of parity check bits, at first 0.
    void set_n_pc(unsigned int n_pc);
    /// How many of the parity check bits are placed by row weight; set `n_pc` first. False, and no change, above it.
    /// Where `n_pc` is lowered below it later, all parity check bits are placed by row weight.
    bool set_n_pc_wm(unsigned int n_pc_wm);
    /// Rate matching output length E in bits, at first 864.
    void set_rate_matching_output_length(unsigned int output_length);

    /// `out` becomes the code word of N bits, N from 32 to 2^n_max. Prints a line and returns false, `out`
    /// empty, where E is below the input with its parity check bits, or the input to be interleaved is longer than 164
    /// bits. Both may be the same vector. An N below the input's length (no channel asks for it) carries the input's
    /// first bits.
    bool deal_polar_coding(const std::vector<unsigned char>& in, std::vector<unsigned char>& out);

    /// TS 38.212 Table 5.3.1.2-1: bit indices in ascending reliability, 1024 entries.
    static const std::vector<unsigned int>& get_polar_sequence();
    /// TS 38.212 Table 5.3.1.1-1: the input interleaver, 164 entries.
    static const std::vector<unsigned int>& get_interleaving_pattern();
    /// Transposed generator matrices by order, 32 to 1024: bit j of row i is row j, column i of G_N. Built when first
    /// asked for, as the encoder itself needs no matrix.
    static const std::map<unsigned int, lib_nr_packed_matrix_t>& get_coding_matrix();
    /// By order, the weight of each row of G_N. Built when first asked for.
    static const std::map<unsigned int, std::map<unsigned int, unsigned int>>& get_row_weight_data();

private:
    friend struct vek::test_peer_t<lib_nr_polar_coding_t>;

    static std::map<unsigned int, lib_nr_packed_matrix_t> _init_coding_matrix();
    static std::map<unsigned int, std::map<unsigned int, unsigned int>> _init_row_weight_data();

    bool _check_input_data_length(std::size_t length) const;
    void _set_input_data_length(unsigned int length);
    void _init_process_parameter();
    void _calculate_coding_output_length();
    void _generate_non_frozen_bit_index_arr();
    void _generate_parity_check_bit_index_arr();
    bool _deal_interleaving(const std::vector<unsigned char>& in, std::vector<unsigned char>& out) const;
    void _generate_u_sequence(const std::vector<unsigned char>& in, std::vector<unsigned char>& u) const;
    static bool _deal_coding_matrix_multiply(const std::vector<unsigned char>& u, std::vector<unsigned char>& out);

    unsigned int m_n_max = 9;
    unsigned int m_i_il = 1;
    unsigned int m_n_pc = 0;
    unsigned int m_n_pc_wm = 0;
    unsigned int m_e = 864;
    unsigned int m_k = 0;
    unsigned int m_n = 32;
    bool m_non_frozen_list_valid = false;
    std::vector<unsigned int> m_non_frozen_list; // most reliable first
    bool m_parity_list_valid = false;
    std::vector<unsigned int> m_parity_list;
};

} // namespace vek::nr_mod_lib
