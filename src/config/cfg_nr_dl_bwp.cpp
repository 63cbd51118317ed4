#include "config/cfg_nr_dl_bwp.h"

namespace vek::nr_mod_lib
{

void cfg_nr_dl_bwp_t::init()
{
    cfg_nr_cursor_t::init();
    m_coreset.init();
}

bool cfg_nr_dl_bwp_t::set_current_dl_bwp_index(unsigned int carrier, unsigned int bwp)
{
    if (carrier == m_carrier_index && bwp == m_index)
        return true;
    if (!cfg_nr_list_cursor_t::set_current_index(carrier, bwp))
        return false;
    m_coreset.set_current_coreset_index(carrier, bwp, _target().get_first_coreset_index());
    return true;
}

cfg_nr_dl_coreset_t* cfg_nr_dl_bwp_t::get_coreset(unsigned int index)
{
    m_coreset.set_current_coreset_index(m_carrier_index, m_index, index);
    return &m_coreset;
}

} // namespace vek::nr_mod_lib
