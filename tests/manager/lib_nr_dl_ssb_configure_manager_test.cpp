#include "manager/lib_nr_dl_ssb_configure_manager.h"

#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "support/captured_output.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::captured_output_t;

lib_nr_phy_numerology_configure_manager_t numerology_of(lib_nr_numerology_type_t spacing,
                                                        lib_nr_channel_bw_type_t bandwidth)
{
    lib_nr_phy_numerology_configure_manager_t numerology;
    numerology.set_numerology(spacing, bandwidth);
    return numerology;
}

lib_nr_dl_ssb_configure_manager_t ssb_at(lib_nr_numerology_type_t spacing, lib_nr_channel_bw_type_t bandwidth,
                                         double frequency = 1e9)
{
    const captured_output_t silence;
    const auto numerology = numerology_of(spacing, bandwidth);
    lib_nr_dl_ssb_configure_manager_t ssb(numerology, bandwidth);
    ssb.update_by_radio_frequency(numerology, frequency);
    return ssb;
}

const std::string k_limit_line = "ssb-rb_offset reach limitation ,max_rb_offset  = ";

TEST(lib_nr_dl_ssb_configure_manager, init_restores_what_it_lists_and_keeps_the_rest)
{
    const captured_output_t silence;
    const auto numerology = numerology_of(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M);
    auto ssb = ssb_at(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 3.5e9);
    ssb.set_auto_cofig_mib(false);
    ssb.set_data_source(LIB_NR_PN23);
    ssb.set_data_source_custom("101");
    ssb.set_ssb_pattern(NR_SSB_CASE_C);
    ssb.set_periodicity(LIB_NR_SSB_5MS_PERIODICITY);
    ssb.set_kssb(8, LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51);
    ssb.set_enable(true, 51);
    ssb.init(numerology, LIB_NR_CHANNEL_FR1_20M);
    EXPECT_FALSE(ssb.get_enable());
    EXPECT_EQ(ssb.get_data_source(), LIB_NR_PN9);
    EXPECT_EQ(ssb.get_ssb_pattern(), NR_SSB_CASE_B);
    EXPECT_EQ(ssb.get_half_frame_idx(), 0);
    EXPECT_EQ(ssb.get_kssb(), 0u);
    EXPECT_EQ(ssb.get_data_source_custom_text(), "101");
    EXPECT_EQ(ssb.get_lmax(), LIB_NR_LMAX_8); // the radio frequency stays
}

TEST(lib_nr_dl_ssb_configure_manager, spacing_decides_pattern_lmax_and_offset)
{
    struct row_t
    {
        lib_nr_numerology_type_t spacing;
        lib_nr_channel_bw_type_t bandwidth;
        double frequency;
        std::vector<lib_nr_ssb_case_t> patterns;
        unsigned int lmax;
        unsigned int rb_offset;
        bool may_be_enabled;
    };
    const std::vector<row_t> rows = {
        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_5M, 3e9, {NR_SSB_CASE_A}, 4, 5, true},
        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_50M, 3.0000001e9, {NR_SSB_CASE_A}, 8, 250, true},
        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_10M, 3e9, {NR_SSB_CASE_B, NR_SSB_CASE_C}, 4, 4, true},
        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_100M, 6e9, {NR_SSB_CASE_B, NR_SSB_CASE_C}, 8, 253, true},
        {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, 28e9, {NR_SSB_CASE_D}, 64, 12, true},
        {LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_1_400M, 1e9, {NR_SSB_CASE_E}, 64, 112, true},
        {LIB_NR_SCS_480K, LIB_NR_CHANNEL_FR2_2_1600M, 60e9, {NR_SSB_CASE_F}, 64, 228, true},
        {LIB_NR_SCS_960K, LIB_NR_CHANNEL_FR2_2_400M, 60e9, {NR_SSB_CASE_G}, 64, 13, true},
    };
    for (const row_t& row : rows) {
        SCOPED_TRACE(row.spacing);
        auto ssb = ssb_at(row.spacing, row.bandwidth, row.frequency);
        EXPECT_EQ(ssb.get_numerology(), row.spacing);
        EXPECT_EQ(ssb.get_ssb_pattern(row.spacing), row.patterns.front());
        EXPECT_EQ(ssb.get_ssb_pattern_feedback(row.spacing), row.patterns);
        EXPECT_EQ(ssb.get_lmax(), row.lmax);
        EXPECT_EQ(ssb.get_power_boosting().size(), row.lmax);
        EXPECT_EQ(ssb.get_active_idx_text(), "0,1,2,3");
        EXPECT_EQ(ssb.get_rb_offset(), row.rb_offset);
        EXPECT_EQ(ssb.get_subcarrier_spacing_common(), row.spacing);
        EXPECT_EQ(ssb.set_ssb_pattern(NR_SSB_CASE_C), row.spacing == LIB_NR_SCS_30K);
        EXPECT_FALSE(ssb.set_ssb_pattern(NR_SSB_CASE_D)); // of its own spacing only
        EXPECT_EQ(ssb.set_enable(true, row.rb_offset + 20), row.may_be_enabled);
    }
}

TEST(lib_nr_dl_ssb_configure_manager, has_no_place_at_60_khz_and_below_20_resource_blocks)
{
    auto ssb = ssb_at(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M);
    EXPECT_TRUE(ssb.set_enable(true, 20));
    EXPECT_TRUE(ssb.set_enable(true, 19)); // changes it to false
    EXPECT_FALSE(ssb.get_enable());

    ssb.set_enable(true, 51);
    {
        const captured_output_t output;
        ssb.update_by_numerology(numerology_of(LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_100M));
        EXPECT_EQ(output.text(), "update_by_numerology:60khz invalid\n");
    }
    EXPECT_FALSE(ssb.get_enable());
    EXPECT_EQ(ssb.get_numerology(), LIB_NR_SCS_60K);
    EXPECT_TRUE(ssb.get_ssb_pattern_feedback(LIB_NR_SCS_60K).empty());
    EXPECT_FALSE(ssb.set_enable(true, 135));

    const captured_output_t output;
    lib_nr_phy_numerology_configure_manager_t narrow = numerology_of(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M);
    ssb.update_by_numerology(narrow);
    ssb.set_enable(true, 51);
    narrow.set_rb_size(19);
    ssb.update_by_numerology(narrow);
    EXPECT_FALSE(ssb.get_enable());
    EXPECT_EQ(ssb.get_rb_offset(), 0u);

    // 5 MHz has 11 blocks at 30 kHz: the block moves to 15 kHz, where there are 25.
    ssb.update_by_bandwidth(numerology_of(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_5M), LIB_NR_CHANNEL_FR1_5M);
    EXPECT_EQ(ssb.get_numerology(), LIB_NR_SCS_15K);
    EXPECT_EQ(ssb.get_ssb_pattern(), NR_SSB_CASE_A);
    EXPECT_EQ(ssb.get_rb_offset(), 5u);
    EXPECT_TRUE(ssb.set_enable(true, 25));

    EXPECT_TRUE(ssb.set_numerology(static_cast<lib_nr_numerology_type_t>(7), 51));
    EXPECT_TRUE(output.text().ends_with("lib_nr_dl_ssb_configure_manager_t::set_numerology invalid!\n"));
    EXPECT_EQ(ssb.get_numerology(), LIB_NR_SCS_15K);
}

TEST(lib_nr_dl_ssb_configure_manager, following_resets_pattern_and_lists)
{
    const captured_output_t silence;
    const auto numerology = numerology_of(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M);
    auto ssb = ssb_at(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 2e9);
    ssb.set_ssb_pattern(NR_SSB_CASE_C);
    ssb.set_active_idx("1,3");
    ssb.set_power_boosting("1,2,3,4");
    ssb.update_frequency_offset_hz(3.5e9);
    EXPECT_EQ(ssb.get_lmax(), LIB_NR_LMAX_8);
    EXPECT_EQ(ssb.get_active_idx_text(), "0,1,2,3");
    // The reset writes the powers of the active indices 0 to 3.
    EXPECT_EQ(ssb.get_power_boosting_text(), "0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00");
    EXPECT_EQ(ssb.get_ssb_pattern(), NR_SSB_CASE_C);
    ssb.update_by_radio_frequency(numerology, 3e9);
    EXPECT_EQ(ssb.get_lmax(), LIB_NR_LMAX_4);
    EXPECT_EQ(ssb.get_ssb_pattern(), NR_SSB_CASE_B);
    EXPECT_FALSE(ssb.set_lmax(LIB_NR_SCS_30K, LIB_NR_LMAX_64, 3e9)); // Lmax is not a choice
    EXPECT_EQ(ssb.get_lmax(), LIB_NR_LMAX_4);
}

TEST(lib_nr_dl_ssb_configure_manager, offset_and_kssb_keep_the_block_inside)
{
    struct row_t
    {
        lib_nr_numerology_type_t spacing;
        lib_nr_channel_bw_type_t bandwidth;
        unsigned int rb_size;
        unsigned int rb_offset, stored_rb_offset;
        bool is_limited;
        unsigned int kssb, stored_kssb;
    };
    constexpr unsigned int most = std::numeric_limits<unsigned int>::max();
    constexpr unsigned int unlimited = most / 2;
    const std::vector<row_t> rows = {
        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, 52, 10, 10, false, 23, 23},
        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, 52, 10, 10, false, most, 23},
        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, 52, 31, 31, false, 11, 11},
        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, 52, 31, 31, false, 15, 12}, // the room above
        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, 52, 32, 32, true, 5, 0},    // none left
        {LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_10M, 52, most, 32, true, 5, 0},
        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51, 20, 20, false, 7, 6},
        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51, 20, 20, false, 40, 22},
        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51, 61, 61, false, 11, 10},
        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51, 61, 61, false, 13, 12},
        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51, 63, 62, true, 4, 0},
        {LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_5M, 11, 3, 0, true, 5, 0}, // too narrow for a block
        {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_20M, 24, most, unlimited, false, most, unlimited},
        {LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_20M, 24, 7, 7, false, 7, 7},
        {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, 32, 12, 12, false, 9, 8},
        {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, 32, 24, 24, true, 9, 0},
        {LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, 32, 12, 12, false, 20, 10},
        {LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_1_100M, 32, 47, 47, false, 11, 8},
        {LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_1_100M, 32, 20, 20, false, 7, 4},
        {LIB_NR_SCS_480K, LIB_NR_CHANNEL_FR2_2_400M, 66, 400, 368, true, 7, 0}, // stays
        {LIB_NR_SCS_960K, LIB_NR_CHANNEL_FR2_2_400M, 33, 207, 207, false, 7, 0},
    };
    for (const row_t& row : rows) {
        SCOPED_TRACE(::testing::Message()
                     << "spacing " << row.spacing << ", offset " << row.rb_offset << ", kssb " << row.kssb);
        auto ssb = ssb_at(row.spacing, row.bandwidth);
        const captured_output_t output;
        const unsigned int former = ssb.get_rb_offset();
        EXPECT_EQ(ssb.set_rb_offset(row.rb_offset, row.spacing, row.bandwidth, row.rb_size),
                  row.stored_rb_offset != former);
        EXPECT_EQ(ssb.get_rb_offset(), row.stored_rb_offset);
        const bool is_fr2 = row.spacing > LIB_NR_SCS_60K;
        const std::string line = k_limit_line + std::to_string(row.stored_rb_offset) + ":\n\n";
        EXPECT_EQ(output.text().find(line) != std::string::npos, row.is_limited);
        EXPECT_EQ(output.text().starts_with("current frequency range within FR2\n"), is_fr2);

        EXPECT_EQ(ssb.set_kssb(row.kssb, row.spacing, row.bandwidth, row.rb_size), row.stored_kssb != 0);
        EXPECT_EQ(ssb.get_kssb(), row.stored_kssb);
        EXPECT_EQ(ssb.get_ssb_subcarrier_offset(), row.stored_kssb);
    }
}

} // namespace
