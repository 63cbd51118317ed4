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
constexpr std::size_t k_steps_of_sample = 16;

/// Each sample by the conjugate of one a little ahead: a frequency offset turns all of these by the same angle. Laid
/// over one period, without their mean. What lies ahead of the first sample is the last of a period, or not there.
samples_t differential(lib_signal_view_t samples, std::size_t lag, std::size_t period, bool is_period)
{
    samples_t products(period);
    std::vector<std::uint32_t> counts(period);
    std::complex<double> sum;
    const std::size_t first = is_period ? 0 : lag;
    for (std::size_t n = first, place = first % period; n < samples.size();
         ++n, place = place + 1 == period ? 0 : place + 1)
    {
        const std::complex<double> product = samples[n] * std::conj(samples[n >= lag ? n - lag : n + period - lag]);
        products[place] += product;
        ++counts[place];
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

/// In the buffer of the result: a new one of that size costs as much as the mixing.
void mix(lib_signal_view_t samples, double hertz, double rate, samples_t& result)
{
    result.assign(samples.begin(), samples.end());
    lib_common_signal_process_t::deal_mixer(result, hertz / rate, 0.0);
}

/// How well capture and delayed reference agree, by a further delay in steps of a part of a sample, later ones first.
/// In blocks that are short against what is still unknown of the frequency offset.
std::vector<double> agreement(const samples_t& captured, lib_signal_view_t reference, std::size_t delay, double rate)
{
    constexpr double k_block_s = 1e-3;
    constexpr std::size_t k_bins = 1024;
    constexpr std::size_t k_length = k_bins * k_steps_of_sample;
    const auto block = static_cast<std::size_t>(std::max(std::round(k_block_s * rate), 1.0));
    const lib_fft_plan_t forward(block, vek::common_lib::LIB_FFT_FORWARD);
    const lib_fft_plan_t inverse(k_length, vek::common_lib::LIB_FFT_INVERSE);
    std::vector<double> result(k_length);
    samples_t is(block);
    samples_t should(block);
    for (std::size_t first = 0; first + block <= captured.size(); first += block) {
        for (std::size_t n = 0; n < block; ++n) {
            is[n] = captured[first + n];
            should[n] = reference[(first + n + reference.size() - delay) % reference.size()];
        }
        forward.execute(is.data(), is.data());
        forward.execute(should.data(), should.data());
        samples_t bins(k_length);
        for (std::size_t k = 0; k < block; ++k) {
            const std::size_t bin =
                2 * k < block ? k * k_bins / block : k_length - 1 - (block - k - 1) * k_bins / block;
            bins[bin] += is[k] * std::conj(should[k]);
        }
        inverse.execute(bins.data(), bins.data());
        for (std::size_t i = 0; i < k_length; ++i)
            result[i] += std::norm(bins[i]);
    }
    return result;
}

/// How much later than by a whole number of samples the capture agrees best, to a part of a sample: bands far from each
/// other agree nearly as well a whole turn of theirs away, and bursts in them with another frequency offset.
double lead(const samples_t& captured, lib_signal_view_t reference, std::size_t delay, double rate)
{
    constexpr std::size_t k_most_samples = 64;
    const std::vector<double> agreements = agreement(captured, reference, delay, rate);
    const std::size_t length = agreements.size();
    const auto at = [&](std::size_t place) { return agreements[place % length]; };
    std::size_t best = 0;
    for (std::size_t place = 1; place <= k_most_samples * k_steps_of_sample; ++place)
        for (const std::size_t side : {place, length - place})
            best = at(side) > at(best) ? side : best;
    const double bend = 2.0 * at(best) - at(best + 1) - at(best + length - 1);
    const double steps = static_cast<double>(best) - (2 * best > length ? static_cast<double>(length) : 0.0) +
                         (bend > 0.0 ? (at(best + 1) - at(best + length - 1)) / (2.0 * bend) : 0.0);
    return steps / static_cast<double>(k_steps_of_sample);
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
        constexpr double k_near = 0.01; // slopes of a place so near do
        m_delay = samples;
        m_values = m_spectrum;
        lib_common_signal_process_t::deal_mixer(m_values, -samples / static_cast<double>(period()), 0.0);
        const std::complex<double> whole = std::polar(1.0, k_turn * (samples - std::floor(samples)));
        for (std::size_t k = (period() + 1) / 2; k < period(); ++k) // lines of negative frequency
            m_values[k] *= whole;
        if (m_slopes.empty() || std::fabs(samples - m_slopes_at) > k_near) {
            _find_slopes();
            m_slopes_at = samples;
        }
        m_inverse.execute(m_values.data(), m_values.data());
    }

    double samples() const { return m_delay; }
    const std::complex<double>& value(std::size_t n) const { return m_values[n]; }
    const std::complex<double>& slope(std::size_t n) const { return m_slopes[n]; }
    std::size_t period() const { return m_spectrum.size(); }

private:
    /// From the spectrum of the values.
    void _find_slopes()
    {
        const auto count = static_cast<double>(period());
        m_slopes.resize(period());
        for (std::size_t k = 0; k < period(); ++k) {
            const double line = static_cast<double>(k) - (2 * k > period() ? count : 0.0);
            const double turns = 2 * k == period() ? 0.0 : -k_turn * line / count;
            m_slopes[k] = {-turns * m_values[k].imag(), turns * m_values[k].real()};
        }
        m_inverse.execute(m_slopes.data(), m_slopes.data());
    }

    samples_t m_spectrum;
    lib_fft_plan_t m_inverse;
    samples_t m_values;
    samples_t m_slopes;
    double m_delay = 0.0;
    double m_slopes_at = 0.0;
};

/// The frequency offset that is left, from how the phase goes on from block to block.
double remaining_offset(const samples_t& captured, const delayed_reference_t& reference, double rate)
{
    constexpr double k_block_s = 20e-6;
    constexpr std::size_t k_finer = 16;
    const auto block = static_cast<std::size_t>(std::max(std::round(k_block_s * rate), 1.0));
    const std::size_t blocks = (captured.size() + block - 1) / block;
    std::size_t length = 1;
    while (length < k_finer * blocks)
        length *= 2;
    samples_t lines(length);
    for (std::size_t n = 0; n < captured.size(); ++n)
        lines[n / block] += captured[n] * std::conj(reference.value(n % reference.period()));
    lib_fft_plan_t(length, vek::common_lib::LIB_FFT_FORWARD).execute(lines.data(), lines.data());
    const auto peak =
        static_cast<double>(std::max_element(lines.begin(), lines.end(),
                                             [](const auto& a, const auto& b) { return std::norm(a) < std::norm(b); }) -
                            lines.begin());
    const auto count = static_cast<double>(length);
    return (peak < count / 2.0 ? peak : peak - count) / count * rate / static_cast<double>(block);
}

/// How much delay and frequency are off, in samples and in turns over the capture, and what gain fits best once they
/// are not.
struct step_t
{
    std::complex<double> gain;
    double explained = 0.0; ///< power of the capture, summed, that the reference explains
    double later = 0.0;
    double turns = 0.0;
};

/// One step of the least squares. Delay and turns are real numbers, and held to that: with complex ones in their place
/// every band and burst would have a gain of its own, and what tells them apart would be lost.
step_t step(const samples_t& captured, const delayed_reference_t& reference)
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
    const double power = sums[0][0].real();
    if (power == 0.0 || std::norm(sums[0][3]) == 0.0)
        return {};
    step_t result{sums[0][3] / power, std::norm(sums[0][3]) / power};
    const auto beside_gain = [&](std::size_t i, std::size_t j) { return sums[i][j] - sums[i][0] * sums[0][j] / power; };
    const double later = beside_gain(1, 1).real();
    const double turns = beside_gain(2, 2).real();
    const double both = beside_gain(1, 2).real();
    const double determinant = later * turns - both * both;
    if (!(determinant > 1e-12 * later * turns)) // a tone has no delay
        return result;
    const double is_later = (beside_gain(1, 3) / result.gain).real();
    const double is_turned = (beside_gain(2, 3) / result.gain).real();
    result.later = (is_later * turns - is_turned * both) / determinant;
    result.turns = (is_turned * later - is_later * both) / determinant;
    result.gain -= result.gain * (result.later * sums[0][1] + result.turns * sums[0][2]) / power;
    result.gain *=
        std::polar(1.0, -k_turn * result.turns / 2.0); // from the middle, where the turns are 0, to the first
    return result;
}

} // namespace

std::optional<alignment_t> aligned(lib_signal_view_t captured, lib_signal_view_t reference, std::uint64_t rate)
{
    constexpr int k_most_steps = 10;
    constexpr double k_settled = 1e-4;          // what is left behind a step is of the order of its square
    constexpr double k_least_over_noise = 50.0; // what noise explains of noise by chance, at the best of many places
    constexpr double k_none_samples = 1e-3;     // so little below a whole period is no delay
    const auto hertz = static_cast<double>(rate);
    if (captured.empty() || reference.empty() || rate == 0)
        return std::nullopt;
    const auto start = coarse(captured, reference, hertz);
    if (!start)
        return std::nullopt;
    alignment_t result{static_cast<double>(start->delay), start->frequency_hz, 0.0};
    samples_t still;
    mix(captured, -start->frequency_hz, hertz, still);
    result.delay_samples += lead(still, reference, start->delay, hertz);
    delayed_reference_t delayed(reference);
    delayed.delay(result.delay_samples);
    result.frequency_offset_hz += remaining_offset(still, delayed, hertz);

    double explained = 0.0;
    for (int i = 0; i < k_most_steps; ++i) {
        mix(captured, -result.frequency_offset_hz, hertz, still);
        const step_t next = step(still, delayed);
        result.gain = next.gain;
        explained = next.explained;
        result.delay_samples = delayed.samples() + std::clamp(next.later, -1.0, 1.0);
        result.frequency_offset_hz += next.turns * hertz / static_cast<double>(captured.size());
        const bool is_there = std::fabs(next.later) < k_settled;
        if (is_there && std::fabs(next.turns) < k_settled)
            break;
        if (!is_there)
            delayed.delay(result.delay_samples);
    }
    double power = 0.0;
    for (const std::complex<double>& sample : captured)
        power += std::norm(sample);
    if (!(explained * static_cast<double>(captured.size()) > k_least_over_noise * power))
        return std::nullopt;
    const auto period = static_cast<double>(reference.size());
    result.delay_samples -= period * std::floor(result.delay_samples / period);
    if (period - result.delay_samples < k_none_samples)
        result.delay_samples = 0.0;
    return result;
}

samples_t corrected(lib_signal_view_t captured, const alignment_t& alignment, std::uint64_t rate)
{
    samples_t result;
    mix(captured, -alignment.frequency_offset_hz, static_cast<double>(rate), result);
    for (std::complex<double>& sample : result)
        sample /= alignment.gain;
    return result;
}

} // namespace nrwave
