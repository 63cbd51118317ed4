#include "manager/lib_nr_occupied_width.h"

#include "phy_common/lib_nr_phy_common.h"

#include <bit>
#include <cmath>

namespace vek::nr_mod_lib
{

void lib_nr_occupied_width_t::include(const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    const std::uint32_t bandwidth = numerology.get_occupied_bandwidth();
    if (bandwidth <= m_bandwidth)
        return;
    m_bandwidth = bandwidth;
    // A power of two of subcarriers that holds all of them, twice as many where they would fill more than 80 %.
    const std::uint32_t spacing = lib_nr_phy_common_t::get_scs_hz_value(numerology.get_numerolgy());
    const std::uint32_t subcarriers = bandwidth / spacing;
    const int exponent = subcarriers > 1 ? static_cast<int>(std::bit_width(subcarriers - 1)) : 0;
    m_sample_rate = std::ldexp(static_cast<double>(spacing), exponent);
    if (bandwidth > 0.8 * m_sample_rate)
        m_sample_rate *= 2.0;
}

} // namespace vek::nr_mod_lib
