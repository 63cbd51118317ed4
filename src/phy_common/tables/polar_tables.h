#pragma once

#include "common/nr_mod_lib_export.h"

#include <array>
#include <cstdint>

// The tables of the polar code, TS 38.212.
namespace vek::nr_mod_lib
{

/// Table 5.3.1.2-1: bit index by ascending reliability.
NR_MOD_LIB_EXPORT const std::array<std::uint16_t, 1024>& polar_reliability_sequence();
/// Table 5.3.1.1-1: interleaver pattern of the input bits.
const std::array<std::uint8_t, 164>& polar_input_interleaver();
/// Table 5.4.1.1-1: sub-block interleaver pattern.
const std::array<std::uint8_t, 32>& polar_subblock_interleaver();

} // namespace vek::nr_mod_lib
