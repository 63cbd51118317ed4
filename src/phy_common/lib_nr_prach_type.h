#pragma once

#include <cstdint>

namespace vek::nr_mod_lib
{

/// Random access configuration tables, TS 38.211 Tables 6.3.3.2-2 to 6.3.3.2-4.
enum prach_config_table_type_t : std::uint32_t
{
    FR1_FDD_SUL = 0,
    FR1_TDD = 1,
    FR2_TDD = 2,
};

/// Preamble formats, TS 38.211 Tables 6.3.3.1-1 (0 to 3, the long ones) and 6.3.3.1-2.
enum prach_format_t : std::uint32_t
{
    prach_format_0 = 0,
    prach_format_1 = 1,
    prach_format_2 = 2,
    prach_format_3 = 3,
    prach_format_A1 = 4,
    prach_format_A2 = 5,
    prach_format_A3 = 6,
    prach_format_B1 = 7,
    prach_format_B2 = 8,
    prach_format_B3 = 9,
    prach_format_B4 = 10,
    prach_format_C0 = 11,
    prach_format_C2 = 12,
};

/// Subcarrier spacing of the preamble; the value is in hertz.
enum prach_scs_type_t : std::uint32_t
{
    PRACH_SCS_1P25K = 1250,
    PRACH_SCS_5K = 5000,
    PRACH_SCS_15K = 15000,
    PRACH_SCS_30K = 30000,
    PRACH_SCS_60K = 60000,
    PRACH_SCS_120K = 120000,
    PRACH_SCS_480K = 480000,
    PRACH_SCS_960K = 960000,
};

/// Length of the preamble sequence, L_RA.
enum prach_lra_type_t : std::uint32_t
{
    PRACH_LRA_139 = 139,
    PRACH_LRA_839 = 839,
    PRACH_LRA_571 = 571,
    PRACH_LRA_1151 = 1151,
};

} // namespace vek::nr_mod_lib
