#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <vector>

// What the reference signals of TS 38.211 clauses 6.4.1 and 7.4.1 have in common: QPSK symbols of a Gold sequence,
// whose initial value counts symbols from the start of the frame.
namespace vek::nr_mod_lib
{

/// Initial values are reduced modulo 2^31. `symbol_in_frame` is N_symb n_s + l.

/// DMRS of PDSCH and PUSCH (clauses 7.4.1.1.1 and 6.4.1.1.1.1); that of the PDCCH (clause 7.4.1.3.1) and of PUCCH
/// format 2 (clause 6.4.1.3.2.1) have neither `n_scid` nor `group_term`, which is floor(lambda / 2).
NR_MOD_LIB_EXPORT unsigned int lib_nr_dmrs_initial_value(unsigned int symbol_in_frame, unsigned int n_id,
                                                         unsigned int n_scid = 0, unsigned int group_term = 0);
/// CSI-RS, clause 7.4.1.5.2; n_ID is below 1024 there, any number is taken here.
NR_MOD_LIB_EXPORT unsigned int lib_nr_csirs_initial_value(unsigned int symbol_in_frame, unsigned int n_id);
/// PRS, clause 7.4.1.7.2; n_ID is below 4096.
NR_MOD_LIB_EXPORT unsigned int lib_nr_prs_initial_value(unsigned int symbol_in_frame, unsigned int n_id);

/// Appends the symbols r(0) to r(count - 1) of the Gold sequence c: ((1 - 2 c(2m)) + j (1 - 2 c(2m + 1))) / sqrt(2).
NR_MOD_LIB_EXPORT void lib_nr_append_reference_signal(unsigned int c_init, std::size_t count,
                                                      std::vector<std::complex<double>>& symbols);

} // namespace vek::nr_mod_lib
