#pragma once

#include "receiver/fft.h"

namespace nr_test
{

/// r-bar of TS 38.211 clause 5.2.2, `length` values of the shortest base sequence of whole half RBs that has as many.
/// Below 30 values the phases are the library's.
signal_t low_papr_base(unsigned int u, unsigned int v, unsigned int length);

} // namespace nr_test
