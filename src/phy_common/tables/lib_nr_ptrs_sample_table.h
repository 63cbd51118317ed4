#pragma once

#include "common/nr_mod_lib_export.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Positions of the PTRS samples of a transform-precoded symbol of `length` samples, TS 38.211 Table 6.4.1.2.2.2-1, in
/// the order of the table. Groups of a symbol with fewer than three resource blocks may overlap, and 8 groups may begin
/// one sample ahead of it, modulo 2^32. None for numbers of groups and samples that the table does not have.
NR_MOD_LIB_EXPORT std::vector<std::uint32_t>
get_ptrs_sample_positions(unsigned int groups, unsigned int samples_per_group, std::uint32_t length);

} // namespace vek::nr_mod_lib
