#include "config/cfg_nr_prach.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_prach_t::cfg_nr_prach_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

bool cfg_nr_prach_t::get_enable() const { return _get_prach_manager().get_enable(); }

void cfg_nr_prach_t::init()
{
    m_carrier_index = 0;
    m_prach_index = 0;
}

bool cfg_nr_prach_t::set_current_prach_index(unsigned int carrier, unsigned int prach)
{
    if (carrier >= m_waveform.get_carrier_number() || prach >= m_waveform.get_carrier(carrier).get_ul_prach_number())
        return false;
    m_carrier_index = carrier;
    m_prach_index = prach;
    return true;
}

const lib_nr_ul_prach_configure_manager_t& cfg_nr_prach_t::_get_prach_manager() const
{
    return m_waveform.get_carrier(m_carrier_index).get_ul_prach(m_prach_index);
}

} // namespace vek::nr_mod_lib
