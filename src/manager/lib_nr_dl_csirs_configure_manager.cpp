#include "manager/lib_nr_dl_csirs_configure_manager.h"

#include "manager/lib_nr_antenna_port_list.h"
#include "manager/lib_nr_dl_bwp_configure_manager.h"
#include "manager/lib_nr_setting.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

namespace
{

// The RBs of a CSI-RS start and count in steps of 4 (TS 38.331, CSI-FrequencyOccupation).
constexpr unsigned int k_rb_step = 4;
constexpr unsigned int k_min_rb_number = 24;

unsigned int whole_steps(unsigned int rbs) { return rbs / k_rb_step * k_rb_step; }

} // namespace

lib_nr_dl_csirs_configure_manager_t::lib_nr_dl_csirs_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_dl_csirs_configure_manager_t::init(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    m_enable = false;
    m_antenna_port = {CSIRS_ANTENNA_PORT0};
    m_bwp_id = bwp.get_bwp_id();
    m_one_frame_period = true;
    m_slot_allocation = {0, 1, 2, 3, 4};
    m_rb_offset = 0;
    m_rb_num = 272;
    m_frame_count = 1;
    update_by_dl_bwp(bwp);
}

void lib_nr_dl_csirs_configure_manager_t::update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    const unsigned int size = bwp.get_bwp_rb_size();
    const unsigned int end = bwp.get_bwp_rb_start() + size;
    m_rb_offset = whole_steps(std::min(m_rb_offset, end - std::min(end, k_rb_step)));
    m_rb_num = std::max(std::min(size, k_min_rb_number), whole_steps(std::min(m_rb_num, size)));
    m_slots_covered = lib_nr_phy_common_t::get_slot_in_frame(bwp.get_numerology());
}

bool lib_nr_dl_csirs_configure_manager_t::set_antenna_port(const std::vector<csirs_antenna_port_t>& ports,
                                                           unsigned int antennas)
{
    constexpr unsigned int k_ports_of_row_4 = 4;
    return assign(m_antenna_port, fit_antenna_ports(ports, antennas, k_ports_of_row_4));
}

bool lib_nr_dl_csirs_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

bool lib_nr_dl_csirs_configure_manager_t::set_one_frame_period(bool one_frame_period, unsigned int frames,
                                                               lib_nr_numerology_type_t numerology)
{
    m_frame_count = frames;
    m_slots_covered = lib_nr_phy_common_t::get_slot_in_frame(numerology) * (one_frame_period ? 1 : frames);
    return assign(m_one_frame_period, one_frame_period);
}

} // namespace vek::nr_mod_lib
