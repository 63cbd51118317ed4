#include "common/lib_fir_filter_design.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace vek::common_lib
{

namespace
{

// The design aims above the 80 dB that it promises: where both edges of a narrow passband lie close together their
// ripples add up. Shape and width are Kaiser's own estimates.
constexpr double k_stop_band_db = 88.0;
constexpr double k_kaiser_shape = 0.1102 * (k_stop_band_db - 8.7);

constexpr unsigned int k_highest_order = 1U << 20U;

// Modified Bessel function of the first kind, order 0, by its power series.
double bessel_i0(double x)
{
    const double quarter_square = 0.25 * x * x;
    double term = 1.0;
    double sum = 1.0;
    for (double k = 1.0; term > 1e-17 * sum; k += 1.0) {
        term *= quarter_square / (k * k);
        sum += term;
    }
    return sum;
}

double sinc(double x) { return x == 0.0 ? 1.0 : std::sin(std::numbers::pi * x) / (std::numbers::pi * x); }

} // namespace

bool lib_fir_filter_design_t::set_filter_passband_type(unsigned int type) { return type == LIB_FIR_FILTER_LOW_PASS; }

void lib_fir_filter_design_t::set_filter_order(unsigned int order)
{
    m_filter_order = std::min(order, k_highest_order);
}

void lib_fir_filter_design_t::set_cutoff_freq(double cutoff)
{
    if (!std::isnan(cutoff))
        m_cutoff_freq = std::clamp(cutoff, 0.0, 1.0);
}

double lib_fir_filter_design_t::get_transition_width() const
{
    return (k_stop_band_db - 8.0) / (2.285 * std::numbers::pi * static_cast<double>(m_filter_order));
}

void lib_fir_filter_design_t::generate_fir_filter()
{
    const std::size_t tap_count = static_cast<std::size_t>(m_filter_order) + 1;
    m_filter_data.assign(tap_count, 0.0);
    if (m_cutoff_freq + get_transition_width() >= 1.0) {
        m_filter_data[m_filter_order / 2] = 1.0;
        return;
    }

    // The half-amplitude point of a windowed sinc lies in the middle of its transition.
    const double half_amplitude = m_cutoff_freq + 0.5 * get_transition_width();
    const double middle = 0.5 * static_cast<double>(m_filter_order);
    const double window_peak = bessel_i0(k_kaiser_shape);
    std::vector<double> taps(tap_count);
    for (std::size_t i = 0; 2 * i < tap_count; ++i) {
        const double offset = static_cast<double>(i) - middle;
        const double position = offset / middle;
        const double window = bessel_i0(k_kaiser_shape * std::sqrt(1.0 - position * position)) / window_peak;
        taps[i] = taps[tap_count - 1 - i] = sinc(half_amplitude * offset) * window;
    }
    const double gain = std::accumulate(taps.begin(), taps.end(), 0.0);
    for (std::size_t i = 0; i < tap_count; ++i)
        m_filter_data[i] = taps[i] / gain;
}

} // namespace vek::common_lib
