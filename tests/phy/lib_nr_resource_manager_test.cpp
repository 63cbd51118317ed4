#include "phy/lib_nr_resource_manager.h"

#include "support/captured_output.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <utility>

namespace
{

using namespace vek::nr_mod_lib;
using grid_t = lib_nr_channel_resource_manager_t;

grid_t& grid() { return grid_t::get_inst(); }

void prepare(lib_nr_numerology_type_t numerology, unsigned int rb_number,
             lib_nr_cyclic_prefix_type_t cp_type = LIB_NR_NORMAL_CP)
{
    grid().set_numerology(numerology);
    grid().set_rb_number(rb_number);
    grid().set_channel_bandwidth(LIB_NR_CHANNEL_FR1_10M);
    grid().set_cyclic_prefix_type(cp_type);
    grid().init_resource_mapping();
}

/// Who owned and who claimed a cell, each with its entry.
using claim_t = std::pair<lib_nr_channel_resource_mapping_type_t, std::uint32_t>;
/// Where two met first, and in how many cells.
struct meeting_t
{
    claim_t owner;
    claim_t newcomer;
    std::uint32_t symbol;
    std::uint32_t subcarrier;
    std::uint64_t cells;

    bool operator==(const meeting_t&) const = default;
};

/// Every cell of the map of maps, built here cell by cell from marks alone.
class slow_map_t
{
public:
    slow_map_t(unsigned int symbols, unsigned int subcarriers)
    {
        for (unsigned int l = 0; l < symbols; ++l) {
            auto& row = map[l];
            for (unsigned int k = 0; k < subcarriers; ++k)
                row[k] = LIB_NR_RESOURCE_MAPPING_EMPTY;
        }
    }
    bool mark(unsigned int symbol, unsigned int subcarrier, lib_nr_channel_resource_mapping_type_t type)
    {
        auto& cell = map.at(symbol).at(subcarrier);
        if (cell == LIB_NR_RESOURCE_MAPPING_EMPTY) {
            m_owners[{symbol, subcarrier}] = {type, entry};
            cell = type;
            return true;
        }
        const bool is_under = type == LIB_NR_RESOURCE_MAPPING_PDSCH &&
                              (cell == LIB_NR_RESOURCE_MAPPING_SSB || cell == LIB_NR_RESOURCE_MAPPING_CSIRS);
        const bool is_shared = type == LIB_NR_RESOURCE_MAPPING_PUCCH && cell == LIB_NR_RESOURCE_MAPPING_PUCCH;
        if (is_under || is_shared)
            return true;
        cell = LIB_NR_RESOURCE_MAPPING_CONFLICT;
        const meeting_t meeting{m_owners.at({symbol, subcarrier}), {type, entry}, symbol, subcarrier, 1};
        const auto known = std::find_if(meetings.begin(), meetings.end(), [&](const meeting_t& other) {
            return other.owner == meeting.owner && other.newcomer == meeting.newcomer;
        });
        known == meetings.end() ? meetings.push_back(meeting) : void(++known->cells);
        return false;
    }

    grid_t::resource_map_t map;
    std::uint32_t entry = 0;
    std::vector<meeting_t> meetings;

private:
    std::map<std::pair<unsigned int, unsigned int>, claim_t> m_owners;
};

TEST(lib_nr_resource_manager, the_view_equals_a_map_built_cell_by_cell_after_every_change)
{
    std::mt19937 random(11);
    const auto below = [&](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
    for (unsigned int round = 0; round < 40; ++round) {
        const unsigned int rb_number = 1 + below(5);
        prepare(LIB_NR_SCS_15K, rb_number);
        slow_map_t expected(140, 12 * rb_number);
        // Every other round marks without a view, by whole rows.
        const grid_t::resource_map_t* early = round % 2 == 0 ? &grid().get_resource_mapping() : nullptr;
        ASSERT_TRUE(!early || *early == expected.map);
        for (unsigned int step = 0; step < 12; ++step) {
            const auto type = static_cast<lib_nr_channel_resource_mapping_type_t>(1 + below(8));
            grid().set_entry_at_work(expected.entry = below(3));
            bool free = true;
            bool marked = false;
            switch (below(4)) {
            case 0: {
                const lib_nr_resource_element_range_t range{below(138), 1 + below(2), below(rb_number), 1};
                for (unsigned int l = range.symbol_start; l < range.symbol_start + range.symbol_count; ++l)
                    for (unsigned int k = 12 * range.crb_start; k < 12 * (range.crb_start + 1); ++k)
                        free = expected.mark(l, k, type) && free;
                marked = grid().deal_resource_mapping(range, type);
                break;
            }
            case 1: {
                const lib_nr_slot_resource_range_t range{{below(5), 5 + below(5)}, below(13), 2, 0, rb_number};
                for (const unsigned int slot : range.slots)
                    for (unsigned int l = 0; l < 2; ++l)
                        for (unsigned int k = 0; k < 12 * rb_number; ++k)
                            free = expected.mark(14 * slot + range.symbol_start + l, k, type) && free;
                marked = grid().deal_resource_mapping(range, type);
                break;
            }
            case 2: {
                std::vector<lib_nr_resource_run_t> runs;
                for (unsigned int i = below(6); i > 0; --i)
                    runs.push_back({below(145), static_cast<int>(below(80)) - 20, below(70), below(4)});
                for (const auto& run : runs)
                    for (unsigned int i = 0; i < run.count; ++i) {
                        const int k = run.first_subcarrier + static_cast<int>(i * std::max(run.step, 1U));
                        const bool inside = run.symbol < 140 && k >= 0 && k < static_cast<int>(12 * rb_number);
                        free = inside && expected.mark(run.symbol, static_cast<unsigned int>(k), type) && free;
                    }
                nr_test::captured_output_t silence;
                marked = grid().mark_runs(runs, type);
                break;
            }
            default: {
                std::vector<lib_nr_resource_element_index_t> elements;
                for (unsigned int i = below(30); i > 0; --i)
                    elements.push_back(
                        {static_cast<std::uint16_t>(below(140)), static_cast<std::uint16_t>(below(12 * rb_number))});
                for (const auto& element : elements)
                    free = expected.mark(element.symbol, element.subcarrier, type) && free;
                marked = grid().deal_resource_mapping(elements, type);
            }
            }
            EXPECT_EQ(marked, free);
        }
        // The reference taken before the marks tells the truth, and so do the flat reads.
        EXPECT_TRUE(!early || *early == expected.map);
        EXPECT_EQ(grid().get_resource_mapping(), expected.map);
        bool conflict = false;
        for (const auto& [symbol, row] : expected.map)
            for (const auto& [subcarrier, owner] : row) {
                conflict = conflict || owner == LIB_NR_RESOURCE_MAPPING_CONFLICT;
                ASSERT_EQ(grid().get_owner(symbol, subcarrier), owner);
            }
        EXPECT_EQ(grid().is_resource_mapping_conflict(), conflict);
        std::vector<meeting_t> meetings;
        for (const lib_nr_resource_conflict_t& c : grid().get_conflicts())
            meetings.push_back(
                {{c.owner, c.owner_entry}, {c.newcomer, c.newcomer_entry}, c.symbol, c.subcarrier, c.cells});
        EXPECT_EQ(meetings, expected.meetings);
    }
}

TEST(lib_nr_resource_manager, refuses_what_lies_outside_with_its_line_and_keeps_what_was_marked)
{
    const std::string symbol_in_frame =
        "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : symbol index in frame out of range\n";
    const std::string symbol_in_slot =
        "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : symbol index in slot out of range\n";
    const std::string slot = "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : slot index out of range\n";
    const std::string crb = "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : crb index out of range\n";
    const std::string subcarrier =
        "lib_nr_dl_resource_manager_t::deal_resource_mapping Report : subcarrier index out of range\n";
    constexpr std::uint32_t k_most = 0xFFFFFFFFU;

    prepare(LIB_NR_SCS_30K, 24);
    const std::vector<std::pair<lib_nr_resource_element_range_t, std::string>> ranges = {
        {{280, 1, 0, 1}, symbol_in_frame},
        {{279, 2, 0, 1}, symbol_in_frame},
        {{0, 0, 0, 1}, symbol_in_frame},
        {{5, k_most, 0, 1}, symbol_in_frame},
        {{0, 1, 24, 1}, crb},
        {{0, 1, 23, 2}, crb},
        {{0, 1, 1, k_most}, crb},
        {{300, 1, 99, 1}, symbol_in_frame}};
    for (const auto& [range, line] : ranges) {
        nr_test::captured_output_t output;
        EXPECT_FALSE(grid().deal_resource_mapping(range, LIB_NR_RESOURCE_MAPPING_PDCCH));
        EXPECT_EQ(output.text(), line) << range.symbol_start << ' ' << range.symbol_count << ' ' << range.crb_start;
    }
    const std::vector<std::pair<lib_nr_slot_resource_range_t, std::string>> slots = {
        {{{0, 20}, 0, 1, 0, 1}, slot},
        {{{0}, 13, 2, 0, 1}, symbol_in_slot},
        {{{0}, 0, 1, 24, 1}, crb},
        {{{20}, 14, 1, 24, 1}, slot}};
    for (const auto& [range, line] : slots) {
        nr_test::captured_output_t output;
        EXPECT_FALSE(grid().deal_resource_mapping(range, LIB_NR_RESOURCE_MAPPING_PUCCH));
        EXPECT_EQ(output.text(), line);
    }
    EXPECT_TRUE(grid().deal_resource_mapping(lib_nr_slot_resource_range_t{}, LIB_NR_RESOURCE_MAPPING_PUCCH));
    EXPECT_TRUE(
        grid().deal_resource_mapping(std::vector<lib_nr_resource_element_index_t>{}, LIB_NR_RESOURCE_MAPPING_SSB));
    {
        nr_test::captured_output_t output;
        EXPECT_FALSE(grid().deal_resource_mapping(
            std::vector<lib_nr_resource_element_index_t>{{1, 2}, {3, 288}, {4, 5}}, LIB_NR_RESOURCE_MAPPING_SRS));
        EXPECT_FALSE(grid().deal_resource_mapping(std::vector<lib_nr_resource_element_index_t>{{280, 0}},
                                                  LIB_NR_RESOURCE_MAPPING_SRS));
        EXPECT_EQ(output.text(), subcarrier + symbol_in_frame);
    }
    {
        nr_test::captured_output_t output;
        EXPECT_FALSE(grid().mark_runs({{2, 0, 1}, {2, -1, 3, 2}, {280, 0, 1}}, LIB_NR_RESOURCE_MAPPING_SRS));
        EXPECT_EQ(output.text(), subcarrier); // once a call, that of the first
    }
    EXPECT_EQ(grid().get_owner(1, 2), LIB_NR_RESOURCE_MAPPING_SRS);
    EXPECT_EQ(grid().get_owner(4, 5), LIB_NR_RESOURCE_MAPPING_EMPTY);
    EXPECT_EQ(grid().get_owner(0, 0), LIB_NR_RESOURCE_MAPPING_EMPTY);
    EXPECT_FALSE(grid().is_resource_mapping_conflict());

    prepare(LIB_NR_SCS_30K, 0);
    nr_test::captured_output_t output;
    EXPECT_FALSE(
        grid().deal_resource_mapping(lib_nr_resource_element_range_t{0, 1, 0, 0}, LIB_NR_RESOURCE_MAPPING_SSB));
    EXPECT_EQ(output.text(), crb);
}

// Run by run, and as one stream that ends within the fourth.
TEST(lib_nr_resource_manager, writes_adds_and_counts_the_part_of_runs_that_lies_inside)
{
    prepare(LIB_NR_SCS_15K, 1);
    grid().init_payload_mapping();
    const grid_t::payload_map_t& payload = std::as_const(grid()).get_payload_mapping();
    grid_t::payload_map_t expected = payload;
    grid_t::payload_map_t expected_of_stream = expected;
    const std::vector<std::complex<double>> values = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11,
                                                      12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22};
    const std::vector<lib_nr_resource_run_t> runs = {{3, -4, 6},  {5, -3, 6, 4},       {7, 9, 6},   {139, -12, 6, 5},
                                                     {140, 0, 6}, {9, -2000000000, 6}, {11, 12, 6}, {13, -9, 6, 2}};
    std::size_t inside = 0;
    std::size_t next = 0;
    grid().take_written();
    grid().set_entry_at_work(2);
    for (const lib_nr_resource_run_t& run : runs) {
        grid().write_run(run, values.data(), 0.5);
        for (int i = 0; i < 6; ++i, ++next) {
            const int k = run.first_subcarrier + i * static_cast<int>(run.step);
            if (run.symbol >= 140 || k < 0 || k >= 12)
                continue;
            expected[run.symbol][static_cast<std::size_t>(k)] = 0.5 * (i + 1);
            if (next < values.size())
                expected_of_stream[run.symbol][static_cast<std::size_t>(k)] = 3.0 * values[next];
            ++inside;
        }
        EXPECT_EQ(payload, expected) << run.symbol;
    }
    const lib_nr_resource_written_t written = grid().take_written().at(2);
    EXPECT_TRUE(written.cells.inside == inside && written.cells.all() == 8 * 6);
    EXPECT_EQ(written.slots, (std::vector<std::uint32_t>{0, 9, 0}));
    EXPECT_TRUE(grid().count(runs).inside == inside && grid().count(runs).all() == 8 * 6);

    grid().init_payload_mapping();
    grid_t::payload_map_t elsewhere = std::as_const(grid()).get_payload_mapping();
    EXPECT_EQ(elsewhere, grid_t::payload_map_t(140, std::vector<std::complex<double>>(12)));
    EXPECT_EQ(grid().write_stream(runs, values, 3.0).all(), values.size());
    EXPECT_EQ(payload, expected_of_stream);
    // A row that is covered, one that is not and one that is added to, after others have stood there.
    for (const bool is_looked_at : {true, false}) {
        for (const std::uint32_t symbol : {3u, 20u, 30u, 40u, 50u})
            grid().write_run({symbol, 0, 12}, values.data(), 7.0);
        grid().init_payload_mapping();
        const bool is_lent = grid().get_written_payload().may_sound(0); // by a test before, in the same process
        const bool is_clear = !is_looked_at || std::as_const(grid()).get_payload_mapping()[20][5] == 0.0;
        EXPECT_TRUE(is_clear);
        grid().write_run({20, 0, 12}, values.data());
        grid().write_run({30, 4, 2}, values.data());
        grid().add_stream({{40, 0, 12}}, values, 2.0, grid().get_payload_of_streams());
        for (std::size_t l = 0; l < 140; ++l)
            EXPECT_EQ(grid().get_written_payload().may_sound(l), is_lent || l == 20 || l == 30 || l == 40) << l;
        const auto row = [&](std::size_t l) { return std::as_const(grid()).get_payload_mapping()[l]; };
        EXPECT_EQ(row(20), std::vector<std::complex<double>>(values.begin(), values.begin() + 12));
        EXPECT_EQ(row(30), (std::vector<std::complex<double>>{0, 0, 0, 0, 1, 2, 0, 0, 0, 0, 0, 0}));
        EXPECT_EQ(row(40)[11], 24.0);
        EXPECT_EQ(row(50), std::vector<std::complex<double>>(12));
    }
    for (const double part : {1.0, 2.0})
        EXPECT_EQ(grid().add_stream(runs, values, part, elsewhere).all(), values.size());
    EXPECT_EQ(elsewhere, expected_of_stream);

    // Whoever holds the map may write at any time.
    auto& lent = grid().get_payload_mapping();
    for (int round = 0; round < 2; ++round) {
        lent[77][3] = 5.0;
        EXPECT_TRUE(grid().get_written_payload().may_sound(77));
        grid().init_payload_mapping();
        EXPECT_EQ(payload[77][3], 0.0);
    }
}

TEST(lib_nr_resource_manager, the_extended_prefix_goes_with_60_khz_alone)
{
    prepare(LIB_NR_SCS_60K, 11, LIB_NR_EXTEND_CP);
    EXPECT_EQ(grid().get_mapped_symbol_number(), 480u);
    grid().init_payload_mapping();
    EXPECT_EQ(grid().get_payload_mapping().size(), 480u);
    EXPECT_EQ(grid().get_payload_mapping().front().size(), 132u);
    EXPECT_TRUE(grid().is_pass_of(LIB_NR_SCS_60K, LIB_NR_EXTEND_CP));
    EXPECT_FALSE(grid().is_pass_of(LIB_NR_SCS_60K, LIB_NR_NORMAL_CP));
    EXPECT_FALSE(grid().is_pass_of(LIB_NR_SCS_30K, LIB_NR_EXTEND_CP));

    // A change to the same spacing keeps the prefix; from another spacing it is the normal one.
    grid().set_numerology(LIB_NR_SCS_60K);
    grid().init_resource_mapping();
    EXPECT_EQ(grid().get_mapped_symbol_number(), 480u);
    nr_test::captured_output_t output;
    prepare(LIB_NR_SCS_30K, 11, LIB_NR_EXTEND_CP);
    EXPECT_NE(output.text().find("Extende CP is supported only with 60kHz SCS!"), std::string::npos);
    prepare(LIB_NR_SCS_30K, 11);
    EXPECT_EQ(grid().get_mapped_symbol_number(), 280u);
}

} // namespace
