#include "host/analysis/nrwave_alignment.h"

#include "common/lib_common_signal_process.h"
#include "common/lib_fft_plan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace nrwave
{

using vek::common_lib::lib_common_signal_process_t;
using vek::common_lib::lib_fft_plan_t;
using vek::common_lib::lib_signal_view_t;
using samples_t = std::vector<std::complex<double>>;

namespace
{

constexpr double k_turn = 2.0 * std::numbers::pi;

/// Each sample by the conjugate of one a little ahead: a frequency offset turns all of these by the same angle. Laid
/// over one period, without their mean. What lies ahead of the first sample is the last of a period, or not there.
samples_t differential(lib_signal_view_t samples, std::size_t lag, std::size_t period, bool is_period)
{
    samples_t products(period);
    std::vector<std::uint32_t> counts(period);
    std::complex<double> sum;
    const std::size_t first = is_period ? 0 : lag;
    for (std::size_t n = first; n < samples.size(); ++n) {
        const std::complex<double> product = samples[n] * std::conj(samples[n >= lag ? n - lag : n + period - lag]);
        products[n % period] += product;
        ++counts[n % period];
        sum += product;
    }
    if (samples.size() > first)
        sum /= static_cast<double>(samples.size() - first);
    for (std::size_t i = 0; i < period; ++i)
        products[i] -= sum * static_cast<double>(counts[i]);
    return products;
}

struct coarse_t
{
    std::size_t delay = 0;
    double frequency_hz = 0.0;
};

/// Where the differential products agree best: the delay in whole samples, and in the angle there the frequency offset.
/// Of equal places, as those of equal frames, the first.
std::optional<coarse_t> coarse(lib_signal_view_t captured, lib_signal_view_t reference, double rate)
{
    constexpr double k_lag_s = 5e-6;
    constexpr double k_equal = 0.99;
    constexpr double k_least_over_rms = 6.0;
    const std::size_t period = reference.size();
    const auto lag = static_cast<std::size_t>(
        std::clamp(std::round(k_lag_s * rate), 1.0, static_cast<double>(std::max<std::size_t>(period / 2, 1))));
    samples_t correlation = differential(captured, lag, period, false);
    samples_t own = differential(reference, lag, period, true);
    const lib_fft_plan_t forward(period, vek::common_lib::LIB_FFT_FORWARD);
    forward.execute(correlation.data(), correlation.data());
    forward.execute(own.data(), own.data());
    for (std::size_t k = 0; k < period; ++k)
        correlation[k] *= std::conj(own[k]);
    lib_fft_plan_t(period, vek::common_lib::LIB_FFT_INVERSE).execute(correlation.data(), correlation.data());

    double largest = 0.0;
    double sum = 0.0;
    for (const std::complex<double>& value : correlation) {
        largest = std::max(largest, std::norm(value));
        sum += std::norm(value);
    }
    if (!(largest > k_least_over_rms * k_least_over_rms * sum / static_cast<double>(period)))
        return std::nullopt;
    const auto at = [&](std::size_t place) { return std::norm(correlation[place % period]); };
    std::size_t delay = 0;
    while (at(delay) < k_equal * k_equal * largest)
        ++delay;
    while (at(delay + 1) > at(delay))
        ++delay;
    while (at(delay + period - 1) > at(delay))
        delay += period - 1;
    delay %= period;
    return coarse_t{delay, std::arg(correlation[delay]) / k_turn * rate / static_cast<double>(lag)};
}

samples_t mixed(lib_signal_view_t samples, double hertz, double rate)
{
    samples_t result(samples.begin(), samples.end());
    lib_common_signal_process_t::deal_mixer(result, hertz / rate, 0.0);
    return result;
}

/// The frequency offset that is left, from how the phase goes on from block to block.
double remaining_offset(const samples_t& captured, lib_signal_view_t reference, std::size_t delay, double rate)
{
    constexpr double k_block_s = 20e-6;
    constexpr std::size_t k_finer = 16;
    const std::size_t period = reference.size();
    const auto block = static_cast<std::size_t>(std::max(std::round(k_block_s * rate), 1.0));
    const std::size_t blocks = (captured.size() + block - 1) / block;
    std::size_t length = 1;
    while (length < k_finer * blocks)
        length *= 2;
    samples_t lines(length);
    for (std::size_t n = 0; n < captured.size(); ++n)
        lines[n / block] += captured[n] * std::conj(reference[(n % period + period - delay) % period]);
    lib_fft_plan_t(length, vek::common_lib::LIB_FFT_FORWARD).execute(lines.data(), lines.data());
    const auto peak =
        static_cast<double>(std::max_element(lines.begin(), lines.end(),
                                             [](const auto& a, const auto& b) { return std::norm(a) < std::norm(b); }) -
                            lines.begin());
    const auto count = static_cast<double>(length);
    return (peak < count / 2.0 ? peak : peak - count) / count * rate / static_cast<double>(block);
}

/// The reference with a delay that is no whole number of samples, and how it changes with the delay.
class delayed_reference_t
{
public:
    explicit delayed_reference_t(lib_signal_view_t reference)
        : m_spectrum(reference.begin(), reference.end()), m_inverse(reference.size(), vek::common_lib::LIB_FFT_INVERSE)
    {
        lib_fft_plan_t(reference.size(), vek::common_lib::LIB_FFT_FORWARD)
            .execute(m_spectrum.data(), m_spectrum.data());
        for (std::complex<double>& line : m_spectrum)
            line /= static_cast<double>(reference.size());
    }

    void delay(double samples)
    {
        const std::size_t period = m_spectrum.size();
        m_values.resize(period);
        m_slopes.resize(period);
        for (std::size_t k = 0; k < period; ++k) {
            const auto line = static_cast<double>(k) - (2 * k >= period ? static_cast<double>(period) : 0.0);
            const double turns = line * samples / static_cast<double>(period);
            m_values[k] = m_spectrum[k] * std::polar(1.0, -k_turn * (turns - std::floor(turns)));
            m_slopes[k] = 2 * k == period
                              ? 0.0
                              : m_values[k] * std::complex<double>(0.0, -k_turn * line / static_cast<double>(period));
        }
        m_inverse.execute(m_values.data(), m_values.data());
        m_inverse.execute(m_slopes.data(), m_slopes.data());
    }

    const std::complex<double>& value(std::size_t n) const { return m_values[n]; }
    const std::complex<double>& slope(std::size_t n) const { return m_slopes[n]; }
    std::size_t period() const { return m_spectrum.size(); }

private:
    samples_t m_spectrum;
    lib_fft_plan_t m_inverse;
    samples_t m_values;
    samples_t m_slopes;
};

/// Three equations with three unknowns, by elimination; they are Hermitian and positive.
std::array<std::complex<double>, 3> solved(std::array<std::array<std::complex<double>, 4>, 3> rows)
{
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) {
            if (j == i || std::norm(rows[i][i]) == 0.0)
                continue;
            const std::complex<double> factor = rows[j][i] / rows[i][i];
            for (std::size_t k = i; k < 4; ++k)
                rows[j][k] -= factor * rows[i][k];
        }
    std::array<std::complex<double>, 3> result{};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = std::norm(rows[i][i]) == 0.0 ? 0.0 : rows[i][3] / rows[i][i];
    return result;
}

/// One step of the least squares: how much delay and frequency are off, in samples and in turns over the capture.
std::array<double, 2> step(const samples_t& captured, const delayed_reference_t& reference)
{
    const double middle = static_cast<double>(captured.size()) / 2.0;
    std::array<std::array<std::complex<double>, 4>, 3> sums{};
    for (std::size_t n = 0, place = 0; n < captured.size();
         ++n, place = place + 1 == reference.period() ? 0 : place + 1) {
        const std::complex<double> value = reference.value(place);
        const double turn = k_turn * (static_cast<double>(n) - middle) / static_cast<double>(captured.size());
        const std::array<std::complex<double>, 4> terms = {
            value, reference.slope(place), std::complex<double>(-turn * value.imag(), turn * value.real()),
            captured[n]};
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 4; ++j)
                sums[i][j] += std::conj(terms[i]) * terms[j];
    }
    const std::array<std::complex<double>, 3> found = solved(sums);
    if (std::norm(found[0]) == 0.0)
        return {0.0, 0.0};
    return {(found[1] / found[0]).real(), (found[2] / found[0]).real()};
}

std::complex<double> gain_of(const samples_t& captured, const delayed_reference_t& reference)
{
    std::complex<double> product;
    double power = 0.0;
    for (std::size_t n = 0; n < captured.size(); ++n) {
        const std::complex<double>& value = reference.value(n % reference.period());
        product += std::conj(value) * captured[n];
        power += std::norm(value);
    }
    return power > 0.0 ? product / power : 0.0;
}

} // namespace

std::optional<alignment_t> aligned(lib_signal_view_t captured, lib_signal_view_t reference, std::uint64_t rate)
{
    constexpr int k_most_steps = 10;
    constexpr double k_settled = 1e-7;
    constexpr double k_none_samples = 1e-3; // so little below a whole period is no delay
    const auto hertz = static_cast<double>(rate);
    if (captured.empty() || reference.empty() || rate == 0)
        return std::nullopt;
    const auto start = coarse(captured, reference, hertz);
    if (!start)
        return std::nullopt;
    alignment_t result{static_cast<double>(start->delay), start->frequency_hz, 0.0};
    result.frequency_offset_hz +=
        remaining_offset(mixed(captured, -start->frequency_hz, hertz), reference, start->delay, hertz);

    delayed_reference_t delayed(reference);
    for (int i = 0; i < k_most_steps; ++i) {
        const samples_t still = mixed(captured, -result.frequency_offset_hz, hertz);
        delayed.delay(result.delay_samples);
        result.gain = gain_of(still, delayed);
        const auto [later, turns] = step(still, delayed);
        if (std::fabs(later) < k_settled && std::fabs(turns) < k_settled)
            break;
        result.delay_samples += std::clamp(later, -1.0, 1.0);
        result.frequency_offset_hz += turns * hertz / static_cast<double>(captured.size());
    }
    if (std::norm(result.gain) == 0.0)
        return std::nullopt;
    const auto period = static_cast<double>(reference.size());
    result.delay_samples -= period * std::floor(result.delay_samples / period);
    if (period - result.delay_samples < k_none_samples)
        result.delay_samples = 0.0;
    return result;
}

samples_t corrected(lib_signal_view_t captured, const alignment_t& alignment, std::uint64_t rate)
{
    samples_t result = mixed(captured, -alignment.frequency_offset_hz, static_cast<double>(rate));
    for (std::complex<double>& sample : result)
        sample /= alignment.gain;
    return result;
}

} // namespace nrwave
