#pragma once

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// G(j): where bit j of the PBCH payload goes, the bits counted group by group.
const std::array<std::uint8_t, 32>& get_pbch_interleaver_pattern();

} // namespace vek::nr_mod_lib
