#include "common/lib_ccdf_calculator.h"

#include "common/lib_signal_power.h"
#include "common/lib_target_clones.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>

namespace vek::common_lib
{

namespace
{

constexpr std::size_t k_points = 601;
constexpr double k_step_db = 0.05;

// A cell is a range of power over mean with equal exponent and equal first 7 bits of the mantissa. It is at most 1/128
// wide, less than a step of the grid (10^0.005 = 1.0116), so at most one point of the grid lies in it.
constexpr unsigned int k_cell_shift = 52 - 7;
constexpr std::int64_t k_cell_of_one = std::int64_t{1023} << 7;
constexpr std::int32_t k_last_cell = 10 << 7; // from 1024 on, past the 30 dB of the last point

/// How many points of the grid a power over the mean exceeds: one look into a table and one comparison.
class grid_t
{
public:
    grid_t()
    {
        // A hair above the decibel, so that a constant power does not exceed its own mean by rounding.
        for (std::size_t i = 0; i < k_points; ++i)
            m_points[i] = std::pow(10.0, static_cast<double>(i) * k_step_db / 10.0) * (1.0 + 1e-12);
        m_points[k_points] = std::numeric_limits<double>::infinity();
        for (std::size_t cell = 0; cell < m_points_below_cell.size(); ++cell) {
            const double lower_end =
                std::bit_cast<double>((static_cast<std::int64_t>(cell) + k_cell_of_one) << k_cell_shift);
            m_points_below_cell[cell] = static_cast<std::uint16_t>(
                std::lower_bound(m_points.begin(), m_points.begin() + k_points, lower_end) - m_points.begin());
        }
    }

    std::size_t points_below(double ratio, std::int32_t cell) const
    {
        const std::size_t below = m_points_below_cell[static_cast<std::size_t>(cell)];
        return below + (ratio > m_points[below]);
    }

private:
    std::array<double, k_points + 1> m_points;
    std::array<std::uint16_t, k_last_cell + 1> m_points_below_cell;
};

constexpr std::size_t k_block = 512;

/// The powers of up to a block of samples over the mean, and their cells.
NR_MOD_LIB_TARGET_CLONES
void find_cells(const std::complex<double>* samples, std::size_t count, double scale, double* ratios,
                std::int32_t* cells)
{
    for (std::size_t i = 0; i < count; ++i)
        ratios[i] = power_of(samples[i]) * scale;
    for (std::size_t i = 0; i < count; ++i) {
        const auto cell = static_cast<std::int32_t>(std::bit_cast<std::uint64_t>(ratios[i]) >> k_cell_shift);
        cells[i] = std::clamp(cell - static_cast<std::int32_t>(k_cell_of_one), 0, k_last_cell);
    }
}

/// 0 for a signal that is empty, silent or not finite.
double mean_power(lib_signal_view_t signal)
{
    if (signal.empty())
        return 0.0;
    const double mean = sum_of_power(signal.data(), signal.size()) / static_cast<double>(signal.size());
    return std::isfinite(mean) && std::isfinite(1.0 / mean) ? mean : 0.0;
}

double to_db(double power) { return 10.0 * std::log10(power); }

/// The level in dB that the curve exceeds with this probability, linear between its points.
double level_at(const std::vector<double>& curve, double probability)
{
    for (std::size_t i = 0; i < curve.size(); ++i) {
        if (curve[i] > probability)
            continue;
        if (i == 0)
            return 0.0;
        const double fraction = (curve[i - 1] - probability) / (curve[i - 1] - curve[i]);
        return (static_cast<double>(i - 1) + fraction) * k_step_db;
    }
    return curve.empty() ? 0.0 : static_cast<double>(curve.size() - 1) * k_step_db;
}

} // namespace

void lib_ccdf_calculator_t::calculate_default_ccdf_data(lib_signal_view_t signal, std::vector<double>& curve)
{
    static const grid_t grid;

    curve.assign(k_points, 0.0);
    const double mean = mean_power(signal);
    if (mean == 0.0)
        return;

    // Four histograms, so that a count rarely waits for the one before.
    std::array<std::array<std::uint64_t, 4>, k_points + 1> counts{};
    std::array<double, k_block> ratios;
    std::array<std::int32_t, k_block> cells;
    for (std::size_t begin = 0; begin < signal.size(); begin += k_block) {
        const std::size_t count = std::min(k_block, signal.size() - begin);
        find_cells(signal.data() + begin, count, 1.0 / mean, ratios.data(), cells.data());
        for (std::size_t i = 0; i < count; ++i)
            ++counts[grid.points_below(ratios[i], cells[i])][i % 4];
    }

    std::uint64_t above = 0;
    for (std::size_t i = k_points; i-- > 0;) {
        above += std::accumulate(counts[i + 1].begin(), counts[i + 1].end(), std::uint64_t{0});
        curve[i] = static_cast<double>(above) / static_cast<double>(signal.size());
    }
}

void lib_ccdf_calculator_t::get_default_ccdf_marker_data(const std::vector<double>& curve, lib_signal_view_t signal,
                                                         std::vector<double>& markers)
{
    std::vector<double> found(7, 0.0);
    const double mean = mean_power(signal);
    if (mean > 0.0) {
        double peak_power[2] = {};
        for (std::size_t i = 0; i < signal.size(); ++i)
            peak_power[i % 2] = std::max(peak_power[i % 2], power_of(signal[i]));
        const double peak = std::max(to_db(std::max(peak_power[0], peak_power[1]) / mean), 0.0);

        found.front() = to_db(mean);
        constexpr std::array probabilities = {0.1, 0.01, 0.001, 0.0001, 0.00001};
        for (std::size_t i = 0; i < probabilities.size(); ++i)
            found[i + 1] = std::min(level_at(curve, probabilities[i]), peak);
        found.back() = peak;
    }
    markers = std::move(found);
}

unsigned int lib_ccdf_calculator_t::get_default_ccdf_data_length() { return k_points; }

} // namespace vek::common_lib
