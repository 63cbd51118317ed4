#include "common/lib_normalization.h"

#include <algorithm>
#include <cmath>

namespace vek::common_lib
{

void lib_normalization_t::iq_value_max_normalize(std::vector<std::complex<double>>& signal)
{
    // Two maxima for I and two for Q, so that no comparison waits for the one before.
    double largest[4] = {};
    for (std::size_t i = 0; i < signal.size(); ++i) {
        double* lanes = largest + 2 * (i % 2);
        lanes[0] = std::max(lanes[0], std::fabs(signal[i].real()));
        lanes[1] = std::max(lanes[1], std::fabs(signal[i].imag()));
    }
    const double peak = *std::max_element(largest, largest + 4);
    if (peak == 0.0 || !std::isfinite(peak))
        return;
    // A division, not a multiplication by the inverse: the peak becomes exactly 1.
    for (std::complex<double>& sample : signal)
        sample = {sample.real() / peak, sample.imag() / peak};
}

} // namespace vek::common_lib
