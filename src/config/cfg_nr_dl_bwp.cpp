#include "config/cfg_nr_dl_bwp.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_dl_bwp_t::cfg_nr_dl_bwp_t(lib_nr_waveform_configure_manager_t& waveform)
    : m_waveform(waveform), m_coreset(waveform)
{
    init();
}

void cfg_nr_dl_bwp_t::init()
{
    m_carrier_index = 0;
    m_bwp_index = 0;
    m_coreset.init();
}

bool cfg_nr_dl_bwp_t::set_current_dl_bwp_index(unsigned int carrier, unsigned int bwp)
{
    if (carrier == m_carrier_index && bwp == m_bwp_index)
        return true;
    if (carrier >= m_waveform.get_carrier_number() || bwp >= m_waveform.get_carrier(carrier).get_dl_bwp_number())
        return false;
    m_carrier_index = carrier;
    m_bwp_index = bwp;
    m_coreset.set_current_coreset_index(carrier, bwp, _target().get_first_coreset_index());
    return true;
}

cfg_nr_dl_coreset_t* cfg_nr_dl_bwp_t::get_coreset(unsigned int index)
{
    m_coreset.set_current_coreset_index(m_carrier_index, m_bwp_index, index);
    return &m_coreset;
}

const lib_nr_dl_bwp_configure_manager_t& cfg_nr_dl_bwp_t::_target() const
{
    return m_waveform.get_carrier(m_carrier_index).get_dl_bwp(m_bwp_index);
}

} // namespace vek::nr_mod_lib
