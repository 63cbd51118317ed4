#pragma once

#include "phy_common/lib_nr_csirs_type.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// The place of a CDM group: subcarrier k_i + dk, symbol l0 + dl or l1 + dl.
struct lib_nr_csirs_pair_t
{
    std::uint8_t k_index;
    std::uint8_t k_shift;
    std::uint8_t l_index;
    std::uint8_t l_shift;
};

/// A row of TS 38.211 Table 7.4.1.5.3-1, with the bitmap of clause 7.4.1.5.3 that gives its k_i.
struct lib_nr_csirs_location_row_t
{
    unsigned int ports;
    std::array<double, 2> densities; ///< in the order of the table; 0 where there is one
    csirs_cdm_type_t cdm_type;
    unsigned int bitmap_bits;
    unsigned int bitmap_ones; ///< that the row reads
    unsigned int k_step;      ///< k_i is this many times the position of the bitmap's one i
    unsigned int pair_number;
    std::array<lib_nr_csirs_pair_t, 16> pairs; ///< by CDM group; row 1 has three for one group
    unsigned int k_prime_number;               ///< k' counts from 0, and so does l'
    unsigned int l_prime_number;
};

/// Null for a row that is not among 1 to 18.
const lib_nr_csirs_location_row_t* get_csirs_location_row(unsigned int row);

} // namespace vek::nr_mod_lib
