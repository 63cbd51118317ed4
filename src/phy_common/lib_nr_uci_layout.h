#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_deviation.h"

#include <cstdint>

namespace vek::nr_mod_lib
{

/// How the bits of one UCI part become coded bits, TS 38.212 clause 6.3.1: what the check of a payload against its
/// resource and the coder both go by.
struct lib_nr_uci_layout_t
{
    /// False below 12 bits, which the small block code carries: one segment without CRC, and no parity bits.
    bool is_polar = false;
    unsigned int segment_number = 1;
    /// Of each segment; means nothing where `crc_length` is 0.
    lib_nr_crc_type_t crc_type = LIB_NR_CRC_TYPE_6;
    unsigned int crc_length = 0;
    /// Bits into the encoder, for each segment: its share of the part, the leading zero of an odd one included, and
    /// the CRC.
    std::uint64_t k = 0;
    /// Bits of each segment after rate matching; the odd one of two segments is a trailing zero.
    unsigned int e = 0;
    /// Parity bits of the polar code, and how many of them are on the rows of least weight.
    unsigned int n_pc = 0;
    unsigned int n_pc_wm = 0;
};

/// The layout of a part of `bit_number` bits that has `e` coded bits to fill. It does not tell whether they fit.
NR_MOD_LIB_EXPORT lib_nr_uci_layout_t get_uci_layout(std::uint64_t bit_number, unsigned int e);

/// Coded bits of the two parts of UCI.
struct lib_nr_uci_split_t
{
    unsigned int e_uci1 = 0;
    unsigned int e_uci2 = 0;
};

/// Splits `e_total` coded bits between HARQ-ACK, SR and CSI part 1, together `part1_bits` bits, and CSI part 2, TS
/// 38.212 clause 6.3.1.4.1: the first part takes what its code rate, `max_code_rate_x100` hundredths, asks for, in
/// whole symbols of `modulation_order` bits; the second part the rest. Where one of them has no bits, the first number
/// is all. By the own rule 11 bits ask for room for a CRC, which they do not get.
NR_MOD_LIB_EXPORT lib_nr_uci_split_t split_uci(std::uint64_t part1_bits, std::uint64_t part2_bits, unsigned int e_total,
                                               unsigned int modulation_order, unsigned int max_code_rate_x100,
                                               const lib_nr_rules_t& rules = lib_nr_rules_t());

} // namespace vek::nr_mod_lib
