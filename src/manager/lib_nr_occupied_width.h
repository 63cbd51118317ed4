#pragma once

#include "manager/lib_nr_phy_numerology_configure_manager.h"

#include <cstdint>

namespace vek::nr_mod_lib
{

/// The widest of the numerologies shown to it, and the sample rate that this one needs.
class lib_nr_occupied_width_t
{
public:
    void include(const lib_nr_phy_numerology_configure_manager_t& numerology);

    /// Hertz; 0 before the first numerology.
    double get_sample_rate() const { return m_sample_rate; }

private:
    std::uint32_t m_bandwidth = 0;
    double m_sample_rate = 0.0;
};

} // namespace vek::nr_mod_lib
