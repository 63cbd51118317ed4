// TS 38.104 Tables 5.3.3-1 to 5.3.3-3, minimum guard band of spacing and channel bandwidth in kHz, 54 rows; where a
// pair differs from an edition of the standard, these rows hold.
#include "phy_common/tables/lib_nr_minimum_guard_band_table.h"

#include <algorithm>
#include <iterator>

namespace vek::nr_mod_lib
{

namespace
{

struct minimum_guard_band_row_t
{
    lib_nr_numerology_type_t numerology;
    lib_nr_channel_bw_type_t bandwidth;
    float kilohertz;
};

constexpr minimum_guard_band_row_t k_minimum_guard_band[] = {
    {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_5M, 242.5F},         {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, 312.5F},
    {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_15M, 382.5F},        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_20M, 452.5F},
    {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_25M, 522.5F},        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_30M, 592.5F},
    {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_35M, 572.5F},        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_40M, 552.5F},
    {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_45M, 712.5F},        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_50M, 692.5F},
    {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_5M, 505.0F},         {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_10M, 665.0F},
    {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_15M, 645.0F},        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 805.0F},
    {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_25M, 785.0F},        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_30M, 945.0F},
    {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_35M, 925.0F},        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_40M, 905.0F},
    {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_45M, 1065.0F},       {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_50M, 1045.0F},
    {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_60M, 825.0F},        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_70M, 965.0F},
    {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_80M, 925.0F},        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_90M, 885.0F},
    {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_100M, 845.0F},       {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_10M, 1010.0F},
    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_15M, 990.0F},        {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_20M, 1330.0F},
    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_25M, 1310.0F},       {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_30M, 1290.0F},
    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_35M, 1630.0F},       {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_40M, 1610.0F},
    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_45M, 1590.0F},       {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_50M, 1570.0F},
    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_60M, 1530.0F},       {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_70M, 1490.0F},
    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_80M, 1450.0F},       {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_90M, 1410.0F},
    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_100M, 1370.0F},      {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR2_1_50M, 1210.0F},
    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR2_1_100M, 2450.0F},    {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR2_1_200M, 4930.0F},
    {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, 1900.0F},    {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_100M, 2420.0F},
    {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_200M, 4900.0F},   {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_400M, 9860.0F},
    {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_2_100M, 2420.0F},   {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_2_400M, 9860.0F},
    {LIB_NR_SCS_480K, LIB_NR_CHANNEL_FR2_2_400M, 42640.0F},  {LIB_NR_SCS_480K, LIB_NR_CHANNEL_FR2_2_1600M, 85520.0F},
    {LIB_NR_SCS_960K, LIB_NR_CHANNEL_FR2_2_400M, 9440.0F},   {LIB_NR_SCS_960K, LIB_NR_CHANNEL_FR2_2_800M, 42400.0F},
    {LIB_NR_SCS_960K, LIB_NR_CHANNEL_FR2_2_1600M, 85280.0F}, {LIB_NR_SCS_960K, LIB_NR_CHANNEL_FR2_2_2000M, 147040.0F},
};

} // namespace

std::optional<float> get_minimum_guard_band_khz(lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth)
{
    const auto row = std::find_if(std::begin(k_minimum_guard_band), std::end(k_minimum_guard_band),
                                  [&](const minimum_guard_band_row_t& candidate) {
                                      return candidate.numerology == numerology && candidate.bandwidth == bandwidth;
                                  });
    if (row == std::end(k_minimum_guard_band))
        return std::nullopt;
    return row->kilohertz;
}

} // namespace vek::nr_mod_lib
