#include "common/lib_common_signal_process.h"

#include "common/lib_complex_product.h"
#include "common/lib_signal_power.h"
#include "common/lib_target_clones.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace vek::common_lib
{

namespace
{

constexpr std::size_t k_mixer_block = 256;
using rotor_table_t = std::array<std::complex<double>, k_mixer_block>;

std::complex<double> rotor(double turns)
{
    const double angle = 2.0 * std::numbers::pi * turns;
    return {std::cos(angle), std::sin(angle)};
}

/// The fraction of a turn of `count` times `turns`, in -0.5 to 0.5: the rounding error of the product is kept, so that
/// nothing of the fraction is lost however many whole turns go by.
double fraction_of_turns(double count, double turns)
{
    const double product = count * turns;
    const double lost = std::fma(count, turns, -product);
    return (product - std::round(product)) + lost;
}

NR_MOD_LIB_TARGET_CLONES
void rotate(std::complex<double>* samples, std::size_t count, std::complex<double> anchor, const rotor_table_t& table)
{
    for (std::size_t k = 0; k < count; ++k)
        samples[k] = product(samples[k], product(table[k], anchor));
}

constexpr double k_burst_threshold = 0.01; // 20 dB below the mean of the active part

/// The mean power of those pieces of `width` samples that lie no more than 20 dB below the mean of all; a shorter last
/// piece counts as if zeros followed. Some window of that width has at least this power.
double active_mean_power(lib_signal_view_t signal, std::size_t width)
{
    std::vector<double> pieces;
    const auto divisor = static_cast<double>(std::min(width, signal.size()));
    for (std::size_t begin = 0; begin < signal.size(); begin += width) {
        const std::size_t count = std::min(width, signal.size() - begin);
        pieces.push_back(sum_of_power(signal.data() + begin, count) / divisor);
    }
    const double least =
        k_burst_threshold * std::accumulate(pieces.begin(), pieces.end(), 0.0) / static_cast<double>(pieces.size());
    double sum = 0.0;
    std::size_t count = 0;
    for (const double power : pieces) {
        if (power > least) {
            sum += power;
            ++count;
        }
    }
    return count == 0 ? 0.0 : sum / static_cast<double>(count);
}

/// Calls visit(i, p) with the mean power p of the `width` samples (odd) round sample i, from the first on or, where
/// `backward`, from the last on, until it returns false. A window that sticks out is shortened.
template <class visit_t>
void walk_smoothed_power(lib_signal_view_t signal, std::size_t width, bool backward, visit_t visit)
{
    const std::size_t size = signal.size();
    const std::size_t reach = width / 2;
    const auto power_at = [&](std::size_t step) { return power_of(signal[backward ? size - 1 - step : step]); };
    double sum = 0.0;
    std::size_t inside = 0;
    for (; inside < std::min(reach, size); ++inside)
        sum += power_at(inside);
    for (std::size_t step = 0; step < size; ++step) {
        if (step + reach < size) {
            sum += power_at(step + reach);
            ++inside;
        }
        if (step > reach) {
            sum -= power_at(step - reach - 1);
            --inside;
        }
        if (!visit(backward ? size - 1 - step : step, sum / static_cast<double>(inside)))
            return;
    }
}

} // namespace

void lib_common_signal_process_t::deal_mixer(std::vector<std::complex<double>>& signal, double turns_per_sample,
                                             double initial_phase)
{
    if (!std::isfinite(turns_per_sample) || !std::isfinite(initial_phase))
        return;
    const double turns = turns_per_sample - std::round(turns_per_sample);
    if (turns == 0.0 && initial_phase == 0.0)
        return;

    rotor_table_t table;
    for (std::size_t k = 0; k < k_mixer_block; ++k)
        table[k] = rotor(fraction_of_turns(static_cast<double>(k), turns));
    const std::complex<double> start = {std::cos(initial_phase), std::sin(initial_phase)};
    for (std::size_t begin = 0; begin < signal.size(); begin += k_mixer_block) {
        const std::size_t count = std::min(k_mixer_block, signal.size() - begin);
        rotate(signal.data() + begin, count, start * rotor(fraction_of_turns(static_cast<double>(begin), turns)),
               table);
    }
}

void lib_common_signal_process_t::get_burst_signal_data(const std::vector<std::complex<double>>& in,
                                                        std::vector<std::complex<double>>& out)
{
    const lib_signal_view_t burst = find_burst(in);
    if (&out != &in)
        out.assign(burst.begin(), burst.end());
    else if (burst.size() != in.size())
        out = std::vector<std::complex<double>>(burst.begin(), burst.end());
}

lib_signal_view_t lib_common_signal_process_t::find_burst(lib_signal_view_t in)
{
    const std::size_t size = in.size();
    const std::size_t width = std::max<std::size_t>(size / 4096, 64) | 1; // odd: the same windows from both ends
    const double threshold = k_burst_threshold * active_mean_power(in, width);
    if (!(threshold > 0.0))
        return {in.data(), 0};

    const auto is_quiet_until = [&](std::size_t& position) {
        return [&position, threshold](std::size_t i, double power) {
            position = i;
            return !(power > threshold);
        };
    };
    std::size_t first = 0;
    std::size_t last = 0;
    walk_smoothed_power(in, width, false, is_quiet_until(first));
    walk_smoothed_power(in, width, true, is_quiet_until(last));

    // The window smears an edge by half its width; behind a gap the signal begins at its first sample of some power.
    const double edge = k_burst_threshold * threshold;
    if (first > 0)
        while (first < last && power_of(in[first]) <= edge)
            ++first;
    if (last + 1 < size)
        while (last > first && power_of(in[last]) <= edge)
            --last;

    return {in.data() + first, last + 1 - first};
}

} // namespace vek::common_lib
