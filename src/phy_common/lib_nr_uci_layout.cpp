#include "phy_common/lib_nr_uci_layout.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

namespace
{

constexpr std::uint64_t k_first_polar_size = 12;
constexpr std::uint64_t k_first_crc11_size = 20; // TS 38.212 clause 6.3.1.2.1
constexpr std::uint64_t k_first_two_segment_size = 360;
constexpr unsigned int k_first_two_segment_e = 1088;
constexpr std::uint64_t k_last_one_segment_size = 1012;

/// CRC bits of a part of the UCI, of which one from `least` bits on has some.
std::uint64_t crc_length_from(std::uint64_t least, std::uint64_t bit_number)
{
    if (bit_number < least)
        return 0;
    return bit_number < k_first_crc11_size ? 6 : 11;
}

} // namespace

lib_nr_uci_layout_t get_uci_layout(std::uint64_t bit_number, unsigned int e)
{
    lib_nr_uci_layout_t layout;
    layout.k = bit_number;
    layout.e = e;
    if (bit_number < k_first_polar_size)
        return layout;

    layout.is_polar = true;
    if (bit_number > k_last_one_segment_size || (bit_number >= k_first_two_segment_size && e >= k_first_two_segment_e))
        layout.segment_number = 2;
    const bool has_crc6 = bit_number < k_first_crc11_size;
    layout.crc_type = has_crc6 ? LIB_NR_CRC_TYPE_6 : LIB_NR_CRC_TYPE_11;
    layout.crc_length = has_crc6 ? 6 : 11;
    layout.k = (bit_number + layout.segment_number - 1) / layout.segment_number + layout.crc_length;
    layout.e = e / layout.segment_number;
    if (has_crc6) {
        layout.n_pc = 3;
        layout.n_pc_wm = layout.e + std::uint64_t{3} > layout.k + 192 ? 1 : 0;
    }
    return layout;
}

lib_nr_uci_split_t split_uci(std::uint64_t part1_bits, std::uint64_t part2_bits, unsigned int e_total,
                             unsigned int modulation_order, unsigned int max_code_rate_x100,
                             const lib_nr_rules_t& rules)
{
    if (part1_bits == 0 || part2_bits == 0)
        return {e_total, 0};
    const auto share_with = [&](std::uint64_t crc_length) {
        const std::uint64_t hundredths = (part1_bits + crc_length) * 100;
        const std::uint64_t per_symbol = std::uint64_t{max_code_rate_x100} * modulation_order;
        const std::uint64_t asked = (hundredths + per_symbol - 1) / per_symbol * modulation_order;
        return static_cast<unsigned int>(std::min<std::uint64_t>(asked, e_total));
    };
    const unsigned int e_uci1 =
        rules.pick(lib_nr_deviation_t::uci_split, share_with(crc_length_from(k_first_polar_size - 1, part1_bits)),
                   share_with(crc_length_from(k_first_polar_size, part1_bits)));
    return {e_uci1, e_total - e_uci1};
}

} // namespace vek::nr_mod_lib
