#include "manager/lib_nr_sch_configure_manager.h"

#include "manager/lib_nr_antenna_port_list.h"
#include "manager/lib_nr_setting.h"

#include <algorithm>
#include <numeric>

namespace vek::nr_mod_lib
{

bool lib_nr_sch_configure_manager_t::set_antenna_port(const std::vector<lib_nr_antenna_port_t>& ports,
                                                      unsigned int antennas)
{
    constexpr unsigned int k_offered = 1; // one DMRS port, one antenna port
    return assign(m_antenna_port, fit_antenna_ports(ports, antennas, k_offered));
}

bool lib_nr_sch_configure_manager_t::set_one_frame_period(bool one_frame_period, unsigned int frames,
                                                          lib_nr_numerology_type_t /*numerology*/)
{
    m_frame_count = frames;
    return assign(m_one_frame_period, one_frame_period);
}

bool lib_nr_sch_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

void lib_nr_sch_configure_manager_t::_reset(unsigned int bwp_id)
{
    constexpr unsigned int k_slots = 20;
    m_enable = false;
    m_rnti = 1;
    m_antenna_port = {LIB_NR_ANTENNA_PORT_0};
    m_one_frame_period = true;
    m_slot_allocation.resize(k_slots);
    std::iota(m_slot_allocation.begin(), m_slot_allocation.end(), 0U);
    m_bwp_id = bwp_id;
    m_rb_offset = 0;
    m_rb_num = 273;
    m_frame_count = 1;
}

void lib_nr_sch_configure_manager_t::_fit_resource_blocks(unsigned int bwp_rb_size)
{
    const unsigned int size = std::max(bwp_rb_size, 1U);
    m_rb_offset = std::min(m_rb_offset, size - 1);
    m_rb_num = std::clamp(m_rb_num, 1U, size - m_rb_offset);
}

} // namespace vek::nr_mod_lib
