#include "config/cfg_nr_ul_srs.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_ul_srs_t::cfg_nr_ul_srs_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

bool cfg_nr_ul_srs_t::get_enable() const { return _target().get_enable(); }

void cfg_nr_ul_srs_t::init()
{
    m_carrier_index = 0;
    m_srs_index = 0;
}

bool cfg_nr_ul_srs_t::set_current_srs_index(unsigned int carrier, unsigned int srs)
{
    if (carrier >= m_waveform.get_carrier_number() || srs >= m_waveform.get_carrier(carrier).get_ul_srs_number())
        return false;
    m_carrier_index = carrier;
    m_srs_index = srs;
    return true;
}

const lib_nr_ul_srs_configure_manager_t& cfg_nr_ul_srs_t::_target() const
{
    return m_waveform.get_carrier(m_carrier_index).get_ul_srs(m_srs_index);
}

} // namespace vek::nr_mod_lib
