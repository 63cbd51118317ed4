#include "host/nrwave_record.h"

#include <array>
#include <utility>

namespace nrwave
{

using namespace vek::nr_mod_lib;

namespace
{

constexpr std::array<std::pair<std::string_view, const char*>, 9> k_lists = {{
    {"SS/PBCH", "dl_ssb"},
    {"CSI-RS", "dl_csirs"},
    {"PRS", "dl_prs"},
    {"PDCCH", "dl_dci"},
    {"PDSCH", "dl_pdsch"},
    {"PUCCH", "ul_pucch"},
    {"PUSCH", "ul_pusch"},
    {"SRS", "ul_srs"},
    {"PRACH", "ul_prach"},
}};

bool is_prach(const lib_nr_channel_entry_t& entry) { return entry.channel == "PRACH"; }

/// The burst that stopped another one of its carrier.
std::string stopper_of(const lib_nr_entry_record_t& entry)
{
    return "ul_prach[" + std::to_string(entry.stopped_by.value_or(0)) + "], which is disabled or not sent there";
}

/// Why an entry was sent nowhere; empty where that is told elsewhere.
std::string reason_of(const lib_nr_entry_record_t& entry, lib_nr_silence_t silence)
{
    switch (silence) {
    case LIB_NR_SILENCE_SPACING:
        return is_prach(entry) ? "no enabled numerology has the spacing of ul_bwp[0]"
                               : "no enabled numerology has its spacing";
    case LIB_NR_SILENCE_PREFIX:
        return "its prefix is not that of dl_bwp[0]";
    case LIB_NR_SILENCE_SLOT:
        return is_prach(entry) ? "its period, offset and place in the frame put it into none"
                               : "none of its slots lies in the waveform";
    case LIB_NR_SILENCE_STOPPED:
        return "stopped by " + stopper_of(entry);
    case LIB_NR_SILENCE_RB:
        return "it has no resource blocks";
    case LIB_NR_SILENCE_PORT:
        return "its first antenna port carries nothing";
    case LIB_NR_SILENCE_TAKEN:
        return "all of its cells belong to channels ahead of it";
    case LIB_NR_SILENCE_GRID:
        return is_prach(entry) ? "all of it lies outside the carrier" : "all of its cells lie outside slot or grid";
    case LIB_NR_SILENCE_NONE:
    case LIB_NR_SILENCE_FAILED:
        break;
    }
    return {};
}

/// How much of an entry lies outside the grid.
std::string cut_of(const lib_nr_entry_record_t& entry)
{
    if (entry.rbs_outside != 0)
        return std::to_string(entry.rbs_outside) + " of " + std::to_string(entry.rbs) + " RBs lie outside the grid";
    return std::to_string(entry.cells_outside) + " of " + std::to_string(entry.cells + entry.cells_outside) +
           (is_prach(entry) ? " subcarriers lie outside the carrier" : " cells lie outside its slots");
}

/// What keeps an entry out of slots that others of it are sent in.
constexpr std::array<std::pair<std::string_view, const char*>, 4> k_gates = {{
    {"SS/PBCH", "no block lies in the slot"},
    {"PRS", "it has no occasion in the slot"},
    {"SRS", "its slot list and period leave the slot out"},
    {"PRACH", "no burst of it begins in the slot"},
}};

} // namespace

std::string reason_of_slot(const lib_nr_entry_record_t& entry, lib_nr_silence_t silence)
{
    if (silence == LIB_NR_SILENCE_FAILED)
        return "a step of the channel failed";
    if (silence != LIB_NR_SILENCE_SLOT)
        return reason_of(entry, silence);
    for (const auto& [channel, reason] : k_gates)
        if (channel == entry.channel)
            return reason;
    return "its slot list leaves the slot out";
}

std::string path_of(const lib_nr_channel_entry_t& entry)
{
    std::string path = "carrier[" + std::to_string(entry.carrier) + ']';
    if (entry.channel.empty())
        return path;
    for (const auto& [channel, list] : k_lists)
        if (channel == entry.channel)
            path += '.' + std::string(list);
    return entry.channel == k_lists.front().first ? path : path + '[' + std::to_string(entry.entry) + ']';
}

std::vector<std::string> shortfalls_of(const lib_nr_phy_record_t& record)
{
    std::vector<std::string> lines;
    if (record.entries.empty())
        lines.emplace_back("nothing is sent: no channel is enabled");
    for (const lib_nr_entry_record_t& entry : record.entries) {
        const std::string name = path_of(entry) + ": ";
        if (entry.silence != LIB_NR_SILENCE_NONE) {
            if (const std::string reason = reason_of(entry, entry.silence); !reason.empty())
                lines.push_back(name + "sent in no " + (is_prach(entry) ? "frame: " : "slot: ") + reason);
            continue;
        }
        if (entry.cells_outside != 0)
            lines.push_back(name + cut_of(entry));
        if (!entry.has_dmrs)
            lines.push_back(name + "sent without DMRS: none of its symbols has a place for them");
        if (entry.frames_stopped != 0)
            lines.push_back(name + "stopped in a frame by " + stopper_of(entry));
    }
    return lines;
}

std::string text_of(const lib_nr_entry_conflict_t& conflict)
{
    return "resource conflict: " + path_of(conflict.newcomer) + " on " + path_of(conflict.owner) + ", frame " +
           std::to_string(conflict.frame) + ", slot " + std::to_string(conflict.slot) + ", symbol " +
           std::to_string(conflict.symbol) + ", RB " + std::to_string(conflict.rb) + ", " +
           std::to_string(conflict.cells) + (conflict.cells == 1 ? " cell" : " cells");
}

std::string text_of(const lib_nr_met_deviation_t& met)
{
    const lib_nr_deviation_row_t& row = lib_nr_deviation_row(met.deviation);
    return path_of(met) + ": " + row.name + ", not as " + row.clause + " (standard_rules=true)";
}

} // namespace nrwave
