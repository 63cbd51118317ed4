#pragma once

#include "config/cfg_nr_waveform.h"
#include "host/analysis/nrwave_measurement.h"
#include "phy/lib_nr_phy_record.h"

#include <vector>

namespace nrwave
{

/// The enabled carriers of a waveform that a run generated; a mirrored spectrum has them on the other side.
std::vector<channel_t> channels_of(vek::nr_mod_lib::cfg_nr_waveform_t& waveform,
                                   const vek::nr_mod_lib::lib_nr_phy_record_t& record);

} // namespace nrwave
