#pragma once

#include "common/lib_fft_plan.h"

namespace vek
{

template <>
struct test_peer_t<common_lib::lib_fft_plan_t>
{
    /// Called ahead of every transform of the process; nullptr for no more calls.
    static void observe(void (*observer)(std::size_t length, common_lib::lib_fft_direction_t direction))
    {
        common_lib::lib_fft_plan_t::s_observer = observer;
    }
};

} // namespace vek
