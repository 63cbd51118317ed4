#pragma once

#include <cstdint>

namespace vek::nr_mod_lib
{

enum lib_nr_ul_pucch_format_t : std::uint32_t
{
    LIB_NR_UL_PUCCH_FORMAT_0 = 0,
    LIB_NR_UL_PUCCH_FORMAT_1 = 1,
    LIB_NR_UL_PUCCH_FORMAT_2 = 2,
    LIB_NR_UL_PUCCH_FORMAT_3 = 3,
    LIB_NR_UL_PUCCH_FORMAT_4 = 4,
};

/// pucch-GroupHopping of TS 38.211 clause 6.3.2.2.1: `ENABLED` hops over the sequence groups, `DISABLED` over the
/// sequences of one group, `NEITHER` over none.
enum lib_nr_ul_group_hopping_t : std::uint32_t
{
    LIB_NR_UL_GROUP_HOPPING_NEITHER = 0,
    LIB_NR_UL_GROUP_HOPPING_ENABLED = 1,
    LIB_NR_UL_GROUP_HOPPING_DISABLED = 2,
};

/// What a PUCCH of format 0 or 1 tells.
enum lib_nr_ul_uci_content_t : std::uint32_t
{
    LIB_NR_UL_UCI_SR_AND_HARQ_ACK = 0,
    LIB_NR_UL_UCI_HARQ_ACK_ONLY = 1,
    LIB_NR_UL_UCI_SR_ONLY = 2,
};

enum lib_nr_ul_sr_configuration_t : std::uint32_t
{
    LIB_NR_UL_SR_NEGATIVE = 0,
    LIB_NR_UL_SR_POSITIVE = 1,
};

/// How many of an interlace's 10 or 11 resource blocks are used: not configured, all there are.
enum lib_nr_ul_pucch_interlace_rb_num_t : std::uint32_t
{
    LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_NOT_CONFIGURED = 0,
    LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10 = 1,
    LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11 = 2,
};

/// The value is the length of the orthogonal sequence.
enum lib_nr_ul_pucch_occ_length_t : std::uint32_t
{
    LIB_NR_UL_PUCCH_OCC_LENGTH_1 = 1,
    LIB_NR_UL_PUCCH_OCC_LENGTH_2 = 2,
    LIB_NR_UL_PUCCH_OCC_LENGTH_4 = 4,
};

/// The value is the code rate times 100.
enum lib_nr_ul_pucch_max_code_rate_x100_t : std::uint32_t
{
    LIB_NR_UL_PUCCH_MAX_CODE_RATE_8 = 8,
    LIB_NR_UL_PUCCH_MAX_CODE_RATE_15 = 15,
    LIB_NR_UL_PUCCH_MAX_CODE_RATE_25 = 25,
    LIB_NR_UL_PUCCH_MAX_CODE_RATE_35 = 35,
    LIB_NR_UL_PUCCH_MAX_CODE_RATE_45 = 45,
    LIB_NR_UL_PUCCH_MAX_CODE_RATE_60 = 60,
    LIB_NR_UL_PUCCH_MAX_CODE_RATE_80 = 80,
};

} // namespace vek::nr_mod_lib
