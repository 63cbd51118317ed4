#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nr_test
{

/// c(first) to c(first + count - 1) of the length-31 Gold sequence, bit by bit as TS 38.211 clause 5.2.1 defines it.
std::vector<unsigned char> gold_sequence(std::uint32_t c_init, std::size_t first, std::size_t count);

} // namespace nr_test
