#pragma once

#include "common/lib_signal_view.h"

#include <cstdint>

namespace nrwave
{

/// Samples as they are written or shown, and their rate. They are one period of a signal without an end.
struct signal_t
{
    vek::common_lib::lib_signal_view_t period;
    std::uint64_t rate = 0;    ///< hertz
    std::uint64_t repeats = 1; ///< how often the period is written

    std::uint64_t samples() const { return period.size() * repeats; }
    double seconds() const { return rate == 0 ? 0.0 : static_cast<double>(samples()) / static_cast<double>(rate); }
};

} // namespace nrwave
