#pragma once

#include "manager/lib_nr_carrier_configure_manager.h"
#include "receiver/bits.h"
#include "receiver/ofdm_receiver.h"

#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

namespace nr_test
{

/// What a slot of PUCCH format 2, 3 or 4 says.
struct received_uci_t
{
    bits_t bits;        ///< of both parts, or the descrambled ones where there is no channel coding
    double error = 0.0; ///< largest distance of a cell or point from the ideal one; infinite where no code word fits
};

/// Receives a slot after TS 38.211 clauses 6.3.2.2, 6.3.2.5, 6.3.2.6, 6.4.1.3.2 and 6.4.1.3.3 and TS 38.212 clause
/// 6.3.1, out of a frame's rows; it knows the settings and the number of bits of both UCI parts. Without
/// `standard_rules` it receives what this system sends by its own rules.
received_uci_t receive_uci(const rows_t& frame, const vek::nr_mod_lib::lib_nr_carrier_configure_manager_t& carrier,
                           const vek::nr_mod_lib::lib_nr_ul_pucch_configure_manager_t& pucch, unsigned int slot,
                           std::size_t first_bits, std::size_t second_bits, bool standard_rules);

/// What a slot of PUCCH format 0 or 1 says.
struct received_sequence_t
{
    unsigned int shift = 0; ///< in twelfths of a turn, beside those of cell and symbol
    unsigned int occ_index = 0;
    std::complex<double> point = 1.0; ///< of format 1
    double error = INFINITY;          ///< largest distance of a cell from the ideal one
    double next_error = INFINITY;     ///< the same for what comes closest otherwise
};

/// Tries every cyclic shift and, for format 1, every orthogonal sequence and point, TS 38.211 clauses 6.3.2.3, 6.3.2.4
/// and 6.4.1.3.1.
received_sequence_t receive_sequence(const rows_t& frame,
                                     const vek::nr_mod_lib::lib_nr_carrier_configure_manager_t& carrier,
                                     const vek::nr_mod_lib::lib_nr_ul_pucch_configure_manager_t& pucch,
                                     unsigned int slot, bool standard_rules);

} // namespace nr_test
