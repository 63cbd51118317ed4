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
    *this = lib_nr_ul_sch_configure_manager_t();
    m_bwp_id = bwp.get_bwp_id();
    update_by_ul_bwp(bwp, numerology, bandwidth);
}

void lib_nr_ul_sch_configure_manager_t::update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp,
                                                         const lib_nr_phy_numerology_configure_manager_t& numerology,
                                                         lib_nr_channel_bw_type_t bandwidth)
{
    m_numerology = bwp.get_numerology();
    m_full_bandwidth = lib_nr_phy_common_t::get_max_transmit_rb_num(m_numerology, bandwidth) == bwp.get_rb_number();
    m_rb_set_map = numerology.get_ul_guard_band().get_rb_set_info();
    set_slot_allocation(get_slot_allocation(), m_numerology);
    set_rb_offset(get_rb_offset(), bwp.get_rb_number());
}

bool lib_nr_ul_sch_configure_manager_t::set_first_symbol(unsigned int /*symbol*/,
                                                         lib_nr_cyclic_prefix_type_t /*cp_type*/)
{
    return false;
}

bool lib_nr_ul_sch_configure_manager_t::set_symbol_num(unsigned int /*number*/, lib_nr_cyclic_prefix_type_t /*cp_type*/)
{
    return false;
}

std::vector<lib_nr_sch_ra_type_t> lib_nr_ul_sch_configure_manager_t::get_ra_type_list() const
{
    return {LIB_NR_SCH_RA_TYPE0, LIB_NR_SCH_RA_TYPE1, LIB_NR_SCH_RA_TYPE2};
}

std::vector<mcs_table_t> lib_nr_ul_sch_configure_manager_t::get_mcs_table_list() const
{
    return {TABLE_5_1_3_1_1, TABLE_5_1_3_1_2, TABLE_5_1_3_1_3};
}

} // namespace vek::nr_mod_lib
