#pragma once

#include "phy_common/lib_nr_mcs_table_type.h"
#include "phy_common/lib_nr_modulator.h"

namespace vek::nr_mod_lib
{

/// What an index of a table of modulation and coding schemes stands for, TS 38.214 clauses 5.1.3.1 and 6.1.4.1.
struct lib_nr_mcs_t
{
    unsigned int qm; ///< bits per symbol
    double code_rate;
    lib_nr_modulation_type_t modulation;
    /// pi/2-BPSK, for which QPSK of half the code rate may be chosen.
    bool is_open;
    /// No row of the standard: QPSK of code rate 0.
    bool is_reserved;
};

/// The highest index of a table. A value that is no table, here and below, stands for `TABLE_5_1_3_1_1`.
unsigned int get_last_mcs(mcs_table_t table);

/// An open row as its table has it, pi/2-BPSK.
lib_nr_mcs_t read_mcs(mcs_table_t table, unsigned int index);

/// An open row with the modulation chosen for it; any but pi/2-BPSK stands for QPSK.
lib_nr_mcs_t read_mcs(mcs_table_t table, unsigned int index, lib_nr_modulation_type_t chosen);

} // namespace vek::nr_mod_lib
