#include "manager/lib_nr_ul_srs_configure_manager.h"

#include "manager/lib_nr_antenna_port_list.h"
#include "manager/lib_nr_setting.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/tables/lib_nr_srs_bandwidth_table.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned char k_last_symbol = 13;
constexpr unsigned char k_last_b_srs = 3;
constexpr unsigned char k_last_c_srs = 63;

/// What a narrow type takes of a value that fits.
template <class narrow_t>
narrow_t at_most(narrow_t value, unsigned int limit)
{
    return static_cast<narrow_t>(std::min<unsigned int>(value, limit));
}

} // namespace

lib_nr_ul_srs_configure_manager_t::lib_nr_ul_srs_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_ul_srs_configure_manager_t::init(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    const lib_nr_numerology_type_t numerology = bwp.get_numerology();
    set_enable(false, numerology);
    set_power_bosting(0.0);
    set_port_number(LIB_NR_PORT_NUMBER_1);
    set_antenna_port({SRS_ANTENNA_PORT0}, 1);
    set_srs_port("0");
    set_pos_resource(false);
    set_srs_periodity(LIB_NR_SRS_0MS_PERIODICITY, numerology);
    set_slot_allocation("0", numerology);
    set_N_symb_srs(LIB_NR_N_SYMB_SRS_VALUE_1);
    set_l_offset(5);
    set_Ktc_number(LIB_NR_K_TC_VALUE_2);
    set_ktc_offset(0);
    set_b_srs(0);
    set_c_srs(0);
    set_b_hop(0);
    set_n_shift(0);
    set_n_RRC(0);
    set_GroupOrSeqHop(SRS_NEITHER_TYPE);
    set_n_SRS_cs(0);
    set_n_ID_SRS(0);
    set_p_f(SRS_SRS_PF_1);
    set_bwp_id(bwp.get_bwp_id());
}

void lib_nr_ul_srs_configure_manager_t::update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    set_enable(m_enable, bwp.get_numerology());
    set_slot_allocation(std::string(m_slot_allocation_text), bwp.get_numerology());
}

bool lib_nr_ul_srs_configure_manager_t::set_enable(bool enable, lib_nr_numerology_type_t bwp_numerology)
{
    return assign(m_enable, enable && lib_nr_phy_common_t::carries_channels(bwp_numerology));
}

bool lib_nr_ul_srs_configure_manager_t::set_power_bosting(double power) { return assign_power(m_power_bosting, power); }

bool lib_nr_ul_srs_configure_manager_t::set_antenna_port(const std::vector<srs_antenna_port_t>& ports,
                                                         unsigned int antennas)
{
    return assign(m_antenna_port, fit_antenna_ports(ports, antennas, m_port_number));
}

bool lib_nr_ul_srs_configure_manager_t::set_port_number(srs_port_number_t number)
{
    if (!assign(m_port_number, offered_or_first(number, get_port_number_for_ui())))
        return false;
    for (srs_antenna_port_t& port : m_antenna_port)
        if (port > static_cast<unsigned int>(m_port_number))
            port = SRS_ANTENNA_PORT0;
    return true;
}

bool lib_nr_ul_srs_configure_manager_t::set_srs_port(const std::string& text)
{
    return assign_index_text(m_srs_port, m_srs_port_text, text, m_port_number);
}

bool lib_nr_ul_srs_configure_manager_t::set_pos_resource(bool pos_resource)
{
    return assign(m_pos_resource, pos_resource);
}

bool lib_nr_ul_srs_configure_manager_t::set_srs_periodity(srs_periodity_type_t periodicity,
                                                          lib_nr_numerology_type_t bwp_numerology)
{
    const bool changed = assign(m_periodicity, offered_or_first(periodicity, get_srs_periodity_for_ui()));
    set_t_offset(m_t_offset, bwp_numerology);
    return changed;
}

bool lib_nr_ul_srs_configure_manager_t::set_t_offset(unsigned int offset, lib_nr_numerology_type_t bwp_numerology)
{
    if (m_periodicity == LIB_NR_SRS_0MS_PERIODICITY)
        return assign(m_t_offset, 0);
    const bool changed = assign(m_t_offset, std::min<unsigned int>(offset, m_periodicity - 1));
    _set_periodic_slots(bwp_numerology);
    return changed;
}

bool lib_nr_ul_srs_configure_manager_t::set_slot_allocation(const std::string& text,
                                                            lib_nr_numerology_type_t bwp_numerology)
{
    if (m_periodicity != LIB_NR_SRS_0MS_PERIODICITY)
        return _set_periodic_slots(bwp_numerology);
    return assign_index_text(m_slot_allocation, m_slot_allocation_text, text,
                             lib_nr_phy_common_t::get_slot_in_frame(bwp_numerology));
}

/// The slots of the first frame; none where the offset lies behind it.
bool lib_nr_ul_srs_configure_manager_t::_set_periodic_slots(lib_nr_numerology_type_t bwp_numerology)
{
    std::vector<int> slots;
    for (unsigned int slot = m_t_offset; slot < lib_nr_phy_common_t::get_slot_in_frame(bwp_numerology);
         slot += m_periodicity)
        slots.push_back(static_cast<int>(slot));
    m_slot_allocation_text = common_lib::lib_common_list_parse_t::index_list_to_string(slots);
    return assign(m_slot_allocation, slots);
}

bool lib_nr_ul_srs_configure_manager_t::set_N_symb_srs(srs_N_symb_srs_value_t number)
{
    const bool changed = assign(m_N_symb, offered_or_first(number, get_N_symb_srs_for_ui()));
    set_l_offset(m_l_offset);
    set_srs_repetition_factor(m_repetition_factor);
    return changed;
}

bool lib_nr_ul_srs_configure_manager_t::set_l_offset(unsigned char offset)
{
    const auto least = static_cast<unsigned char>(m_N_symb - 1);
    return assign(m_l_offset, std::clamp(offset, least, k_last_symbol));
}

bool lib_nr_ul_srs_configure_manager_t::set_srs_repetition_factor(srs_repetition_factor_value_t factor)
{
    const unsigned int symbols = m_N_symb;
    const bool divides = factor != 0 && factor < symbols && symbols % factor == 0;
    return assign(m_repetition_factor, divides ? factor : static_cast<srs_repetition_factor_value_t>(symbols));
}

bool lib_nr_ul_srs_configure_manager_t::set_Ktc_number(srs_K_TC_value_t comb)
{
    const bool changed = assign(m_K_TC, offered_or_first(comb, get_Ktc_number_for_ui()));
    _keep_comb();
    set_ktc_offset(m_ktc_offset);
    set_n_SRS_cs(m_n_SRS_cs);
    return changed;
}

bool lib_nr_ul_srs_configure_manager_t::set_ktc_offset(unsigned char offset)
{
    return assign(m_ktc_offset, at_most(offset, m_K_TC - 1));
}

bool lib_nr_ul_srs_configure_manager_t::set_b_srs(unsigned char b_srs)
{
    const bool changed = assign(m_b_srs, std::min(b_srs, k_last_b_srs));
    _keep_comb();
    return changed;
}

bool lib_nr_ul_srs_configure_manager_t::set_c_srs(unsigned char c_srs)
{
    const bool changed = assign(m_c_srs, std::min(c_srs, k_last_c_srs));
    _keep_comb();
    return changed;
}

bool lib_nr_ul_srs_configure_manager_t::set_b_hop(unsigned char b_hop) { return assign(m_b_hop, at_most(b_hop, 3)); }

bool lib_nr_ul_srs_configure_manager_t::set_n_shift(unsigned short n_shift)
{
    return assign(m_n_shift, at_most(n_shift, 268));
}

bool lib_nr_ul_srs_configure_manager_t::set_n_RRC(unsigned char n_RRC) { return assign(m_n_RRC, at_most(n_RRC, 67)); }

bool lib_nr_ul_srs_configure_manager_t::set_GroupOrSeqHop(unsigned char hopping)
{
    return assign(m_GroupOrSeqHop, at_most(hopping, SRS_SEQUEN_HOP_TYPE));
}

bool lib_nr_ul_srs_configure_manager_t::set_n_SRS_cs(unsigned char shift)
{
    return assign(m_n_SRS_cs, at_most(shift, get_cs_max(m_K_TC) - 1));
}

bool lib_nr_ul_srs_configure_manager_t::set_n_ID_SRS(unsigned int identity)
{
    return assign(m_n_ID_SRS, std::min(identity, 65535U));
}

bool lib_nr_ul_srs_configure_manager_t::set_p_f(T_SRS_PF_TYPE p_f)
{
    const T_SRS_PF_TYPE offered = offered_or_first(p_f, get_p_f_for_ui());
    const bool changed = assign(m_p_f, _fits_comb(m_K_TC, offered) ? offered : SRS_SRS_PF_1);
    set_k_f(m_k_f);
    return changed;
}

bool lib_nr_ul_srs_configure_manager_t::set_k_f(unsigned char k_f) { return assign(m_k_f, at_most(k_f, m_p_f - 1)); }

bool lib_nr_ul_srs_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

std::vector<srs_port_number_t> lib_nr_ul_srs_configure_manager_t::get_port_number_for_ui()
{
    return {LIB_NR_PORT_NUMBER_1, LIB_NR_PORT_NUMBER_2, LIB_NR_PORT_NUMBER_4};
}

std::vector<srs_periodity_type_t> lib_nr_ul_srs_configure_manager_t::get_srs_periodity_for_ui()
{
    return {LIB_NR_SRS_0MS_PERIODICITY,    LIB_NR_SRS_1MS_PERIODICITY,     LIB_NR_SRS_2MS_PERIODICITY,
            LIB_NR_SRS_4MS_PERIODICITY,    LIB_NR_SRS_5MS_PERIODICITY,     LIB_NR_SRS_8MS_PERIODICITY,
            LIB_NR_SRS_10MS_PERIODICITY,   LIB_NR_SRS_16MS_PERIODICITY,    LIB_NR_SRS_20MS_PERIODICITY,
            LIB_NR_SRS_32MS_PERIODICITY,   LIB_NR_SRS_40MS_PERIODICITY,    LIB_NR_SRS_64MS_PERIODICITY,
            LIB_NR_SRS_80MS_PERIODICITY,   LIB_NR_SRS_160MS_PERIODICITY,   LIB_NR_SRS_320MS_PERIODICITY,
            LIB_NR_SRS_640MS_PERIODICITY,  LIB_NR_SRS_1280MS_PERIODICITY,  LIB_NR_SRS_2560MS_PERIODICITY,
            LIB_NR_SRS_5120MS_PERIODICITY, LIB_NR_SRS_10240MS_PERIODICITY, LIB_NR_SRS_40960MS_PERIODICITY,
            LIB_NR_SRS_81920MS_PERIODICITY};
}

std::vector<srs_N_symb_srs_value_t> lib_nr_ul_srs_configure_manager_t::get_N_symb_srs_for_ui()
{
    return {LIB_NR_N_SYMB_SRS_VALUE_1, LIB_NR_N_SYMB_SRS_VALUE_2,  LIB_NR_N_SYMB_SRS_VALUE_4,
            LIB_NR_N_SYMB_SRS_VALUE_8, LIB_NR_N_SYMB_SRS_VALUE_12, LIB_NR_N_SYMB_SRS_VALUE_14};
}

std::vector<srs_repetition_factor_value_t> lib_nr_ul_srs_configure_manager_t::get_srs_repetition_factor_for_ui()
{
    return {LIB_NR_REPETITION_FACTOR_1,  LIB_NR_REPETITION_FACTOR_2, LIB_NR_REPETITION_FACTOR_3,
            LIB_NR_REPETITION_FACTOR_4,  LIB_NR_REPETITION_FACTOR_5, LIB_NR_REPETITION_FACTOR_6,
            LIB_NR_REPETITION_FACTOR_7,  LIB_NR_REPETITION_FACTOR_8, LIB_NR_REPETITION_FACTOR_10,
            LIB_NR_REPETITION_FACTOR_12, LIB_NR_REPETITION_FACTOR_14};
}

std::vector<srs_K_TC_value_t> lib_nr_ul_srs_configure_manager_t::get_Ktc_number_for_ui()
{
    return {LIB_NR_K_TC_VALUE_2, LIB_NR_K_TC_VALUE_4, LIB_NR_K_TC_VALUE_8};
}

std::vector<T_SRS_PF_TYPE> lib_nr_ul_srs_configure_manager_t::get_p_f_for_ui()
{
    return {SRS_SRS_PF_1, SRS_SRS_PF_2, SRS_SRS_PF_4};
}

std::vector<srs_antenna_port_t> lib_nr_ul_srs_configure_manager_t::get_available_port_for_ui() const
{
    std::vector<srs_antenna_port_t> ports;
    for (unsigned int port = SRS_ANTENNA_NONE; port <= static_cast<unsigned int>(m_port_number); ++port)
        ports.push_back(static_cast<srs_antenna_port_t>(port));
    return ports;
}

srs_cs_max_t lib_nr_ul_srs_configure_manager_t::get_cs_max(srs_K_TC_value_t comb)
{
    switch (comb) {
    case LIB_NR_K_TC_VALUE_4:
        return LIB_NR_SRS_CS_MAX12;
    case LIB_NR_K_TC_VALUE_8:
        return LIB_NR_SRS_CS_MAX6;
    default:
        return LIB_NR_SRS_CS_MAX8;
    }
}

/// The length of the sequence is a multiple of 6.
bool lib_nr_ul_srs_configure_manager_t::_fits_comb(unsigned int comb, unsigned int p_f) const
{
    const unsigned int width = lib_nr_srs_bandwidth_table()[m_c_srs].m_srs[m_b_srs] * k_subcarriers_per_rb;
    return width / (comb * p_f) % 6 == 0;
}

/// Sounds the whole band where a part of it does not fit the comb any more.
void lib_nr_ul_srs_configure_manager_t::_keep_comb()
{
    if (!_fits_comb(m_K_TC, m_p_f))
        set_p_f(SRS_SRS_PF_1);
}

} // namespace vek::nr_mod_lib
