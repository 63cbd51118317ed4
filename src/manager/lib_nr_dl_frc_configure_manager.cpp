#include "manager/lib_nr_dl_frc_configure_manager.h"

#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

/// What a channel for non-terrestrial networks leaves to choose: bandwidths that follow one another.
struct ntn_row_t
{
    lib_nr_dl_fixed_reference_channels_t channel;
    lib_nr_numerology_type_t numerology;
    lib_nr_channel_bw_type_t first;
    lib_nr_channel_bw_type_t last;
};
constexpr ntn_row_t k_ntn_rows[] = {
    {LIB_NR_NTN_FRC_FR1_A_3_2_1_1_1_QPSK, LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, LIB_NR_CHANNEL_FR1_10M},
    {LIB_NR_NTN_FRC_FR1_A_3_2_1_1_2_16QAM, LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, LIB_NR_CHANNEL_FR1_10M},
    {LIB_NR_NTN_FRC_FR2_A_3_2_1_2_1_QPSK, LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_200M},
    {LIB_NR_NTN_FRC_FR2_A_3_2_1_2_2_16QAM, LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_200M},
    {LIB_NR_NTN_FRC_FR2_A_3_2_1_2_3_64QAM, LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_200M},
    {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_1_QPSK, LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_400M},
    {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_2_16QAM, LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_400M},
    {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK, LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_200M, LIB_NR_CHANNEL_FR2_1_200M},
    {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_4_16QAM, LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_200M, LIB_NR_CHANNEL_FR2_1_200M},
    {LIB_NR_NTN_FRC_FR2_A_3_2_1_3_5_64QAM, LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_400M},
};

/// The row of a channel; one that is for terrestrial networks reads as the first, with a printed line.
const ntn_row_t& ntn_row_of(lib_nr_dl_fixed_reference_channels_t channel, const char* operation)
{
    for (const ntn_row_t& row : k_ntn_rows)
        if (row.channel == channel)
            return row;
    std::cout << "lib_nr_dl_frc_configure_manager_t::" << operation << " : Error FRC!" << std::endl;
    return k_ntn_rows[0];
}

template <class value_t>
std::vector<value_t> from_to(value_t first, value_t last)
{
    std::vector<value_t> list;
    for (auto value = static_cast<std::uint32_t>(first); value <= static_cast<std::uint32_t>(last); ++value)
        list.push_back(static_cast<value_t>(value));
    return list;
}

} // namespace

void lib_nr_dl_frc_configure_manager_t::init()
{
    _init_common(m_nr_ntn ? LIB_NR_CHANNEL_FR1_10M : LIB_NR_CHANNEL_FR1_100M);
    m_enable = false;
    m_fixed_reference_channels = m_nr_ntn ? LIB_NR_NTN_FRC_FR1_A_3_2_1_1_1_QPSK : LIB_NR_DL_FRC_FR1_QPSK;
    m_numerolgy = m_nr_ntn ? LIB_NR_SCS_15K : LIB_NR_SCS_30K;
}

bool lib_nr_dl_frc_configure_manager_t::set_fixed_reference_channels(lib_nr_dl_fixed_reference_channels_t channel)
{
    const bool changed = assign(m_fixed_reference_channels, channel);
    m_frequency_range = _get_freq_range_type();
    set_duplex_type(m_duplex_type);
    set_bandwidth(m_bandwidth);
    return changed;
}

std::vector<lib_nr_dl_fixed_reference_channels_t> lib_nr_dl_frc_configure_manager_t::get_valid_frc_list() const
{
    return m_nr_ntn ? from_to(LIB_NR_NTN_FRC_FR1_A_3_2_1_1_1_QPSK, LIB_NR_NTN_FRC_FR2_A_3_2_1_3_5_64QAM)
                    : from_to(LIB_NR_DL_FRC_FR1_QPSK, LIB_NR_DL_FRC_FR2_256QAM);
}

bool lib_nr_dl_frc_configure_manager_t::set_numerolgy(lib_nr_numerology_type_t numerology)
{
    return assign(m_numerolgy, offered_or_first(numerology, get_valid_numerology_list()));
}

std::vector<lib_nr_numerology_type_t> lib_nr_dl_frc_configure_manager_t::get_valid_numerology_list() const
{
    if (!m_nr_ntn)
        return _data_spacings();
    return {ntn_row_of(m_fixed_reference_channels, "get_valid_numerology_list").numerology};
}

bool lib_nr_dl_frc_configure_manager_t::set_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    const bool changed = assign(m_bandwidth, offered_or_first(bandwidth, get_valid_bandwidth_list()));
    set_duplex_type(m_duplex_type);
    set_numerolgy(m_numerolgy);
    return changed;
}

std::vector<lib_nr_channel_bw_type_t> lib_nr_dl_frc_configure_manager_t::get_valid_bandwidth_list() const
{
    if (!m_nr_ntn)
        return lib_nr_phy_common_t::get_valid_bandwidth_list(m_frequency_range);
    const ntn_row_t& row = ntn_row_of(m_fixed_reference_channels, "get_valid_bandwidth_list");
    return from_to(row.first, row.last);
}

bool lib_nr_dl_frc_configure_manager_t::set_duplex_type(lib_nr_duplex_type_t duplex_type)
{
    return assign(m_duplex_type, offered_or_first(duplex_type, get_valid_duplex_type_list()));
}

std::vector<lib_nr_duplex_type_t> lib_nr_dl_frc_configure_manager_t::get_valid_duplex_type_list() const
{
    if (m_nr_ntn)
        return {LIB_NR_DUPLEX_TYPE_FDD};
    if (m_frequency_range == NR_FR1)
        return {LIB_NR_DUPLEX_TYPE_FDD, LIB_NR_DUPLEX_TYPE_TDD};
    if (m_frequency_range != NR_FR2_1)
        std::cout << "lib_nr_dl_frc_configure_manager_t::get_valid_duplex_type_list : Error frequency range!"
                  << std::endl;
    return {LIB_NR_DUPLEX_TYPE_TDD};
}

lib_nr_freq_range_type_t lib_nr_dl_frc_configure_manager_t::_get_freq_range_type() const
{
    switch (m_fixed_reference_channels) {
    case LIB_NR_DL_FRC_FR1_QPSK:
    case LIB_NR_DL_FRC_FR1_64QAM:
    case LIB_NR_DL_FRC_FR1_256QAM:
    case LIB_NR_DL_FRC_FR1_1024QAM:
    case LIB_NR_NTN_FRC_FR1_A_3_2_1_1_1_QPSK:
    case LIB_NR_NTN_FRC_FR1_A_3_2_1_1_2_16QAM:
        return NR_FR1;
    default:
        break;
    }
    if (m_fixed_reference_channels <= LIB_NR_NTN_FRC_FR2_A_3_2_1_3_5_64QAM)
        return NR_FR2_1;
    std::cout << "lib_nr_dl_frc_configure_manager_t::_get_freq_range_type : Error FRC!" << std::endl;
    return NR_FR1;
}

} // namespace vek::nr_mod_lib
