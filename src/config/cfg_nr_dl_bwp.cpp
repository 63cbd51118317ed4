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

bool cfg_nr_dl_bwp_t::set_bwp_rb_size(unsigned int rb_size) { return _carrier().set_dl_bwp_rb_size(_index(), rb_size); }

bool cfg_nr_dl_bwp_t::set_bwp_rb_start(unsigned int rb_start)
{
    return _carrier().set_dl_bwp_rb_start(_index(), rb_start);
}

bool cfg_nr_dl_bwp_t::set_scs(lib_nr_numerology_type_t scs)
{
    const bool changed = _carrier().set_dl_bwp_numerology(_index(), scs);
    m_waveform.refit_cfr_filter_mask();
    return changed;
}

bool cfg_nr_dl_bwp_t::set_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    return _carrier().set_all_dl_bwps_cp_type(cp_type);
}

} // namespace vek::nr_mod_lib
