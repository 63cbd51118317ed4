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

NR_MOD_LIB_PRODUCT_CLONES
void rotate(std::complex<double>* samples, std::size_t count, std::complex<double> anchor, const rotor_table_t& table)
{
    for (std::size_t k = 0; k < count; ++k)
        samples[k] = product(samples[k], product(table[k], anchor));
}

constexpr double k_burst_threshold = 0.01; // 20 dB below the mean of the active part

/// The mean power of those pieces that lie no more than 20 dB below the mean of all; a shorter last piece counts as if
/// zeros followed. Some window of a piece's width has at least this power.
double active_mean_power(const lib_power_pieces_t& pieces, std::size_t size)
{
    const double least = k_burst_threshold * std::accumulate(pieces.sums.begin(), pieces.sums.end(), 0.0) /
                         static_cast<double>(pieces.sums.size());
    double sum = 0.0;
    std::size_t count = 0;
    for (const double power : pieces.sums) {
        if (power > least) {
            sum += power;
            ++count;
        }
    }
    const auto width = static_cast<double>(std::min(pieces.width, size));
    return count == 0 ? 0.0 : sum / static_cast<double>(count) / width;
}

/// How many pieces from an end of the signal on can be passed over: no window within them and the next one reaches the
/// threshold. A window has at least half of its width inside the signal, and lies in two pieces at most.
template <class iterator_t>
std::size_t count_quiet_pieces(iterator_t piece, iterator_t end, double threshold_sum)
{
    std::size_t count = 0;
    for (; piece != end && piece + 1 != end && 2.0 * (*piece + *(piece + 1)) < threshold_sum; ++piece)
        ++count;
    return count;
}

/// Calls visit(i, p) with the mean power p of the `width` samples (odd) round sample i, from the `start`th on or, where
/// `backward`, from that before the end on, until it returns false. A window that sticks out is shortened.
template <class visit_t>
void walk_smoothed_power(lib_signal_view_t signal, std::size_t width, bool backward, std::size_t start, visit_t visit)
{
    const std::size_t size = signal.size();
    const std::size_t reach = width / 2;
    const auto power_at = [&](std::size_t step) { return power_of(signal[backward ? size - 1 - step : step]); };
    const std::size_t first = start - std::min(start, reach);
    double sum = 0.0;
    std::size_t inside = 0;
    for (; first + inside < std::min(start + reach, size); ++inside)
        sum += power_at(first + inside);
    for (std::size_t step = start; step < size; ++step) {
        if (step + reach < size) {
            sum += power_at(step + reach);
            ++inside;
        }
        if (step > first + reach) {
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

std::size_t lib_common_signal_process_t::get_smoothing_width(std::size_t size)
{
    return std::max<std::size_t>(size / 4096, 64) | 1; // odd: the same windows from both ends
}

lib_signal_view_t lib_common_signal_process_t::find_burst(lib_signal_view_t in)
{
    lib_power_pieces_t pieces{get_smoothing_width(in.size()), {}};
    for (std::size_t begin = 0; begin < in.size(); begin += pieces.width)
        pieces.sums.push_back(sum_of_power(in.data() + begin, std::min(pieces.width, in.size() - begin)));
    return find_burst(in, pieces);
}

lib_signal_view_t lib_common_signal_process_t::find_burst(lib_signal_view_t in, const lib_power_pieces_t& pieces)
{
    const std::size_t size = in.size();
    const std::size_t width = pieces.width;
    const double threshold = k_burst_threshold * active_mean_power(pieces, size);
    if (!(threshold > 0.0))
        return {in.data(), 0};

    const auto is_quiet_until = [&](std::size_t& position) {
        return [&position, threshold](std::size_t i, double power) {
            position = i;
            return !(power > threshold);
        };
    };
    const double threshold_sum = threshold * static_cast<double>(width);
    const std::size_t ahead = count_quiet_pieces(pieces.sums.begin(), pieces.sums.end(), threshold_sum);
    const std::size_t behind = count_quiet_pieces(pieces.sums.rbegin(), pieces.sums.rend(), threshold_sum);
    std::size_t first = 0;
    std::size_t last = 0;
    walk_smoothed_power(in, width, false, ahead * width, is_quiet_until(first));
    walk_smoothed_power(in, width, true, size - std::min(size, (pieces.sums.size() - behind) * width),
                        is_quiet_until(last));

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
