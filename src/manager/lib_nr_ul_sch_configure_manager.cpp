#include "manager/lib_nr_ul_sch_configure_manager.h"

#include "common/lib_common_list_parse.h"
#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_setting.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"
#include "phy_common/lib_nr_interlace.h"
#include "phy_common/lib_nr_mcs.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_transform_precoding.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace vek::nr_mod_lib
{

namespace
{

using parse_t = common_lib::lib_common_list_parse_t;

} // namespace

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
    m_rbg_size = LIB_NR_SCH_RBG_SIZE_4;
    update_by_ul_bwp(bwp, numerology, bandwidth);
}

void lib_nr_ul_sch_configure_manager_t::update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp,
                                                         const lib_nr_phy_numerology_configure_manager_t& numerology,
                                                         lib_nr_channel_bw_type_t bandwidth)
{
    const lib_nr_cyclic_prefix_type_t cp_type = bwp.get_cp_type();
    m_numerology = bwp.get_numerology();
    m_bwp_rb_size = bwp.get_rb_number();
    set_enable(get_enable(), m_numerology);
    set_slot_allocation(get_slot_allocation(), m_numerology);
    m_full_bandwidth = lib_nr_phy_common_t::get_max_transmit_rb_num(m_numerology, bandwidth) == m_bwp_rb_size;
    m_rb_set_map = numerology.get_ul_guard_band().get_rb_set_info();
    set_ra_type(get_ra_type());
    set_mapping_type(get_mapping_type(), cp_type);
    set_dmrs_type_a_position(get_dmrs_type_a_position(), get_l0(), cp_type);
    set_dmrs_length(get_dmrs_length(), cp_type);
    set_dmrs_configuration_type(get_dmrs_configuration_type());
    set_enable_transfer_precoding(m_enable_transfer_precoding);
    set_rb_offset(get_rb_offset(), m_bwp_rb_size);
    set_rbg_size(get_rbg_size(), m_bwp_rb_size, bwp.get_rb_offset());
}

// What the base does too

// The transform precodes one layer.
bool lib_nr_ul_sch_configure_manager_t::set_dmrs_port(const std::string& text)
{
    const bool changed = _set_dmrs_ports(text, m_enable_transfer_precoding ? 1 : k_max_layers);
    set_ptrs_port(m_ptrs_port_text);
    set_enable_codebook(m_enable_codebook);
    set_tpmi(m_tpmi);
    return changed;
}

// With transform precoding no data shares a symbol with DMRS.
bool lib_nr_ul_sch_configure_manager_t::set_cdm_groups_without_data_num(unsigned int number)
{
    constexpr unsigned int k_all = 3;
    return lib_nr_sch_configure_manager_t::set_cdm_groups_without_data_num(m_enable_transfer_precoding ? k_all
                                                                                                       : number);
}

bool lib_nr_ul_sch_configure_manager_t::set_first_symbol(unsigned int symbol, lib_nr_cyclic_prefix_type_t cp_type)
{
    const unsigned int last =
        _is_mapping_type_b() ? lib_nr_phy_common_t::get_symbol_number_in_slot(cp_type) - _shortest_type_b() : 0;
    const bool changed = assign(m_first_symbol, std::min(symbol, last));
    set_symbol_num(m_symbol_num, cp_type);
    return changed;
}

bool lib_nr_ul_sch_configure_manager_t::set_symbol_num(unsigned int number, lib_nr_cyclic_prefix_type_t cp_type)
{
    return assign(m_symbol_num, std::min(std::max(number, _least_symbol_num()), _symbols_left(cp_type)));
}

unsigned int lib_nr_ul_sch_configure_manager_t::_least_symbol_num() const
{
    if (!_is_mapping_type_b())
        return _hops_in_slot() ? 8 : get_l0() == 2 ? 4 : 5;
    return m_first_symbol + _shortest_type_b();
}

/// Hopping needs a symbol of each hop, and has single DMRS symbols.
unsigned int lib_nr_ul_sch_configure_manager_t::_shortest_type_b() const
{
    return _hops_in_slot() ? 2 : _is_double_symbol() ? 5 : 1;
}

// TS 38.214 clause 6.1.2.2.3 has interlaces at 15 and 30 kHz.
bool lib_nr_ul_sch_configure_manager_t::set_ra_type(lib_nr_sch_ra_type_t type)
{
    const bool is_refused = type == LIB_NR_SCH_RA_TYPE2 && !(m_full_bandwidth && m_numerology <= LIB_NR_SCS_30K);
    const bool changed = assign(m_ra_type, is_refused ? m_ra_type : type);
    if (type == LIB_NR_SCH_RA_TYPE2 && !is_refused) {
        set_rb_set_start(m_rb_set_start);
        set_rb_set_number(m_rb_set_number);
        set_unused_rb(m_unused_rb);
        set_interlace_index(m_interlace_index_text);
    }
    m_enable_transfer_precoding = m_enable_transfer_precoding && m_ra_type == LIB_NR_SCH_RA_TYPE1;
    _follow_allocation();
    return changed;
}

/// What depends on transform precoding and on the type of allocation.
void lib_nr_ul_sch_configure_manager_t::_follow_allocation()
{
    set_dmrs_port(get_dmrs_port());
    set_ptrs_time_density(get_ptrs_time_density());
    set_mcs_table(get_mcs_table());
    set_rb_num(get_rb_num(), m_bwp_rb_size);
    set_cdm_groups_without_data_num(get_cdm_groups_without_data_num());
}

bool lib_nr_ul_sch_configure_manager_t::set_rb_num(unsigned int rb_num, unsigned int bwp_rb_size)
{
    const unsigned int room = std::max(bwp_rb_size, get_rb_offset() + 1) - get_rb_offset();
    const bool changed = m_enable_transfer_precoding ? assign(m_rb_num, fit_transform_precoded_rb_num(rb_num, room))
                                                     : lib_nr_sch_configure_manager_t::set_rb_num(rb_num, bwp_rb_size);
    set_hopping_rb_offset(m_hopping_rb_offset, bwp_rb_size);
    return changed;
}

lib_nr_antenna_port_number_t lib_nr_ul_sch_configure_manager_t::get_antenna_port_number() const
{
    if (m_enable_codebook)
        return m_antenna_port_number;
    const unsigned int layers = get_layers_num();
    if (layers < 1 || layers > k_max_layers) {
        std::cout << "lib_nr_ul_sch_configure_manager_t::get_antenna_port_number : Error layer number" << std::endl;
        return LIB_NR_ANTENNA_PORT_NUMBER_1;
    }
    return static_cast<lib_nr_antenna_port_number_t>(layers);
}

std::vector<lib_nr_sch_ra_type_t> lib_nr_ul_sch_configure_manager_t::get_ra_type_list() const
{
    return {LIB_NR_SCH_RA_TYPE0, LIB_NR_SCH_RA_TYPE1, LIB_NR_SCH_RA_TYPE2};
}

std::vector<mcs_table_t> lib_nr_ul_sch_configure_manager_t::get_mcs_table_list() const
{
    if (m_enable_transfer_precoding)
        return {TABLE_6_1_4_1_1, TABLE_5_1_3_1_2, TABLE_6_1_4_1_2};
    return {TABLE_5_1_3_1_1, TABLE_5_1_3_1_2, TABLE_5_1_3_1_3};
}

std::vector<lib_nr_sch_dmrs_additional_position_t>
lib_nr_ul_sch_configure_manager_t::get_dmrs_additional_position_list()
{
    if (_hops_in_slot())
        return {LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0, LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1};
    return lib_nr_sch_configure_manager_t::get_dmrs_additional_position_list();
}

bool lib_nr_ul_sch_configure_manager_t::set_dmrs_length(lib_nr_sch_dmrs_length_t length,
                                                        lib_nr_cyclic_prefix_type_t cp_type)
{
    return lib_nr_sch_configure_manager_t::set_dmrs_length(
        _hops_in_slot() ? LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL : length, cp_type);
}

bool lib_nr_ul_sch_configure_manager_t::set_ptrs_time_density(lib_nr_sch_ptrs_time_density_t density)
{
    const bool is_too_thin = m_enable_transfer_precoding && density == LIB_NR_SCH_PTRS_TIME_DENSITYE_4;
    return lib_nr_sch_configure_manager_t::set_ptrs_time_density(is_too_thin ? LIB_NR_SCH_PTRS_TIME_DENSITYE_2
                                                                             : density);
}

std::vector<lib_nr_sch_ptrs_time_density_t> lib_nr_ul_sch_configure_manager_t::get_ptrs_time_density_list() const
{
    if (m_enable_transfer_precoding)
        return {LIB_NR_SCH_PTRS_TIME_DENSITYE_1, LIB_NR_SCH_PTRS_TIME_DENSITYE_2};
    return {LIB_NR_SCH_PTRS_TIME_DENSITYE_1, LIB_NR_SCH_PTRS_TIME_DENSITYE_2, LIB_NR_SCH_PTRS_TIME_DENSITYE_4};
}

double lib_nr_ul_sch_configure_manager_t::get_target_code_rate() const
{
    if (!m_enable_transfer_precoding)
        return lib_nr_sch_configure_manager_t::get_target_code_rate();
    const std::vector<mcs_table_t> tables = get_mcs_table_list();
    if (std::find(tables.begin(), tables.end(), get_mcs_table()) == tables.end()) {
        std::cout << "lib_nr_sch_configure_manager_t::get_target_code_rate : Error MCS table!" << std::endl;
        return read_mcs(TABLE_6_1_4_1_1, get_mcs()).code_rate;
    }
    return read_mcs(get_mcs_table(), get_mcs(), m_modulation).code_rate;
}

bool lib_nr_ul_sch_configure_manager_t::_leaves_modulation_open() const
{
    return read_mcs(get_mcs_table(), get_mcs()).is_open;
}

bool lib_nr_ul_sch_configure_manager_t::set_modulation(lib_nr_modulation_type_t modulation)
{
    if (!_leaves_modulation_open())
        return false;
    return assign(m_modulation, offered_or_first(modulation, get_modulation_list()));
}

lib_nr_modulation_type_t lib_nr_ul_sch_configure_manager_t::get_modulation() const
{
    return _leaves_modulation_open() ? m_modulation : lib_nr_sch_configure_manager_t::get_modulation();
}

std::vector<lib_nr_modulation_type_t> lib_nr_ul_sch_configure_manager_t::get_modulation_list() const
{
    if (_leaves_modulation_open())
        return {LIB_NR_MODULATION_HALF_PI_BPSK, LIB_NR_MODULATION_QPSK};
    return {get_modulation()};
}

// Waveform and scrambling

bool lib_nr_ul_sch_configure_manager_t::set_enable_transfer_precoding(bool enable)
{
    const bool changed = assign(m_enable_transfer_precoding, enable && m_ra_type == LIB_NR_SCH_RA_TYPE1);
    _follow_allocation();
    return changed;
}

bool lib_nr_ul_sch_configure_manager_t::set_rapid(int rapid)
{
    constexpr int k_most = 63;
    return assign(m_rapid, rapid >= -1 && rapid <= k_most ? rapid : -1);
}

bool lib_nr_ul_sch_configure_manager_t::set_enable_lbrm(bool enable) { return assign(m_enable_lbrm, enable); }

// Codebook

bool lib_nr_ul_sch_configure_manager_t::set_enable_codebook(bool enable)
{
    const bool changed = assign(m_enable_codebook, enable);
    set_antenna_port_number(m_antenna_port_number);
    return changed;
}

bool lib_nr_ul_sch_configure_manager_t::set_antenna_port_number(lib_nr_antenna_port_number_t number)
{
    const bool changed = assign(m_antenna_port_number, offered_or_first(number, get_antenna_port_number_list()));
    set_antenna_port(get_antenna_port(), m_antenna_count);
    if (m_enable_codebook)
        set_tpmi(m_tpmi);
    return changed;
}

std::vector<lib_nr_antenna_port_number_t> lib_nr_ul_sch_configure_manager_t::get_antenna_port_number_list() const
{
    if (!m_enable_codebook)
        return {get_antenna_port_number()};
    const unsigned int layers = get_layers_num();
    if (layers > k_max_layers)
        std::cout << "lib_nr_ul_sch_configure_manager_t::get_antenna_port_number_list : Error antenna number!"
                  << std::endl;
    if (layers > 2)
        return {LIB_NR_ANTENNA_PORT_NUMBER_4};
    if (layers == 2)
        return {LIB_NR_ANTENNA_PORT_NUMBER_2, LIB_NR_ANTENNA_PORT_NUMBER_4};
    return {LIB_NR_ANTENNA_PORT_NUMBER_1, LIB_NR_ANTENNA_PORT_NUMBER_2, LIB_NR_ANTENNA_PORT_NUMBER_4};
}

bool lib_nr_ul_sch_configure_manager_t::set_tpmi(unsigned int tpmi)
{
    return assign(m_tpmi, tpmi > _largest_tpmi() ? 0 : tpmi);
}

// TS 38.211 Tables 6.3.1.5-1 to -7.
unsigned int lib_nr_ul_sch_configure_manager_t::_largest_tpmi() const
{
    const bool is_of_four = m_antenna_port_number == LIB_NR_ANTENNA_PORT_NUMBER_4;
    switch (get_layers_num()) {
    case 1:
        return is_of_four ? 27 : m_antenna_port_number == LIB_NR_ANTENNA_PORT_NUMBER_2 ? 5 : 0;
    case 2:
        return is_of_four ? 21 : 2;
    case 3:
        return 6;
    default:
        return 4;
    }
}

// Interlaces

bool lib_nr_ul_sch_configure_manager_t::set_rb_set_start(unsigned int rb_set)
{
    const unsigned int last = std::max<unsigned int>(static_cast<unsigned int>(m_rb_set_map.size()), 1) - 1;
    const bool changed = assign(m_rb_set_start, std::min(rb_set, last));
    set_rb_set_number(m_rb_set_number);
    return changed;
}

bool lib_nr_ul_sch_configure_manager_t::set_rb_set_number(unsigned int number)
{
    const auto sets = static_cast<unsigned int>(m_rb_set_map.size());
    const unsigned int most = sets > m_rb_set_start ? sets - m_rb_set_start : 1;
    const bool changed = assign(m_rb_set_number, std::clamp(number, 1U, most));
    set_unused_rb(m_unused_rb);
    return changed;
}

bool lib_nr_ul_sch_configure_manager_t::set_unused_rb(unsigned int rb_num)
{
    if (m_rb_set_number > 1 || m_rb_set_map.empty())
        return assign(m_unused_rb, 0);
    const bool changed = assign(m_unused_rb, std::min(rb_num, static_cast<unsigned int>(_rb_set_span())));
    set_interlace_index(m_interlace_index_text);
    return changed;
}

/// From the first to the last RB of the first set in use; 0 where the set is gone.
int lib_nr_ul_sch_configure_manager_t::_rb_set_span() const
{
    const auto set = m_rb_set_map.find(static_cast<std::uint16_t>(m_rb_set_start));
    return set == m_rb_set_map.end() ? 0 : std::max(set->second.second - set->second.first, 0);
}

bool lib_nr_ul_sch_configure_manager_t::set_interlace_index(const std::string& text)
{
    int number = static_cast<int>(get_pusch_interlace_number(m_numerology));
    if (!m_rb_set_map.empty())
        number = std::min(number, _rb_set_span() - static_cast<int>(m_unused_rb));
    std::vector<unsigned int> interlaces;
    std::string read_text;
    if (!parse_t::string_to_index_list_in_range(text, interlaces, read_text, 0, number - 1))
        interlaces = {0};
    m_interlace_index_text = parse_t::index_list_to_string(interlaces);
    return assign(m_interlace_index, interlaces);
}

// Hopping

bool lib_nr_ul_sch_configure_manager_t::set_hopping_mode(lib_nr_sch_hopping_mode_t mode,
                                                         lib_nr_cyclic_prefix_type_t cp_type)
{
    const bool changed = assign(m_hopping_mode, mode);
    set_dmrs_length(get_dmrs_length(), cp_type);
    return changed;
}

// From the first hop's offset to the last RB of the BWP the second hop moves back until it fits; past the number of RBs
// behind that offset it stays and wraps inside the BWP.
bool lib_nr_ul_sch_configure_manager_t::set_hopping_rb_offset(unsigned int rb_offset, unsigned int bwp_rb_size)
{
    const unsigned int behind = bwp_rb_size - std::min(get_rb_offset(), bwp_rb_size);
    const unsigned int last = behind - std::min(get_rb_num(), behind);
    const bool is_kept = rb_offset <= last || (rb_offset >= behind && rb_offset < bwp_rb_size);
    return assign(m_hopping_rb_offset, is_kept ? rb_offset : last);
}

bool lib_nr_ul_sch_configure_manager_t::set_dmrs_hopping(lib_nr_sch_dmrs_hopping_t hopping)
{
    return assign(m_dmrs_hopping, hopping);
}

bool lib_nr_ul_sch_configure_manager_t::set_n_rs_id(int id) { return assign(m_n_rs_id, std::clamp(id, -1, 65535)); }

// PTRS

bool lib_nr_ul_sch_configure_manager_t::set_ptrs_port(const std::string& text)
{
    const int last_port = _is_configuration_type_1() ? 3 : 5;
    std::vector<unsigned int> ports;
    std::string read_text;
    parse_t::string_to_index_list_in_range(text, ports, read_text, 0, last_port);
    const std::vector<unsigned int>& dmrs_ports = get_dmrs_port_v();
    const auto has_no_dmrs = [&](unsigned int port) {
        return std::find(dmrs_ports.begin(), dmrs_ports.end(), port) == dmrs_ports.end();
    };
    ports.erase(std::remove_if(ports.begin(), ports.end(), has_no_dmrs), ports.end());
    if (ports.empty())
        ports = {dmrs_ports.front()};
    m_ptrs_port_text = parse_t::index_list_to_string(ports);
    return assign(m_ptrs_port, ports);
}

bool lib_nr_ul_sch_configure_manager_t::set_n_ptrs_group_sample(lib_nr_sch_ptrs_group_sample_t samples)
{
    return assign(m_n_ptrs_group_sample, m_n_ptrs_group == LIB_NR_PTRS_GROUP_8 ? LIB_NR_PTRS_GROUP_SAMPLE_4 : samples);
}

bool lib_nr_ul_sch_configure_manager_t::set_n_ptrs_group(lib_nr_sch_ptrs_group_t groups)
{
    const bool changed = assign(m_n_ptrs_group, groups);
    set_n_ptrs_group_sample(m_n_ptrs_group_sample); // eight groups have four samples each
    return changed;
}

bool lib_nr_ul_sch_configure_manager_t::set_n_ptrs_id(unsigned int id)
{
    return assign(m_n_ptrs_id, std::min(id, 65535U));
}

} // namespace vek::nr_mod_lib
