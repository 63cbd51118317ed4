#include "host/analysis/nrwave_evm.h"

#include "common/lib_common_signal_process.h"
#include "common/lib_fft_plan.h"
#include "host/analysis/nrwave_resampling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace nrwave
{

using vek::common_lib::lib_fft_plan_t;
using samples_t = std::vector<std::complex<double>>;

namespace
{

/// Both ends of the window in which the transform may begin, as parts of the prefix ahead of the useful part.
constexpr std::array k_early = {0.25, 0.75};
constexpr std::size_t k_windows = k_early.size();
constexpr std::size_t k_most_points = 20000;

std::complex<double> turned(double turns)
{
    return std::polar(1.0, 2.0 * std::numbers::pi * (turns - std::floor(turns)));
}

/// What a gain and the error behind it are found from.
struct sums_t
{
    double sent = 0.0;
    std::array<double, k_windows> received{};
    std::array<std::complex<double>, k_windows> product{};

    void add(std::size_t window, std::complex<double> is, std::complex<double> should)
    {
        sent += window == 0 ? std::norm(should) : 0.0;
        received[window] += std::norm(is);
        product[window] += std::conj(should) * is;
    }
    void add(const sums_t& other)
    {
        sent += other.sent;
        for (std::size_t w = 0; w < k_windows; ++w) {
            received[w] += other.received[w];
            product[w] += other.product[w];
        }
    }
};

/// Errors after the gains were taken out.
struct errors_t
{
    double sent = 0.0;
    std::array<double, k_windows> error{};

    void add(const sums_t& sums, const std::array<std::complex<double>, k_windows>& gains)
    {
        sent += sums.sent;
        for (std::size_t w = 0; w < k_windows; ++w) {
            const double power = std::norm(gains[w]);
            const double error_power =
                sums.received[w] - 2.0 * (std::conj(gains[w]) * sums.product[w]).real() + power * sums.sent;
            error[w] += power > 0.0 ? std::max(error_power, 0.0) / power : HUGE_VAL;
        }
    }
    std::optional<double> percent() const
    {
        const double largest = std::sqrt(*std::max_element(error.begin(), error.end()) / sent);
        return sent > 0.0 && std::isfinite(largest) ? std::optional(100.0 * largest) : std::nullopt;
    }
};

/// The samples with a carrier's centre on 0 Hz and a whole number of them in a useful part.
class tuned_samples_t
{
public:
    explicit tuned_samples_t(const received_t& received, bool is_mirrored)
        : m_received(received), m_is_mirrored(is_mirrored)
    {}

    /// Does nothing where the samples stand so already.
    void tune(double centre_hz, std::uint64_t spacing_hz)
    {
        const std::size_t useful = _useful_for(spacing_hz);
        const double rate = static_cast<double>(useful) * static_cast<double>(spacing_hz);
        if (useful == 0 || (rate == m_rate && centre_hz == m_centre_hz)) {
            m_useful = useful;
            return;
        }
        m_useful = useful;
        m_rate = rate;
        m_centre_hz = centre_hz;
        m_samples.assign(m_received.samples.begin(), m_received.samples.end());
        if (m_is_mirrored)
            for (std::complex<double>& sample : m_samples)
                sample = std::conj(sample);
        if (m_rate != static_cast<double>(m_received.rate)) {
            const auto to = static_cast<std::uint64_t>(m_rate);
            m_samples.resize(_whole_count(to));
            m_samples = resampled(
                m_samples, static_cast<std::size_t>(samples_at(to, m_samples.size(), m_received.rate).value_or(0)),
                false);
        }
        vek::common_lib::lib_common_signal_process_t::deal_mixer(m_samples, -centre_hz / m_rate, 0.0);
    }

    /// Samples of a useful part; 0 where no rate near by has a whole number of them.
    std::size_t useful() const { return m_useful; }
    double rate_hz() const { return m_rate; }
    double duration_s() const { return static_cast<double>(m_samples.size()) / m_rate; }

    /// Copies a useful part's worth from a sample on; false where that is not all there.
    bool copy_from(std::int64_t first, samples_t& out) const
    {
        const auto count = static_cast<std::int64_t>(m_samples.size());
        const auto useful = static_cast<std::int64_t>(m_useful);
        out.resize(m_useful);
        if (first >= 0 && first + useful <= count) {
            std::copy_n(m_samples.begin() + first, useful, out.begin());
            return true;
        }
        if (!m_received.is_period || count == 0)
            return false;
        for (std::int64_t i = 0; i < useful; ++i)
            out[static_cast<std::size_t>(i)] =
                m_samples[static_cast<std::size_t>(((first + i) % count + count) % count)];
        return true;
    }

private:
    /// Without an end to be cut off, or with what divides.
    std::size_t _whole_count(std::uint64_t to_rate) const
    {
        std::uint64_t count = m_received.samples.size();
        if (!m_received.is_period)
            while (count > 0 && !samples_at(to_rate, count, m_received.rate))
                --count;
        return static_cast<std::size_t>(count);
    }

    std::size_t _useful_for(std::uint64_t spacing_hz) const
    {
        constexpr std::size_t k_tries = 16;
        if (m_received.rate % spacing_hz == 0)
            return static_cast<std::size_t>(m_received.rate / spacing_hz);
        std::size_t useful = static_cast<std::size_t>(m_received.rate / spacing_hz) + 1;
        for (std::size_t i = 0; i < k_tries; ++i, ++useful) {
            useful = quick_length(useful);
            const std::size_t count = _whole_count(useful * spacing_hz);
            if (count > m_received.samples.size() / 2 && samples_at(useful * spacing_hz, count, m_received.rate))
                return useful;
        }
        return 0;
    }

    const received_t& m_received;
    bool m_is_mirrored;
    samples_t m_samples;
    double m_rate = 0.0;
    double m_centre_hz = 0.0;
    std::size_t m_useful = 0;
};

/// What the cells of a chosen channel were received as, before the gain is known.
struct points_t
{
    std::size_t channel = 0;
    samples_t received;
    samples_t sent;
    std::size_t levelled = 0; ///< points whose gain is taken out
};

/// Holds the symbols of one part against the samples.
class part_evm_t
{
public:
    part_evm_t(const tuned_samples_t& samples, const mapped_part_t& part, std::size_t channels)
        : m_samples(samples),
          m_part(part),
          m_sums(channels),
          m_transform(lib_fft_plan_t::get(samples.useful(), vek::common_lib::LIB_FFT_FORWARD))
    {}

    /// A symbol that begins so much later than it was mapped; nothing where the samples do not hold all of it.
    void add(const mapped_symbol_t& symbol, double later_s, double turns, std::vector<points_t>& points)
    {
        const double rate = m_samples.rate_hz();
        const double start = (symbol.start_s + later_s) * rate;
        std::array<double, k_windows> ahead{}; // samples between the transform's start and the useful part's
        for (std::size_t w = 0; w < k_windows; ++w) {
            const double first = std::floor(start - k_early[w] * symbol.prefix_s * rate + 1e-6);
            ahead[w] = start - first;
            if (!m_samples.copy_from(static_cast<std::int64_t>(first), m_spectra[w]))
                return;
        }
        for (samples_t& spectrum : m_spectra)
            m_transform.execute(spectrum.data(), spectrum.data());
        for (std::size_t w = 0; w < k_windows; ++w)
            for (const mapped_run_t& run : symbol.runs)
                _add(run, w, ahead[w], turned(-symbol.turns - turns), points);
    }

    const std::vector<sums_t>& sums() const { return m_sums; }

private:
    void _add(const mapped_run_t& run, std::size_t window, double ahead, std::complex<double> turn,
              std::vector<points_t>& points)
    {
        const auto useful = static_cast<std::int64_t>(m_samples.useful());
        const double turns_per_bin = ahead / static_cast<double>(useful);
        const auto chosen =
            std::find_if(points.begin(), points.end(), [&](const points_t& own) { return own.channel == run.channel; });
        const std::complex<double> step = turned(turns_per_bin * run.step);
        std::complex<double> factor = turn * turned(turns_per_bin * run.first) / static_cast<double>(useful);
        for (std::uint32_t i = 0; i < run.count; ++i, factor *= step) {
            const std::complex<double> sent = m_part.values[run.first_value + i];
            const std::int64_t bin = run.first + std::int64_t{i} * run.step;
            if (sent == 0.0 || bin < -useful / 2 || bin >= useful - useful / 2)
                continue;
            const std::complex<double> is =
                factor * m_spectra[window][static_cast<std::size_t>((bin + useful) % useful)];
            m_sums[run.channel].add(window, is, sent);
            if (window == 0 && chosen != points.end() && chosen->sent.size() < k_most_points) {
                chosen->received.push_back(is);
                chosen->sent.push_back(sent);
            }
        }
    }

    const tuned_samples_t& m_samples;
    const mapped_part_t& m_part;
    std::vector<sums_t> m_sums;
    const lib_fft_plan_t& m_transform;
    std::array<samples_t, k_windows> m_spectra;
};

/// Gathers the errors of all parts.
class gatherer_t
{
public:
    gatherer_t(const received_t& received, const mapped_t& mapped, const std::set<std::string>& chosen)
        : m_received(received), m_mapped(mapped), m_channels(mapped.channels.size())
    {
        for (std::size_t i = 0; i < mapped.channels.size(); ++i)
            if (chosen.contains(mapped.channels[i].path))
                m_points.push_back({i, {}, {}, 0});
    }

    void add(tuned_samples_t& samples, const mapped_part_t& part)
    {
        samples.tune(part.centre_hz, part.spacing_hz);
        if (samples.useful() == 0)
            return;
        part_evm_t evm(samples, part, m_channels.size());
        // Every repetition in the samples counts; the carrier's own turning begins anew with each.
        const int first = m_received.is_period ? 0 : -1;
        for (int repeat = first; repeat == first || (!m_received.is_period && _start_of(repeat) < samples.duration_s());
             ++repeat)
            for (const mapped_symbol_t& symbol : part.symbols)
                evm.add(symbol, _start_of(repeat), -part.centre_hz * _start_of(repeat), m_points);
        _close(part, evm.sums());
    }

    evm_t result() const
    {
        evm_t all;
        all.percent = m_all.percent();
        for (const errors_t& carrier : m_carriers)
            all.carriers.push_back(carrier.percent());
        for (std::size_t i = 0; i < m_channels.size(); ++i)
            all.channels.push_back(
                {m_mapped.channels[i].path, m_channels[i].percent(), m_mapped.channels[i].limit_percent});
        for (const points_t& points : m_points)
            all.constellations.push_back({m_mapped.channels[points.channel].path, points.received, points.sent});
        return all;
    }

private:
    double _start_of(int repeat) const { return m_received.start_s + repeat * m_mapped.period_s; }

    void _close(const mapped_part_t& part, const std::vector<sums_t>& sums)
    {
        sums_t whole;
        for (const sums_t& channel : sums)
            whole.add(channel);
        if (whole.sent == 0.0)
            return;
        std::array<std::complex<double>, k_windows> gains{};
        for (std::size_t w = 0; w < k_windows; ++w)
            gains[w] = whole.product[w] / whole.sent;
        m_carriers.resize(std::max(m_carriers.size(), part.carrier + 1));
        m_carriers[part.carrier].add(whole, gains);
        m_all.add(whole, gains);
        for (std::size_t i = 0; i < sums.size(); ++i)
            if (sums[i].sent > 0.0)
                m_channels[i].add(sums[i], gains);
        for (points_t& points : m_points)
            if (sums[points.channel].sent > 0.0) {
                for (; points.levelled < points.received.size(); ++points.levelled)
                    points.received[points.levelled] /= gains[0];
            }
    }

    const received_t& m_received;
    const mapped_t& m_mapped;
    errors_t m_all;
    std::vector<errors_t> m_carriers;
    std::vector<errors_t> m_channels;
    std::vector<points_t> m_points;
};

} // namespace

evm_t evm_of(const received_t& received, const mapped_t& mapped, const std::set<std::string>& chosen)
{
    tuned_samples_t samples(received, mapped.is_mirrored);
    gatherer_t gatherer(received, mapped, chosen);
    if (!received.samples.empty() && received.rate != 0)
        for (const mapped_part_t& part : mapped.parts)
            gatherer.add(samples, part);
    return gatherer.result();
}

void take(const evm_t& evm, measurement_t& measurement)
{
    for (carrier_measurement_t& carrier : measurement.carriers)
        if (carrier.channel.index < evm.carriers.size())
            carrier.evm_percent = evm.carriers[carrier.channel.index];
    measurement.channels = evm.channels;
}

} // namespace nrwave
