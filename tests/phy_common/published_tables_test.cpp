#include "phy_common/tables/lib_nr_dmrs_position_table.h"
#include "phy_common/tables/lib_nr_ldpc_base_graph_table.h"
#include "phy_common/tables/lib_nr_low_papr_type1_table.h"
#include "phy_common/tables/lib_nr_low_papr_type2_table.h"
#include "phy_common/tables/lib_nr_mcs_table.h"
#include "phy_common/tables/lib_nr_prach_carrier_combination_table.h"
#include "phy_common/tables/lib_nr_prach_configuration_table.h"
#include "phy_common/tables/lib_nr_prach_cyclic_shift_table.h"
#include "phy_common/tables/lib_nr_prach_root_table.h"
#include "phy_common/tables/lib_nr_small_block_basis_table.h"
#include "phy_common/tables/lib_nr_srs_bandwidth_table.h"
#include "phy_common/tables/polar_tables.h"
#include "receiver/tables/dmrs_positions.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

// Tables against what the standard prints: by checksums of independent transcriptions, as docs/testing.md tells, or
// cell by cell where the receiver has a table of its own.

namespace
{

using namespace vek::nr_mod_lib;
using cells_t = std::vector<std::int64_t>;

template <class cell_t, std::size_t count>
cells_t cells_of(const std::array<cell_t, count>& row)
{
    return {row.begin(), row.end()};
}
cells_t cells_of(std::uint16_t value) { return {value}; }
cells_t cells_of(const lib_nr_ldpc_base_graph_row_t& row)
{
    cells_t cells = {row.row, row.column};
    cells.insert(cells.end(), row.shift.begin(), row.shift.end());
    return cells;
}
cells_t cells_of(const lib_nr_mcs_row_t& row)
{
    return {row.qm, std::llround(2 * row.code_rate_x1024), std::llround(10000 * row.spectral_efficiency)};
}
cells_t cells_of(const lib_nr_srs_bandwidth_row_t& row)
{
    cells_t cells = cells_of(row.m_srs);
    cells.insert(cells.end(), row.n.begin(), row.n.end());
    return cells;
}
cells_t cells_of(const lib_nr_prach_configuration_row_t& row)
{
    return {row.formats[0],
            row.formats[1],
            row.x,
            row.y[0],
            row.y[1],
            static_cast<std::int64_t>(row.subframes_or_slots & 0xFFFFFFFFu),
            static_cast<std::int64_t>(row.subframes_or_slots >> 32),
            row.starting_symbol,
            row.slots_per_subframe_or_60khz_slot,
            row.occasions_per_slot,
            row.duration};
}
cells_t cells_of(const lib_nr_prach_carrier_combination_t& row)
{
    return {row.lra, row.prach_scs, row.carrier_scs_khz, row.rb_number, row.k_bar};
}

/// FNV-1a over 32-bit words, down one column after the other.
template <class table_t>
std::uint32_t checksum(const table_t& table)
{
    std::uint32_t sum = 2166136261u;
    for (std::size_t column = 0; column < cells_of(table[0]).size(); ++column)
        for (const auto& row : table)
            sum = (sum ^ static_cast<std::uint32_t>(cells_of(row)[column])) * 16777619u;
    return sum;
}

TEST(published_tables, every_cell_is_that_of_the_standard)
{
    EXPECT_EQ(checksum(lib_nr_low_papr_type1_table_6()), 0x127B58D5u);
    EXPECT_EQ(checksum(lib_nr_low_papr_type1_table_12()), 0x5AE9F503u);
    EXPECT_EQ(checksum(lib_nr_low_papr_type1_table_18()), 0x50AF7B13u);
    EXPECT_EQ(checksum(lib_nr_low_papr_type1_table_24()), 0xAA99F9DDu);
    EXPECT_EQ(checksum(lib_nr_low_papr_type2_table_6()), 0x27637767u);
    EXPECT_EQ(checksum(lib_nr_low_papr_type2_table_12()), 0x1BF7FC08u);
    EXPECT_EQ(checksum(lib_nr_low_papr_type2_table_18()), 0x70DC540Bu);
    EXPECT_EQ(checksum(lib_nr_low_papr_type2_table_24()), 0xAD57AAF8u);
    EXPECT_EQ(checksum(polar_reliability_sequence()), 0xD0FE7BC3u);
    EXPECT_EQ(checksum(lib_nr_small_block_basis_table()), 0x7480C75Bu);
    EXPECT_EQ(checksum(lib_nr_ldpc_base_graph_1_table()), 0x370F7B90u);
    EXPECT_EQ(checksum(lib_nr_ldpc_base_graph_2_table()), 0x4177DB56u);
    EXPECT_EQ(checksum(lib_nr_mcs_table(TABLE_5_1_3_1_1)), 0x5A6D651Bu);
    EXPECT_EQ(checksum(lib_nr_mcs_table(TABLE_5_1_3_1_2)), 0xF21840F4u);
    EXPECT_EQ(checksum(lib_nr_mcs_table(TABLE_5_1_3_1_3)), 0x1274D3F8u);
    EXPECT_EQ(checksum(lib_nr_mcs_table(TABLE_5_1_3_1_4)), 0xF457153Cu);
    EXPECT_EQ(checksum(lib_nr_mcs_table(TABLE_6_1_4_1_1)), 0x5A0C8591u);
    EXPECT_EQ(checksum(lib_nr_mcs_table(TABLE_6_1_4_1_2)), 0xB90B206Au);
    EXPECT_EQ(checksum(lib_nr_srs_bandwidth_table()), 0x9724F4D3u);
    EXPECT_EQ(checksum(lib_nr_prach_configuration_fr1_paired_table()), 0x8EE0EE5Fu);
    EXPECT_EQ(checksum(lib_nr_prach_configuration_fr1_unpaired_table()), 0xA3F4D2E3u);
    EXPECT_EQ(checksum(lib_nr_prach_configuration_fr2_table()), 0xCCA76987u);
    EXPECT_EQ(checksum(lib_nr_prach_root_839_table()), 0x0D59AA20u);
    EXPECT_EQ(checksum(lib_nr_prach_carrier_combination_table()), 0xC8D41CA4u);
    EXPECT_EQ(checksum(lib_nr_prach_cyclic_shift_formats_0_1_2_table()), 0xE75A8985u);
    EXPECT_EQ(checksum(lib_nr_prach_cyclic_shift_format_3_table()), 0x400E4C5Bu);
    EXPECT_EQ(checksum(lib_nr_prach_cyclic_shift_short_table()), 0x7AD648D7u);
}

TEST(published_tables, dmrs_positions_are_those_of_the_receiver)
{
    for (unsigned int i = 0; i < 2 * 2 * 2 * 4 * 14; ++i) {
        const bool is_double = i % 2 != 0;
        const bool is_type_b = i / 2 % 2 != 0;
        const bool is_uplink = i / 4 % 2 != 0;
        const unsigned int additional = i / 8 % 4;
        const unsigned int length = 1 + i / 32;
        const auto* row = (is_uplink ? get_pusch_dmrs_position_row : get_pdsch_dmrs_position_row)(is_double, is_type_b,
                                                                                                  additional, length);
        std::vector<unsigned int> positions(row != nullptr ? 1 : 0);
        if (row != nullptr)
            positions.insert(positions.end(), row->positions.begin(), row->positions.begin() + row->number);
        const bool is_left_out = is_uplink && !is_double && length == (is_type_b ? 1 : 4); // by this system
        EXPECT_EQ(positions, is_left_out
                                 ? std::vector<unsigned int>()
                                 : nr_test::dmrs_positions(is_uplink, is_double, is_type_b, additional, length, 0));
    }
}

} // namespace
