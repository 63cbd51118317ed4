#include "manager/lib_nr_dl_prs_configure_manager.h"

#include "common/lib_common_list_parse.h"
#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>
#include <array>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_min_rb_number = 24;
constexpr unsigned int k_max_rb_number = 272;
constexpr std::size_t k_max_muting_bits = 32;
constexpr unsigned int k_default_periodicity = 10;

// TS 38.211 Table 7.4.1.7.3-1 has no fewer symbols than the comb needs; by comb size, then by the number asked for.
constexpr std::array<std::array<lib_nr_prs_symbol_number, 4>, 4> k_symbol_numbers = {{
    {LIB_NR_PRS_SYMBOL_NUMBER_2, LIB_NR_PRS_SYMBOL_NUMBER_4, LIB_NR_PRS_SYMBOL_NUMBER_6, LIB_NR_PRS_SYMBOL_NUMBER_12},
    {LIB_NR_PRS_SYMBOL_NUMBER_4, LIB_NR_PRS_SYMBOL_NUMBER_4, LIB_NR_PRS_SYMBOL_NUMBER_6, LIB_NR_PRS_SYMBOL_NUMBER_12},
    {LIB_NR_PRS_SYMBOL_NUMBER_4, LIB_NR_PRS_SYMBOL_NUMBER_6, LIB_NR_PRS_SYMBOL_NUMBER_6, LIB_NR_PRS_SYMBOL_NUMBER_12},
    {LIB_NR_PRS_SYMBOL_NUMBER_4, LIB_NR_PRS_SYMBOL_NUMBER_6, LIB_NR_PRS_SYMBOL_NUMBER_12, LIB_NR_PRS_SYMBOL_NUMBER_12},
}};

/// The number at the enumerator's place; the first one and a line for a value behind the last.
template <std::size_t count>
unsigned int number_of(const std::array<unsigned int, count>& numbers, std::size_t enumerator, const char* error)
{
    if (enumerator < count)
        return numbers[enumerator];
    std::cout << "lib_nr_dl_prs_configure_manager_t::" << error << std::endl;
    return numbers.front();
}

/// The bits of a text, padded with 0 or cut to a length that may depend on theirs; no bits make an empty text.
template <class length_t>
bool set_muting_bits(const std::string& text, length_t length, std::vector<unsigned char>& bits,
                     std::string& stored_text)
{
    common_lib::lib_common_list_parse_t::string_to_bit_list(text, bits);
    if (!bits.empty())
        bits.resize(length(bits.size()), 0);
    return assign(stored_text, common_lib::lib_common_list_parse_t::bit_list_to_string(bits));
}

} // namespace

lib_nr_dl_prs_configure_manager_t::lib_nr_dl_prs_configure_manager_t(
    const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    init(numerology);
}

void lib_nr_dl_prs_configure_manager_t::init(const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    m_enable = false;
    m_power = 0.0;
    m_n_id = 0;
    m_numerology = numerology.get_numerolgy(); // on which the periods depend
    set_comb_size(LIB_NR_PRS_COMB_SIZE_2);
    set_periodicity(k_default_periodicity);
    set_set_slot_offset(0);
    set_reptition_factor(LIB_NR_PRS_REPTITION_FACTOR_1);
    m_time_gap = LIB_NR_PRS_TIME_GAP_1;
    m_muting_factor = LIB_NR_PRS_MUTING_FACTOR_1;
    set_muting_option_1("");
    set_muting_option_2("");
    set_re_offset(0);
    set_slot_offset(0);
    set_symbol_number(LIB_NR_PRS_SYMBOL_NUMBER_2);
    set_symbol_offset(0);
    update_by_numerology(numerology);
}

void lib_nr_dl_prs_configure_manager_t::update_by_numerology(
    const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    m_numerology_rb_start = numerology.get_rb_start();
    m_numerology_rb_size = numerology.get_rb_size();
    set_numerology(numerology.get_numerolgy());
    m_cp_type = LIB_NR_NORMAL_CP;
}

bool lib_nr_dl_prs_configure_manager_t::set_enable(bool enable)
{
    const bool before = m_enable;
    m_enable = enable;
    _switch_off_where_impossible();
    return m_enable != before;
}

bool lib_nr_dl_prs_configure_manager_t::set_power(double power) { return assign_power(m_power, power); }

bool lib_nr_dl_prs_configure_manager_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    const bool changed = assign(m_numerology, numerology);
    set_rb_offset(m_rb_offset);
    return changed;
}

bool lib_nr_dl_prs_configure_manager_t::set_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    return assign(m_cp_type, cp_type);
}

bool lib_nr_dl_prs_configure_manager_t::set_n_id(unsigned int n_id) { return assign(m_n_id, std::min(n_id, 4095U)); }

bool lib_nr_dl_prs_configure_manager_t::set_rb_number(unsigned int rb_number)
{
    const unsigned int before = m_rb_number;
    _limit_rb_number(rb_number);
    _switch_off_where_impossible();
    return m_rb_number != before;
}

bool lib_nr_dl_prs_configure_manager_t::set_rb_offset(unsigned int rb_offset)
{
    const unsigned int before = m_rb_offset;
    const unsigned int end = m_numerology_rb_start + m_numerology_rb_size;
    if (rb_offset < m_numerology_rb_start)
        m_rb_offset = m_numerology_rb_start;
    else if (end < k_min_rb_number) {
        m_rb_offset = rb_offset;
        m_enable = false;
    }
    else
        m_rb_offset = std::min(rb_offset, end - k_min_rb_number);
    _limit_rb_number(m_rb_number);
    _switch_off_where_impossible();
    return m_rb_offset != before;
}

/// What does not fit becomes the width above the offset, also where that exceeds 272; never below 0.
void lib_nr_dl_prs_configure_manager_t::_limit_rb_number(unsigned int rb_number)
{
    const unsigned int width = m_numerology_rb_size - std::min(m_numerology_rb_size, m_rb_offset);
    m_rb_number = rb_number > width ? width : std::min(rb_number, k_max_rb_number);
}

void lib_nr_dl_prs_configure_manager_t::_switch_off_where_impossible()
{
    if (m_numerology > LIB_NR_SCS_120K || m_rb_number < k_min_rb_number)
        m_enable = false;
}

bool lib_nr_dl_prs_configure_manager_t::set_comb_size(lib_nr_prs_comb_size_t comb_size)
{
    const bool changed = assign(m_comb_size, comb_size);
    set_re_offset(m_re_offset);
    set_symbol_number(m_symbol_number);
    return changed;
}

bool lib_nr_dl_prs_configure_manager_t::set_periodicity(unsigned int periodicity)
{
    const bool changed = assign(m_periodicity, offered_or_first(periodicity, get_periodicity_list()));
    set_set_slot_offset(m_set_slot_offset);
    return changed;
}

std::vector<unsigned int> lib_nr_dl_prs_configure_manager_t::get_periodicity_list() const
{
    std::vector<unsigned int> list = {4, 5, 8, 10, 16, 20, 32, 40, 64, 80, 160, 320, 640, 1280, 2560, 5120, 10240};
    for (unsigned int& periodicity : list)
        periodicity <<= lib_nr_phy_common_t::get_u_from_scs(m_numerology);
    return list;
}

bool lib_nr_dl_prs_configure_manager_t::set_set_slot_offset(unsigned int offset)
{
    const bool changed = assign(m_set_slot_offset, std::min(offset, m_periodicity - 1));
    set_slot_offset(m_slot_offset);
    return changed;
}

bool lib_nr_dl_prs_configure_manager_t::set_slot_offset(unsigned int offset)
{
    return assign(m_slot_offset, std::min(offset, m_periodicity - 1 - m_set_slot_offset));
}

bool lib_nr_dl_prs_configure_manager_t::set_reptition_factor(lib_nr_prs_reptition_factor_t factor)
{
    const bool changed = assign(m_reptition_factor, factor);
    set_muting_option_2(std::string(m_muting_option_2));
    return changed;
}

bool lib_nr_dl_prs_configure_manager_t::set_time_gap(lib_nr_prs_time_gap_t gap) { return assign(m_time_gap, gap); }

bool lib_nr_dl_prs_configure_manager_t::set_muting_factor(lib_nr_prs_muting_factor_t factor)
{
    return assign(m_muting_factor, factor);
}

bool lib_nr_dl_prs_configure_manager_t::set_muting_option_1(const std::string& text)
{
    const auto even_length = [](std::size_t bits) { return std::min(bits + bits % 2, k_max_muting_bits); };
    return set_muting_bits(text, even_length, m_muting_option_1_v, m_muting_option_1);
}

bool lib_nr_dl_prs_configure_manager_t::set_muting_option_2(const std::string& text)
{
    const auto bit_per_repetition = [this](std::size_t) { return _get_reptition_factor(m_reptition_factor); };
    return set_muting_bits(text, bit_per_repetition, m_muting_option_2_v, m_muting_option_2);
}

bool lib_nr_dl_prs_configure_manager_t::set_re_offset(unsigned int re_offset)
{
    return assign(m_re_offset, std::min(re_offset, _get_comb_size(m_comb_size) - 1));
}

bool lib_nr_dl_prs_configure_manager_t::set_symbol_offset(unsigned int offset)
{
    const unsigned int symbols_in_slot = lib_nr_phy_common_t::get_symbol_number_in_slot(m_cp_type);
    return assign(m_symbol_offset, std::min(offset, symbols_in_slot - _get_symbol_number(m_symbol_number)));
}

bool lib_nr_dl_prs_configure_manager_t::set_symbol_number(lib_nr_prs_symbol_number number)
{
    const auto& numbers = k_symbol_numbers[known_or_first(m_comb_size, LIB_NR_PRS_COMB_SIZE_12)];
    const bool changed = assign(m_symbol_number, number < numbers.size() ? numbers[number] : number);
    set_symbol_offset(m_symbol_offset);
    return changed;
}

unsigned int lib_nr_dl_prs_configure_manager_t::_get_comb_size(lib_nr_prs_comb_size_t comb_size)
{
    return number_of<4>({2, 4, 6, 12}, comb_size, "_get_comb_size : Error comb size!");
}

unsigned int lib_nr_dl_prs_configure_manager_t::_get_reptition_factor(lib_nr_prs_reptition_factor_t factor)
{
    return number_of<7>({1, 2, 4, 6, 8, 16, 32}, factor, "_get_reptition_factor : Error reptition factor!");
}

unsigned int lib_nr_dl_prs_configure_manager_t::_get_time_gap(lib_nr_prs_time_gap_t gap)
{
    return number_of<6>({1, 2, 4, 8, 16, 32}, gap, "_get_time_gap : Error time gap!");
}

unsigned int lib_nr_dl_prs_configure_manager_t::_get_muting_factor(lib_nr_prs_muting_factor_t factor)
{
    return number_of<4>({1, 2, 4, 8}, factor, "_get_muting_factor : Error muting repetition factor!");
}

unsigned int lib_nr_dl_prs_configure_manager_t::_get_symbol_number(lib_nr_prs_symbol_number number)
{
    return number_of<4>({2, 4, 6, 12}, number, "_get_symbol_number : Error symbol number!");
}

} // namespace vek::nr_mod_lib
