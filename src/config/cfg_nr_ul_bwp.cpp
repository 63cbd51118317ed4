#include "config/cfg_nr_ul_bwp.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_ul_bwp_t::cfg_nr_ul_bwp_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

void cfg_nr_ul_bwp_t::init()
{
    m_carrier_index = 0;
    m_bwp_index = 0;
}

bool cfg_nr_ul_bwp_t::set_current_bwp_index(unsigned int carrier, unsigned int bwp)
{
    if (carrier >= m_waveform.get_carrier_number() || bwp >= m_waveform.get_carrier(carrier).get_ul_bwp_number())
        return false;
    m_carrier_index = carrier;
    m_bwp_index = bwp;
    return true;
}

const lib_nr_ul_bwp_configure_manager_t& cfg_nr_ul_bwp_t::_get_bwp_manager() const
{
    return m_waveform.get_carrier(m_carrier_index).get_ul_bwp(m_bwp_index);
}

} // namespace vek::nr_mod_lib
