#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>

namespace vek::nr_mod_lib
{

/// Transform precoding of one symbol, TS 38.211 clause 6.3.1.4: the DFT of its `length` values, in place, scaled by
/// 1 / sqrt(length), so that the power stays.
NR_MOD_LIB_EXPORT void deal_transform_precoding(std::complex<double>* symbol, std::size_t length);

/// The largest number of resource blocks, at most so many, whose prime factors are 2, 3 and 5 (TS 38.214
/// clause 6.1.2.2): a transform-precoded PUSCH has no others. 1 to 270.
unsigned int largest_transform_precoded_rb_num(unsigned int rb_num);

/// The next such number up; the largest one that there is room for, at least 1, where that is less.
unsigned int fit_transform_precoded_rb_num(unsigned int rb_num, unsigned int room);

} // namespace vek::nr_mod_lib
