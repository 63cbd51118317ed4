#include "phy_common/lib_nr_transport_block_size.h"

#include "phy_common/tables/lib_nr_tbs_for_n_info_table.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vek::nr_mod_lib
{

namespace
{

constexpr double k_largest_n_info = 2147483648.0;
constexpr std::uint64_t k_crc_length = 24;

std::uint64_t divide_up(std::uint64_t value, std::uint64_t divisor) { return (value + divisor - 1) / divisor; }

// Equal code blocks of whole bytes.
unsigned int fill_code_blocks(std::uint64_t n_info, std::uint64_t code_block_count)
{
    const std::uint64_t step = 8 * code_block_count;
    return static_cast<unsigned int>(step * divide_up(n_info + k_crc_length, step) - k_crc_length);
}

unsigned int get_small_size(double n_info)
{
    const int n = n_info < 1024 ? 3 : std::ilogb(n_info) - 6;
    const std::uint64_t quantised = std::max<std::uint64_t>(24, static_cast<std::uint64_t>(n_info) >> n << n);
    const auto& sizes = lib_nr_tbs_for_n_info_table();
    return *std::lower_bound(sizes.begin(), sizes.end(), quantised);
}

} // namespace

unsigned int lib_nr_transport_block_size(double n_info, double code_rate)
{
    const double bounded = n_info > 0 ? std::min(n_info, k_largest_n_info) : 0.0;
    if (bounded <= 3824)
        return get_small_size(bounded);

    const int n = std::ilogb(bounded - 24) - 5;
    const auto quantised = static_cast<std::uint64_t>(std::llround(std::ldexp(bounded - 24, -n))) << n;
    if (quantised <= 3840)
        return code_rate <= 0.25 ? 3848 : 3840;
    if (code_rate <= 0.25)
        return fill_code_blocks(quantised, divide_up(quantised + k_crc_length, 3816));
    if (quantised > 8424)
        return fill_code_blocks(quantised, divide_up(quantised + k_crc_length, 8424));
    return fill_code_blocks(quantised, 1);
}

} // namespace vek::nr_mod_lib
