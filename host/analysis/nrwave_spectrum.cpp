#include "host/analysis/nrwave_spectrum.h"

#include "common/lib_fft_plan.h"
#include "host/analysis/nrwave_resampling.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <numeric>

namespace nrwave
{

using vek::common_lib::lib_fft_plan_t;
using vek::common_lib::lib_signal_view_t;

namespace
{

constexpr double k_coarsest_hz = 15e3;
/// Of the Kaiser window; its largest side lobe is then at -255 dB, so that it never is the window that limits what is
/// measured beside a channel.
constexpr double k_beta = 32.0;
/// Noise bandwidth of that window in lines, rounded up.
constexpr double k_lines_in_resolution = 3.24;
/// Pieces over every sample: with so many the window's squares add to a constant, within 0.001 dB, so that each sample
/// counts alike.
constexpr std::size_t k_overlap = 12;

/// The modified Bessel function of the first kind and order 0, by its series.
double bessel(double x)
{
    double sum = 1.0;
    double term = 1.0;
    for (double k = 1.0; term > 1e-18 * sum; k += 1.0) {
        term *= x / (2.0 * k) * (x / (2.0 * k));
        sum += term;
    }
    return sum;
}

std::vector<double> window_of(std::size_t length)
{
    const double largest = bessel(k_beta);
    std::vector<double> window(length);
    for (std::size_t i = 0; i < length; ++i) {
        const double place = (2.0 * static_cast<double>(i) + 1.0) / static_cast<double>(length) - 1.0;
        window[i] = bessel(k_beta * std::sqrt(1.0 - place * place)) / largest;
    }
    return window;
}

double energy_of(const std::vector<double>& window)
{
    return std::inner_product(window.begin(), window.end(), window.begin(), 0.0);
}

/// The samples from a place on, which go round the end, through a window.
void take_piece(lib_signal_view_t samples, std::size_t begin, const std::vector<double>& window,
                std::vector<std::complex<double>>& piece)
{
    for (std::size_t done = 0; done < window.size(); begin = 0) {
        const std::size_t count = std::min(window.size() - done, samples.size() - begin);
        for (std::size_t i = 0; i < count; ++i)
            piece[done + i] = window[done + i] * samples[begin + i];
        done += count;
    }
}

/// The mean of the pieces' powers at each line, 0 Hz first.
std::vector<double> mean_powers(lib_signal_view_t samples, const std::vector<double>& window)
{
    const std::size_t length = window.size();
    const std::size_t pieces = (k_overlap * samples.size() + length - 1) / length;
    const lib_fft_plan_t plan(length, vek::common_lib::LIB_FFT_FORWARD);
    std::vector<std::complex<double>> piece(length);
    std::vector<double> powers(length);
    for (std::size_t p = 0; p < pieces; ++p) {
        take_piece(samples, std::uint64_t{samples.size()} * p / pieces, window, piece);
        plan.execute(piece.data(), piece.data());
        for (std::size_t i = 0; i < length; ++i)
            powers[i] += piece[i].real() * piece[i].real() + piece[i].imag() * piece[i].imag();
    }
    const double scale = 1.0 / (static_cast<double>(length) * static_cast<double>(pieces) * energy_of(window));
    for (double& power : powers)
        power *= scale;
    return powers;
}

} // namespace

spectrum_t::spectrum_t(const signal_t& signal) : m_rate_hz(static_cast<double>(signal.rate))
{
    if (signal.period.empty() || signal.rate == 0)
        return;
    const std::size_t length =
        quick_length(static_cast<std::size_t>(std::ceil(k_lines_in_resolution * m_rate_hz / k_coarsest_hz)));
    const std::vector<double> window = window_of(length);
    const double sum = std::accumulate(window.begin(), window.end(), 0.0);
    m_line_hz = m_rate_hz / static_cast<double>(length);
    m_resolution_hz = energy_of(window) / (sum * sum) * m_rate_hz;
    m_powers = mean_powers(signal.period, window);
    std::rotate(m_powers.begin(), m_powers.begin() + static_cast<std::ptrdiff_t>(length / 2), m_powers.end());
}

double spectrum_t::power_between(double low_hz, double high_hz) const
{
    const double from = _place_of(low_hz);
    const double to = _place_of(high_hz);
    double power = 0.0;
    for (auto line = static_cast<std::size_t>(from); static_cast<double>(line) < to; ++line)
        power += _part_of(line, from, to);
    return power;
}

std::optional<band_t> spectrum_t::occupied(const band_t& within, double share) const
{
    const double cut = power_between(within) * (1.0 - share) / 2.0;
    if (!(cut > 0.0))
        return std::nullopt;
    const double from = _place_of(within.low_hz);
    const double to = _place_of(within.high_hz);
    auto low = static_cast<std::size_t>(from);
    double below = _part_of(low, from, to);
    for (; below < cut; below += _part_of(low, from, to))
        ++low;
    auto high = static_cast<std::size_t>(std::ceil(to)) - 1;
    double above = _part_of(high, from, to);
    for (; above < cut; above += _part_of(high, from, to))
        --high;
    // Of the line where the cut falls as much stays as is past the cut.
    return band_t{_frequency_of(static_cast<double>(low + 1) - (below - cut) / m_powers[low]),
                  _frequency_of(static_cast<double>(high) + (above - cut) / m_powers[high])};
}

std::vector<spectrum_point_t> spectrum_t::points(std::size_t most) const
{
    const std::size_t group = std::max<std::size_t>(1, (m_powers.size() + most - 1) / most);
    std::vector<spectrum_point_t> points;
    for (std::size_t begin = 0; begin < m_powers.size(); begin += group) {
        const std::size_t end = std::min(begin + group, m_powers.size());
        const auto first = m_powers.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto behind = m_powers.begin() + static_cast<std::ptrdiff_t>(end);
        const double lines_in_resolution = m_resolution_hz / m_line_hz;
        points.push_back({_frequency_of(static_cast<double>(begin + end) / 2.0),
                          std::accumulate(first, behind, 0.0) / static_cast<double>(end - begin) * lines_in_resolution,
                          *std::max_element(first, behind) * lines_in_resolution});
    }
    return points;
}

double spectrum_t::_place_of(double hertz) const
{
    const auto lines = static_cast<double>(m_powers.size());
    return m_powers.empty() || hertz <= -m_rate_hz / 2.0
               ? 0.0
               : std::clamp(hertz / m_line_hz + lines / 2.0 + 0.5, 0.0, lines);
}

double spectrum_t::_frequency_of(double place) const
{
    return (place - 0.5 - static_cast<double>(m_powers.size()) / 2.0) * m_line_hz;
}

double spectrum_t::_part_of(std::size_t line, double from, double to) const
{
    const auto begin = static_cast<double>(line);
    return m_powers[line] * std::max(std::min(begin + 1.0, to) - std::max(begin, from), 0.0);
}

} // namespace nrwave
