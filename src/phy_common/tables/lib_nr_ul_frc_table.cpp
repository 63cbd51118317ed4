// TS 38.104 annex A, for non-terrestrial networks TS 38.108 annex A, uplink fixed reference channels, 253 rows in 25
// families. Interlaced ones have the bandwidth in MHz that they are for in front, all others 0.
#include "phy_common/tables/lib_nr_ul_frc_table.h"

#include <iterator>

namespace vek::nr_mod_lib
{

namespace
{

constexpr lib_nr_ul_frc_row_t ul_frc_table[] = {
    // LIB_NR_FR1_FRC_A_1
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 15, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 6, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 6, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 105, 14, 1, 1, false},
    {10, LIB_NR_SCS_15K, 5, 14, 1, 1, false},
    {10, LIB_NR_SCS_30K, 4, 14, 1, 1, false},
    {20, LIB_NR_SCS_15K, 10, 14, 1, 1, false},
    {20, LIB_NR_SCS_30K, 10, 14, 1, 1, false},
    {40, LIB_NR_SCS_15K, 21, 14, 1, 1, false},
    {40, LIB_NR_SCS_30K, 21, 14, 1, 1, false},
    {60, LIB_NR_SCS_30K, 32, 14, 1, 1, false},
    {80, LIB_NR_SCS_30K, 43, 14, 1, 1, false},
    // LIB_NR_FR1_FRC_A_2
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 24, 14, 1, 1, false},
    {10, LIB_NR_SCS_15K, 5, 14, 1, 1, false},
    {10, LIB_NR_SCS_30K, 4, 14, 1, 1, false},
    {20, LIB_NR_SCS_15K, 10, 14, 1, 1, false},
    {20, LIB_NR_SCS_30K, 10, 14, 1, 1, false},
    {40, LIB_NR_SCS_15K, 21, 14, 1, 1, false},
    {40, LIB_NR_SCS_30K, 21, 14, 1, 1, false},
    {60, LIB_NR_SCS_30K, 32, 14, 1, 1, false},
    {80, LIB_NR_SCS_30K, 43, 14, 1, 1, false},
    // LIB_NR_FR1_FRC_A_3
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 52, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 273, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 25, 14, 1, 2, false},
    {0, LIB_NR_SCS_15K, 52, 14, 1, 2, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 2, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 2, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 2, false},
    {0, LIB_NR_SCS_30K, 106, 14, 1, 2, false},
    {0, LIB_NR_SCS_30K, 273, 14, 1, 2, false},
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, true},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, true},
    {0, LIB_NR_SCS_15K, 52, 14, 2, 1, false},
    {0, LIB_NR_SCS_15K, 25, 14, 2, 1, false},
    {0, LIB_NR_SCS_30K, 106, 14, 2, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 2, 1, false},
    {0, LIB_NR_SCS_15K, 5, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 5, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 5, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 5, 14, 1, 1, false},
    // LIB_NR_FR1_FRC_A_3A
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 52, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 106, 14, 1, 1, false},
    // LIB_NR_FR1_FRC_A_3B
    {0, LIB_NR_SCS_15K, 25, 2, 0, 1, false},
    {0, LIB_NR_SCS_15K, 52, 2, 0, 1, false},
    {0, LIB_NR_SCS_30K, 24, 2, 0, 1, false},
    {0, LIB_NR_SCS_30K, 106, 2, 0, 1, false},
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 25, 14, 0, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 0, 1, false},
    // LIB_NR_FR1_FRC_A_4
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 52, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 273, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 25, 14, 1, 2, false},
    {0, LIB_NR_SCS_15K, 52, 14, 1, 2, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 2, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 2, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 2, false},
    {0, LIB_NR_SCS_30K, 106, 14, 1, 2, false},
    {0, LIB_NR_SCS_30K, 273, 14, 1, 2, false},
    {0, LIB_NR_SCS_15K, 25, 14, 2, 1, false},
    {0, LIB_NR_SCS_15K, 52, 14, 2, 1, false},
    {0, LIB_NR_SCS_30K, 106, 14, 2, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 2, 1, false},
    {0, LIB_NR_SCS_15K, 12, 14, 2, 1, false},
    {0, LIB_NR_SCS_15K, 25, 14, 2, 1, false},
    {0, LIB_NR_SCS_30K, 12, 14, 2, 1, false},
    {0, LIB_NR_SCS_30K, 50, 14, 2, 1, false},
    // LIB_NR_FR1_FRC_A_5
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 52, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 273, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 11, 14, 1, 1, false},
    // LIB_NR_FR1_FRC_A_8_A_7
    {0, LIB_NR_SCS_15K, 2, 14, 2, 1, false},
    {0, LIB_NR_SCS_30K, 2, 14, 2, 1, false},
    {0, LIB_NR_SCS_15K, 2, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 2, 14, 1, 1, false},
    // LIB_NR_FR1_FRC_A_9_A_8
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 52, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 273, 14, 1, 1, false},
    // LIB_NR_FR2_FRC_A_1
    {0, LIB_NR_SCS_60K, 66, 14, 1, 1, false},
    {0, LIB_NR_SCS_120K, 32, 14, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 33, 14, 1, 1, false},
    {0, LIB_NR_SCS_120K, 16, 14, 1, 1, false},
    // LIB_NR_FR2_FRC_A_3
    {0, LIB_NR_SCS_60K, 66, 10, 0, 1, false},
    {0, LIB_NR_SCS_60K, 132, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 0, 1, false},
    {0, LIB_NR_SCS_60K, 66, 10, 0, 2, false},
    {0, LIB_NR_SCS_60K, 132, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 32, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 66, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 132, 10, 0, 2, false},
    {0, LIB_NR_SCS_60K, 30, 10, 0, 1, true},
    {0, LIB_NR_SCS_120K, 30, 10, 0, 1, true},
    {0, LIB_NR_SCS_60K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_60K, 132, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 1, 1, false},
    {0, LIB_NR_SCS_60K, 66, 10, 1, 2, false},
    {0, LIB_NR_SCS_60K, 132, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 32, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 132, 10, 1, 2, false},
    {0, LIB_NR_SCS_60K, 30, 10, 1, 1, true},
    {0, LIB_NR_SCS_120K, 30, 10, 1, 1, true},
    {0, LIB_NR_SCS_60K, 2, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 2, 10, 1, 1, false},
    {0, LIB_NR_SCS_60K, 5, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 5, 10, 1, 1, false},
    // LIB_NR_FR2_FRC_A_3A
    {0, LIB_NR_SCS_60K, 66, 4, 0, 1, false},
    {0, LIB_NR_SCS_60K, 132, 4, 0, 1, false},
    {0, LIB_NR_SCS_120K, 32, 4, 0, 1, false},
    {0, LIB_NR_SCS_120K, 66, 4, 0, 1, false},
    {0, LIB_NR_SCS_60K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_60K, 132, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    // LIB_NR_FR2_FRC_A_3B
    {0, LIB_NR_SCS_60K, 66, 14, 1, 1, false},
    {0, LIB_NR_SCS_120K, 32, 14, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 264, 10, 1, 1, false},
    {0, LIB_NR_SCS_480K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 64, 10, 1, 1, true},
    {0, LIB_NR_SCS_480K, 64, 10, 1, 1, true},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 264, 10, 1, 2, false},
    {0, LIB_NR_SCS_480K, 66, 10, 1, 2, false},
    // LIB_NR_FR2_FRC_A_4
    {0, LIB_NR_SCS_60K, 66, 10, 0, 1, false},
    {0, LIB_NR_SCS_60K, 132, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 0, 1, false},
    {0, LIB_NR_SCS_60K, 66, 10, 0, 2, false},
    {0, LIB_NR_SCS_60K, 132, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 32, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 66, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 132, 10, 0, 2, false},
    {0, LIB_NR_SCS_60K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_60K, 132, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 1, 1, false},
    {0, LIB_NR_SCS_60K, 66, 10, 1, 2, false},
    {0, LIB_NR_SCS_60K, 132, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 32, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 132, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 264, 10, 1, 1, false},
    {0, LIB_NR_SCS_480K, 66, 10, 1, 1, false},
    // LIB_NR_FR2_FRC_A_5
    {0, LIB_NR_SCS_60K, 66, 10, 0, 1, false},
    {0, LIB_NR_SCS_60K, 132, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 0, 1, false},
    {0, LIB_NR_SCS_60K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_60K, 132, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_480K, 66, 10, 1, 1, false},
    // LIB_NR_FR2_FRC_A_7
    {0, LIB_NR_SCS_60K, 66, 10, 0, 2, false},
    {0, LIB_NR_SCS_60K, 132, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 32, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 66, 10, 0, 2, false},
    {0, LIB_NR_SCS_120K, 132, 10, 0, 2, false},
    {0, LIB_NR_SCS_60K, 66, 10, 1, 2, false},
    {0, LIB_NR_SCS_60K, 132, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 32, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 132, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 2, false},
    {0, LIB_NR_SCS_120K, 254, 10, 1, 2, false},
    {0, LIB_NR_SCS_480K, 66, 10, 1, 2, false},
    // LIB_NR_FR2_FRC_A_10
    {0, LIB_NR_SCS_120K, 32, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 32, 10, 2, 1, false},
    {0, LIB_NR_SCS_120K, 132, 10, 2, 1, false},
    {0, LIB_NR_SCS_120K, 16, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 16, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 1, 1, false},
    {0, LIB_NR_SCS_120K, 16, 10, 2, 1, false},
    {0, LIB_NR_SCS_120K, 66, 10, 2, 1, false},
    // LIB_NR_FR1_NTN_FRC_A_1
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 15, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 6, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 6, 14, 1, 1, false},
    // LIB_NR_FR1_NTN_FRC_A_2
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 11, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 106, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 51, 14, 1, 1, false},
    {0, LIB_NR_SCS_60K, 24, 14, 1, 1, false},
    // LIB_NR_FR1_NTN_FRC_A_3
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, true},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, true},
    {0, LIB_NR_SCS_15K, 12, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 12, 14, 1, 1, false},
    {0, LIB_NR_SCS_15K, 6, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 6, 14, 1, 2, false},
    // LIB_NR_FR1_NTN_FRC_A_3A
    {0, LIB_NR_SCS_15K, 25, 14, 1, 1, false},
    {0, LIB_NR_SCS_30K, 24, 14, 1, 1, false},
    // LIB_NR_FR2_NTN_FRC_A_1
    {0, LIB_NR_SCS_60K, 66, 14, 1, 1, false},
    {0, LIB_NR_SCS_120K, 32, 14, 1, 1, false},
    {0, LIB_NR_SCS_120K, 66, 14, 1, 1, false},
    // LIB_NR_FR2_NTN_FRC_A_3A
    {0, LIB_NR_SCS_120K, 32, 10, 1, 1, false},
    // LIB_NR_FR2_NTN_FRC_A_5
    {0, LIB_NR_SCS_120K, 32, 10, 0, 1, false},
    {0, LIB_NR_SCS_120K, 30, 10, 0, 1, true},
    // LIB_NR_FR2_NTN_FRC_A_6
    {0, LIB_NR_SCS_120K, 32, 10, 0, 2, false},
};

/// The first row of each family, and the end of the last one.
constexpr unsigned int ul_frc_index[] = {0,   19,  33,  57,  61,  69,  91,  100, 104, 109, 114, 142, 150,
                                         160, 183, 196, 209, 221, 230, 236, 244, 246, 249, 250, 252, 253};

constexpr lib_nr_ul_frc_family_t k_families[] = {
    {true, false, TABLE_5_1_3_1_1, 4},  // LIB_NR_FR1_FRC_A_1
    {true, false, TABLE_5_1_3_1_1, 16}, // LIB_NR_FR1_FRC_A_2
    {true, true, TABLE_5_1_3_1_2, 1},   // LIB_NR_FR1_FRC_A_3
    {true, true, TABLE_5_1_3_1_3, 5},   // LIB_NR_FR1_FRC_A_3A
    {false, true, TABLE_5_1_3_1_2, 2},  // LIB_NR_FR1_FRC_A_3B
    {true, true, TABLE_5_1_3_1_1, 16},  // LIB_NR_FR1_FRC_A_4
    {true, true, TABLE_5_1_3_1_1, 20},  // LIB_NR_FR1_FRC_A_5
    {true, true, TABLE_5_1_3_1_1, 1},   // LIB_NR_FR1_FRC_A_8_A_7
    {true, true, TABLE_5_1_3_1_2, 20},  // LIB_NR_FR1_FRC_A_9_A_8
    {true, false, TABLE_5_1_3_1_1, 4},  // LIB_NR_FR2_FRC_A_1
    {false, true, TABLE_5_1_3_1_2, 1},  // LIB_NR_FR2_FRC_A_3
    {false, true, TABLE_5_1_3_1_3, 5},  // LIB_NR_FR2_FRC_A_3A
    {false, true, TABLE_5_1_3_1_2, 2},  // LIB_NR_FR2_FRC_A_3B
    {false, true, TABLE_5_1_3_1_1, 16}, // LIB_NR_FR2_FRC_A_4
    {false, true, TABLE_5_1_3_1_1, 20}, // LIB_NR_FR2_FRC_A_5
    {false, true, TABLE_5_1_3_1_1, 12}, // LIB_NR_FR2_FRC_A_7
    {false, true, TABLE_5_1_3_1_1, 19}, // LIB_NR_FR2_FRC_A_10
    {true, false, TABLE_5_1_3_1_1, 4},  // LIB_NR_FR1_NTN_FRC_A_1
    {true, false, TABLE_5_1_3_1_1, 16}, // LIB_NR_FR1_NTN_FRC_A_2
    {true, true, TABLE_5_1_3_1_2, 2},   // LIB_NR_FR1_NTN_FRC_A_3
    {true, true, TABLE_5_1_3_1_3, 5},   // LIB_NR_FR1_NTN_FRC_A_3A
    {true, false, TABLE_5_1_3_1_1, 4},  // LIB_NR_FR2_NTN_FRC_A_1
    {false, true, TABLE_5_1_3_1_3, 5},  // LIB_NR_FR2_NTN_FRC_A_3A
    {false, true, TABLE_5_1_3_1_2, 1},  // LIB_NR_FR2_NTN_FRC_A_5
    {false, true, TABLE_5_1_3_1_1, 12}, // LIB_NR_FR2_NTN_FRC_A_6
};
static_assert(std::size(ul_frc_index) == std::size(k_families) + 1);
static_assert(std::size(ul_frc_table) == ul_frc_index[std::size(k_families)]);

} // namespace

const lib_nr_ul_frc_row_t& get_ul_frc_row(lib_nr_ul_frc_reference_channel_t channel)
{
    const unsigned int row = channel;
    return ul_frc_table[row < std::size(ul_frc_table) ? row : 0];
}

const lib_nr_ul_frc_family_t* find_ul_frc_family(lib_nr_ul_fixed_reference_channels_t family)
{
    return family < std::size(k_families) ? &k_families[family] : nullptr;
}

std::vector<lib_nr_ul_frc_reference_channel_t> get_ul_frc_channels(lib_nr_ul_fixed_reference_channels_t family)
{
    std::vector<lib_nr_ul_frc_reference_channel_t> channels;
    if (family < std::size(k_families))
        for (unsigned int row = ul_frc_index[family]; row < ul_frc_index[family + 1]; ++row)
            channels.push_back(static_cast<lib_nr_ul_frc_reference_channel_t>(row));
    return channels;
}

} // namespace vek::nr_mod_lib
