#include "config/cfg_nr_dl_dci.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_dl_dci_t::cfg_nr_dl_dci_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) { init(); }

bool cfg_nr_dl_dci_t::get_enable() const { return _target().get_enable(); }

void cfg_nr_dl_dci_t::init()
{
    m_carrier_index = 0;
    m_dci_index = 0;
}

bool cfg_nr_dl_dci_t::set_current_dci_index(unsigned int carrier, unsigned int dci)
{
    if (carrier >= m_waveform.get_carrier_number() || dci >= m_waveform.get_carrier(carrier).get_dl_dci_number())
        return false;
    m_carrier_index = carrier;
    m_dci_index = dci;
    return true;
}

const lib_nr_dl_dci_configure_manager_t& cfg_nr_dl_dci_t::_target() const
{
    return m_waveform.get_carrier(m_carrier_index).get_dl_dci(m_dci_index);
}

} // namespace vek::nr_mod_lib
