#include "common/lib_fft_plan.h"

#include <map>
#include <utility>

namespace vek::common_lib
{

const lib_fft_plan_t& lib_fft_plan_t::get(std::size_t length, lib_fft_direction_t direction)
{
    static std::map<std::pair<std::size_t, lib_fft_direction_t>, lib_fft_plan_t> plans;
    return plans.try_emplace({length, direction}, length, direction).first->second;
}

} // namespace vek::common_lib
