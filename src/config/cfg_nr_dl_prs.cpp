#include "config/cfg_nr_dl_prs.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_dl_prs_t::cfg_nr_dl_prs_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

bool cfg_nr_dl_prs_t::get_enable() const { return _target().get_enable(); }

void cfg_nr_dl_prs_t::init()
{
    m_carrier_index = 0;
    m_prs_index = 0;
}

bool cfg_nr_dl_prs_t::set_current_prs_index(unsigned int carrier, unsigned int prs)
{
    if (carrier >= m_waveform.get_carrier_number() || prs >= m_waveform.get_carrier(carrier).get_dl_prs_number())
        return false;
    m_carrier_index = carrier;
    m_prs_index = prs;
    return true;
}

const lib_nr_dl_prs_configure_manager_t& cfg_nr_dl_prs_t::_target() const
{
    return m_waveform.get_carrier(m_carrier_index).get_dl_prs(m_prs_index);
}

} // namespace vek::nr_mod_lib
