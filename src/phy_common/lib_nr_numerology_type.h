#pragma once

#include <cstdint>

namespace vek::nr_mod_lib
{

/// Subcarrier spacing; the value is the numerology mu of TS 38.211 clause 4.2.
enum lib_nr_numerology_type_t : std::uint32_t
{
    LIB_NR_SCS_15K = 0,
    LIB_NR_SCS_30K = 1,
    LIB_NR_SCS_60K = 2,
    LIB_NR_SCS_120K = 3,
    LIB_NR_SCS_240K = 4,
    LIB_NR_SCS_480K = 5,
    LIB_NR_SCS_960K = 6,
};

/// Frequency ranges of TS 38.104 clause 5.1.
enum lib_nr_freq_range_type_t : std::uint32_t
{
    NR_FR1 = 0,
    NR_FR2_1 = 1,
    NR_FR2_2 = 2,
};

enum lib_nr_cyclic_prefix_type_t : std::uint32_t
{
    LIB_NR_NORMAL_CP = 0,
    LIB_NR_EXTEND_CP = 1,
};

/// Channel bandwidths, one value for each bandwidth and frequency range.
enum lib_nr_channel_bw_type_t : std::uint32_t
{
    LIB_NR_CHANNEL_FR1_5M = 0,
    LIB_NR_CHANNEL_FR1_10M = 1,
    LIB_NR_CHANNEL_FR1_15M = 2,
    LIB_NR_CHANNEL_FR1_20M = 3,
    LIB_NR_CHANNEL_FR1_25M = 4,
    LIB_NR_CHANNEL_FR1_30M = 5,
    LIB_NR_CHANNEL_FR1_35M = 6,
    LIB_NR_CHANNEL_FR1_40M = 7,
    LIB_NR_CHANNEL_FR1_45M = 8,
    LIB_NR_CHANNEL_FR1_50M = 9,
    LIB_NR_CHANNEL_FR1_60M = 10,
    LIB_NR_CHANNEL_FR1_70M = 11,
    LIB_NR_CHANNEL_FR1_80M = 12,
    LIB_NR_CHANNEL_FR1_90M = 13,
    LIB_NR_CHANNEL_FR1_100M = 14,
    LIB_NR_CHANNEL_FR2_1_50M = 15,
    LIB_NR_CHANNEL_FR2_1_100M = 16,
    LIB_NR_CHANNEL_FR2_1_200M = 17,
    LIB_NR_CHANNEL_FR2_1_400M = 18,
    LIB_NR_CHANNEL_FR2_2_100M = 19,
    LIB_NR_CHANNEL_FR2_2_400M = 20,
    LIB_NR_CHANNEL_FR2_2_800M = 21,
    LIB_NR_CHANNEL_FR2_2_1600M = 22,
    LIB_NR_CHANNEL_FR2_2_2000M = 23,
};

/// Subcarriers of a resource block, TS 38.211 clause 4.4.4.1.
inline constexpr unsigned int k_subcarriers_per_rb = 12;

} // namespace vek::nr_mod_lib
