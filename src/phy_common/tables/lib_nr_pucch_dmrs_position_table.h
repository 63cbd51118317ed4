#pragma once

#include <vector>

namespace vek::nr_mod_lib
{

/// DMRS symbols of PUCCH formats 3 and 4, counted from the first symbol of the PUCCH, by its number of symbols, 4 to
/// 14; outside, std::out_of_range. Hopping makes a difference for 4 symbols alone, additional DMRS from 10 on.
const std::vector<unsigned int>& get_pucch_dmrs_positions(bool intra_slot_hopping, bool additional_dmrs,
                                                          unsigned int symbol_number);

} // namespace vek::nr_mod_lib
