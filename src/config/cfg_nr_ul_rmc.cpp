#include "config/cfg_nr_ul_rmc.h"

#include "manager/lib_nr_waveform_configure_manager.h"

#include <iostream>

namespace vek::nr_mod_lib
{

cfg_nr_ul_rmc_t::cfg_nr_ul_rmc_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

bool cfg_nr_ul_rmc_t::get_enable() const { return _get_nr_ul_rmc_manager().get_enable(); }

void cfg_nr_ul_rmc_t::init() { set_current_carrier_index(0); }

bool cfg_nr_ul_rmc_t::set_current_carrier_index(unsigned int carrier)
{
    if (carrier >= m_waveform.get_carrier_number()) {
        std::cout << "cfg_nr_ul_rmc_t::set_current_carrier_index Report : Carrier index out of range!" << std::endl;
        return false;
    }
    m_carrier_index = carrier;
    return true;
}

const lib_nr_ul_rmc_configure_manager_t& cfg_nr_ul_rmc_t::_get_nr_ul_rmc_manager() const
{
    return m_waveform.get_carrier(m_carrier_index).get_ul_rmc();
}

} // namespace vek::nr_mod_lib
