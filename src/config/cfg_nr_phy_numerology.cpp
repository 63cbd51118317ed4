#include "config/cfg_nr_phy_numerology.h"

#include "manager/lib_nr_waveform_configure_manager.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

bool cfg_nr_phy_numerology_t::get_enable() const { return _target().get_enable(); }
lib_nr_numerology_type_t cfg_nr_phy_numerology_t::get_scs() const { return _target().get_numerolgy(); }
unsigned int cfg_nr_phy_numerology_t::get_rb_size() const { return _target().get_rb_size(); }
bool cfg_nr_phy_numerology_t::set_rb_start(unsigned int rb_start)
{
    return _carrier().set_numerology_rb_start(_index(), rb_start);
}
unsigned int cfg_nr_phy_numerology_t::get_rb_start() const { return _target().get_rb_start(); }
unsigned int cfg_nr_phy_numerology_t::get_k0() const { return _target().get_k0(); }
std::vector<lib_nr_numerology_type_t> cfg_nr_phy_numerology_t::get_valid_numerology_list() const
{
    return lib_nr_phy_common_t::get_valid_numerology_list(_carrier().get_bandwidth());
}

cfg_nr_phy_numerology_t::cfg_nr_phy_numerology_t(lib_nr_waveform_configure_manager_t& waveform)
    : m_waveform(waveform), m_ul_guard_band(waveform)
{}

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
    m_numerology_index = numerology;
    m_ul_guard_band.set_current_guard_band_index(carrier, numerology);
    return true;
}

bool cfg_nr_phy_numerology_t::set_enable(bool enable)
{
    const bool changed = _carrier().set_numerology_enable(_index(), enable);
    _refit_filter_mask();
    return changed;
}

bool cfg_nr_phy_numerology_t::set_rb_size(unsigned int rb_size)
{
    const bool changed = _carrier().set_numerology_rb_size(_index(), rb_size);
    _refit_filter_mask();
    return changed;
}

cfg_nr_ul_guard_band_t* cfg_nr_phy_numerology_t::get_ul_guard_band()
{
    m_ul_guard_band.set_current_guard_band_index(m_carrier_index, m_numerology_index);
    return &m_ul_guard_band;
}

lib_nr_carrier_configure_manager_t& cfg_nr_phy_numerology_t::_carrier()
{
    return m_waveform.get_carrier(m_carrier_index);
}

const lib_nr_carrier_configure_manager_t& cfg_nr_phy_numerology_t::_carrier() const
{
    return m_waveform.get_carrier(m_carrier_index);
}

const lib_nr_phy_numerology_configure_manager_t& cfg_nr_phy_numerology_t::_target() const
{
    return _carrier().get_numerology_manager(_index());
}

unsigned int cfg_nr_phy_numerology_t::_index() const
{
    return std::min(m_numerology_index, _carrier().get_numerology_number() - 1);
}

/// The sample rate may have moved, and with it what the mask may span.
void cfg_nr_phy_numerology_t::_refit_filter_mask()
{
    m_waveform.set_cfr_filter_mask_data_arr(m_waveform.get_cfr_filter_mask_data_arr());
}

} // namespace vek::nr_mod_lib
