#pragma once

#include <vector>

namespace nr_test
{

/// What a receiver knows of a polar coded block, in the terms of TS 38.212 clause 5.3.1.
struct polar_block_t
{
    unsigned int K = 0; // bits in, CRC included
    unsigned int E = 0; // bits sent
    unsigned int n_max = 9;
    bool input_interleaving = true;      // I_IL
    bool coded_bit_interleaving = false; // I_BIL
    unsigned int n_pc = 0;
    unsigned int n_pc_wm = 0;
};

/// Which bits of u carry what; all of length N.
struct polar_construction_t
{
    unsigned int N = 0;
    std::vector<bool> is_frozen;
    std::vector<bool> is_parity; // parity check bits, a part of those that aren't frozen
};

/// Code construction by the text of clauses 5.3.1.2 and 5.4.1.1.
polar_construction_t construct_polar_code(const polar_block_t& block);

/// The input interleaver of clause 5.3.1.1 for K bits, derived from what it is for: each parity bit of CRC24C follows
/// the last bit that it depends on. Bit k behind the interleaver is bit result[k] ahead of it.
std::vector<unsigned int> polar_input_interleaver(unsigned int K);

/// The sub-block interleaver J(n) of clause 5.4.1.1 for N bits.
std::vector<unsigned int> polar_subblock_interleaver(unsigned int N);

/// Undoes rate matching: E soft bits (positive for 0) become N, punctured ones 0, shortened ones certain.
std::vector<double> polar_rate_dematch(const polar_block_t& block, const std::vector<double>& soft_bits);

/// Successive cancellation: E soft bits (positive for 0) to K hard bits, CRC included and unchecked.
std::vector<unsigned char> polar_decode(const polar_block_t& block, const std::vector<double>& soft_bits);

} // namespace nr_test
