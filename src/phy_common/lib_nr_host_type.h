#pragma once

#include <cstdint>

// What no setting holds, and hosts have names for.

namespace vek::nr_mod_lib
{

/// Code words of a PDSCH, TS 38.211 clause 7.3.1.1.
enum lib_nr_dl_codewords_size_t : std::uint32_t
{
    LIB_NR_CODEWORDS_SIZE_1 = 1,
    LIB_NR_CODEWORDS_SIZE_2 = 2,
};

/// Periods of a TDD pattern, TS 38.213 clause 11.1. The patterns of this library have
/// `lib_nr_tdd_transmission_periodicity_t`, or a number of milliseconds.
enum lib_nr_transmission_periodicity_t : std::uint32_t
{
    LIB_NR_TRANSMISSION_PERIODICITY_0_5MS = 0,
    LIB_NR_TRANSMISSION_PERIODICITY_1MS = 1,
    LIB_NR_TRANSMISSION_PERIODICITY_1_25MS = 2,
    LIB_NR_TRANSMISSION_PERIODICITY_2MS = 3,
    LIB_NR_TRANSMISSION_PERIODICITY_2_5MS = 4,
    LIB_NR_TRANSMISSION_PERIODICITY_5MS = 5,
    LIB_NR_TRANSMISSION_PERIODICITY_10MS = 6,
};

} // namespace vek::nr_mod_lib
