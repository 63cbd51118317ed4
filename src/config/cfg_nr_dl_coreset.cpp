#include "config/cfg_nr_dl_coreset.h"

namespace vek::nr_mod_lib
{

void cfg_nr_dl_coreset_t::init()
{
    cfg_nr_cursor_t::init();
    m_coreset_index = 0;
}

bool cfg_nr_dl_coreset_t::set_current_coreset_index(unsigned int carrier, unsigned int bwp, unsigned int coreset)
{
    if (carrier >= m_waveform.get_carrier_number() || bwp >= m_waveform.get_carrier(carrier).get_dl_bwp_number() ||
        !m_waveform.get_carrier(carrier).get_dl_bwp(bwp).check_coreset_index_valid(coreset))
        return false;
    m_carrier_index = carrier;
    m_index = bwp;
    m_coreset_index = coreset;
    return true;
}

bool cfg_nr_dl_coreset_t::set_duration(unsigned int duration)
{
    return _carrier().set_dl_coreset_duration(_place_in_list_of<lib_nr_dl_bwp_configure_manager_t>(), m_coreset_index,
                                              duration);
}

std::vector<int> cfg_nr_dl_coreset_t::get_available_coreset_bitmap() const
{
    return std::vector<int>(_bwp().get_bwp_rb_size() / 6, 1);
}

} // namespace vek::nr_mod_lib
