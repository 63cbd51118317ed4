#pragma once

#include "config/cfg_nr_waveform.h"

#include <string>
#include <vector>

namespace nrwave
{

/// The bits of a PUCCH of format 1 are made for the repetition of that moment and outlast a change of it. Where the
/// copy has others than the original, it makes them again for an earlier repetition; the steps are appended.
void mend_uci_bits(vek::nr_mod_lib::cfg_nr_waveform_t& original, vek::nr_mod_lib::cfg_nr_waveform_t& copy,
                   std::vector<std::string>& steps);

} // namespace nrwave
