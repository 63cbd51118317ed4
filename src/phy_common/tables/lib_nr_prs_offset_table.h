#pragma once

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// Frequency offset k' of a PRS symbol, by its place behind the first.
using lib_nr_prs_offset_row_t = std::array<std::uint8_t, 12>;

/// TS 38.211 Table 7.4.1.7.3-1, by comb size 2, 4, 6, 12.
const std::array<lib_nr_prs_offset_row_t, 4>& get_prs_offset_table();

} // namespace vek::nr_mod_lib
