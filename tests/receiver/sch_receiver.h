#pragma once

#include "receiver/ldpc_decoder.h"
#include "receiver/ofdm_receiver.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace nr_test
{

// A receiver of shared channels of one layer, after TS 38.211 clauses 7.3.1, 7.4.1.1 and 7.4.1.2, TS 38.212 clause 7.2
// and TS 38.214 clause 5.1.3.2. PTRS carry no cover code.

/// What a receiver knows of a channel. Amplitudes are relative to the carrier's.
struct sch_setup_t
{
    std::vector<unsigned int> rbs; ///< in the order of the mapping, counted from the grid's first
    unsigned int first_symbol = 0;
    unsigned int symbol_number = 14;
    unsigned int symbols_in_slot = 14;
    std::uint32_t scrambling_c_init = 0;
    unsigned int order = 2; ///< Q_m
    double code_rate = 0.0;
    double scaling = 1.0;
    unsigned int overhead = 0;
    unsigned int rv = 0;

    bool is_type_2 = false;
    bool is_double = false;
    std::vector<unsigned int> dmrs_symbols; ///< in the slot
    unsigned int port = 0;
    unsigned int groups_without_data = 1;
    std::uint32_t n_id[2] = {0, 0}; ///< by n_SCID
    unsigned int n_scid = 0;
    bool by_group = false; ///< dmrs-Downlink-r16

    bool has_ptrs = false;
    unsigned int ptrs_rbs = 2;     ///< K
    unsigned int ptrs_symbols = 1; ///< L
    unsigned int ptrs_offset = 0;
    unsigned int rnti = 0;

    double amplitude = 1.0;
    double dmrs_amplitude = 1.0;
    double ptrs_amplitude = 1.0;

    unsigned int cdm_group() const { return is_type_2 ? port % 6 / 2 : port / 2 % 2; }
};

/// What came in a slot.
struct sch_slot_t
{
    double error =
        0.0;     ///< largest distance of a cell from what it must or can hold, after the gain of the DMRS and PTRS
    bits_t bits; ///< descrambled
};

/// Reads a slot. Cells that another channel holds are told by symbol in frame and subcarrier.
sch_slot_t receive_sch_slot(const sch_setup_t& setup, const rows_t& rows, unsigned int slot,
                            const std::function<bool(unsigned int, unsigned int)>& is_taken);

/// TS 38.214 clause 5.1.3.2, steps 3 and 4, in whole numbers: N_info comes in parts of a unit.
constexpr std::uint64_t k_n_info_unit = 8192; // rates are halves of 1/1024, scalings quarters
std::size_t transport_block_size(std::uint64_t n_info, bool low_rate);
/// All steps.
std::size_t transport_block_size(const sch_setup_t& setup);

/// The transport block out of some slots that carry it in redundancy versions of their own; nothing where it cannot be
/// decoded, a CRC fails or two slots disagree.
std::optional<bits_t> decode_sch(const std::vector<sch_setup_t>& setups, const std::vector<sch_slot_t>& slots);

} // namespace nr_test
