#pragma once

#include "manager/lib_nr_ul_sch_configure_manager.h"
#include "receiver/ldpc_decoder.h"
#include "receiver/ofdm_receiver.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace nr_test
{

// A receiver of shared channels, after TS 38.211 clauses 7.3.1, 7.4.1.1, 7.4.1.2, 6.3.1, 6.4.1.1 and 6.4.1.2, TS 38.212
// clause 7.2 and TS 38.214 clause 5.1.3.2. PTRS carry no cover code.

/// What a receiver knows of a channel: its settings, and what they come to in its BWP and carrier.
struct sch_channel_t
{
    const vek::nr_mod_lib::lib_nr_sch_configure_manager_t& settings;
    unsigned int cell;
    unsigned int symbols_in_slot;
    std::vector<unsigned int> rbs; ///< in the order of the mapping, counted from the grid's first
    std::vector<unsigned int> dmrs_symbols;
    std::uint32_t c_init; ///< of the scrambling
    double scaling = 1.0; ///< of the transport block size
    bool standard_rules = false;
    unsigned int dmrs_reference_rb = 0; ///< that the DMRS sequence counts from

    // What the uplink adds.
    std::vector<int> shifts = {};              ///< RBs that each symbol moves by
    unsigned int second_hop = k_no_hop;        ///< first symbol of the second hop in the slot
    std::vector<unsigned int> ptrs_ports = {}; ///< none for the channel's one port
    unsigned int layer = 0;                    ///< which of the DMRS ports is read
    const vek::nr_mod_lib::lib_nr_ul_sch_configure_manager_t* precoded = nullptr; ///< by the transform

    static constexpr unsigned int k_no_hop = 99;
};

/// What came in a slot.
struct sch_slot_t
{
    double error = 0.0; ///< largest distance of a cell from what it must or can hold, after the gain of DMRS and PTRS
    bits_t bits;        ///< descrambled
    std::size_t cells = 0;
};

/// Reads a layer of a slot, its bits still scrambled. Cells that another channel holds are told by symbol in frame and
/// subcarrier.
sch_slot_t receive_sch_layer(const sch_channel_t& channel, const rows_t& rows, unsigned int slot,
                             const std::function<bool(unsigned int, unsigned int)>& is_taken);
void descramble(const sch_channel_t& channel, bits_t& bits);
/// Reads a slot of a channel of one layer.
sch_slot_t receive_sch_slot(const sch_channel_t& channel, const rows_t& rows, unsigned int slot,
                            const std::function<bool(unsigned int, unsigned int)>& is_taken);

/// The symbols with DMRS, TS 38.211 clauses 7.4.1.1.2 and 6.4.1.1.3; `uplink` is the same channel where it is a PUSCH,
/// whose shortest lengths have none by the own rules.
std::vector<unsigned int> sch_dmrs_symbols(const vek::nr_mod_lib::lib_nr_sch_configure_manager_t& settings,
                                           const vek::nr_mod_lib::lib_nr_ul_sch_configure_manager_t* uplink = nullptr,
                                           bool standard_rules = false);
/// An identity as it is set, or the cell's: -1 stands for it, by the own rules 0 too.
unsigned int sch_identity(int identity, unsigned int cell, bool standard_rules);
/// TS 38.214 clause 5.1.3.2, steps 3 and 4, in whole numbers: N_info comes in parts of a unit.
constexpr std::uint64_t k_n_info_unit = 8192; // rates are halves of 1/1024, scalings quarters
std::size_t transport_block_size(std::uint64_t n_info, bool low_rate);
/// All steps.
std::size_t transport_block_size(const sch_channel_t& channel);

/// The transport block out of slots that carry it on channels that differ in their redundancy version; nothing where it
/// cannot be decoded, a CRC fails or two slots disagree.
std::optional<bits_t> decode_sch(const std::vector<sch_channel_t>& channels, const std::vector<sch_slot_t>& slots);

} // namespace nr_test
