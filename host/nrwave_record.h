#pragma once

#include "phy/lib_nr_phy_record.h"

#include <string>
#include <vector>

namespace nrwave
{

/// An entry by its path, as carrier[0].dl_pdsch[1] or carrier[0].dl_ssb; a carrier where the channel is empty.
std::string path_of(const vek::nr_mod_lib::lib_nr_channel_entry_t& entry);

/// Why a slot of an entry was left out, what `silence` tells of it; for an entry of the record that was not run for it,
/// what the entry lacks in all slots, or else that it has none there.
std::string reason_of_slot(const vek::nr_mod_lib::lib_nr_entry_record_t& entry,
                           vek::nr_mod_lib::lib_nr_silence_t silence);

/// A line for each enabled entry that a run sent nowhere, or without all that belongs to it, with the reason. What a
/// failed step kept out is not told.
std::vector<std::string> shortfalls_of(const vek::nr_mod_lib::lib_nr_phy_record_t& record);

/// Between which entries a conflict arose, where, and over how many cells.
std::string text_of(const vek::nr_mod_lib::lib_nr_entry_conflict_t& conflict);

/// Whose signal is not the standard's, by which rule and clause, and what makes it so.
std::string text_of(const vek::nr_mod_lib::lib_nr_met_deviation_t& met);

} // namespace nrwave
