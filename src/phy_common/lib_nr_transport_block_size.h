#pragma once

#include "common/nr_mod_lib_export.h"

namespace vek::nr_mod_lib
{

/// Transport block size of TS 38.214 clause 5.1.3.2 from N_info on, which need not be a whole number; the code rate
/// decides how many code blocks are assumed. What is not a number counts as 0, what exceeds 2^31 as 2^31.
NR_MOD_LIB_EXPORT unsigned int lib_nr_transport_block_size(double n_info, double code_rate);

} // namespace vek::nr_mod_lib
