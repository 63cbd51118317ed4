#pragma once

#include "phy/lib_nr_phy_record.h"
#include "phy/lib_nr_resource_type.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace vek::nr_mod_lib
{

/// Keeps the record of a run while it goes. Notes between runs, as those of a view, are lost.
class lib_nr_phy_recorder_t
{
public:
    /// Begins a run.
    void open();
    /// Ends it, and tells of each silent entry why it is.
    void close(bool has_failed);
    const lib_nr_phy_record_t& get_record() const { return m_record; }

    /// A pass came by an enabled entry, which is part of the record from then on, and found out whether spacing and
    /// prefix are its own.
    void note_pass(const lib_nr_channel_entry_t& entry, bool has_spacing, bool has_prefix);
    /// The channel's process is run for one of the entry's slots or blocks.
    void note_call(const lib_nr_channel_entry_t& entry);
    void note_marks(const lib_nr_channel_entry_t& entry);
    /// In one of the entry's symbols.
    void note_cut(const lib_nr_channel_entry_t& entry, unsigned int rbs, unsigned int rbs_outside);
    void note_missing_dmrs(const lib_nr_channel_entry_t& entry);
    /// Slots, or frames of a PRACH burst, counted from the start of the waveform, those behind its end left out;
    /// subcarriers counted from the carrier's centre.
    void note_written(const lib_nr_channel_entry_t& entry, lib_nr_numerology_type_t spacing,
                      const lib_nr_resource_written_t& written);
    /// A PRACH burst ahead of the entry kept it out of a frame.
    void note_stop(const lib_nr_channel_entry_t& entry, unsigned int stopped_by);
    /// The entry's channel is empty where a carrier as a whole met them.
    void note_met(const lib_nr_channel_entry_t& entry, const lib_nr_rules_t& rules);
    void note_conflict(const lib_nr_entry_conflict_t& conflict);

private:
    /// How far an entry came.
    struct state_t
    {
        bool is_called = false;
        bool is_marked = false;
    };

    /// Place in the record, none for an entry that is not there.
    std::optional<std::size_t> _place_of(const lib_nr_channel_entry_t& entry) const;
    void _sort_deviations();
    lib_nr_silence_t _silence_of(const lib_nr_entry_record_t& entry, const state_t& state, bool has_failed) const;

    lib_nr_phy_record_t m_record;
    std::vector<state_t> m_states; ///< of the record's entries
    bool m_is_open = false;
};

} // namespace vek::nr_mod_lib
