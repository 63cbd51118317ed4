#pragma once

#include "receiver/bits.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace nr_test
{

/// A block of the base graph that is not null: the identity, shifted to the right by `shift`.
struct ldpc_edge_t
{
    unsigned int row;
    unsigned int column;
    unsigned int shift;
};

/// The parity check matrix of one base graph and lifting size.
struct ldpc_matrix_t
{
    unsigned int z = 0;
    unsigned int information_columns = 0;
    unsigned int rows = 0;
    std::vector<ldpc_edge_t> edges; // by row, then column

    unsigned int columns() const { return information_columns + rows; }
};

/// The parity check matrix of base graph 1 or 2 for a lifting size, TS 38.212 clause 5.3.2.
ldpc_matrix_t ldpc_matrix(unsigned int base_graph, unsigned int z);

/// Whether a whole word, the two untransmitted columns included, has a product of zero with the matrix.
bool satisfies_every_check(const ldpc_matrix_t& matrix, const bits_t& word);

/// How a transport block was cut into code blocks, by the text of TS 38.212 clause 5.2.2.
struct ldpc_segmentation_t
{
    ldpc_segmentation_t(unsigned int base_graph, std::size_t transport_block_size);

    std::size_t crc_length = 0;       // of the transport block
    std::size_t block_count = 0;      // C
    std::size_t block_crc_length = 0; // 24 with several blocks
    std::size_t used_length = 0;      // K', CRC included
    std::size_t block_length = 0;     // K
    unsigned int z = 0;
};

/// One transmission of a transport block, in the terms of TS 38.212 clause 5.4.2.
struct ldpc_transmission_t
{
    std::size_t G = 0;
    unsigned int order = 2; // Q_m
    unsigned int layers = 1;
    unsigned int rv = 0;
};

/// Receives a shared channel's code word, or several redundancy versions of it: undoes concatenation, interleaving and
/// bit selection, decodes by belief propagation, checks every CRC and puts the transport block together again.
class ldpc_receiver_t
{
public:
    /// The size of the transport block without its CRC.
    ldpc_receiver_t(unsigned int base_graph, std::size_t transport_block_size);

    /// Adds G soft bits (positive for 0) to what is known. False where one bit was heard as 0 and as 1, which a signal
    /// without noise never brings about, or where the number of soft bits is not what the transmission tells.
    bool add(const ldpc_transmission_t& transmission, const std::vector<double>& soft_bits);
    /// The transport block without its CRC; nothing where a parity check or a CRC fails.
    std::optional<bits_t> decode() const;

    const ldpc_segmentation_t& segmentation() const { return m_segmentation; }

private:
    std::size_t m_transport_block_size;
    ldpc_segmentation_t m_segmentation;
    ldpc_matrix_t m_matrix;
    std::vector<std::vector<double>> m_words; // soft bits of each block, the two untransmitted columns included
};

/// Belief propagation (layered, normalised minimum of sums) over the soft bits of a whole word, 0 for what is unknown.
/// The hard bits of the word; nothing where a check fails or a bit stays unknown.
std::optional<bits_t> ldpc_decode(const ldpc_matrix_t& matrix, std::vector<double> soft_bits);

} // namespace nr_test
