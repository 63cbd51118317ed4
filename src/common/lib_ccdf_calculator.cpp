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
#include <utility>

namespace vek::common_lib
{

namespace
{

constexpr std::size_t k_points = 601;
constexpr std::size_t k_markers = 7;
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

/// The powers of up to a block of samples over the mean, and their cells; gives the largest power over the mean.
NR_MOD_LIB_TARGET_CLONES
double find_cells(const std::complex<double>* samples, std::size_t count, double scale, double* ratios,
                  std::int32_t* cells)
{
    for (std::size_t i = 0; i < count; ++i)
        ratios[i] = power_of(samples[i]) * scale;
    for (std::size_t i = 0; i < count; ++i) {
        const auto cell = static_cast<std::int32_t>(std::bit_cast<std::uint64_t>(ratios[i]) >> k_cell_shift);
        cells[i] = std::clamp(cell - static_cast<std::int32_t>(k_cell_of_one), 0, k_last_cell);
    }
    double largest[4] = {};
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
        for (std::size_t lane = 0; lane < 4; ++lane)
            largest[lane] = std::max(largest[lane], ratios[i + lane]);
    for (; i < count; ++i)
        largest[0] = std::max(largest[0], ratios[i]);
    return *std::max_element(largest, largest + 4);
}

/// 0 for a signal that is empty, silent or not finite.
double mean_power(double sum, std::size_t size)
{
    const double mean = size == 0 ? 0.0 : sum / static_cast<double>(size);
    return std::isfinite(mean) && std::isfinite(1.0 / mean) ? mean : 0.0;
}

double mean_power(lib_signal_view_t signal)
{
    return mean_power(sum_of_power(signal.data(), signal.size()), signal.size());
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

/// The seven markers of a curve, by the mean power, not 0, and the peak over it.
std::vector<double> find_markers(const std::vector<double>& curve, double mean, double peak_ratio)
{
    const double peak = std::max(to_db(peak_ratio), 0.0);
    std::vector<double> markers = {to_db(mean)};
    for (const double probability : {0.1, 0.01, 0.001, 0.0001, 0.00001})
        markers.push_back(std::min(level_at(curve, probability), peak));
    markers.push_back(peak);
    return markers;
}

/// How often a signal's samples exceed each point of the grid, taken in piece by piece.
class histogram_t
{
public:
    explicit histogram_t(double mean) : m_scale(1.0 / mean) {}

    /// At most a block.
    void add(const std::complex<double>* samples, std::size_t count)
    {
        std::array<double, k_block> ratios;
        std::array<std::int32_t, k_block> cells;
        m_peak = std::max(m_peak, find_cells(samples, count, m_scale, ratios.data(), cells.data()));
        for (std::size_t i = 0; i < count; ++i)
            ++m_counts[m_grid.points_below(ratios[i], cells[i])][i % 4];
        m_samples += count;
    }

    std::vector<double> get_curve() const
    {
        std::vector<double> curve(k_points);
        std::uint64_t above = 0;
        for (std::size_t i = k_points; i-- > 0;) {
            above += std::accumulate(m_counts[i + 1].begin(), m_counts[i + 1].end(), std::uint64_t{0});
            curve[i] = static_cast<double>(above) / static_cast<double>(m_samples);
        }
        return curve;
    }

    /// The largest power over the mean.
    double get_peak() const { return m_peak; }

private:
    static const grid_t& get_grid()
    {
        static const grid_t grid;
        return grid;
    }

    const grid_t& m_grid = get_grid();
    double m_scale;
    double m_peak = 0.0;
    std::uint64_t m_samples = 0;
    // Four histograms, so that a count rarely waits for the one before.
    std::array<std::array<std::uint64_t, 4>, k_points + 1> m_counts{};
};

lib_ccdf_t get_ccdf_without_power()
{
    return {std::vector<double>(k_points, 0.0), std::vector<double>(k_markers, 0.0)};
}

lib_ccdf_t get_ccdf(const histogram_t& histogram, double mean)
{
    if (mean == 0.0)
        return get_ccdf_without_power();
    std::vector<double> curve = histogram.get_curve();
    std::vector<double> markers = find_markers(curve, mean, histogram.get_peak());
    return {std::move(curve), std::move(markers)};
}

} // namespace

void lib_ccdf_calculator_t::calculate_default_ccdf_data(lib_signal_view_t signal, std::vector<double>& curve)
{
    curve = calculate_ccdf(signal, sum_of_power(signal.data(), signal.size()), {signal.data(), 0}, 0.0).first.curve;
}

void lib_ccdf_calculator_t::get_default_ccdf_marker_data(const std::vector<double>& curve, lib_signal_view_t signal,
                                                         std::vector<double>& markers)
{
    const double mean = mean_power(signal);
    if (mean == 0.0) {
        markers.assign(k_markers, 0.0);
        return;
    }
    double peak_power[2] = {};
    for (std::size_t i = 0; i < signal.size(); ++i)
        peak_power[i % 2] = std::max(peak_power[i % 2], power_of(signal[i]));
    markers = find_markers(curve, mean, std::max(peak_power[0], peak_power[1]) / mean);
}

std::pair<lib_ccdf_t, lib_ccdf_t> lib_ccdf_calculator_t::calculate_ccdf(lib_signal_view_t signal, double signal_power,
                                                                        lib_signal_view_t part, double part_power)
{
    const double mean = mean_power(signal_power, signal.size());
    const double part_mean = mean_power(part_power, part.size());
    if (mean == 0.0)
        return {get_ccdf_without_power(), get_ccdf_without_power()};
    histogram_t whole(mean);
    histogram_t inside(part_mean);
    for (std::size_t begin = 0; begin < signal.size(); begin += k_block) {
        const std::complex<double>* const block = signal.data() + begin;
        const std::complex<double>* const end = block + std::min(k_block, signal.size() - begin);
        whole.add(block, static_cast<std::size_t>(end - block));
        const std::complex<double>* const first = std::max(block, part.begin());
        const std::complex<double>* const last = std::min(end, part.end());
        if (part_mean > 0.0 && first < last)
            inside.add(first, static_cast<std::size_t>(last - first));
    }
    return {get_ccdf(whole, mean), get_ccdf(inside, part_mean)};
}

unsigned int lib_ccdf_calculator_t::get_default_ccdf_data_length() { return k_points; }

} // namespace vek::common_lib
