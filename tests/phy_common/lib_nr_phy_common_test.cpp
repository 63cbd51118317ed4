#include "phy_common/lib_nr_phy_common.h"

#include "phy_common/tables/lib_nr_srs_bandwidth_table.h"
#include "support/captured_output.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace
{

using namespace vek::nr_mod_lib;
using book = lib_nr_phy_common_t;
using nr_test::captured_output_t;

constexpr auto k_no_spacing = static_cast<lib_nr_numerology_type_t>(7);
constexpr auto k_no_bandwidth = static_cast<lib_nr_channel_bw_type_t>(24);
constexpr auto k_no_range = static_cast<lib_nr_freq_range_type_t>(3);

constexpr unsigned int k_megahertz[] = {5,  10, 15,  20, 25,  30,  35,  40,  45,  50,  60,   70,
                                        80, 90, 100, 50, 100, 200, 400, 100, 400, 800, 1600, 2000};

lib_nr_numerology_type_t spacing(unsigned int mu) { return static_cast<lib_nr_numerology_type_t>(mu); }
lib_nr_channel_bw_type_t bandwidth(unsigned int value) { return static_cast<lib_nr_channel_bw_type_t>(value); }

unsigned int silent_rb_number(unsigned int mu, unsigned int bw)
{
    const captured_output_t silence;
    return book::get_max_transmit_rb_num(spacing(mu), bandwidth(bw));
}

double guard_khz(unsigned int mu, unsigned int bw)
{
    const double scs = 15.0 * (1U << mu);
    return (1000.0 * k_megahertz[bw] - silent_rb_number(mu, bw) * 12 * scs) / 2 - scs / 2;
}

TEST(lib_nr_phy_common, figures_of_a_spacing_double_from_one_to_the_next)
{
    for (unsigned int mu = 0; mu < 7; ++mu) {
        EXPECT_EQ(book::get_scs_hz_value(spacing(mu)), 15000U << mu);
        EXPECT_EQ(book::get_u_from_scs(spacing(mu)), mu);
        EXPECT_EQ(book::get_slot_in_frame(spacing(mu)), 10U << mu);
        EXPECT_EQ(book::get_symbol_number_in_slot(spacing(mu), LIB_NR_NORMAL_CP), 14U);
        EXPECT_EQ(book::get_symbol_number_in_slot(spacing(mu), LIB_NR_EXTEND_CP), 12U);
        EXPECT_EQ(book::get_symbol_number_in_frame(spacing(mu), LIB_NR_NORMAL_CP), 140U << mu);
        EXPECT_EQ(book::get_symbol_number_in_frame(spacing(mu), LIB_NR_EXTEND_CP), 120U << mu);
    }
}

// TS 38.104 gives resource blocks and minimum guard bands in tables of their own; bandwidth and spacing tie them
// together: guard = (bandwidth - RBs x 12 x spacing) / 2 - spacing / 2.
TEST(lib_nr_phy_common, resource_blocks_and_guard_bands_fill_the_channel)
{
    unsigned int pairs = 0;
    for (unsigned int bw = 0; bw < 24; ++bw)
        for (unsigned int mu = 0; mu < 7; ++mu) {
            const unsigned int rb_number = silent_rb_number(mu, bw);
            EXPECT_EQ(rb_number * 12, [&] {
                const captured_output_t silence;
                return book::get_subcarrier_total_number(spacing(mu), bandwidth(bw));
            }());
            if (rb_number == 0) {
                EXPECT_FALSE(book::check_numerology_bandwidth_valid(spacing(mu), bandwidth(bw))) << mu << " " << bw;
                continue;
            }
            ++pairs;
            EXPECT_GT(guard_khz(mu, bw), 0.0) << mu << " " << bw;
            EXPECT_LT(guard_khz(mu, bw), 0.16 * 1000 * k_megahertz[bw]) << mu << " " << bw;
            if (mu > 0 && silent_rb_number(mu - 1, bw) > 0) {
                EXPECT_LE(2 * rb_number, silent_rb_number(mu - 1, bw)) << mu << " " << bw;
            }
        }
    EXPECT_EQ(pairs, 10U + 15 + 14 + 3 + 4 + 3 + 2 + 2 + 3 + 4);

    EXPECT_EQ(guard_khz(0, LIB_NR_CHANNEL_FR1_5M), 242.5);
    EXPECT_EQ(guard_khz(0, LIB_NR_CHANNEL_FR1_50M), 692.5);
    EXPECT_EQ(guard_khz(1, LIB_NR_CHANNEL_FR1_45M), 1065);
    EXPECT_EQ(guard_khz(1, LIB_NR_CHANNEL_FR1_100M), 845);
    EXPECT_EQ(guard_khz(2, LIB_NR_CHANNEL_FR1_100M), 1370);
    EXPECT_EQ(guard_khz(2, LIB_NR_CHANNEL_FR2_1_200M), 4930);
    EXPECT_EQ(guard_khz(3, LIB_NR_CHANNEL_FR2_1_400M), 9860);
    EXPECT_EQ(guard_khz(5, LIB_NR_CHANNEL_FR2_2_1600M), 85520);
    EXPECT_EQ(guard_khz(6, LIB_NR_CHANNEL_FR2_2_2000M), 147040);
}

TEST(lib_nr_phy_common, valid_pairs_are_narrower_than_the_resource_blocks)
{
    unsigned int valid[3] = {};
    for (unsigned int bw = 0; bw < 24; ++bw)
        for (unsigned int mu = 0; mu < 7; ++mu)
            valid[book::get_freq_range_type(bandwidth(bw))] +=
                book::check_numerology_bandwidth_valid(spacing(mu), bandwidth(bw));
    EXPECT_EQ(valid[NR_FR1], 10U + 15 + 14);
    EXPECT_EQ(valid[NR_FR2_1], 3U + 4 + 3);
    EXPECT_EQ(valid[NR_FR2_2], 2U + 3 + 4);

    EXPECT_EQ(book::get_max_transmit_rb_num(LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_2_100M), 32U);
    EXPECT_FALSE(book::check_numerology_bandwidth_valid(LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_2_100M));
    EXPECT_FALSE(book::check_numerology_bandwidth_valid(LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR2_1_400M));
    EXPECT_FALSE(book::check_numerology_bandwidth_valid(LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_1_50M));

    using list_t = std::vector<lib_nr_numerology_type_t>;
    EXPECT_EQ(book::get_valid_numerology_list(LIB_NR_CHANNEL_FR1_5M), (list_t{LIB_NR_SCS_15K, LIB_NR_SCS_30K}));
    EXPECT_EQ(book::get_valid_numerology_list(LIB_NR_CHANNEL_FR1_100M), (list_t{LIB_NR_SCS_30K, LIB_NR_SCS_60K}));
    EXPECT_EQ(book::get_valid_numerology_list(LIB_NR_CHANNEL_FR2_2_100M), list_t{LIB_NR_SCS_120K});
    EXPECT_EQ(book::get_valid_numerology_list(LIB_NR_CHANNEL_FR2_2_2000M), list_t{LIB_NR_SCS_960K});
    EXPECT_EQ(book::get_valid_numerology_list(LIB_NR_CHANNEL_FR2_2_400M),
              (list_t{LIB_NR_SCS_120K, LIB_NR_SCS_480K, LIB_NR_SCS_960K}));
}

TEST(lib_nr_phy_common, bandwidth_lists_hold_what_the_check_accepts)
{
    for (unsigned int range = 0; range < 3; ++range) {
        const auto freq_range = static_cast<lib_nr_freq_range_type_t>(range);
        for (const lib_nr_channel_bw_type_t bw : book::get_valid_bandwidth_list(freq_range))
            EXPECT_EQ(book::get_freq_range_type(bw), freq_range);
        for (unsigned int mu = 0; mu < 7; ++mu) {
            std::vector<lib_nr_channel_bw_type_t> accepted;
            for (const lib_nr_channel_bw_type_t bw : book::get_valid_bandwidth_list(freq_range))
                if (book::check_numerology_bandwidth_valid(spacing(mu), bw))
                    accepted.push_back(bw);
            if (accepted.empty() || mu == 4)
                continue;
            if (mu == 6)
                accepted.erase(accepted.begin()); // 400 MHz is valid at 960 kHz, but is not offered
            EXPECT_EQ(book::get_valid_bandwidth_list(spacing(mu), freq_range), accepted) << range << " " << mu;
        }
    }
    EXPECT_EQ(book::get_valid_bandwidth_list(NR_FR1).size(), 15U);
    EXPECT_EQ(book::get_valid_bandwidth_list(NR_FR2_1).size(), 4U);
    EXPECT_EQ(book::get_valid_bandwidth_list(NR_FR2_2).size(), 5U);

    using list_t = std::vector<lib_nr_channel_bw_type_t>;
    const list_t both_ranges = {LIB_NR_CHANNEL_FR2_1_100M, LIB_NR_CHANNEL_FR2_2_100M, LIB_NR_CHANNEL_FR2_1_200M,
                                LIB_NR_CHANNEL_FR2_1_400M, LIB_NR_CHANNEL_FR2_2_400M};
    for (const auto range : {NR_FR2_1, NR_FR2_2, k_no_range})
        EXPECT_EQ(book::get_valid_bandwidth_list(LIB_NR_SCS_240K, range), both_ranges);

    const list_t ntn_fr1 = {LIB_NR_CHANNEL_FR1_5M, LIB_NR_CHANNEL_FR1_10M, LIB_NR_CHANNEL_FR1_15M,
                            LIB_NR_CHANNEL_FR1_20M, LIB_NR_CHANNEL_FR1_30M};
    EXPECT_EQ(book::get_ntn_valid_bandwidth_list(NR_FR1), ntn_fr1);
    EXPECT_EQ(book::get_ntn_valid_bandwidth_list(LIB_NR_SCS_15K, NR_FR1), ntn_fr1);
    EXPECT_EQ(book::get_ntn_valid_bandwidth_list(LIB_NR_SCS_60K, NR_FR1), list_t(ntn_fr1.begin() + 1, ntn_fr1.end()));
    EXPECT_EQ(book::get_ntn_valid_bandwidth_list(NR_FR2_1), book::get_valid_bandwidth_list(NR_FR2_1));
    EXPECT_EQ(book::get_ntn_valid_bandwidth_list(LIB_NR_SCS_60K, NR_FR2_1).size(), 3U);
    EXPECT_EQ(book::get_ntn_valid_bandwidth_list(LIB_NR_SCS_120K, NR_FR2_1).size(), 4U);
}

TEST(lib_nr_phy_common, failures_print_their_line_and_fall_back)
{
    const std::string scs = "lib_nr_phy_common_t::get_scs_hz_value Report: scs error\n";
    const std::string mu = "lib_nr_phy_common_t::get_u_from_scs Report: scs error..\n";
    const std::string bw = "lib_nr_phy_common_t::get_freq_range_type Report : Unexpected Channel Bandwidth Type!\n";
    const std::string rb = "lib_nr_phy_common_t::get_max_transmit_rb_num Report : Illegal Input Arguments!\n";
    const std::string range = "lib_nr_phy_common_t::get_valid_bandwidth_list : Error frequency range!\n";
    const std::string combination =
        "lib_nr_phy_common_t::get_valid_bandwidth_list : Error combination of SCS and frequency range!\n";
    std::string seven_times;
    for (int i = 0; i < 7; ++i)
        seven_times += bw;

    const auto first = [](const auto& list) {
        return list.empty() ? 999U : list.front() + 100U * unsigned(list.size());
    };
    struct row_t
    {
        std::function<unsigned int()> call;
        unsigned int result;
        std::string text;
    };
    const row_t rows[] = {
        {[] { return book::get_scs_hz_value(k_no_spacing); }, 30000, scs},
        {[] { return book::get_u_from_scs(k_no_spacing); }, 0, mu},
        {[] { return book::get_slot_in_frame(k_no_spacing); }, 10, mu},
        {[] { return book::get_symbol_number_in_frame(k_no_spacing, LIB_NR_EXTEND_CP); }, 120, mu},
        {[] { return unsigned(book::get_freq_range_type(k_no_bandwidth)); }, NR_FR1, bw},
        {[] { return unsigned(book::check_numerology_bandwidth_valid(LIB_NR_SCS_60K, k_no_bandwidth)); }, 1, bw},
        {[] { return unsigned(book::check_numerology_bandwidth_valid(LIB_NR_SCS_120K, k_no_bandwidth)); }, 0, bw},
        {[&] { return first(book::get_valid_numerology_list(k_no_bandwidth)); }, 300, seven_times},
        {[] { return book::get_max_transmit_rb_num(LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_5M); }, 0, rb},
        {[] { return book::get_subcarrier_total_number(LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_60M); }, 0, rb},
        {[] { return book::get_max_transmit_rb_num(k_no_spacing, LIB_NR_CHANNEL_FR1_5M); }, 0, rb},
        {[] { return book::get_max_transmit_rb_num(LIB_NR_SCS_15K, k_no_bandwidth); }, 0, rb},
        {[&] { return first(book::get_valid_bandwidth_list(k_no_range)); }, 114, range},
        {[&] { return first(book::get_valid_bandwidth_list(LIB_NR_SCS_30K, k_no_range)); }, 114, range},
        {[&] { return first(book::get_valid_bandwidth_list(LIB_NR_SCS_120K, NR_FR1)); }, 901, combination},
        {[&] { return first(book::get_valid_bandwidth_list(LIB_NR_SCS_240K, NR_FR1)); }, 901, combination},
        {[&] { return first(book::get_valid_bandwidth_list(LIB_NR_SCS_15K, NR_FR2_1)); }, 315, combination},
        {[&] { return first(book::get_valid_bandwidth_list(LIB_NR_SCS_60K, NR_FR2_2)); }, 221, combination},
        {[&] { return first(book::get_ntn_valid_bandwidth_list(NR_FR2_2)); }, 105, range},
        {[&] { return first(book::get_ntn_valid_bandwidth_list(LIB_NR_SCS_120K, NR_FR2_2)); }, 105, range},
        {[&] { return first(book::get_ntn_valid_bandwidth_list(LIB_NR_SCS_240K, NR_FR1)); }, 401, combination},
        {[&] { return first(book::get_ntn_valid_bandwidth_list(LIB_NR_SCS_240K, NR_FR2_1)); }, 315, combination},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const captured_output_t output;
        EXPECT_EQ(rows[i].call(), rows[i].result) << "row " << i;
        EXPECT_EQ(output.text(), rows[i].text) << "row " << i;
    }
}

TEST(lib_nr_phy_common, srs_bandwidths_are_those_of_their_table_whatever_the_maps_held)
{
    srs_bw_t table;
    table.m_srs[9] = {1};
    book::_srs_bw_config_init(table);
    book::_srs_bw_config_init(table);
    ASSERT_EQ(table.m_srs.size(), 4U);
    ASSERT_EQ(table.n.size(), 4U);
    for (unsigned char b = 0; b < 4; ++b)
        for (std::size_t c = 0; c < 64; ++c) {
            EXPECT_EQ(table.m_srs[b].at(c), lib_nr_srs_bandwidth_table()[c].m_srs[b]);
            EXPECT_EQ(table.n[b].at(c), lib_nr_srs_bandwidth_table()[c].n[b]);
        }
}

} // namespace
