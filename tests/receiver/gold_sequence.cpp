#include "receiver/gold_sequence.h"

namespace nr_test
{

std::vector<unsigned char> gold_sequence(std::uint32_t c_init, std::size_t first, std::size_t count)
{
    // Bit i of a register is x(n + i).
    std::uint32_t x1 = 1;
    std::uint32_t x2 = c_init & 0x7FFFFFFFu;
    std::vector<unsigned char> c;
    c.reserve(count);
    for (std::size_t n = 0; n < 1600 + first + count; ++n) {
        if (n >= 1600 + first)
            c.push_back(static_cast<unsigned char>((x1 ^ x2) & 1u));
        const std::uint32_t next_1 = (x1 >> 3 ^ x1) & 1u;
        const std::uint32_t next_2 = (x2 >> 3 ^ x2 >> 2 ^ x2 >> 1 ^ x2) & 1u;
        x1 = x1 >> 1 | next_1 << 30;
        x2 = x2 >> 1 | next_2 << 30;
    }
    return c;
}

} // namespace nr_test
