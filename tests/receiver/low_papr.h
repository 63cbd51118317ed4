#pragma once

#include "receiver/fft.h"

#include <cstdint>

namespace nr_test
{

/// The base sequence r-bar_u,v of TS 38.211 clause 5.2.2; of a length that is no multiple of 6 the first values of the
/// next one that is.
signal_t low_papr_type_1(unsigned int u, unsigned int v, unsigned int length);

/// The sequence of TS 38.211 clause 5.2.3 for a multiple of 6. The group counts below a length of 30, c_init from
/// there.
signal_t low_papr_type_2(unsigned int u, std::uint32_t c_init, unsigned int length);

/// The bits of a hopping rule as a number: c(first) lowest.
unsigned int hopping_number(std::uint32_t c_init, std::size_t first, unsigned int count);

} // namespace nr_test
