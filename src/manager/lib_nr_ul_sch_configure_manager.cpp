#include "manager/lib_nr_ul_sch_configure_manager.h"

#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"

namespace vek::nr_mod_lib
{

lib_nr_ul_sch_configure_manager_t::lib_nr_ul_sch_configure_manager_t(
    const lib_nr_ul_bwp_configure_manager_t& bwp, const lib_nr_phy_numerology_configure_manager_t& numerology,
    lib_nr_channel_bw_type_t bandwidth)
{
    init(bwp, numerology, bandwidth);
}

void lib_nr_ul_sch_configure_manager_t::init(const lib_nr_ul_bwp_configure_manager_t& bwp,
                                             const lib_nr_phy_numerology_configure_manager_t& numerology,
                                             lib_nr_channel_bw_type_t bandwidth)
{
    _reset(bwp.get_bwp_id());
    update_by_ul_bwp(bwp, numerology, bandwidth);
}

void lib_nr_ul_sch_configure_manager_t::update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp,
                                                         const lib_nr_phy_numerology_configure_manager_t& numerology,
                                                         lib_nr_channel_bw_type_t bandwidth)
{
    m_numerology = bwp.get_numerology();
    m_full_bandwidth = lib_nr_phy_common_t::get_max_transmit_rb_num(m_numerology, bandwidth) == bwp.get_rb_number();
    m_rb_set_map = numerology.get_ul_guard_band().get_rb_set_info();
    _fit_resource_blocks(bwp.get_rb_number());
}

} // namespace vek::nr_mod_lib
