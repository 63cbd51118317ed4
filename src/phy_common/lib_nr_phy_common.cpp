#include "phy_common/lib_nr_phy_common.h"

#include "common/lib_common_math.h"
#include "phy_common/tables/lib_nr_srs_bandwidth_table.h"

#include <algorithm>
#include <array>
#include <iostream>

namespace vek::nr_mod_lib
{

namespace
{

using bandwidth_list_t = std::vector<lib_nr_channel_bw_type_t>;

constexpr unsigned int k_minimum_fft_length = 4;
constexpr std::uint32_t k_spacing_number = 7;
constexpr std::uint32_t k_bandwidth_number = 24;

// TS 38.104 Tables 5.3.2-1 to 5.3.2-3: resource blocks by bandwidth (rows) and mu; 0 where the pair does not exist.
constexpr std::array<std::array<std::uint16_t, k_spacing_number>, k_bandwidth_number> k_max_rb_number = {{
    {25, 11, 0, 0, 0, 0, 0},     // FR1, 5 MHz
    {52, 24, 11, 0, 0, 0, 0},    // 10 MHz
    {79, 38, 18, 0, 0, 0, 0},    // 15 MHz
    {106, 51, 24, 0, 0, 0, 0},   // 20 MHz
    {133, 65, 31, 0, 0, 0, 0},   // 25 MHz
    {160, 78, 38, 0, 0, 0, 0},   // 30 MHz
    {188, 92, 44, 0, 0, 0, 0},   // 35 MHz
    {216, 106, 51, 0, 0, 0, 0},  // 40 MHz
    {242, 119, 58, 0, 0, 0, 0},  // 45 MHz
    {270, 133, 65, 0, 0, 0, 0},  // 50 MHz
    {0, 162, 79, 0, 0, 0, 0},    // 60 MHz
    {0, 189, 93, 0, 0, 0, 0},    // 70 MHz
    {0, 217, 107, 0, 0, 0, 0},   // 80 MHz
    {0, 245, 121, 0, 0, 0, 0},   // 90 MHz
    {0, 273, 135, 0, 0, 0, 0},   // 100 MHz
    {0, 0, 66, 32, 0, 0, 0},     // FR2-1, 50 MHz
    {0, 0, 132, 66, 32, 0, 0},   // 100 MHz
    {0, 0, 264, 132, 66, 0, 0},  // 200 MHz
    {0, 0, 0, 264, 132, 0, 0},   // 400 MHz
    {0, 0, 0, 66, 32, 0, 0},     // FR2-2, 100 MHz
    {0, 0, 0, 264, 132, 66, 33}, // 400 MHz
    {0, 0, 0, 0, 0, 124, 62},    // 800 MHz
    {0, 0, 0, 0, 0, 248, 124},   // 1600 MHz
    {0, 0, 0, 0, 0, 0, 148},     // 2000 MHz
}};

// The spacings of a frequency range and the bandwidths that go with each. The check is narrower than the table of
// resource blocks: 240 kHz serves SS/PBCH blocks in FR2-1 alone.
struct spacing_row_t
{
    lib_nr_freq_range_type_t range;
    lib_nr_numerology_type_t spacing;
    lib_nr_channel_bw_type_t first;
    lib_nr_channel_bw_type_t last;
};
constexpr spacing_row_t k_valid_pairs[] = {
    {NR_FR1, LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_5M, LIB_NR_CHANNEL_FR1_50M},
    {NR_FR1, LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_5M, LIB_NR_CHANNEL_FR1_100M},
    {NR_FR1, LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_10M, LIB_NR_CHANNEL_FR1_100M},
    {NR_FR2_1, LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_200M},
    {NR_FR2_1, LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_400M},
    {NR_FR2_1, LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_1_100M, LIB_NR_CHANNEL_FR2_1_400M},
    {NR_FR2_2, LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_2_100M, LIB_NR_CHANNEL_FR2_2_400M},
    {NR_FR2_2, LIB_NR_SCS_480K, LIB_NR_CHANNEL_FR2_2_400M, LIB_NR_CHANNEL_FR2_2_1600M},
    {NR_FR2_2, LIB_NR_SCS_960K, LIB_NR_CHANNEL_FR2_2_400M, LIB_NR_CHANNEL_FR2_2_2000M},
};

bandwidth_list_t from_to(lib_nr_channel_bw_type_t first, lib_nr_channel_bw_type_t last)
{
    bandwidth_list_t list;
    for (std::uint32_t value = first; value <= last; ++value)
        list.push_back(static_cast<lib_nr_channel_bw_type_t>(value));
    return list;
}

bandwidth_list_t range_error(lib_nr_channel_bw_type_t fallback)
{
    std::cout << "lib_nr_phy_common_t::get_valid_bandwidth_list : Error frequency range!" << std::endl;
    return {fallback};
}

bandwidth_list_t spacing_error(bandwidth_list_t fallback)
{
    std::cout << "lib_nr_phy_common_t::get_valid_bandwidth_list : Error combination of SCS and frequency range!"
              << std::endl;
    return fallback;
}

} // namespace

unsigned int lib_nr_phy_common_t::get_scs_hz_value(lib_nr_numerology_type_t numerology)
{
    if (numerology >= k_spacing_number) {
        std::cout << "lib_nr_phy_common_t::get_scs_hz_value Report: scs error" << std::endl;
        return 30000;
    }
    return 15000U << numerology;
}

unsigned int lib_nr_phy_common_t::get_u_from_scs(lib_nr_numerology_type_t numerology)
{
    if (numerology >= k_spacing_number) {
        std::cout << "lib_nr_phy_common_t::get_u_from_scs Report: scs error.." << std::endl;
        return 0;
    }
    return numerology;
}

lib_nr_freq_range_type_t lib_nr_phy_common_t::get_freq_range_type(lib_nr_channel_bw_type_t bandwidth)
{
    if (bandwidth >= k_bandwidth_number) {
        std::cout << "lib_nr_phy_common_t::get_freq_range_type Report : Unexpected Channel Bandwidth Type!"
                  << std::endl;
        return NR_FR1;
    }
    if (bandwidth < LIB_NR_CHANNEL_FR2_1_50M)
        return NR_FR1;
    return bandwidth < LIB_NR_CHANNEL_FR2_2_100M ? NR_FR2_1 : NR_FR2_2;
}

bool lib_nr_phy_common_t::check_numerology_bandwidth_valid(lib_nr_numerology_type_t numerology,
                                                           lib_nr_channel_bw_type_t bandwidth)
{
    const lib_nr_freq_range_type_t range = get_freq_range_type(bandwidth);
    const bool is_known = bandwidth < k_bandwidth_number;
    for (const spacing_row_t& row : k_valid_pairs)
        if (row.range == range && row.spacing == numerology)
            return !is_known || (bandwidth >= row.first && bandwidth <= row.last);
    return false;
}

unsigned int lib_nr_phy_common_t::get_slot_in_frame(lib_nr_numerology_type_t numerology)
{
    return 10U << get_u_from_scs(numerology);
}

unsigned int lib_nr_phy_common_t::get_symbol_number_in_slot(lib_nr_cyclic_prefix_type_t cp_type)
{
    return cp_type == LIB_NR_EXTEND_CP ? 12 : 14;
}

unsigned int lib_nr_phy_common_t::get_symbol_number_in_slot(lib_nr_numerology_type_t,
                                                            lib_nr_cyclic_prefix_type_t cp_type)
{
    return get_symbol_number_in_slot(cp_type);
}

unsigned int lib_nr_phy_common_t::get_symbol_number_in_frame(lib_nr_numerology_type_t numerology,
                                                             lib_nr_cyclic_prefix_type_t cp_type)
{
    return get_symbol_number_in_slot(numerology, cp_type) * get_slot_in_frame(numerology);
}

unsigned int lib_nr_phy_common_t::get_max_transmit_rb_num(lib_nr_numerology_type_t numerology,
                                                          lib_nr_channel_bw_type_t bandwidth)
{
    if (numerology < k_spacing_number && bandwidth < k_bandwidth_number && k_max_rb_number[bandwidth][numerology] > 0)
        return k_max_rb_number[bandwidth][numerology];
    std::cout << "lib_nr_phy_common_t::get_max_transmit_rb_num Report : Illegal Input Arguments!" << std::endl;
    return 0;
}

unsigned int lib_nr_phy_common_t::get_subcarrier_total_number(lib_nr_numerology_type_t numerology,
                                                              lib_nr_channel_bw_type_t bandwidth)
{
    return k_subcarriers_per_rb * get_max_transmit_rb_num(numerology, bandwidth);
}

unsigned int lib_nr_phy_common_t::get_fft_length(lib_nr_numerology_type_t numerology,
                                                 lib_nr_channel_bw_type_t bandwidth)
{
    return common_lib::lib_common_math_t::get_min_pow_of_2(get_subcarrier_total_number(numerology, bandwidth),
                                                           k_minimum_fft_length);
}

std::vector<lib_nr_channel_bw_type_t> lib_nr_phy_common_t::get_valid_bandwidth_list(lib_nr_freq_range_type_t freq_range)
{
    switch (freq_range) {
    case NR_FR1:
        return from_to(LIB_NR_CHANNEL_FR1_5M, LIB_NR_CHANNEL_FR1_100M);
    case NR_FR2_1:
        return from_to(LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_400M);
    case NR_FR2_2:
        return from_to(LIB_NR_CHANNEL_FR2_2_100M, LIB_NR_CHANNEL_FR2_2_2000M);
    }
    return range_error(LIB_NR_CHANNEL_FR1_100M);
}

std::vector<lib_nr_channel_bw_type_t> lib_nr_phy_common_t::get_valid_bandwidth_list(lib_nr_numerology_type_t numerology,
                                                                                    lib_nr_freq_range_type_t freq_range)
{
    if (numerology == LIB_NR_SCS_240K && freq_range != NR_FR1)
        return {LIB_NR_CHANNEL_FR2_1_100M, LIB_NR_CHANNEL_FR2_2_100M, LIB_NR_CHANNEL_FR2_1_200M,
                LIB_NR_CHANNEL_FR2_1_400M, LIB_NR_CHANNEL_FR2_2_400M};
    if (numerology == LIB_NR_SCS_960K && freq_range == NR_FR2_2)
        return from_to(LIB_NR_CHANNEL_FR2_2_800M, LIB_NR_CHANNEL_FR2_2_2000M);
    for (const spacing_row_t& row : k_valid_pairs)
        if (row.range == freq_range && row.spacing == numerology)
            return from_to(row.first, row.last);

    switch (freq_range) {
    case NR_FR1:
        return spacing_error(from_to(LIB_NR_CHANNEL_FR1_10M, LIB_NR_CHANNEL_FR1_50M));
    case NR_FR2_1:
        return spacing_error(from_to(LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_200M));
    case NR_FR2_2:
        return spacing_error(from_to(LIB_NR_CHANNEL_FR2_2_800M, LIB_NR_CHANNEL_FR2_2_1600M));
    }
    return range_error(LIB_NR_CHANNEL_FR1_100M);
}

std::vector<lib_nr_channel_bw_type_t>
lib_nr_phy_common_t::get_ntn_valid_bandwidth_list(lib_nr_freq_range_type_t freq_range)
{
    switch (freq_range) {
    case NR_FR1:
        return {LIB_NR_CHANNEL_FR1_5M, LIB_NR_CHANNEL_FR1_10M, LIB_NR_CHANNEL_FR1_15M, LIB_NR_CHANNEL_FR1_20M,
                LIB_NR_CHANNEL_FR1_30M};
    case NR_FR2_1:
        return from_to(LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_400M);
    default:
        return range_error(LIB_NR_CHANNEL_FR1_30M);
    }
}

std::vector<lib_nr_channel_bw_type_t>
lib_nr_phy_common_t::get_ntn_valid_bandwidth_list(lib_nr_numerology_type_t numerology,
                                                  lib_nr_freq_range_type_t freq_range)
{
    switch (freq_range) {
    case NR_FR1: {
        bandwidth_list_t list = get_ntn_valid_bandwidth_list(NR_FR1);
        if (numerology == LIB_NR_SCS_15K || numerology == LIB_NR_SCS_30K)
            return list;
        list.erase(list.begin()); // 5 MHz is too narrow for the wider spacings
        return numerology == LIB_NR_SCS_60K ? list : spacing_error(list);
    }
    case NR_FR2_1: {
        if (numerology == LIB_NR_SCS_120K)
            return get_ntn_valid_bandwidth_list(NR_FR2_1);
        const bandwidth_list_t list = from_to(LIB_NR_CHANNEL_FR2_1_50M, LIB_NR_CHANNEL_FR2_1_200M);
        return numerology == LIB_NR_SCS_60K ? list : spacing_error(list);
    }
    default:
        return range_error(LIB_NR_CHANNEL_FR1_30M);
    }
}

std::vector<lib_nr_channel_bw_type_t> lib_nr_phy_common_t::get_carrier_bandwidth_list(bool ntn)
{
    if (!ntn)
        return from_to(LIB_NR_CHANNEL_FR1_5M, LIB_NR_CHANNEL_FR2_2_2000M);
    bandwidth_list_t list = get_ntn_valid_bandwidth_list(NR_FR1);
    const bandwidth_list_t fr2 = get_ntn_valid_bandwidth_list(NR_FR2_1);
    list.insert(list.end(), fr2.begin(), fr2.end());
    return list;
}

bool lib_nr_phy_common_t::is_ntn_bandwidth(lib_nr_channel_bw_type_t bandwidth)
{
    const bandwidth_list_t list = get_carrier_bandwidth_list(true);
    return std::find(list.begin(), list.end(), bandwidth) != list.end();
}

std::vector<lib_nr_numerology_type_t> lib_nr_phy_common_t::get_valid_numerology_list(lib_nr_channel_bw_type_t bandwidth)
{
    std::vector<lib_nr_numerology_type_t> list;
    for (std::uint32_t value = 0; value < k_spacing_number; ++value) {
        const auto numerology = static_cast<lib_nr_numerology_type_t>(value);
        if (check_numerology_bandwidth_valid(numerology, bandwidth))
            list.push_back(numerology);
    }
    return list;
}

void lib_nr_phy_common_t::_srs_bw_config_init(srs_bw_t& table)
{
    table.m_srs.clear();
    table.n.clear();
    for (unsigned char b_srs = 0; b_srs < 4; ++b_srs) {
        for (const lib_nr_srs_bandwidth_row_t& row : lib_nr_srs_bandwidth_table()) {
            table.m_srs[b_srs].push_back(row.m_srs[b_srs]);
            table.n[b_srs].push_back(row.n[b_srs]);
        }
    }
}

} // namespace vek::nr_mod_lib
