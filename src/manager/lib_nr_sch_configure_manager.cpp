#include "manager/lib_nr_sch_configure_manager.h"

#include "common/lib_common_list_parse.h"
#include "manager/lib_nr_antenna_port_list.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_mcs.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <array>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_max_l0 = 3;
constexpr unsigned int k_min_l0 = 2;

} // namespace

// When and for whom

bool lib_nr_sch_configure_manager_t::set_enable(bool enable, lib_nr_numerology_type_t numerology)
{
    return assign(m_enable, enable && lib_nr_phy_common_t::carries_channels(numerology));
}

bool lib_nr_sch_configure_manager_t::set_power_boosting(double power) { return assign_power(m_power_boosting, power); }

bool lib_nr_sch_configure_manager_t::set_rnti(unsigned int rnti) { return assign(m_rnti, std::min(rnti, 65535U)); }

bool lib_nr_sch_configure_manager_t::set_nid(int nid) { return assign(m_nid, std::clamp(nid, -1, 1023)); }

bool lib_nr_sch_configure_manager_t::set_one_frame_period(bool one_frame_period, unsigned int frames,
                                                          lib_nr_numerology_type_t numerology)
{
    const bool changed = assign(m_one_frame_period, one_frame_period);
    m_frame_count = frames;
    set_slot_allocation(slot_text_of_new_span(m_slot_allocation, m_slot_allocation_text,
                                              lib_nr_phy_common_t::get_slot_in_frame(numerology)),
                        numerology);
    return changed;
}

bool lib_nr_sch_configure_manager_t::set_slot_allocation(const std::string& text, lib_nr_numerology_type_t numerology)
{
    const unsigned int frames = m_one_frame_period ? 1 : m_frame_count;
    return assign_index_text(m_slot_allocation, m_slot_allocation_text, text,
                             lib_nr_phy_common_t::get_slot_in_frame(numerology) * frames);
}

unsigned int lib_nr_sch_configure_manager_t::_symbols_left(lib_nr_cyclic_prefix_type_t cp_type) const
{
    const unsigned int symbols = lib_nr_phy_common_t::get_symbol_number_in_slot(cp_type);
    return symbols - std::min(m_first_symbol, symbols);
}

// Antennas

bool lib_nr_sch_configure_manager_t::set_dmrs_port(const std::string& text)
{
    return _set_dmrs_ports(text, k_max_layers);
}

bool lib_nr_sch_configure_manager_t::_set_dmrs_ports(const std::string& text, std::size_t most)
{
    // TS 38.211 Tables 7.4.1.1.2-1 and -2: ports 1000 on.
    const int last_port = (_is_configuration_type_1() ? 4 : 6) * (_is_double_symbol() ? 2 : 1) - 1;
    std::vector<unsigned int> ports;
    std::string read_text;
    if (!common_lib::lib_common_list_parse_t::string_to_index_list_in_range(text, ports, read_text, 0, last_port))
        ports = {0};
    ports.resize(std::min(ports.size(), most));
    const bool changed = assign(m_dmrs_port, ports);
    m_dmrs_port_text = common_lib::lib_common_list_parse_t::index_list_to_string(ports);
    set_antenna_port(m_antenna_port, static_cast<unsigned int>(m_antenna_port.size()));
    set_cdm_groups_without_data_num(m_cdm_groups_without_data_num);
    set_enable_ptrs(m_enable_ptrs);
    return changed;
}

bool lib_nr_sch_configure_manager_t::set_antenna_port(const std::vector<lib_nr_antenna_port_t>& ports,
                                                      unsigned int antennas)
{
    m_antenna_count = antennas;
    const auto offered = static_cast<unsigned int>(get_antenna_port_list().size()) - 1;
    return assign(m_antenna_port, fit_antenna_ports(ports, antennas, offered));
}

std::vector<lib_nr_antenna_port_t> lib_nr_sch_configure_manager_t::get_antenna_port_list() const
{
    unsigned int number = get_antenna_port_number();
    if (number < 1 || number > 4) {
        std::cout << "lib_nr_sch_configure_manager_t::get_antenna_port_list : Error not support antenna port number!"
                  << std::endl;
        number = 4;
    }
    std::vector<lib_nr_antenna_port_t> list = {LIB_NR_ANTENNA_PORT_NONE, LIB_NR_ANTENNA_PORT_0, LIB_NR_ANTENNA_PORT_1,
                                               LIB_NR_ANTENNA_PORT_2, LIB_NR_ANTENNA_PORT_3};
    list.resize(1 + number);
    return list;
}

lib_nr_antenna_port_number_t lib_nr_sch_configure_manager_t::get_antenna_port_number() const
{
    const unsigned int layers = get_layers_num();
    if (layers < 1 || layers > k_max_layers) {
        std::cout << "lib_nr_sch_configure_manager_t::get_antenna_port_number : Error antenna port number!"
                  << std::endl;
        return LIB_NR_ANTENNA_PORT_NUMBER_4;
    }
    return static_cast<lib_nr_antenna_port_number_t>(layers);
}

// Resource blocks

bool lib_nr_sch_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

bool lib_nr_sch_configure_manager_t::set_ra_type(lib_nr_sch_ra_type_t type)
{
    return assign(m_ra_type, type == LIB_NR_SCH_RA_TYPE0 ? LIB_NR_SCH_RA_TYPE0 : LIB_NR_SCH_RA_TYPE1);
}

bool lib_nr_sch_configure_manager_t::set_rbg_size(lib_nr_sch_rbg_size_t size, unsigned int bwp_rb_size,
                                                  unsigned int bwp_rb_start)
{
    const bool changed = assign(m_rbg_size, offered_or_first(size, get_rbg_size_list(bwp_rb_size)));
    set_rbg_bitmap(m_rbg_bitmap_text, bwp_rb_size, bwp_rb_start);
    return changed;
}

// TS 38.214 Table 5.1.2.2.1-1, both configurations.
std::vector<lib_nr_sch_rbg_size_t> lib_nr_sch_configure_manager_t::get_rbg_size_list(unsigned int bwp_rb_size) const
{
    if (bwp_rb_size == 0 || bwp_rb_size > 275)
        return {LIB_NR_SCH_RBG_SIZE_2};
    if (bwp_rb_size <= 36)
        return {LIB_NR_SCH_RBG_SIZE_2, LIB_NR_SCH_RBG_SIZE_4};
    if (bwp_rb_size <= 72)
        return {LIB_NR_SCH_RBG_SIZE_4, LIB_NR_SCH_RBG_SIZE_8};
    if (bwp_rb_size <= 144)
        return {LIB_NR_SCH_RBG_SIZE_8, LIB_NR_SCH_RBG_SIZE_16};
    return {LIB_NR_SCH_RBG_SIZE_16};
}

bool lib_nr_sch_configure_manager_t::set_rbg_bitmap(const std::string& text, unsigned int bwp_rb_size,
                                                    unsigned int bwp_rb_start)
{
    return assign_bit_text(m_rbg_bitmap, m_rbg_bitmap_text, text, get_rbg_bitmap_number(bwp_rb_size, bwp_rb_start));
}

unsigned int lib_nr_sch_configure_manager_t::get_rbg_bitmap_number(unsigned int bwp_rb_size,
                                                                   unsigned int bwp_rb_start) const
{
    if (m_rbg_size > LIB_NR_SCH_RBG_SIZE_16)
        std::cout << "lib_nr_sch_configure_manager_t::set_rbg_bitmap : Error! not support RBG size" << std::endl;
    const unsigned int size = number_of(m_rbg_size);
    return (bwp_rb_size + bwp_rb_start % size + size - 1) / size;
}

bool lib_nr_sch_configure_manager_t::set_rb_offset(unsigned int rb_offset, unsigned int bwp_rb_size)
{
    const bool changed = assign(m_rb_offset, std::min(rb_offset, std::max(bwp_rb_size, 1U) - 1));
    set_rb_num(m_rb_num, bwp_rb_size);
    return changed;
}

bool lib_nr_sch_configure_manager_t::set_rb_num(unsigned int rb_num, unsigned int bwp_rb_size)
{
    const unsigned int room = bwp_rb_size > m_rb_offset ? bwp_rb_size - m_rb_offset : 1;
    return assign(m_rb_num, std::clamp(rb_num, 1U, room));
}

// Coding

bool lib_nr_sch_configure_manager_t::set_enable_coding(bool enable) { return assign(m_enable_coding, enable); }

bool lib_nr_sch_configure_manager_t::set_mcs_table(mcs_table_t table)
{
    const bool changed = assign(m_mcs_table, offered_or_first(table, get_mcs_table_list()));
    set_mcs(m_mcs);
    return changed;
}

bool lib_nr_sch_configure_manager_t::set_mcs(unsigned int mcs)
{
    return assign(m_mcs, std::min(mcs, get_last_mcs(m_mcs_table)));
}

double lib_nr_sch_configure_manager_t::get_target_code_rate() const
{
    mcs_table_t table = m_mcs_table;
    if (table > TABLE_5_1_3_1_4) {
        std::cout << "lib_nr_sch_configure_manager_t::get_target_code_rate : Error MCS table!" << std::endl;
        table = TABLE_5_1_3_1_1;
    }
    return read_mcs(table, m_mcs).code_rate;
}

lib_nr_modulation_type_t lib_nr_sch_configure_manager_t::get_modulation() const
{
    if (m_mcs_table > TABLE_6_1_4_1_2)
        std::cout << "lib_nr_sch_configure_manager_t::get_modulation : Error MCS table!" << std::endl;
    const lib_nr_mcs_t mcs = read_mcs(m_mcs_table, m_mcs);
    if (!mcs.is_open && !mcs.is_reserved)
        return mcs.modulation;
    std::cout << "lib_nr_sch_configure_manager_t::get_modulation : Error modulation!" << std::endl;
    return LIB_NR_MODULATION_QPSK;
}

bool lib_nr_sch_configure_manager_t::set_x_overhead(lib_nr_sch_x_overhead_t overhead)
{
    return assign(m_x_overhead, overhead);
}

bool lib_nr_sch_configure_manager_t::set_data_source(lib_nr_pn_seq_t source) { return assign(m_data_source, source); }

bool lib_nr_sch_configure_manager_t::set_data_source_custom(const std::string& text)
{
    return assign_bit_text(m_data_source_custom, m_data_source_custom_text, text);
}

bool lib_nr_sch_configure_manager_t::set_rv(unsigned int rv) { return assign(m_rv, std::min(rv, 3U)); }

// DMRS

bool lib_nr_sch_configure_manager_t::set_enable_dmrs_downlink_r16(bool enable)
{
    return assign(m_enable_dmrs_downlink_r16, enable);
}

bool lib_nr_sch_configure_manager_t::set_nscid(unsigned int nscid) { return assign(m_nscid, std::min(nscid, 1U)); }

bool lib_nr_sch_configure_manager_t::set_nid0(int nid) { return assign(m_nid0, std::clamp(nid, -1, 65535)); }

bool lib_nr_sch_configure_manager_t::set_nid1(int nid) { return assign(m_nid1, std::clamp(nid, -1, 65535)); }

bool lib_nr_sch_configure_manager_t::set_dmrs_power(double power) { return assign_power(m_dmrs_power, power); }

// The groups of the ports in use carry no data; TS 38.211 Tables 7.4.1.1.2-1 and -2 give the group of a port.
bool lib_nr_sch_configure_manager_t::set_cdm_groups_without_data_num(unsigned int number)
{
    constexpr std::array<double, 3> k_powers = {0.0, 3.0, 4.77};
    const unsigned int largest_port = *std::max_element(m_dmrs_port.begin(), m_dmrs_port.end());
    const unsigned int least =
        _is_configuration_type_1() ? ((largest_port & 2U) != 0 ? 2 : 1) : largest_port % 6 / 2 + 1;
    const unsigned int most = _is_configuration_type_1() ? 2 : 3;
    if (!assign(m_cdm_groups_without_data_num, std::clamp(number, least, most)))
        return false;
    m_dmrs_power = k_powers[m_cdm_groups_without_data_num - 1];
    return true;
}

bool lib_nr_sch_configure_manager_t::set_dmrs_configuration_type(lib_nr_sch_dmrs_configuration_type_t type)
{
    const bool changed = assign(m_dmrs_configuration_type, type);
    set_dmrs_port(m_dmrs_port_text);
    return changed;
}

bool lib_nr_sch_configure_manager_t::set_dmrs_length(lib_nr_sch_dmrs_length_t length,
                                                     lib_nr_cyclic_prefix_type_t cp_type)
{
    const bool changed = assign(m_dmrs_length, length);
    set_dmrs_port(m_dmrs_port_text);
    set_dmrs_additional_position(m_dmrs_additional_position, cp_type);
    return changed;
}

bool lib_nr_sch_configure_manager_t::set_dmrs_additional_position(lib_nr_sch_dmrs_additional_position_t position,
                                                                  lib_nr_cyclic_prefix_type_t cp_type)
{
    const bool changed =
        assign(m_dmrs_additional_position, offered_or_first(position, get_dmrs_additional_position_list()));
    set_first_symbol(m_first_symbol, cp_type);
    return changed;
}

std::vector<lib_nr_sch_dmrs_additional_position_t> lib_nr_sch_configure_manager_t::get_dmrs_additional_position_list()
{
    std::vector<lib_nr_sch_dmrs_additional_position_t> list = {LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0,
                                                               LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1};
    if (_is_double_symbol())
        return list;
    list.push_back(LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_2);
    if (_is_mapping_type_b() || m_l0 != k_max_l0)
        list.push_back(LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_3);
    return list;
}

bool lib_nr_sch_configure_manager_t::set_mapping_type(lib_nr_sch_dmrs_mapping_type_t type,
                                                      lib_nr_cyclic_prefix_type_t cp_type)
{
    const bool changed = assign(m_mapping_type, type);
    set_dmrs_additional_position(m_dmrs_additional_position, cp_type);
    set_first_symbol(m_first_symbol, cp_type);
    return changed;
}

bool lib_nr_sch_configure_manager_t::set_dmrs_type_a_position(lib_nr_sch_dmrs_type_a_position_t position,
                                                              unsigned int pbch_position,
                                                              lib_nr_cyclic_prefix_type_t cp_type)
{
    m_l0 = k_min_l0;
    if (position == LIB_NR_SCH_DMRS_TYPEA_POSITION_3) {
        m_l0 = k_max_l0;
    }
    else if (position == LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB) {
        if (pbch_position == k_min_l0 || pbch_position == k_max_l0)
            m_l0 = pbch_position;
        else
            std::cout
                << "lib_nr_sch_configure_manager_t::set_dmrs_type_a_position : Error DMRS Type A l0 position from MIB!"
                << std::endl;
    }
    else if (position != LIB_NR_SCH_DMRS_TYPEA_POSITION_2) {
        std::cout << "lib_nr_sch_configure_manager_t::set_dmrs_type_a_position : Error DMRS Type A l0 position!"
                  << std::endl;
        position = LIB_NR_SCH_DMRS_TYPEA_POSITION_2;
    }
    const bool changed = assign(m_dmrs_type_a_position, position);
    set_dmrs_additional_position(m_dmrs_additional_position, cp_type);
    set_first_symbol(m_first_symbol, cp_type);
    return changed;
}

bool lib_nr_sch_configure_manager_t::set_dmrs_mapping_ref(lib_nr_sch_dmrs_mapping_ref_t reference)
{
    return assign(m_dmrs_mapping_ref, reference);
}

// PTRS

// The ports of the second DMRS symbol have no PTRS (TS 38.211 Table 7.4.1.2.2-1).
bool lib_nr_sch_configure_manager_t::set_enable_ptrs(bool enable)
{
    return assign(m_enable_ptrs, enable && m_dmrs_port.front() < (_is_configuration_type_1() ? 4U : 6U));
}

bool lib_nr_sch_configure_manager_t::set_ptrs_power(double power) { return assign_power(m_ptrs_power, power); }

bool lib_nr_sch_configure_manager_t::set_ptrs_freqency_density(lib_nr_sch_ptrs_frequency_density_size_t density)
{
    return assign(m_ptrs_freqency_density, density);
}

bool lib_nr_sch_configure_manager_t::set_ptrs_time_density(lib_nr_sch_ptrs_time_density_t density)
{
    return assign(m_ptrs_time_density, density);
}

bool lib_nr_sch_configure_manager_t::set_ptrs_re_offset(unsigned int offset)
{
    return assign(m_ptrs_re_offset, std::min(offset, 3U));
}

} // namespace vek::nr_mod_lib
