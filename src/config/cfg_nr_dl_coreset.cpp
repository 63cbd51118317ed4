#include "config/cfg_nr_dl_coreset.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_dl_coreset_t::cfg_nr_dl_coreset_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform)
{
    init();
}

void cfg_nr_dl_coreset_t::init()
{
    m_carrier_index = 0;
    m_bwp_index = 0;
    m_coreset_index = 0;
}

bool cfg_nr_dl_coreset_t::set_current_coreset_index(unsigned int carrier, unsigned int bwp, unsigned int coreset)
{
    if (carrier >= m_waveform.get_carrier_number() || bwp >= m_waveform.get_carrier(carrier).get_dl_bwp_number() ||
        !m_waveform.get_carrier(carrier).get_dl_bwp(bwp).check_coreset_index_valid(coreset))
        return false;
    m_carrier_index = carrier;
    m_bwp_index = bwp;
    m_coreset_index = coreset;
    return true;
}

const lib_nr_dl_coreset_configure_manager_t& cfg_nr_dl_coreset_t::_target() const
{
    return m_waveform.get_carrier(m_carrier_index).get_dl_bwp(m_bwp_index).get_coreset(m_coreset_index);
}

} // namespace vek::nr_mod_lib
