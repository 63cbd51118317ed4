#include "config/cfg_nr_dl_ssb.h"

#include "config/cfg_nr_waveform.h"
#include "manager/lib_nr_waveform_configure_manager.h"
#include "support/captured_output.h"
#include "support/settings.h"

#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::captured_output_t;

TEST(cfg_nr_dl_ssb, settings_read_back_as_they_were_corrected)
{
    cfg_nr_waveform_t waveform; // 100 MHz, 30 kHz, 1 GHz
    nr_test::run_rows(
        waveform,
        {
            {"enable", "true", "true", true},
            {"enable", "true", "true", false},
            {"ssb_pattern", "NR_SSB_CASE_C", "NR_SSB_CASE_C", true},
            {"ssb_pattern", "NR_SSB_CASE_E", "NR_SSB_CASE_C", false},
            {"pss_power_boosting", "40.5", "40", true},
            {"pss_power_boosting", "-99", "-40", true},
            {"periodicity", "LIB_NR_SSB_20MS_PERIODICITY", "LIB_NR_SSB_20MS_PERIODICITY", true},
            {"half_frame_idx", "200", "1", true},
            {"active_idx", "1, 3", "1,3", true},
            {"power_boosting", "9,-3,9,41", "0.00,-3.00,0.00,40.00", true},
            {"lmax", "LIB_NR_LMAX_8", "LIB_NR_LMAX_4", false}, // and back to the default lists
            {"active_idx", "0,1,2,3", "0,1,2,3", false},
            {"rb_offset", "100", "100", true},
            {"rb_offset", "600", "506", true},
            {"rb_offset", "505", "505", true},
            {"kssb", "13", "12", true},
            {"ssb_subcarrier_offset", "12", "12", false},
            {"ssb_subcarrier_offset", "32", "31", true},
            {"kssb", "12", "12", false}, // the offset follows all the same
            {"ssb_subcarrier_offset", "12", "12", false},
            {"dmrs_typea_position", "0", "2", false},
            {"dmrs_typea_position", "7", "3", true},
            {"pdcch_config_sib1", "256", "255", true},
            {"cell_barred", "true", "true", true},
            {"intra_frequency_reselection", "true", "true", true},
            {"coding", "false", "false", true},
            {"data_source", "LIB_NR_PN15", "LIB_NR_PN9", false}, // the MIB is automatic
            {"auto_cofig_mib", "false", "false", true},
            {"data_source", "LIB_NR_PN15", "LIB_NR_PN15", true},
            {"data_source_custom", "1 0,1", "101", true},
            {"data_source_custom", "", "101", false},
            {"numerology", "LIB_NR_SCS_15K", "LIB_NR_SCS_30K", false}, // not enabled; all follows the numerology anew
            {"rb_offset", "253", "253", false},
            {"ssb_pattern", "NR_SSB_CASE_B", "NR_SSB_CASE_B", false},
            {"enable", "false", "false", true},
        },
        "carrier[0].dl_ssb");
}

TEST(cfg_nr_dl_ssb, lists_and_half_frame_keep_to_lmax_and_periodicity)
{
    nr_test::waveform_of_t waveform({"radio_frequency=3500000000"}); // Lmax 8
    nr_test::run_rows(waveform,
                      {{"active_idx", "0, 2", "0,2", true},
                       {"power_boosting", "1,2,3,4,5,6,7,8", "1.00,0.00,3.00,0.00,0.00,0.00,0.00,0.00", true},
                       {"power_boosting", "1,9,3", "1.00,0.00,3.00,0.00,0.00,0.00,0.00,0.00", false},
                       {"active_idx", "1,2", "1,2", true},
                       {"power_boosting", "0,-41.5,99", "1.00,-40.00,40.00,0.00,0.00,0.00,0.00,0.00", true},
                       {"power_boosting", "-1.255", "1.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00", true},
                       {"power_boosting", "0,nan,nan", "1.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00", false},
                       {"active_idx", "3,1", "3,1", true},
                       {"active_idx", "", "3,1", false},
                       {"active_idx", "8", "3,1", false},
                       {"active_idx", "-1", "3,1", false},
                       {"active_idx", "rubbish", "3,1", false},
                       {"active_idx", "3,1", "3,1", false},
                       {"active_idx", "6:99", "6,7", true},
                       {"half_frame_idx", "7", "1", true},
                       {"periodicity", "LIB_NR_SSB_5MS_PERIODICITY", "LIB_NR_SSB_5MS_PERIODICITY", true},
                       {"half_frame_idx", nullptr, "255"},
                       {"half_frame_idx", "0", "255", false},
                       {"periodicity", "LIB_NR_SSB_160MS_PERIODICITY", "LIB_NR_SSB_160MS_PERIODICITY", true},
                       {"half_frame_idx", nullptr, "0"}},
                      "carrier[0].dl_ssb");
    EXPECT_FALSE(waveform.get_carrier(0)->get_dl_ssb()->set_periodicity(static_cast<lib_ssb_periodicity_t>(0)));
}

TEST(cfg_nr_dl_ssb, moves_between_enabled_numerologies)
{
    const captured_output_t silence;
    cfg_nr_waveform_t waveform;
    cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
    carrier.set_channel_bandwidth(LIB_NR_CHANNEL_FR1_50M);
    carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
    for (const int index : {0, 1, 2})
        carrier.get_numerology(index)->set_enable(true);
    cfg_nr_dl_ssb_t& ssb = *carrier.get_dl_ssb();
    EXPECT_TRUE(ssb.set_numerology(LIB_NR_SCS_15K) || ssb.get_numerology() == LIB_NR_SCS_15K);
    EXPECT_TRUE(ssb.set_enable(true));
    EXPECT_EQ(ssb.get_ssb_pattern(), NR_SSB_CASE_A);
    EXPECT_EQ(ssb.get_ssb_pattern_for_ui(), std::vector{NR_SSB_CASE_A});
    EXPECT_EQ(ssb.get_subcarrier_spacing_common(), LIB_NR_SCS_15K);

    EXPECT_TRUE(ssb.set_numerology(LIB_NR_SCS_60K));
    EXPECT_FALSE(ssb.get_enable());
    EXPECT_FALSE(ssb.set_enable(true));
    EXPECT_FALSE(ssb.get_enable());

    EXPECT_TRUE(ssb.set_numerology(LIB_NR_SCS_30K));
    EXPECT_TRUE(ssb.set_enable(true));
    EXPECT_EQ(ssb.get_rb_offset(), 113u);
    EXPECT_EQ(ssb.get_ssb_pattern_for_ui(), (std::vector{NR_SSB_CASE_B, NR_SSB_CASE_C}));
    EXPECT_TRUE(ssb.set_numerology(LIB_NR_SCS_120K)); // falls to the first enabled one
    EXPECT_EQ(ssb.get_numerology(), LIB_NR_SCS_15K);
}

TEST(cfg_nr_dl_ssb, stands_on_carriers_that_exist)
{
    lib_nr_waveform_configure_manager_t waveform;
    waveform.add_carrier();
    cfg_nr_dl_ssb_t ssb(waveform);
    EXPECT_TRUE(ssb.set_current_carrier_index(1));
    EXPECT_TRUE(ssb.set_pdcch_config_sib1(5));
    EXPECT_EQ(waveform.get_carrier(1).get_dl_ssb().get_pdcch_config_sib1(), 5u);
    const captured_output_t output;
    EXPECT_FALSE(ssb.set_current_carrier_index(2));
    EXPECT_EQ(output.text(), "cfg_nr_dl_ssb_t::set_current_carrier_index Report : Carrier index out of range!\n");
    EXPECT_EQ(ssb.get_pdcch_config_sib1(), 5u);
    ssb.init();
    EXPECT_EQ(ssb.get_pdcch_config_sib1(), 0u);
}

} // namespace
