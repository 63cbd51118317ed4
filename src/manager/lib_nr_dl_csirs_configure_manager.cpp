#include "manager/lib_nr_dl_csirs_configure_manager.h"

#include "common/lib_common_list_parse.h"
#include "manager/lib_nr_antenna_port_list.h"
#include "manager/lib_nr_dl_bwp_configure_manager.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/tables/lib_nr_csirs_location_table.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

// The RBs of a CSI-RS start and count in steps of 4 (TS 38.331, CSI-FrequencyOccupation).
constexpr unsigned int k_rb_step = 4;
constexpr unsigned int k_min_rb_number = 24;
constexpr unsigned int k_default_l0 = 12;
constexpr unsigned int k_default_bitmap_bits = 3;
constexpr unsigned int k_lowest_l1 = 2;
constexpr unsigned int k_highest_l1 = 12;

unsigned int whole_steps(unsigned int rbs) { return rbs / k_rb_step * k_rb_step; }

} // namespace

lib_nr_dl_csirs_configure_manager_t::lib_nr_dl_csirs_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_dl_csirs_configure_manager_t::init(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    m_enable = false;
    m_power_bosting = 0.0;
    m_antenna_port = {CSIRS_ANTENNA_PORT0};
    m_csirs_port = {CSIRS_ANTENNA_NONE};
    m_csirs_port_text.assign(1, '0');
    m_nid = 1000;
    m_zero_power = false;
    m_bwp_id = bwp.get_bwp_id();
    m_one_frame_period = true;
    m_frame_count = 1;
    set_slot_allocation("0:4", bwp.get_numerology());
    m_rb_offset = 0;
    m_rb_num = 272;
    m_l0 = k_default_l0;
    m_l1 = k_lowest_l1;
    m_density_prb_allocation = EVEN_PRBS;
    m_reused_for_pdsch = false;
    set_table_idx(4);
    set_frequency_domain_bitmap("111", m_table_idx);
    update_by_dl_bwp(bwp);
}

void lib_nr_dl_csirs_configure_manager_t::update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    set_enable(m_enable, bwp.get_numerology());
    set_rb_offset(m_rb_offset, bwp.get_bwp_rb_start(), bwp.get_bwp_rb_size());
    set_rb_num(m_rb_num, bwp.get_bwp_rb_size());
}

void lib_nr_dl_csirs_configure_manager_t::update_antenna_port_by_idx()
{
    for (csirs_antenna_port_t& port : m_antenna_port)
        if (port > m_port_number)
            port = CSIRS_ANTENNA_PORT0;
}

bool lib_nr_dl_csirs_configure_manager_t::set_enable(bool enable, lib_nr_numerology_type_t bwp_numerology)
{
    return assign(m_enable, enable && lib_nr_phy_common_t::carries_channels(bwp_numerology));
}

bool lib_nr_dl_csirs_configure_manager_t::set_power_bosting(double power)
{
    return assign_power(m_power_bosting, power);
}

bool lib_nr_dl_csirs_configure_manager_t::set_csirs_port(const std::string& text)
{
    std::vector<unsigned int> indices;
    std::string stored_text;
    if (!common_lib::lib_common_list_parse_t::string_to_index_list_in_range(text, indices, stored_text, 0,
                                                                            static_cast<int>(m_port_number)))
        return false;
    m_csirs_port.clear();
    for (const unsigned int index : indices)
        m_csirs_port.push_back(static_cast<csirs_antenna_port_t>(index));
    return assign(m_csirs_port_text, stored_text);
}

bool lib_nr_dl_csirs_configure_manager_t::set_antenna_port(const std::vector<csirs_antenna_port_t>& ports,
                                                           unsigned int antennas)
{
    return assign(m_antenna_port, fit_antenna_ports(ports, antennas, m_port_number));
}

std::vector<unsigned int> lib_nr_dl_csirs_configure_manager_t::get_available_port_number() const
{
    std::vector<unsigned int> ports;
    for (unsigned int port = 0; port <= m_port_number; ++port)
        ports.push_back(port);
    return ports;
}

bool lib_nr_dl_csirs_configure_manager_t::set_nid(unsigned int nid) { return assign(m_nid, std::min(nid, 65535U)); }

bool lib_nr_dl_csirs_configure_manager_t::set_zero_power(bool zero_power) { return assign(m_zero_power, zero_power); }

bool lib_nr_dl_csirs_configure_manager_t::set_csirs_type(csirs_cdm_type_t type) { return assign(m_csirs_type, type); }

bool lib_nr_dl_csirs_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

bool lib_nr_dl_csirs_configure_manager_t::set_one_frame_period(bool one_frame_period, unsigned int frames,
                                                               lib_nr_numerology_type_t numerology)
{
    const bool changed = assign(m_one_frame_period, one_frame_period);
    m_frame_count = frames;
    set_slot_allocation(slot_text_of_new_span(m_slot_allocation, m_slot_allocation_text,
                                              lib_nr_phy_common_t::get_slot_in_frame(numerology)),
                        numerology);
    return changed;
}

bool lib_nr_dl_csirs_configure_manager_t::set_slot_allocation(const std::string& text,
                                                              lib_nr_numerology_type_t numerology)
{
    const unsigned int slots =
        lib_nr_phy_common_t::get_slot_in_frame(numerology) * (m_one_frame_period ? 1 : m_frame_count);
    return assign_index_text(m_slot_allocation, m_slot_allocation_text, text, slots);
}

bool lib_nr_dl_csirs_configure_manager_t::set_rb_offset(unsigned int rb_offset, unsigned int bwp_rb_start,
                                                        unsigned int bwp_rb_size)
{
    const unsigned int end = bwp_rb_start + bwp_rb_size;
    return assign(m_rb_offset, whole_steps(std::min(rb_offset, end - std::min(end, k_rb_step))));
}

bool lib_nr_dl_csirs_configure_manager_t::set_rb_num(unsigned int rb_num, unsigned int bwp_rb_size)
{
    const unsigned int whole = whole_steps(std::min(std::max(rb_num, k_rb_step), bwp_rb_size));
    return assign(m_rb_num, std::max(std::min(bwp_rb_size, k_min_rb_number), whole));
}

bool lib_nr_dl_csirs_configure_manager_t::set_table_idx(unsigned int table_idx)
{
    const bool changed = assign(m_table_idx, std::clamp(table_idx, 1U, 18U));
    const lib_nr_csirs_location_row_t& row = *get_csirs_location_row(m_table_idx);
    m_port_number = row.ports;
    set_csirs_type(row.cdm_type);
    m_densities.assign(row.densities.begin(), row.densities.begin() + (row.densities[1] == 0.0 ? 1 : 2));
    set_density(m_densities.front());
    update_antenna_port_by_idx();
    set_frequency_domain_bitmap(std::string(m_bitmap_text), m_table_idx);
    set_l0(m_l0);
    set_l1(m_l1);
    return changed;
}

// The symbols of l' lie in the slot.
bool lib_nr_dl_csirs_configure_manager_t::set_l0(unsigned int l0)
{
    const lib_nr_csirs_location_row_t* row = get_csirs_location_row(m_table_idx);
    if (row == nullptr) {
        std::cout << "error: table_index exceed the max limit." << std::endl;
        return assign(m_l0, k_default_l0);
    }
    return assign(m_l0,
                  std::min(l0, lib_nr_phy_common_t::get_symbol_number_in_slot(LIB_NR_NORMAL_CP) - row->l_prime_number));
}

bool lib_nr_dl_csirs_configure_manager_t::set_l1(unsigned int l1)
{
    const bool is_used = get_csirs_location_row(m_table_idx)->has_l1();
    return assign(m_l1, is_used ? std::clamp(l1, k_lowest_l1, k_highest_l1) : k_lowest_l1);
}

bool lib_nr_dl_csirs_configure_manager_t::set_frequency_domain_bitmap(const std::string& text, unsigned int table_idx)
{
    const lib_nr_csirs_location_row_t* row = get_csirs_location_row(table_idx);
    if (row == nullptr) {
        std::cout << "lib_nr_dl_csirs_configure_manager_t::set_frequency_domain_bitmap: table_index exceed the max "
                     "limit.\n"
                  << std::endl;
        return false;
    }
    std::vector<unsigned char> bits;
    if (!common_lib::lib_common_list_parse_t::string_to_bit_list(text, bits))
        return false;
    bits.resize(row->bitmap_bits, 0);
    if (std::count(bits.begin(), bits.end(), 1) < static_cast<std::ptrdiff_t>(row->bitmap_ones()))
        std::fill(bits.end() - static_cast<std::ptrdiff_t>(row->bitmap_ones()), bits.end(),
                  static_cast<unsigned char>(1));
    m_bitmap_text = common_lib::lib_common_list_parse_t::bit_list_to_string(bits);
    return assign(m_bitmap, std::vector<int>(bits.begin(), bits.end()));
}

unsigned int lib_nr_dl_csirs_configure_manager_t::get_available_csirs_bitmap() const
{
    const lib_nr_csirs_location_row_t* row = get_csirs_location_row(m_table_idx);
    if (row == nullptr) {
        std::cout << "get_available_csirs_bitmap occur error: table_idx exceed the max limit." << std::endl;
        return k_default_bitmap_bits;
    }
    return row->bitmap_bits;
}

bool lib_nr_dl_csirs_configure_manager_t::set_density(double density)
{
    if (m_densities.size() == 1) {
        m_density_prb_allocations.clear();
        return assign(m_density, m_densities.front());
    }
    m_density_prb_allocations = {EVEN_PRBS, ODD_PRBS};
    return assign(m_density, density);
}

bool lib_nr_dl_csirs_configure_manager_t::set_density_prb_allocation(density_prb_allocation_t allocation)
{
    return m_density == 0.5 && assign(m_density_prb_allocation, allocation);
}

bool lib_nr_dl_csirs_configure_manager_t::set_reused_for_pdsch(bool reused)
{
    return assign(m_reused_for_pdsch, reused);
}

} // namespace vek::nr_mod_lib
