#pragma once

#include "common/lib_signal_view.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace nrwave
{

/// How often the power exceeds the mean by so much.
struct ccdf_point_t
{
    double above_mean_db = 0.0;
    double probability = 0.0;
};

/// The probabilities whose levels the markers give.
constexpr std::array k_marker_probabilities = {1e-1, 1e-2, 1e-3, 1e-4, 1e-5};

/// The mean power in dB of full scale, the five levels above it, the peak above it. Silence has none.
using ccdf_markers_t = std::array<std::optional<double>, k_marker_probabilities.size() + 2>;

/// The distribution of a signal's power.
struct ccdf_t
{
    std::vector<ccdf_point_t> points; ///< up to the last probability above 0
    ccdf_markers_t markers;
};

ccdf_t ccdf_of(vek::common_lib::lib_signal_view_t samples);

/// The probability that the power of Gaussian noise exceeds its mean by so much.
double gaussian_probability(double above_mean_db);
/// The markers of Gaussian noise of so many samples; its peak is the mean of such peaks.
ccdf_markers_t gaussian_markers(const std::optional<double>& mean_dbfs, std::uint64_t samples);

} // namespace nrwave
