#include "manager/lib_nr_ul_srs_configure_manager.h"

#include "manager/lib_nr_antenna_port_list.h"
#include "manager/lib_nr_setting.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"

namespace vek::nr_mod_lib
{

lib_nr_ul_srs_configure_manager_t::lib_nr_ul_srs_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_ul_srs_configure_manager_t::init(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    m_enable = false;
    m_antenna_port = {SRS_ANTENNA_PORT0};
    m_periodicity = LIB_NR_SRS_0MS_PERIODICITY;
    m_t_offset = 0;
    m_slot_allocation = {0};
    m_bwp_id = bwp.get_bwp_id();
    update_by_ul_bwp(bwp);
}

void lib_nr_ul_srs_configure_manager_t::update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    m_bwp_numerology = bwp.get_numerology();
}

bool lib_nr_ul_srs_configure_manager_t::set_antenna_port(const std::vector<srs_antenna_port_t>& ports,
                                                         unsigned int antennas)
{
    constexpr unsigned int k_offered = 1; // an SRS of one port
    return assign(m_antenna_port, fit_antenna_ports(ports, antennas, k_offered));
}

bool lib_nr_ul_srs_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

} // namespace vek::nr_mod_lib
