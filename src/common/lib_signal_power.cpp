#include "common/lib_signal_power.h"

#include <numeric>

namespace vek::common_lib
{

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
