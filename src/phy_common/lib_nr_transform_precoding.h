#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>

namespace vek::nr_mod_lib
{

/// Transform precoding of one symbol, TS 38.211 clause 6.3.1.4: the DFT of its `length` values, in place, scaled by
/// 1 / sqrt(length), so that the power stays.
NR_MOD_LIB_EXPORT void deal_transform_precoding(std::complex<double>* symbol, std::size_t length);

} // namespace vek::nr_mod_lib
