#include "phy/lib_nr_phy_recorder.h"

#include <algorithm>
#include <tuple>

namespace vek::nr_mod_lib
{

void lib_nr_phy_recorder_t::open()
{
    m_record = {};
    m_states.clear();
    m_is_open = true;
}

void lib_nr_phy_recorder_t::close(bool has_failed)
{
    for (std::size_t i = 0; i < m_states.size(); ++i)
        m_record.entries[i].silence = _silence_of(m_record.entries[i], m_states[i], has_failed);
    _sort_deviations();
    m_is_open = false;
}

void lib_nr_phy_recorder_t::note_pass(const lib_nr_channel_entry_t& entry, bool has_spacing, bool has_prefix)
{
    if (!m_is_open)
        return;
    std::optional<std::size_t> place = _place_of(entry);
    if (!place) {
        place = m_states.size();
        m_states.emplace_back();
        m_record.entries.emplace_back();
        static_cast<lib_nr_channel_entry_t&>(m_record.entries.back()) = entry;
        m_record.entries.back().silence = LIB_NR_SILENCE_SPACING;
    }
    lib_nr_silence_t& silence = m_record.entries[*place].silence;
    if (has_spacing)
        silence = std::max(silence, has_prefix ? LIB_NR_SILENCE_SLOT : LIB_NR_SILENCE_PREFIX);
}

void lib_nr_phy_recorder_t::note_call(const lib_nr_channel_entry_t& entry)
{
    if (const auto place = _place_of(entry))
        m_states[*place].is_called = true;
}

void lib_nr_phy_recorder_t::note_marks(const lib_nr_channel_entry_t& entry)
{
    if (const auto place = _place_of(entry))
        m_states[*place].is_marked = true;
}

void lib_nr_phy_recorder_t::note_cut(const lib_nr_channel_entry_t& entry, unsigned int rbs, unsigned int rbs_outside)
{
    const auto place = _place_of(entry);
    if (!place || rbs_outside <= m_record.entries[*place].rbs_outside)
        return;
    m_record.entries[*place].rbs = rbs;
    m_record.entries[*place].rbs_outside = rbs_outside;
}

void lib_nr_phy_recorder_t::note_missing_dmrs(const lib_nr_channel_entry_t& entry)
{
    if (const auto place = _place_of(entry))
        m_record.entries[*place].has_dmrs = false;
}

void lib_nr_phy_recorder_t::note_written(const lib_nr_channel_entry_t& entry, lib_nr_numerology_type_t spacing,
                                         const lib_nr_resource_written_t& written)
{
    const auto place = _place_of(entry);
    if (!place)
        return;
    lib_nr_entry_record_t& record = m_record.entries[*place];
    if (written.cells.inside != 0) {
        record.slots.insert(record.slots.end(), written.slots.begin(), written.slots.end());
        record.extents.insert(record.extents.end(), written.extents.begin(), written.extents.end());
        record.spacing = spacing;
    }
    record.cells += written.cells.inside;
    record.cells_outside += written.cells.outside;
}

void lib_nr_phy_recorder_t::note_stop(const lib_nr_channel_entry_t& entry, unsigned int stopped_by)
{
    const auto place = _place_of(entry);
    if (!place)
        return;
    lib_nr_entry_record_t& record = m_record.entries[*place];
    ++record.frames_stopped;
    if (!record.stopped_by)
        record.stopped_by = stopped_by;
}

void lib_nr_phy_recorder_t::note_met(const lib_nr_channel_entry_t& entry, const lib_nr_rules_t& rules)
{
    if (!m_is_open || !rules.has_met())
        return;
    std::vector<lib_nr_met_deviation_t>& deviations = m_record.deviations;
    for (const lib_nr_deviation_t deviation : rules.get_met())
        // The slots of an entry follow each other, so that what is known is found near the end.
        if (std::none_of(deviations.rbegin(), deviations.rend(), [&](const lib_nr_met_deviation_t& other) {
                return other.deviation == deviation && other.entry == entry.entry && other.carrier == entry.carrier &&
                       other.channel == entry.channel;
            }))
            deviations.push_back({entry, deviation});
}

void lib_nr_phy_recorder_t::_sort_deviations()
{
    const auto order_of = [&](const lib_nr_met_deviation_t& met) {
        const std::optional<std::size_t> place = _place_of(met);
        return std::tuple(met.carrier, place.has_value(), place, met.deviation);
    };
    std::sort(m_record.deviations.begin(), m_record.deviations.end(),
              [&](const auto& a, const auto& b) { return order_of(a) < order_of(b); });
}

void lib_nr_phy_recorder_t::note_conflict(const lib_nr_entry_conflict_t& conflict)
{
    m_record.conflicts.push_back(conflict);
}

std::optional<std::size_t> lib_nr_phy_recorder_t::_place_of(const lib_nr_channel_entry_t& entry) const
{
    const auto found = std::find_if(m_record.entries.begin(), m_record.entries.end(), [&](const auto& other) {
        return other.entry == entry.entry && other.carrier == entry.carrier && other.channel == entry.channel;
    });
    if (!m_is_open || found == m_record.entries.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - m_record.entries.begin());
}

/// So far the record tells how far the passes came with it.
lib_nr_silence_t lib_nr_phy_recorder_t::_silence_of(const lib_nr_entry_record_t& entry, const state_t& state,
                                                    bool has_failed) const
{
    const std::string_view channel = entry.channel;
    const bool is_shared = channel == "PDSCH" || channel == "PUSCH";
    if (!entry.slots.empty())
        return LIB_NR_SILENCE_NONE;
    if (entry.silence != LIB_NR_SILENCE_SLOT)
        return entry.silence;
    if (has_failed || !m_record.conflicts.empty())
        return LIB_NR_SILENCE_FAILED;
    if (entry.stopped_by)
        return LIB_NR_SILENCE_STOPPED;
    if (entry.cells != 0) // all behind the waveform's end
        return LIB_NR_SILENCE_SLOT;
    if (entry.cells_outside != 0)
        return LIB_NR_SILENCE_GRID;
    if (!state.is_called || (channel == "SS/PBCH" && !state.is_marked))
        return LIB_NR_SILENCE_SLOT;
    if (is_shared && !state.is_marked)
        return LIB_NR_SILENCE_RB;
    return channel == "PDSCH" || channel == "PRS" ? LIB_NR_SILENCE_TAKEN : LIB_NR_SILENCE_PORT;
}

} // namespace vek::nr_mod_lib
