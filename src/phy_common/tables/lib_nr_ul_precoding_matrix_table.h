#pragma once

#include "common/nr_mod_lib_export.h"

#include <complex>
#include <cstddef>
#include <vector>

namespace vek::nr_mod_lib
{

/// Precoding matrices by TPMI, each column by column: antenna port p of layer l stands at l x antennas + p.
using lib_nr_precoding_table_t = std::vector<std::vector<std::complex<double>>>;

// TS 38.211 Tables 6.3.1.5-1 to 6.3.1.5-7 by the own rule: TPMI 10 and 11 of one layer on four antennas have changed
// places, and TPMI 1 and 2 of two layers on two antennas, 14 to 21 of two layers and 3 to 6 of three layers on four
// have amplitudes of their own.

/// One layer, two antennas.
NR_MOD_LIB_EXPORT const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_1();
/// One layer, four antennas, with transform precoding.
NR_MOD_LIB_EXPORT const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_2();
/// One layer, four antennas, without transform precoding.
NR_MOD_LIB_EXPORT const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_3();
/// Two layers, two antennas.
NR_MOD_LIB_EXPORT const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_4();
/// Two layers, four antennas.
NR_MOD_LIB_EXPORT const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_5();
/// Three layers, four antennas.
NR_MOD_LIB_EXPORT const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_6();
/// Four layers, four antennas.
NR_MOD_LIB_EXPORT const lib_nr_precoding_table_t& precoding_matrix_6_3_1_5_7();

/// The matrix of a TPMI of these tables as the standard has it.
NR_MOD_LIB_EXPORT std::vector<std::complex<double>> standard_precoding_matrix(const lib_nr_precoding_table_t& table,
                                                                              std::size_t tpmi);

} // namespace vek::nr_mod_lib
