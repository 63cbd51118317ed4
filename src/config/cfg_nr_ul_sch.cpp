#include "config/cfg_nr_ul_sch.h"

namespace vek::nr_mod_lib
{

cfg_nr_ul_sch_t::cfg_nr_ul_sch_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_sch_t(waveform) {}

bool cfg_nr_ul_sch_t::set_current_sch_index(unsigned int carrier, unsigned int index)
{
    return _move_in_list_of<lib_nr_ul_sch_configure_manager_t>(carrier, index);
}

bool cfg_nr_ul_sch_t::set_bwp_id(unsigned int id)
{
    return _carrier().set_ul_sch_bwp_id(_place_in_list_of<lib_nr_ul_sch_configure_manager_t>(), id);
}

lib_nr_sch_configure_manager_t& cfg_nr_ul_sch_t::_get_sch_manager() const { return _get_pusch_manager(); }

cfg_nr_sch_t::bwp_t cfg_nr_ul_sch_t::_get_bwp() const
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = _carrier().get_ul_bwp(get_bwp_id());
    return {bwp.get_numerology(), bwp.get_cp_type(), bwp.get_rb_number(), bwp.get_rb_offset()};
}

lib_nr_ul_sch_configure_manager_t& cfg_nr_ul_sch_t::_get_pusch_manager() const
{
    return m_waveform.get_carrier(m_carrier_index).get_ul_sch(m_index);
}

} // namespace vek::nr_mod_lib
