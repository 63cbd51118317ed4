#include "common/lib_ofdm_windowing_method.h"

#include <cmath>
#include <numbers>

namespace vek::common_lib
{

const std::map<lib_ofdm_windowing_method_type_t, std::string>& enum_name_map(lib_ofdm_windowing_method_type_t)
{
    static const std::map<lib_ofdm_windowing_method_type_t, std::string> names = {
        {LIB_OFDM_WINDOWING_RAISED_COSINE, "LIB_OFDM_WINDOWING_RAISED_COSINE"}};
    return names;
}

std::vector<double> lib_ofdm_windowing_method_t::get_rising_edge(lib_ofdm_windowing_method_type_t, unsigned int length)
{
    std::vector<double> edge(length);
    const double half_turn = std::numbers::pi / static_cast<double>(length);
    // Half a sample in from either end: the edge and its mirror image add up to 1.
    for (unsigned int i = 0; i < length; ++i)
        edge[i] = 0.5 - 0.5 * std::cos(half_turn * (static_cast<double>(i) + 0.5));
    return edge;
}

} // namespace vek::common_lib
