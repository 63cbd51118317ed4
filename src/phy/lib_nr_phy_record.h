#pragma once

#include "phy/lib_nr_resource_type.h"
#include "phy_common/lib_nr_deviation.h"
#include "phy_common/lib_nr_new_prach_ofdm_modulator.h"
#include "phy_common/lib_nr_numerology_type.h"

#include <complex>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vek::nr_mod_lib
{

/// Why an entry of a channel was sent nowhere in a run: what it lacked in the end.
enum lib_nr_silence_t : std::uint32_t
{
    LIB_NR_SILENCE_NONE = 0,    ///< it was sent
    LIB_NR_SILENCE_SPACING = 1, ///< no enabled numerology of the carrier has its spacing
    LIB_NR_SILENCE_PREFIX = 2,  ///< its prefix is not that of downlink BWP 0, which all of the carrier has
    LIB_NR_SILENCE_SLOT = 3,    ///< none of its slots, blocks or occasions lies in the waveform
    LIB_NR_SILENCE_STOPPED = 4, ///< a PRACH burst ahead of it is disabled, or was not sent either
    LIB_NR_SILENCE_RB = 5,      ///< it has no resource blocks
    LIB_NR_SILENCE_PORT = 6,    ///< its first antenna port is none, or carries nothing
    LIB_NR_SILENCE_TAKEN = 7,   ///< all of its cells belong to channels ahead of it
    LIB_NR_SILENCE_GRID = 8,    ///< all of its cells lie outside slot or grid
    LIB_NR_SILENCE_FAILED = 9,  ///< a channel step failed, or there was a conflict, before it could be sent
};

/// An entry of a channel.
struct lib_nr_channel_entry_t
{
    std::string_view channel; ///< "SS/PBCH", "CSI-RS", "PRS", "PDCCH", "PDSCH", "PUCCH", "PUSCH", "SRS" or "PRACH"
    unsigned int carrier = 0; ///< place in the waveform's list
    unsigned int entry = 0;   ///< place in the carrier's list of that channel; 0 for SS/PBCH
};

/// What a run did with an enabled entry of an enabled carrier.
struct lib_nr_entry_record_t : lib_nr_channel_entry_t
{
    /// Where cells were written, in the order of the run: slots of its spacing, frames for a PRACH burst, both counted
    /// from the start of the waveform.
    std::vector<std::uint32_t> slots;
    /// What was written in each of these slots, subcarriers counted from the carrier's centre; none for a PRACH burst.
    std::vector<lib_nr_slot_extent_t> extents;
    lib_nr_numerology_type_t spacing = LIB_NR_SCS_15K; ///< of the numerology that it was sent with
    std::uint64_t cells = 0;         ///< written, also behind the waveform's end; of a PRACH burst in its own grid
    std::uint64_t cells_outside = 0; ///< left out, since they lie outside slot or grid
    unsigned int rbs = 0;            ///< of the symbol that lost most resource blocks to the grid's edges; 0 for PRACH
    unsigned int rbs_outside = 0;    ///< of these
    bool has_dmrs = true;            ///< false for a shared channel that was sent without, having no symbol for them
    unsigned int frames_stopped = 0; ///< of a PRACH burst: frames that the next one kept it out of
    std::optional<unsigned int> stopped_by; ///< the first burst ahead of it that did, disabled or not sent itself
    lib_nr_silence_t silence = LIB_NR_SILENCE_NONE;
};

/// Two entries that claim the same cells in a frame.
struct lib_nr_entry_conflict_t
{
    lib_nr_channel_entry_t owner;    ///< who had the cells
    lib_nr_channel_entry_t newcomer; ///< who claimed them too
    unsigned int numerology = 0;     ///< place in the carrier's list
    unsigned int frame = 0;          ///< of the waveform
    unsigned int slot = 0;           ///< of the frame, and of the first such cell, as are the others
    unsigned int symbol = 0;         ///< of the slot
    unsigned int rb = 0;             ///< of the grid
    std::uint64_t cells = 0;         ///< of these two in the frame
};

/// That the signal of an entry, or of a carrier as a whole where the channel is empty, goes by an own rule where the
/// standard says otherwise.
struct lib_nr_met_deviation_t : lib_nr_channel_entry_t
{
    lib_nr_deviation_t deviation = lib_nr_deviation_t::carrier_phase;
};

/// What a run did, entry by entry in the order of carriers, channels and lists; where a conflict ended it, between
/// whom, in the order in which the conflicts arose.
struct lib_nr_phy_record_t
{
    std::vector<lib_nr_entry_record_t> entries;
    std::vector<lib_nr_entry_conflict_t> conflicts;
    /// Each once, ordered as the entries are, ahead of them those of their carrier; none under `standard_rules`.
    std::vector<lib_nr_met_deviation_t> deviations;
};

/// A run of cells that an entry wrote, as `lib_nr_written_run_t` tells.
struct lib_nr_mapped_run_t : lib_nr_written_run_t
{
    std::string_view channel; ///< as in `lib_nr_channel_entry_t`
};

/// The cells of one frame of a carrier's numerology, or of one burst of a PRACH carrier, as they go to the modulator.
/// What it points to lasts as long as the call that hands it over.
struct lib_nr_mapped_cells_t
{
    unsigned int carrier = 0;    ///< place in the waveform's list
    unsigned int numerology = 0; ///< place in the carrier's list
    unsigned int frame = 0;      ///< of the waveform
    std::vector<lib_nr_mapped_run_t> runs;
    const std::vector<std::vector<std::complex<double>>>* rows = nullptr; ///< [symbol][subcarrier]

    // Of a burst alone, whose rows are the repetitions of its preamble, each of them a run, the first one's at its
    // start.

    const prach_ofdm_info_param_t* burst = nullptr; ///< null for a frame
    std::int64_t start = 0; ///< of the first row's prefix, samples from the start of the frame; may lie outside of it
};

} // namespace vek::nr_mod_lib
