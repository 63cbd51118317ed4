#pragma once

#include "common/lib_signal_view.h"
#include "common/nr_mod_lib_export.h"

#include <complex>
#include <utility>
#include <vector>

namespace vek::common_lib
{

/// A curve of probabilities and its markers.
struct lib_ccdf_t
{
    std::vector<double> curve;
    std::vector<double> markers;
};

/// The complementary cumulative distribution of a signal's power: how often it exceeds its mean, and by how much.
class NR_MOD_LIB_EXPORT lib_ccdf_calculator_t
{
public:
    /// Replaces `curve` by the probabilities, 0 to 1, that the instantaneous power exceeds the mean power by more than
    /// x dB, for x = 0, 0.05, 0.10 ... 30 dB. A signal that is empty, silent or not finite gives zeros.
    static void calculate_default_ccdf_data(lib_signal_view_t signal, std::vector<double>& curve);

    /// Replaces `markers` by seven values in dB: the mean power; the levels above the mean that are exceeded with 10 %,
    /// 1 %, 0.1 %, 0.01 % and 0.001 % probability, interpolated between the points of the curve, at least 0 (where the
    /// curve begins) and at most the peak; and the peak above the mean. A signal that is empty, silent or not finite
    /// gives seven zeros.
    static void get_default_ccdf_marker_data(const std::vector<double>& curve, lib_signal_view_t signal,
                                             std::vector<double>& markers);

    /// Curves and markers of a signal and of a part of it, by one pass: what the two operations above give, from sums
    /// of power that are known. An empty part gives zeros.
    static std::pair<lib_ccdf_t, lib_ccdf_t> calculate_ccdf(lib_signal_view_t signal, double signal_power,
                                                            lib_signal_view_t part, double part_power);

    /// The number of points of a curve, 601.
    static unsigned int get_default_ccdf_data_length();
};

} // namespace vek::common_lib
