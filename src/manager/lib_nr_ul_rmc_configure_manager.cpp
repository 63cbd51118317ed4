#include "manager/lib_nr_ul_rmc_configure_manager.h"

#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_transform_precoding.h"

#include <algorithm>
#include <iostream>

namespace vek::nr_mod_lib
{

void lib_nr_ul_rmc_configure_manager_t::init()
{
    _init_common(m_nr_ntn ? LIB_NR_CHANNEL_FR1_5M : LIB_NR_CHANNEL_FR1_100M);
    m_enable = false;
    m_rmc_rb_allocation = LIB_NR_UL_RMC_EDGE_FULL_LEFT;
    m_numerology = m_nr_ntn ? LIB_NR_SCS_15K : LIB_NR_SCS_30K;
    m_modulation = LIB_NR_MODULATION_HALF_PI_BPSK;
    m_enable_transfer_precoding = true;
    m_modified_mpr_behaviour = false;
    m_x_rb = 1;
    _update_read_only();
}

bool lib_nr_ul_rmc_configure_manager_t::set_rmc_rb_allocation(lib_nr_ul_rmc_rb_allocation_t allocation)
{
    const bool changed = assign(m_rmc_rb_allocation, offered_or_first(allocation, get_valid_rmc_rb_allocation_list()));
    set_modulation(m_modulation);
    return changed;
}

std::vector<lib_nr_ul_rmc_rb_allocation_t> lib_nr_ul_rmc_configure_manager_t::get_valid_rmc_rb_allocation_list() const
{
    if (m_frequency_range == NR_FR1)
        return {LIB_NR_UL_RMC_EDGE_FULL_LEFT, LIB_NR_UL_RMC_EDGE_FULL_RIGHT, LIB_NR_UL_RMC_EDGE_1RB_LEFT,
                LIB_NR_UL_RMC_EDGE_1RB_RIGHT, LIB_NR_UL_RMC_OUTER_FULL,      LIB_NR_UL_RMC_INNER_FULL,
                LIB_NR_UL_RMC_INNER_1RB_LEFT, LIB_NR_UL_RMC_INNER_1RB_RIGHT};
    std::vector<lib_nr_ul_rmc_rb_allocation_t> list = {
        LIB_NR_UL_RMC_OUTER_FULL,
        LIB_NR_UL_RMC_OUTER_XRB_LEFT,
        LIB_NR_UL_RMC_OUTER_XRB_RIGHT,
        LIB_NR_UL_RMC_INNER_FULL,
        LIB_NR_UL_RMC_INNER_XRB_LEFT,
        LIB_NR_UL_RMC_INNER_XRB_RIGHT,
        LIB_NR_UL_RMC_INNER_PARTIAL_LEFT,
        LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT,
        LIB_NR_UL_RMC_INNER_PARTIAL2_LEFT,
        LIB_NR_UL_RMC_INNER_PARTIAL2_RIGHT,
        LIB_NR_UL_RMC_INNER_FULL_REGION1,
        LIB_NR_UL_RMC_INNER_PARTIAL_LEFT_REGION1,
        LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT_REGION1,
        LIB_NR_UL_RMC_INNER_FULL_REGION2,
        LIB_NR_UL_RMC_INNER_PARTIAL_LEFT_REGION2,
        LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT_REGION2,
    };
    if (m_bandwidth == LIB_NR_CHANNEL_FR2_1_400M)
        for (const auto missing : {LIB_NR_UL_RMC_INNER_PARTIAL2_LEFT, LIB_NR_UL_RMC_INNER_FULL_REGION1})
            list.erase(std::find(list.begin(), list.end(), missing));
    return list;
}

bool lib_nr_ul_rmc_configure_manager_t::set_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    const bool changed = assign(m_bandwidth, offered_or_first(bandwidth, get_valid_bandwidth_list()));
    m_frequency_range = lib_nr_phy_common_t::get_freq_range_type(m_bandwidth);
    set_duplex_type(m_duplex_type);
    set_numerology(m_numerology);
    set_rmc_rb_allocation(m_rmc_rb_allocation);
    return changed;
}

std::vector<lib_nr_channel_bw_type_t> lib_nr_ul_rmc_configure_manager_t::get_valid_bandwidth_list() const
{
    const unsigned int last = m_nr_ntn ? LIB_NR_CHANNEL_FR1_20M : LIB_NR_CHANNEL_FR2_1_400M;
    std::vector<lib_nr_channel_bw_type_t> list;
    for (unsigned int bandwidth = LIB_NR_CHANNEL_FR1_5M; bandwidth <= last; ++bandwidth)
        list.push_back(static_cast<lib_nr_channel_bw_type_t>(bandwidth));
    return list;
}

bool lib_nr_ul_rmc_configure_manager_t::set_duplex_type(lib_nr_duplex_type_t duplex_type)
{
    return assign(m_duplex_type, offered_or_first(duplex_type, get_valid_duplex_type_list()));
}

std::vector<lib_nr_duplex_type_t> lib_nr_ul_rmc_configure_manager_t::get_valid_duplex_type_list() const
{
    if (m_nr_ntn)
        return {LIB_NR_DUPLEX_TYPE_FDD};
    if (m_frequency_range == NR_FR1)
        return {LIB_NR_DUPLEX_TYPE_FDD, LIB_NR_DUPLEX_TYPE_TDD};
    if (m_frequency_range == NR_FR2_1)
        return {LIB_NR_DUPLEX_TYPE_TDD};
    std::cout << "lib_nr_ul_rmc_configure_manager_t::get_valid_duplex_type_list : Error frequency range!" << std::endl;
    return {LIB_NR_DUPLEX_TYPE_FDD};
}

bool lib_nr_ul_rmc_configure_manager_t::set_numerology(lib_nr_numerology_type_t numerology)
{
    const bool changed = assign(m_numerology, offered_or_first(numerology, get_valid_numerology_list()));
    _update_read_only();
    return changed;
}

std::vector<lib_nr_numerology_type_t> lib_nr_ul_rmc_configure_manager_t::get_valid_numerology_list() const
{
    std::vector<lib_nr_numerology_type_t> list = _data_spacings();
    if (m_nr_ntn && m_bandwidth == LIB_NR_CHANNEL_FR1_5M)
        list.erase(std::remove(list.begin(), list.end(), LIB_NR_SCS_30K), list.end());
    return list;
}

bool lib_nr_ul_rmc_configure_manager_t::set_modulation(lib_nr_modulation_type_t modulation)
{
    const bool changed = assign(m_modulation, offered_or_first(modulation, get_valid_modulation_list()));
    _update_read_only();
    return changed;
}

std::vector<lib_nr_modulation_type_t> lib_nr_ul_rmc_configure_manager_t::get_valid_modulation_list() const
{
    std::vector<lib_nr_modulation_type_t> list = {LIB_NR_MODULATION_QPSK, LIB_NR_MODULATION_16QAM,
                                                  LIB_NR_MODULATION_64QAM};
    if (m_frequency_range != NR_FR1 && m_frequency_range != NR_FR2_1) {
        std::cout << "lib_nr_ul_rmc_configure_manager_t::get_valid_modulation_list : Error frequency range!"
                  << std::endl;
        return list;
    }
    if (m_enable_transfer_precoding)
        list.insert(list.begin(), LIB_NR_MODULATION_HALF_PI_BPSK);
    if (m_frequency_range == NR_FR1)
        list.push_back(LIB_NR_MODULATION_256QAM);
    return list;
}

bool lib_nr_ul_rmc_configure_manager_t::set_enable_transfer_precoding(bool enable)
{
    const bool changed = assign(m_enable_transfer_precoding, enable);
    set_modulation(m_modulation);
    return changed;
}

bool lib_nr_ul_rmc_configure_manager_t::set_modified_mpr_behaviour(bool modified)
{
    const bool changed = assign(m_modified_mpr_behaviour, modified);
    _update_read_only();
    return changed;
}

bool lib_nr_ul_rmc_configure_manager_t::set_x_rb(unsigned int x_rb)
{
    const unsigned int before = m_x_rb;
    m_x_rb = std::max(x_rb, 1U);
    _update_read_only();
    return m_x_rb != before;
}

// The resource blocks

/// At most so many: with transform precoding a product of powers of 2, 3 and 5, whatever the width; without it within
/// the width.
unsigned int lib_nr_ul_rmc_configure_manager_t::_caculate_rb_number(unsigned int rb_number) const
{
    return m_enable_transfer_precoding ? largest_transform_precoded_rb_num(rb_number)
                                       : std::min(rb_number, get_rb_number_of(m_numerology));
}

void lib_nr_ul_rmc_configure_manager_t::_place(unsigned int rb_offset, unsigned int rb_number)
{
    m_rb_offset = rb_offset;
    m_rb_number = rb_number;
}

/// The allocations of TS 38.521-1 and TS 38.521-2 clause 6.1. An inner one lies a third of the width, or the number of
/// its own resource blocks, away from the edge; 400 MHz has places of its own.
void lib_nr_ul_rmc_configure_manager_t::_update_read_only()
{
    const unsigned int width = get_rb_number_of(m_numerology);
    const bool is_60_khz = m_numerology == LIB_NR_SCS_60K;
    const unsigned int partial = is_60_khz ? 16 : 8;
    switch (m_rmc_rb_allocation) {
    case LIB_NR_UL_RMC_EDGE_FULL_LEFT:
        return _place(0, 2);
    case LIB_NR_UL_RMC_EDGE_FULL_RIGHT:
        return _place(width - 2, 2);
    case LIB_NR_UL_RMC_EDGE_1RB_LEFT:
        return _place(0, 1);
    case LIB_NR_UL_RMC_EDGE_1RB_RIGHT:
        return _place(width - 1, 1);
    case LIB_NR_UL_RMC_OUTER_FULL:
        return _place(0, _caculate_rb_number(width));
    case LIB_NR_UL_RMC_INNER_FULL:
        return m_frequency_range == NR_FR1 ? _place_inner_full_of_fr1(width) : _place_inner_full_of_fr2(width);
    case LIB_NR_UL_RMC_INNER_1RB_LEFT:
        return _place(1, 1);
    case LIB_NR_UL_RMC_INNER_1RB_RIGHT:
        return _place(width - 2, 1);
    case LIB_NR_UL_RMC_OUTER_XRB_LEFT:
        m_x_rb = _caculate_rb_number(m_x_rb);
        return _place(0, m_x_rb);
    case LIB_NR_UL_RMC_OUTER_XRB_RIGHT:
        return _place_x_rb(0, width, false);
    case LIB_NR_UL_RMC_INNER_XRB_LEFT:
        return _place_x_rb(_is_widest() ? 66 : m_modified_mpr_behaviour ? 1 : _third(width), width, true);
    case LIB_NR_UL_RMC_INNER_XRB_RIGHT:
        return _place_x_rb(0, _is_widest() ? 198 : width - (m_modified_mpr_behaviour ? 1 : width / 3), false);
    case LIB_NR_UL_RMC_INNER_PARTIAL_LEFT:
    case LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT:
        return _place_inner_partial(width);
    case LIB_NR_UL_RMC_INNER_PARTIAL2_LEFT:
        return is_60_khz ? _place(6, 6) : _place(3, 3);
    case LIB_NR_UL_RMC_INNER_PARTIAL2_RIGHT:
        return is_60_khz ? _place(width - 12, 6) : _place(width - 6, 3);
    case LIB_NR_UL_RMC_INNER_FULL_REGION1:
        return _place_full_region_1(width);
    case LIB_NR_UL_RMC_INNER_PARTIAL_LEFT_REGION1:
        return _place(_is_widest() ? 66 : m_modified_mpr_behaviour ? width / 3 : _third(width), partial);
    case LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT_REGION1:
        return _place(_is_widest() ? 190 : width - width / 3 - partial, partial);
    case LIB_NR_UL_RMC_INNER_FULL_REGION2: {
        const unsigned int number = _caculate_rb_number(width / 2);
        return _place(number / 2, number);
    }
    case LIB_NR_UL_RMC_INNER_PARTIAL_LEFT_REGION2:
        return _place(partial / 2, partial);
    case LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT_REGION2:
        return _place(width - partial - partial / 2, partial);
    }
}

/// Half of the width, as far from either edge as half of the number.
void lib_nr_ul_rmc_configure_manager_t::_place_inner_full_of_fr1(unsigned int width)
{
    const unsigned int half = width - width / 2;
    const unsigned int margin = half < 4 ? 1 : half / 2;
    const unsigned int number = _caculate_rb_number(width - half - margin < margin ? half - 1 : half);
    _place(number <= 3 ? 1 : number / 2, number);
}

void lib_nr_ul_rmc_configure_manager_t::_place_inner_full_of_fr2(unsigned int width)
{
    if (_is_widest())
        return _place(66, 66);
    const unsigned int number = _caculate_rb_number(m_modified_mpr_behaviour ? width / 3 : _third(width));
    _place(m_modified_mpr_behaviour ? number : _third(width), number);
}

/// x resource blocks at one end of a stretch; where it has no room for them, x becomes what it has room for.
void lib_nr_ul_rmc_configure_manager_t::_place_x_rb(unsigned int first, unsigned int end, bool at_first)
{
    unsigned int number = _caculate_rb_number(m_x_rb);
    if (number > end - first)
        number = m_x_rb = _caculate_rb_number(end - first);
    _place(at_first ? first : end - number, number);
}

void lib_nr_ul_rmc_configure_manager_t::_place_inner_partial(unsigned int width)
{
    const bool is_widened = m_modified_mpr_behaviour && m_numerology == LIB_NR_SCS_60K;
    const unsigned int number = is_widened ? (m_enable_transfer_precoding ? 8 : 7) : 4;
    if (m_rmc_rb_allocation == LIB_NR_UL_RMC_INNER_PARTIAL_LEFT)
        return _place(_is_widest() ? 66 : m_modified_mpr_behaviour ? number : _third(width), number);
    _place(_is_widest() ? 194 : width - number - (m_modified_mpr_behaviour ? number : width / 3), number);
}

void lib_nr_ul_rmc_configure_manager_t::_place_full_region_1(unsigned int width)
{
    if (_is_widest())
        return _place(66, _caculate_rb_number(66));
    const bool is_precoded_100_mhz =
        m_enable_transfer_precoding && m_bandwidth == LIB_NR_CHANNEL_FR2_1_100M && m_numerology == LIB_NR_SCS_120K;
    const unsigned int more = !m_enable_transfer_precoding && _is_narrowest() ? 1 : 0;
    _place(width / 3 + (is_precoded_100_mhz ? 1 : 0), _caculate_rb_number(width / 3) + more);
}

bool lib_nr_ul_rmc_configure_manager_t::_is_widest() const { return m_bandwidth == LIB_NR_CHANNEL_FR2_1_400M; }

bool lib_nr_ul_rmc_configure_manager_t::_is_narrowest() const
{
    return m_bandwidth == LIB_NR_CHANNEL_FR2_1_50M && m_numerology == LIB_NR_SCS_120K;
}

/// A third of the width; with 50 MHz at 120 kHz one more.
unsigned int lib_nr_ul_rmc_configure_manager_t::_third(unsigned int width) const
{
    return width / 3 + (_is_narrowest() ? 1 : 0);
}

} // namespace vek::nr_mod_lib
