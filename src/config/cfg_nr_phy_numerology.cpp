#include "config/cfg_nr_phy_numerology.h"

#include "phy_common/lib_nr_phy_common.h"

#include <iostream>

namespace vek::nr_mod_lib
{

std::vector<lib_nr_numerology_type_t> cfg_nr_phy_numerology_t::get_valid_numerology_list() const
{
    return lib_nr_phy_common_t::get_valid_numerology_list(_carrier().get_bandwidth());
}

void cfg_nr_phy_numerology_t::init()
{
    set_current_numerology_index(0, 0);
    m_ul_guard_band.init();
}

bool cfg_nr_phy_numerology_t::set_current_numerology_index(unsigned int carrier, unsigned int numerology)
{
    if (carrier >= m_waveform.get_carrier_number()) {
        std::cout << "cfg_nr_phy_numerology_t::set_current_numerology_index Report : Carrier Index out of range!"
                  << std::endl;
        return false;
    }
    if (numerology >= m_waveform.get_carrier(carrier).get_numerology_number()) {
        std::cout << "cfg_nr_phy_numerology_t::set_current_numerology_index Report : Numerology Index out of range!"
                  << std::endl;
        return false;
    }
    m_carrier_index = carrier;
    m_index = numerology;
    m_ul_guard_band.set_current_guard_band_index(carrier, numerology);
    return true;
}

bool cfg_nr_phy_numerology_t::set_enable(bool enable)
{
    const bool changed = _carrier().set_numerology_enable(_index(), enable);
    m_waveform.refit_cfr_filter_mask();
    return changed;
}

bool cfg_nr_phy_numerology_t::set_rb_size(unsigned int rb_size)
{
    const bool changed = _carrier().set_numerology_rb_size(_index(), rb_size);
    m_waveform.refit_cfr_filter_mask();
    return changed;
}

cfg_nr_ul_guard_band_t* cfg_nr_phy_numerology_t::get_ul_guard_band()
{
    m_ul_guard_band.set_current_guard_band_index(m_carrier_index, m_index);
    return &m_ul_guard_band;
}

} // namespace vek::nr_mod_lib
