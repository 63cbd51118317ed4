#include "manager/lib_nr_ul_prach_configure_manager.h"

#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"

namespace vek::nr_mod_lib
{

lib_nr_ul_prach_configure_manager_t::lib_nr_ul_prach_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_ul_prach_configure_manager_t::init(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    *this = lib_nr_ul_prach_configure_manager_t();
    update_by_ul_bwp(bwp);
}

void lib_nr_ul_prach_configure_manager_t::update_by_bandwidth(
    const lib_nr_phy_numerology_configure_manager_t& numerology, lib_nr_channel_bw_type_t bandwidth)
{
    m_enable = m_enable && numerology.get_numerolgy() != LIB_NR_SCS_240K;
    const bool fr1 = lib_nr_phy_common_t::get_freq_range_type(bandwidth) == NR_FR1;
    m_configuration_table = fr1 ? FR1_FDD_SUL : FR2_TDD;
    m_lra = fr1 ? PRACH_LRA_839 : PRACH_LRA_139;
    m_prach_scs = fr1 ? PRACH_SCS_1P25K : PRACH_SCS_60K;
}

void lib_nr_ul_prach_configure_manager_t::update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    m_enable = m_enable && bwp.get_numerology() != LIB_NR_SCS_240K;
    m_rb_offset = bwp.get_rb_offset();
    m_rb_num = bwp.get_rb_number();
}

} // namespace vek::nr_mod_lib
