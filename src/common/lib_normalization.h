#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <vector>

namespace vek::common_lib
{

/// Scaling of a signal to the full scale of a digital-to-analogue converter.
class NR_MOD_LIB_EXPORT lib_normalization_t
{
public:
    /// Scales so that the largest of |I| and |Q| over the signal is 1. A silent signal stays as it is, and so does one
    /// with an infinite sample.
    static void iq_value_max_normalize(std::vector<std::complex<double>>& signal);
};

} // namespace vek::common_lib
