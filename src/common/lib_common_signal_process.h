#pragma once

#include "common/lib_signal_power.h"
#include "common/lib_signal_view.h"
#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <vector>

namespace vek::common_lib
{

/// Small operations on whole signals.
class NR_MOD_LIB_EXPORT lib_common_signal_process_t
{
public:
    /// Turns sample i by 2 pi i `turns_per_sample` + `initial_phase` (radians), so that a signal moves up in frequency
    /// by `turns_per_sample` times its rate. The phase is reduced to a fraction of a turn exactly, however long the
    /// signal. An offset of zero costs nothing; one that is not finite leaves the signal alone.
    static void deal_mixer(std::vector<std::complex<double>>& signal, double turns_per_sample, double initial_phase);

    /// The part of a signal that carries power: from the first to the last sample whose power, smoothed over 1/4096 of
    /// the signal (at least 64 samples), lies no more than 20 dB below the mean of the active part. Gaps inside stay, a
    /// signal without a gap at its ends comes back whole, a silent one comes back empty. `in` and `out` may be the same
    /// vector.
    static void get_burst_signal_data(const std::vector<std::complex<double>>& in,
                                      std::vector<std::complex<double>>& out);
    /// The same part where it lies.
    static lib_signal_view_t find_burst(lib_signal_view_t signal);
    /// The same from the powers of the signal's pieces, each as wide as the smoothing: only the signal's edges are
    /// looked at.
    static lib_signal_view_t find_burst(lib_signal_view_t signal, const lib_power_pieces_t& pieces);
    static std::size_t get_smoothing_width(std::size_t size);
};

} // namespace vek::common_lib
