// TS 38.211 Table 6.4.1.2.2.2-1, PT-RS symbol mapping with transform precoding: 20 groups of 5 rows.
#include "phy_common/tables/lib_nr_ptrs_sample_table.h"

namespace vek::nr_mod_lib
{

namespace
{

/// The first sample of a group stands at floor(num M / den) + shift, and floor(M / half_den) later where that is not 0.
struct row_t
{
    std::uint8_t groups;
    std::uint8_t samples_per_group;
    std::uint8_t num;
    std::uint8_t den;
    std::uint8_t half_den;
    std::int8_t shift;
};

constexpr row_t k_rows[] = {
    {2, 2, 1, 4, 0, -1},  {2, 2, 3, 4, 0, -1},                                              //
    {2, 4, 0, 1, 0, 0},   {2, 4, 1, 1, 0, -4},                                              //
    {4, 2, 1, 8, 0, -1},  {4, 2, 3, 8, 0, -1},  {4, 2, 5, 8, 0, -1},  {4, 2, 7, 8, 0, -1},  //
    {4, 4, 0, 4, 0, 0},   {4, 4, 1, 4, 8, -2},  {4, 4, 2, 4, 8, -2},  {4, 4, 4, 4, 0, -4},  //
    {8, 4, 0, 8, 0, 0},   {8, 4, 1, 8, 16, -2}, {8, 4, 2, 8, 16, -2}, {8, 4, 3, 8, 16, -2}, //
    {8, 4, 4, 8, 16, -2}, {8, 4, 5, 8, 16, -2}, {8, 4, 6, 8, 16, -2}, {8, 4, 8, 8, 0, -4},
};

} // namespace

std::vector<std::uint32_t> get_ptrs_sample_positions(unsigned int groups, unsigned int samples_per_group,
                                                     std::uint32_t length)
{
    std::vector<std::uint32_t> positions;
    for (const row_t& row : k_rows) {
        if (row.groups != groups || row.samples_per_group != samples_per_group)
            continue;
        const std::uint32_t half = row.half_den == 0 ? 0 : length / row.half_den;
        const std::uint32_t first = row.num * length / row.den + half + static_cast<std::uint32_t>(row.shift);
        for (std::uint32_t k = 0; k < samples_per_group; ++k)
            positions.push_back(first + k);
    }
    return positions;
}

} // namespace vek::nr_mod_lib
