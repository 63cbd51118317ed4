#pragma once

#include "config/cfg_nr_waveform.h"
#include "config/leaves/cfg_nr_leaf.h"

#include <string>
#include <vector>

namespace nrwave
{

/// A setting that two waveforms hold unlike, or a list that is longer in one of them: then the values are its lengths.
struct difference_t
{
    std::string path;
    std::string first;
    std::string second;
};

/// Every such setting and list, but for what lies in a direction that the first waveform's carrier does not send. The
/// prefix of its downlink BWPs counts for an uplink too: SRS are held against it.
std::vector<difference_t> differences(vek::nr_mod_lib::cfg_nr_waveform_t& first,
                                      vek::nr_mod_lib::cfg_nr_waveform_t& second);
/// The same for figures, but for those of PRACH: where all settings agree, they give away a state behind them.
std::vector<difference_t> figure_differences(vek::nr_mod_lib::cfg_nr_waveform_t& first,
                                             vek::nr_mod_lib::cfg_nr_waveform_t& second);

/// Whether a carrier of a type, by its name, sends anything that is set below a branch of its façade. Of a façade that
/// is no carrier all is sent.
bool sends(const std::string& carrier_type, const vek::nr_mod_lib::cfg_nr_branch_t& branch);
/// Whether a façade has a verb that lays down the preset chosen at a branch.
bool is_preset(const vek::nr_mod_lib::cfg_nr_facade_table_t& table, const vek::nr_mod_lib::cfg_nr_branch_t& branch);
/// A setting of a preset with one value on offer, which is what it lays down: a fresh test model holds another one.
bool is_no_choice(const vek::nr_mod_lib::cfg_nr_leaf_t& leaf, void* facade);
/// The type of a carrier; empty for any other façade.
std::string carrier_type_of(void* facade, const vek::nr_mod_lib::cfg_nr_facade_table_t& table);

} // namespace nrwave
