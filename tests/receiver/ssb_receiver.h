#pragma once

#include "receiver/ofdm_receiver.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace nr_test
{

// A receiver of SS/PBCH blocks after TS 38.211 clauses 7.3.3 and 7.4.2 to 7.4.3, TS 38.212 clause 7.1 and TS 38.213
// clause 4.1. It takes samples and what a phone knows of a band: the spacing, the case of its candidates, Lmax.

/// First symbols of the candidate blocks in a half frame, for case 'A' to 'G'.
std::vector<unsigned int> candidate_symbols(char ssb_case, unsigned int lmax);

/// A block found in the signal.
struct ssb_place_t
{
    std::size_t sample = 0;   ///< where the useful part of the PSS begins
    int first_subcarrier = 0; ///< the block's lowest, counted from the carrier's centre
    unsigned int cell = 0;    ///< physical cell identity
};

/// What the PBCH says, and what had to be known to read it.
struct ssb_content_t
{
    unsigned int dmrs_index = 0;       ///< which of the eight DMRS sequences
    unsigned int scrambling_index = 0; ///< which run of the scrambling sequence made the CRC match
    bool crc_matches = false;
    std::uint32_t payload = 0;      ///< 32 bits, the first transmitted highest
    std::vector<unsigned char> mib; ///< its first 24 bits
    unsigned int frame_number = 0;  ///< all ten bits
    unsigned int half_frame = 0;
    unsigned int block_index = 0;          ///< all of it, from DMRS and payload
    unsigned int kssb_high_bit = 0;        ///< Lmax 4 and 8
    std::vector<unsigned char> coded_bits; ///< 864 hard decisions, descrambled by the standard's rule
};

/// How a block compares with the ideal one that carries the same bits, all four symbols sharing one complex gain.
struct ssb_quality_t
{
    std::complex<double> gain;
    double pss_amplitude = 0.0; ///< over that of the other symbols
    double evm = 0.0;           ///< guard cells of PSS and SSS counted as errors, not as reference
};

/// Reads the PBCH out of a block's four symbols of 240 subcarriers; the phase of each symbol is taken from its DMRS.
ssb_content_t read_pbch(const std::array<signal_t, 4>& symbols, unsigned int cell, unsigned int lmax);
ssb_content_t read_pbch(const signal_t& signal, const ofdm_setup_t& setup, const ssb_place_t& place, unsigned int lmax);

/// The cell whose PSS and SSS stand in a block's first and third symbol; nothing where no cell fits.
std::optional<unsigned int> find_cell(const std::array<signal_t, 4>& symbols);

/// Undoes the scrambling and the interleaving of TS 38.212 clauses 7.1.2 and 7.1.1: the 32 bits ahead of the CRC become
/// the payload in its order of transmission.
std::vector<unsigned char> payload_in_order(std::vector<unsigned char> bits, unsigned int cell, unsigned int lmax);

/// Compares the block whose first symbol is given; frame_start is the frame's first sample.
ssb_quality_t measure_ssb(const signal_t& signal, const ofdm_setup_t& setup, std::size_t frame_start,
                          unsigned int first_symbol, const ssb_place_t& place, unsigned int dmrs_index);

} // namespace nr_test
