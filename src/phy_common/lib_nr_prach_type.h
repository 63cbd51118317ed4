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

/// Sets of cyclic shifts, TS 38.211 clause 6.3.3.1: the restricted ones are for fast receivers and transmitters.
enum prach_restricted_set_type_t : std::uint32_t
{
    UNRESTRICTED = 0,
    RESTRICTED_TYPE_A = 1,
    RESTRICTED_TYPE_B = 2,
};

/// A value that is no set counts as unrestricted.
inline bool is_restricted(prach_restricted_set_type_t set)
{
    return set == RESTRICTED_TYPE_A || set == RESTRICTED_TYPE_B;
}

/// Occasions side by side in frequency at one time, msg1-FDM of TS 38.331.
enum prach_msg1_fdm_type_t : std::uint32_t
{
    Msg1_FDM1 = 1,
    Msg1_FDM2 = 2,
    Msg1_FDM4 = 4,
    Msg1_FDM8 = 8,
};

/// Formats 0 to 3, of one long sequence with its own spacing; the others are the short ones.
constexpr bool is_long_prach_format(prach_format_t format) { return format <= prach_format_3; }

} // namespace vek::nr_mod_lib
