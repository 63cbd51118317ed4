#pragma once

#include "common/lib_signal_power.h"
#include "common/lib_signal_view.h"
#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
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

    // The same in two passes that leave more behind.

    /// The largest of |I| and |Q|; 0 for an empty signal.
    static double get_largest_component(lib_signal_view_t signal);
    /// Scales by the largest component, and sums up the power of the first `measured` samples of the result in pieces
    /// of the width that `pieces` has.
    static void normalize(std::vector<std::complex<double>>& signal, double largest_component, std::size_t measured,
                          lib_power_pieces_t& pieces);
};

} // namespace vek::common_lib
