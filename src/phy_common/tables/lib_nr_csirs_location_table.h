#pragma once

#include "phy_common/lib_nr_csirs_type.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace vek::nr_mod_lib
{

/// Where CDM groups begin, in subcarriers or in symbols: k_i or l_i of the resource, and so much behind it.
struct lib_nr_csirs_start_t
{
    std::uint8_t index = 0;
    std::uint8_t shift = 0;

    constexpr lib_nr_csirs_start_t operator+(std::uint8_t further) const
    {
        return {index, static_cast<std::uint8_t>(shift + further)};
    }
};

/// The different ones of a row.
struct lib_nr_csirs_starts_t
{
    std::array<lib_nr_csirs_start_t, 6> values{};
    std::size_t number = 0;

    constexpr lib_nr_csirs_starts_t(std::initializer_list<lib_nr_csirs_start_t> starts) : number(starts.size())
    {
        std::copy(starts.begin(), starts.end(), values.begin());
    }
    constexpr const lib_nr_csirs_start_t* begin() const { return values.data(); }
    constexpr const lib_nr_csirs_start_t* end() const { return values.data() + number; }
    constexpr unsigned int highest_index() const
    {
        unsigned int highest = 0;
        for (const lib_nr_csirs_start_t& start : values)
            highest = std::max<unsigned int>(highest, start.index);
        return highest;
    }
};

/// A row of TS 38.211 Table 7.4.1.5.3-1, with the bitmap of clause 7.4.1.5.3 that gives its k_i. Its pairs (k-bar,
/// l-bar), one a CDM group but for row 1, are all values of k-bar at the first of l-bar, then at the next.
struct lib_nr_csirs_location_row_t
{
    unsigned int ports;
    std::array<double, 2> densities; ///< in the order of the table; 0 where there is one
    csirs_cdm_type_t cdm_type;
    lib_nr_csirs_starts_t k;
    lib_nr_csirs_starts_t l;
    unsigned int k_prime_number; ///< k' counts from 0, and so does l'
    unsigned int l_prime_number;
    unsigned int bitmap_bits;
    unsigned int k_step; ///< k_i is this many times the position of the bitmap's one i

    /// That the row reads.
    constexpr unsigned int bitmap_ones() const { return k.highest_index() + 1; }
    /// Whether l1 counts.
    constexpr bool has_l1() const { return l.highest_index() == 1; }
};

/// Null for a row that is not among 1 to 18.
const lib_nr_csirs_location_row_t* get_csirs_location_row(unsigned int row);

} // namespace vek::nr_mod_lib
