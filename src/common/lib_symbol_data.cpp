#include "common/lib_symbol_data.h"

#include "common/lib_bit_packing.h"

#include <algorithm>
#include <cstdint>

namespace vek::common_lib
{

namespace
{

/// The bits from `position` on as a number, the first highest; bytes in eights where eight can be read.
unsigned int pack_symbol(const std::vector<unsigned char>& bits, std::uint64_t position, unsigned int count)
{
    std::uint64_t value = 0;
    while (count > 0 && position + 8 <= bits.size()) {
        const unsigned int taken = std::min(count, 8u);
        value = value << taken | pack_8_bits_first_highest(bits.data() + position) >> (8 - taken);
        position += taken;
        count -= taken;
    }
    for (; count > 0; --count, ++position)
        value = value << 1 | (position < bits.size() ? bits[position] & 1u : 0u);
    return static_cast<unsigned int>(value);
}

} // namespace

void lib_symbol_data_t::generate_symbol_arr_by_bit_arr(std::vector<unsigned int>& symbols,
                                                       const std::vector<unsigned char>& bits,
                                                       unsigned int symbol_count, unsigned int bits_per_symbol,
                                                       unsigned int offset)
{
    const unsigned int kept = std::min(bits_per_symbol, 32u);
    symbols.resize(symbol_count);
    std::uint64_t position = std::uint64_t{offset} + (bits_per_symbol - kept);
    for (unsigned int& symbol : symbols) {
        symbol = pack_symbol(bits, position, kept);
        position += bits_per_symbol;
    }
}

} // namespace vek::common_lib
