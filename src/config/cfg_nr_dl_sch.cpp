#include "config/cfg_nr_dl_sch.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_dl_sch_t::cfg_nr_dl_sch_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_sch_t(waveform) { init(); }

bool cfg_nr_dl_sch_t::set_current_sch_index(unsigned int carrier, unsigned int index)
{
    if (carrier >= m_waveform.get_carrier_number() || index >= m_waveform.get_carrier(carrier).get_dl_sch_number())
        return false;
    m_carrier_index = carrier;
    m_sch_index = index;
    return true;
}

lib_nr_sch_configure_manager_t& cfg_nr_dl_sch_t::_get_sch_manager() const { return _get_pdsch_manager(); }

lib_nr_dl_sch_configure_manager_t& cfg_nr_dl_sch_t::_get_pdsch_manager() const
{
    return m_waveform.get_carrier(m_carrier_index).get_dl_sch(m_sch_index);
}

} // namespace vek::nr_mod_lib
