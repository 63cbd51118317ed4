#pragma once

#include "phy_common/lib_nr_numerology_type.h"

#include <optional>

namespace vek::nr_mod_lib
{

/// Minimum guard band of a carrier at either side in kHz, TS 38.104 clause 5.3.3; nothing for a pair without an entry.
std::optional<float> get_minimum_guard_band_khz(lib_nr_numerology_type_t numerology,
                                                lib_nr_channel_bw_type_t bandwidth);

} // namespace vek::nr_mod_lib
