#include "config/cfg_nr_dl_csirs.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_dl_csirs_t::cfg_nr_dl_csirs_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

bool cfg_nr_dl_csirs_t::get_enable() const { return _target().get_enable(); }

void cfg_nr_dl_csirs_t::init()
{
    m_carrier_index = 0;
    m_csirs_index = 0;
}

bool cfg_nr_dl_csirs_t::set_current_csirs_index(unsigned int carrier, unsigned int csirs)
{
    if (carrier >= m_waveform.get_carrier_number() || csirs >= m_waveform.get_carrier(carrier).get_dl_csirs_number())
        return false;
    m_carrier_index = carrier;
    m_csirs_index = csirs;
    return true;
}

const lib_nr_dl_csirs_configure_manager_t& cfg_nr_dl_csirs_t::_target() const
{
    return m_waveform.get_carrier(m_carrier_index).get_dl_csirs(m_csirs_index);
}

} // namespace vek::nr_mod_lib
