#include "common/lib_signal_power.h"

#include "common/lib_target_clones.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <numeric>

namespace vek::common_lib
{

namespace
{

// All bits but the sign of some samples' parts, put together: a sum without comparisons, which goes in whole vectors.
NR_MOD_LIB_TARGET_CLONES
std::uint64_t bits_of(const std::complex<double>* samples, std::size_t count)
{
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < count; ++i)
        bits |= std::bit_cast<std::uint64_t>(samples[i].real()) | std::bit_cast<std::uint64_t>(samples[i].imag());
    return bits << 1;
}

} // namespace

bool is_silent(lib_signal_view_t signal)
{
    constexpr std::size_t k_at_a_time = 256;
    for (std::size_t begin = 0; begin < signal.size(); begin += k_at_a_time)
        if (bits_of(signal.data() + begin, std::min(k_at_a_time, signal.size() - begin)) != 0)
            return false;
    return true;
}

double sum_of_power(lib_signal_view_t signal, const lib_power_pieces_t& pieces, std::size_t begin, std::size_t end)
{
    const std::size_t first = (begin + pieces.width - 1) / pieces.width;
    const std::size_t last = end == signal.size() ? pieces.sums.size() : end / pieces.width;
    if (first >= last)
        return sum_of_power(signal.data() + begin, end - begin);
    const std::size_t whole_end = last == pieces.sums.size() ? end : last * pieces.width;
    const auto sums = pieces.sums.begin();
    return sum_of_power(signal.data() + begin, first * pieces.width - begin) +
           std::accumulate(sums + static_cast<std::ptrdiff_t>(first), sums + static_cast<std::ptrdiff_t>(last), 0.0) +
           sum_of_power(signal.data() + whole_end, end - whole_end);
}

} // namespace vek::common_lib
