#include "config/cfg_nr_dl_sch.h"

namespace vek::nr_mod_lib
{

cfg_nr_dl_sch_t::cfg_nr_dl_sch_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_sch_t(waveform) {}

bool cfg_nr_dl_sch_t::set_current_sch_index(unsigned int carrier, unsigned int index)
{
    return _move_in_list_of<lib_nr_dl_sch_configure_manager_t>(carrier, index);
}

bool cfg_nr_dl_sch_t::set_bwp_id(unsigned int id)
{
    return _carrier().set_dl_sch_bwp_id(_place_in_list_of<lib_nr_dl_sch_configure_manager_t>(), id);
}

lib_nr_sch_configure_manager_t& cfg_nr_dl_sch_t::_get_sch_manager() const { return _get_pdsch_manager(); }

cfg_nr_sch_t::bwp_t cfg_nr_dl_sch_t::_get_bwp() const
{
    const lib_nr_dl_bwp_configure_manager_t& bwp = _carrier().get_dl_bwp(get_bwp_id());
    return {bwp.get_numerology(), bwp.get_cp_type(), bwp.get_bwp_rb_size(), bwp.get_bwp_rb_start()};
}

lib_nr_dl_sch_configure_manager_t& cfg_nr_dl_sch_t::_get_pdsch_manager() const
{
    return m_waveform.get_carrier(m_carrier_index).get_dl_sch(m_index);
}

} // namespace vek::nr_mod_lib
