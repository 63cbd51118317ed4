#pragma once

#include "config/cfg_nr_waveform.h"
#include "receiver/sch_receiver.h"

#include <random>
#include <string>

namespace nr_test
{

/// A PUSCH as its receiver has to know it in a slot, by its settings and those of its BWP.
sch_channel_t pusch_channel_of(const vek::nr_mod_lib::lib_nr_carrier_configure_manager_t& carrier, unsigned int index,
                               unsigned int slot, bool standard_rules = false);

/// Sets every setting of an enabled PDSCH or PUSCH of a 20 MHz carrier at random, in two rounds, as the façade corrects
/// it; but for those by which it would not be received alone.
void draw_shared_channel(vek::nr_mod_lib::cfg_nr_waveform_t& waveform, const std::string& path, std::mt19937& random);

} // namespace nr_test
