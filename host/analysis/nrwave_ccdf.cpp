#include "host/analysis/nrwave_ccdf.h"

#include "common/lib_ccdf_calculator.h"
#include "host/analysis/nrwave_level.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace nrwave
{

namespace
{

// The grid of the library's curves.
constexpr double k_step_db = 0.05;

} // namespace

ccdf_t ccdf_of(vek::common_lib::lib_signal_view_t samples)
{
    using calculator_t = vek::common_lib::lib_ccdf_calculator_t;
    std::vector<double> curve;
    std::vector<double> levels;
    calculator_t::calculate_default_ccdf_data(samples, curve);
    calculator_t::get_default_ccdf_marker_data(curve, samples, levels);
    ccdf_t ccdf;
    for (std::size_t i = 0; i < curve.size() && curve[i] > 0; ++i)
        ccdf.points.push_back({k_step_db * static_cast<double>(i), curve[i]});
    // The library gives zeros for silence, and they may be right for a signal of constant power.
    level_t level;
    level.add(samples.data(), samples.size());
    if (std::isfinite(level.rms_dbfs().value_or(NAN)))
        std::copy(levels.begin(), levels.end(), ccdf.markers.begin());
    return ccdf;
}

double gaussian_probability(double above_mean_db) { return std::exp(-std::pow(10.0, above_mean_db / 10.0)); }

ccdf_markers_t gaussian_markers(const std::optional<double>& mean_dbfs, std::uint64_t samples)
{
    ccdf_markers_t markers;
    markers.front() = mean_dbfs;
    for (std::size_t i = 0; i < k_marker_probabilities.size(); ++i)
        markers[i + 1] = 10.0 * std::log10(-std::log(k_marker_probabilities[i]));
    // The largest of n powers of mean 1 is the n-th harmonic number on average.
    const auto count = static_cast<double>(samples);
    if (samples > 0)
        markers.back() = 10.0 * std::log10(std::log(count) + std::numbers::egamma + 1.0 / (2.0 * count));
    return markers;
}

} // namespace nrwave
