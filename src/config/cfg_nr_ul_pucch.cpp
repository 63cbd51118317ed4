#include "config/cfg_nr_ul_pucch.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_ul_pucch_t::cfg_nr_ul_pucch_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

bool cfg_nr_ul_pucch_t::get_enable() const { return _get_pucch_manager().get_enable(); }

void cfg_nr_ul_pucch_t::init()
{
    m_carrier_index = 0;
    m_pucch_index = 0;
}

bool cfg_nr_ul_pucch_t::set_current_pucch_index(unsigned int carrier, unsigned int pucch)
{
    if (carrier >= m_waveform.get_carrier_number() || pucch >= m_waveform.get_carrier(carrier).get_ul_pucch_number())
        return false;
    m_carrier_index = carrier;
    m_pucch_index = pucch;
    return true;
}

const lib_nr_ul_pucch_configure_manager_t& cfg_nr_ul_pucch_t::_get_pucch_manager() const
{
    return m_waveform.get_carrier(m_carrier_index).get_ul_pucch(m_pucch_index);
}

} // namespace vek::nr_mod_lib
