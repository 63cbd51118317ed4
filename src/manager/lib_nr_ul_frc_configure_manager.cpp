#include "manager/lib_nr_ul_frc_configure_manager.h"

#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/tables/lib_nr_ul_frc_table.h"

#include <algorithm>
#include <iostream>
#include <iterator>

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_frame_ms = 10.0;

/// The periods of a TDD pattern in ms, by the slots of a frame; none for a number of slots that no channel has.
std::vector<double> periods_of(unsigned int slots_in_frame)
{
    switch (slots_in_frame) {
    case 10:
        return {1.0, 2.0, 5.0, 10.0};
    case 20:
    case 320:
        return {0.5, 1.0, 2.0, 2.5, 5.0, 10.0};
    case 40:
        return {0.5, 1.0, 1.25, 2.0, 2.5, 5.0, 10.0};
    case 80:
        return {0.5, 0.625, 1.0, 1.25, 2.0, 2.5, 5.0, 10.0};
    default:
        return {};
    }
}

bool is_within(lib_nr_ul_frc_reference_channel_t channel, lib_nr_ul_frc_reference_channel_t first,
               lib_nr_ul_frc_reference_channel_t last)
{
    return channel >= first && channel <= last;
}

/// Whether the first DMRS symbol may be the third or the fourth of the slot.
bool has_both_type_a_positions(lib_nr_ul_frc_reference_channel_t channel)
{
    return is_within(channel, LIB_NR_G_FR1_A3_33, LIB_NR_G_FR1_A3_34A) ||
           is_within(channel, LIB_NR_G_FR1_A4_29, LIB_NR_G_FR1_A4_30A) ||
           is_within(channel, LIB_NR_G_FR1_A8_1, LIB_NR_G_FR1_A8_2);
}

/// Resource blocks left out of the eight interlaced channels of a family, G-FR1-A1-12 or G-FR1-A2-7 and up.
constexpr unsigned int k_unused_rbs[] = {2, 4, 6, 1, 6, 1, 2, 2};

} // namespace

void lib_nr_ul_frc_configure_manager_t::init()
{
    _init_common(m_nr_ntn ? LIB_NR_CHANNEL_FR1_5M : LIB_NR_CHANNEL_FR1_50M);
    m_enable = false;
    m_fixed_reference_channels = m_nr_ntn ? LIB_NR_FR1_NTN_FRC_A_1 : LIB_NR_FR1_FRC_A_1;
    m_frc_reference_channels = m_nr_ntn ? LIB_NR_G_FR1_NTN_A1_1 : LIB_NR_G_FR1_A1_1;
    m_periodicity = 2.0;
    m_tdd_ul_slot_number = 1;
    m_rb_offset = 0;
    m_mapping_type = LIB_NR_DMRS_MAPPING_TYPEA;
    m_dmrs_type_a_position = 2;
    m_interlace_index = 0;
}

bool lib_nr_ul_frc_configure_manager_t::set_fixed_reference_channels(lib_nr_ul_fixed_reference_channels_t family)
{
    const bool changed =
        assign(m_fixed_reference_channels, offered_or_first(family, get_valid_fixed_reference_channels_list()));
    set_frc_reference_channels(m_frc_reference_channels);
    return changed;
}

std::vector<lib_nr_ul_fixed_reference_channels_t>
lib_nr_ul_frc_configure_manager_t::get_valid_fixed_reference_channels_list() const
{
    const unsigned int first = m_nr_ntn ? LIB_NR_FR1_NTN_FRC_A_1 : LIB_NR_FR1_FRC_A_1;
    const unsigned int last = m_nr_ntn ? LIB_NR_FR2_NTN_FRC_A_6 : LIB_NR_FR2_FRC_A_10;
    std::vector<lib_nr_ul_fixed_reference_channels_t> list;
    for (unsigned int family = first; family <= last; ++family)
        list.push_back(static_cast<lib_nr_ul_fixed_reference_channels_t>(family));
    return list;
}

bool lib_nr_ul_frc_configure_manager_t::set_frc_reference_channels(lib_nr_ul_frc_reference_channel_t channel)
{
    const bool changed =
        assign(m_frc_reference_channels, offered_or_first(channel, get_valid_frc_reference_channels_list()));
    m_frequency_range = _get_freq_range_type();
    set_mapping_type(m_mapping_type);
    set_bandwidth(m_bandwidth);
    set_dmrs_type_a_position(m_dmrs_type_a_position);
    set_periodicity(m_periodicity);
    return changed;
}

std::vector<lib_nr_ul_frc_reference_channel_t>
lib_nr_ul_frc_configure_manager_t::get_valid_frc_reference_channels_list() const
{
    return get_ul_frc_channels(m_fixed_reference_channels);
}

bool lib_nr_ul_frc_configure_manager_t::set_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    const bool changed = assign(m_bandwidth, offered_or_first(bandwidth, get_valid_bandwidth_list()));
    set_rb_offset(m_rb_offset);
    return changed;
}

std::vector<lib_nr_channel_bw_type_t> lib_nr_ul_frc_configure_manager_t::get_valid_bandwidth_list() const
{
    if (is_type_2())
        return {_interlace_bandwidth()};
    std::vector<lib_nr_channel_bw_type_t> list = _bandwidths_with_room(m_frequency_range);
    // G-FR2-A4-16 and -17 count as FR2-2, which has no 60 kHz.
    return list.empty() ? _bandwidths_with_room(NR_FR2_1) : list;
}

std::vector<lib_nr_channel_bw_type_t>
lib_nr_ul_frc_configure_manager_t::_bandwidths_with_room(lib_nr_freq_range_type_t range) const
{
    using reference_t = lib_nr_phy_common_t;
    const lib_nr_numerology_type_t numerology = get_numerolgy();
    std::vector<lib_nr_channel_bw_type_t> list = m_nr_ntn ? reference_t::get_ntn_valid_bandwidth_list(numerology, range)
                                                          : reference_t::get_valid_bandwidth_list(numerology, range);
    list.erase(std::remove_if(list.begin(), list.end(),
                              [&](lib_nr_channel_bw_type_t bandwidth) {
                                  return reference_t::get_max_transmit_rb_num(numerology, bandwidth) < get_rb_num();
                              }),
               list.end());
    return list;
}

lib_nr_channel_bw_type_t lib_nr_ul_frc_configure_manager_t::_interlace_bandwidth() const
{
    switch (_row().interlace_bandwidth_mhz) {
    case 10:
        return LIB_NR_CHANNEL_FR1_10M;
    case 20:
        return LIB_NR_CHANNEL_FR1_20M;
    case 40:
        return LIB_NR_CHANNEL_FR1_40M;
    case 60:
        return LIB_NR_CHANNEL_FR1_60M;
    case 80:
        return LIB_NR_CHANNEL_FR1_80M;
    default:
        std::cout << "lib_nr_ul_frc_configure_manager_t::get_valid_bandwidth_list : Error not support bandwidth!"
                  << std::endl;
        return m_frequency_range == NR_FR1 ? LIB_NR_CHANNEL_FR1_50M : LIB_NR_CHANNEL_FR2_1_50M;
    }
}

std::vector<lib_nr_numerology_type_t> lib_nr_ul_frc_configure_manager_t::get_valid_numerology_list() const
{
    return lib_nr_phy_common_t::get_valid_numerology_list(m_bandwidth);
}

bool lib_nr_ul_frc_configure_manager_t::set_duplex_type(lib_nr_duplex_type_t duplex_type)
{
    return assign(m_duplex_type, offered_or_first(duplex_type, get_valid_duplex_type_list()));
}

std::vector<lib_nr_duplex_type_t> lib_nr_ul_frc_configure_manager_t::get_valid_duplex_type_list() const
{
    if (m_nr_ntn)
        return {LIB_NR_DUPLEX_TYPE_FDD};
    return {LIB_NR_DUPLEX_TYPE_FDD, LIB_NR_DUPLEX_TYPE_TDD};
}

bool lib_nr_ul_frc_configure_manager_t::set_periodicity(double periodicity)
{
    if (periodicity != periodicity)
        return false;
    const bool changed = assign(m_periodicity, offered_or_first(periodicity, get_valid_periodicity_list()));
    set_tdd_ul_slot_number(m_tdd_ul_slot_number);
    return changed;
}

std::vector<double> lib_nr_ul_frc_configure_manager_t::get_valid_periodicity_list() const
{
    std::vector<double> periods = periods_of(_get_slot_num());
    if (!periods.empty())
        return periods;
    std::cout << "lib_nr_ul_frc_configure_manager_t::get_valid_periodicity_list : Error number of slots in frame"
              << std::endl;
    constexpr unsigned int k_slots_of_15_khz = 10;
    return periods_of(k_slots_of_15_khz);
}

bool lib_nr_ul_frc_configure_manager_t::set_tdd_ul_slot_number(unsigned int number)
{
    return assign(m_tdd_ul_slot_number, std::min(std::max(number, 1U), _slots_in_period()));
}

bool lib_nr_ul_frc_configure_manager_t::set_rb_offset(unsigned int rb_offset)
{
    return assign(m_rb_offset, std::min(rb_offset, _last_rb_offset()));
}

unsigned int lib_nr_ul_frc_configure_manager_t::_last_rb_offset() const
{
    const unsigned int width = get_rb_number_of(get_numerolgy());
    return width > get_rb_num() ? width - get_rb_num() : 0;
}

bool lib_nr_ul_frc_configure_manager_t::set_mapping_type(lib_nr_sch_dmrs_mapping_type_t mapping_type)
{
    return assign(m_mapping_type, offered_or_first(mapping_type, get_valid_mapping_type_list()));
}

std::vector<lib_nr_sch_dmrs_mapping_type_t> lib_nr_ul_frc_configure_manager_t::get_valid_mapping_type_list() const
{
    if (has_both_type_a_positions(m_frc_reference_channels) ||
        is_within(m_frc_reference_channels, LIB_NR_G_FR1_A3B_5, LIB_NR_G_FR1_A3B_8))
        return {LIB_NR_DMRS_MAPPING_TYPEA};
    const lib_nr_ul_frc_family_t* family = find_ul_frc_family(m_fixed_reference_channels);
    if (!family) {
        std::cout << "lib_nr_ul_frc_configure_manager_t::get_valid_mapping_type_list : Error not support the FRC!"
                  << std::endl;
        return {LIB_NR_DMRS_MAPPING_TYPEA};
    }
    std::vector<lib_nr_sch_dmrs_mapping_type_t> list;
    if (family->has_mapping_type_a)
        list.push_back(LIB_NR_DMRS_MAPPING_TYPEA);
    if (family->has_mapping_type_b)
        list.push_back(LIB_NR_DMRS_MAPPING_TYPEB);
    return list;
}

bool lib_nr_ul_frc_configure_manager_t::set_dmrs_type_a_position(unsigned int position)
{
    return assign(m_dmrs_type_a_position, offered_or_first(position, get_valid_dmrs_type_a_position_list()));
}

std::vector<unsigned int> lib_nr_ul_frc_configure_manager_t::get_valid_dmrs_type_a_position_list() const
{
    if (has_both_type_a_positions(m_frc_reference_channels))
        return {2, 3};
    if (m_mapping_type == LIB_NR_DMRS_MAPPING_TYPEA)
        return {2};
    return {0};
}

bool lib_nr_ul_frc_configure_manager_t::set_interlace_index(unsigned int index)
{
    constexpr unsigned int k_most_at_15_khz = 10;
    constexpr unsigned int k_most_elsewhere = 5;
    return assign(m_interlace_index,
                  std::min(index, get_numerolgy() == LIB_NR_SCS_15K ? k_most_at_15_khz : k_most_elsewhere));
}

// What the channel fixes

const lib_nr_ul_frc_row_t& lib_nr_ul_frc_configure_manager_t::_row() const
{
    return get_ul_frc_row(m_frc_reference_channels);
}

lib_nr_numerology_type_t lib_nr_ul_frc_configure_manager_t::get_numerolgy() const { return _row().numerology; }

unsigned int lib_nr_ul_frc_configure_manager_t::get_rb_num() const { return _row().rb_num; }

unsigned int lib_nr_ul_frc_configure_manager_t::get_symbol_number() const { return _row().symbol_num; }

unsigned int lib_nr_ul_frc_configure_manager_t::get_layers() const { return _row().layers; }

bool lib_nr_ul_frc_configure_manager_t::get_enable_transfer_precoding() const { return _row().transform_precoding; }

unsigned int lib_nr_ul_frc_configure_manager_t::get_dmrs_additional_position() const
{
    return _row().dmrs_additional_position;
}

bool lib_nr_ul_frc_configure_manager_t::is_type_2() const { return _row().interlace_bandwidth_mhz != 0; }

unsigned int lib_nr_ul_frc_configure_manager_t::get_unused_rb() const
{
    if (!is_type_2())
        return 0;
    const auto first = m_fixed_reference_channels == LIB_NR_FR1_FRC_A_2 ? LIB_NR_G_FR1_A2_7 : LIB_NR_G_FR1_A1_12;
    return k_unused_rbs[(m_frc_reference_channels - first) % std::size(k_unused_rbs)];
}

lib_nr_freq_range_type_t lib_nr_ul_frc_configure_manager_t::_get_freq_range_type() const
{
    const lib_nr_ul_fixed_reference_channels_t family = m_fixed_reference_channels;
    if (family <= LIB_NR_FR1_FRC_A_9_A_8 || (family >= LIB_NR_FR1_NTN_FRC_A_1 && family <= LIB_NR_FR1_NTN_FRC_A_3A))
        return NR_FR1;
    if (family > LIB_NR_FR2_NTN_FRC_A_6) {
        std::cout << "lib_nr_ul_frc_configure_manager_t::_get_freq_range_type : Error FRC!" << std::endl;
        return NR_FR1;
    }
    if (family >= LIB_NR_FR2_NTN_FRC_A_1)
        return NR_FR2_1;
    const lib_nr_ul_frc_reference_channel_t channel = m_frc_reference_channels;
    if (!is_within(channel, LIB_NR_G_FR2_A1_1, LIB_NR_G_FR2_A10_12)) {
        std::cout << "lib_nr_ul_frc_configure_manager_t::_get_freq_range_type : Error reference channel in fr2!"
                  << std::endl;
        return NR_FR1;
    }
    const bool is_fr2_2 = is_within(channel, LIB_NR_G_FR2_A3B_3, LIB_NR_G_FR2_A3B_10) ||
                          is_within(channel, LIB_NR_G_FR2_A4_16, LIB_NR_G_FR2_A4_23) ||
                          is_within(channel, LIB_NR_G_FR2_A5_11, LIB_NR_G_FR2_A5_13) ||
                          is_within(channel, LIB_NR_G_FR2_A7_11, LIB_NR_G_FR2_A7_13);
    return is_fr2_2 ? NR_FR2_2 : NR_FR2_1;
}

// Slots

unsigned int lib_nr_ul_frc_configure_manager_t::_get_slot_num() const
{
    const unsigned int slots = lib_nr_phy_common_t::get_slot_in_frame(get_numerolgy());
    if (periods_of(slots).empty())
        std::cout << "lib_nr_ul_frc_configure_manager_t::_get_slot_num : Error slot in frame" << std::endl;
    return slots;
}

/// At least 1: no period on offer is shorter than a slot.
unsigned int lib_nr_ul_frc_configure_manager_t::_slots_in_period() const
{
    return static_cast<unsigned int>(_get_slot_num() * m_periodicity / k_frame_ms);
}

std::string lib_nr_ul_frc_configure_manager_t::get_sent_slots() const
{
    const unsigned int slots_in_frame = _get_slot_num();
    if (m_duplex_type == LIB_NR_DUPLEX_TYPE_FDD)
        return "0:" + std::to_string(slots_in_frame - 1);
    const unsigned int period = _slots_in_period();
    std::string text;
    for (unsigned int end = period; end <= slots_in_frame; end += period)
        for (unsigned int slot = end - m_tdd_ul_slot_number; slot < end; ++slot)
            append_index(text, slot);
    return text;
}

std::string lib_nr_ul_frc_configure_manager_t::get_slot_allocation_str() const
{
    return std::string(_slots_in_period() - m_tdd_ul_slot_number, 'S') + std::string(m_tdd_ul_slot_number, 'U');
}

} // namespace vek::nr_mod_lib
