#include "config/cfg_nr_waveform.h"
#include "support/captured_output.h"
#include "support/comma_locale.h"
#include "support/leaf_walk.h"
#include "support/settings_text.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::recall;
using nr_test::saved;

TEST(cfg_nr_save_recall, a_fresh_waveform_has_its_values)
{
    cfg_nr_waveform_t waveform;
    const std::string text = saved(waveform);
    EXPECT_NE(text.find("<settings ProtocolType=\"NR\"><cfg_nr_waveform><nr_ntn>false</nr_ntn><frame_number>1"
                        "</frame_number><subframes_number>10</subframes_number><mirror_spectrum>false"
                        "</mirror_spectrum><phase_compensation>true</phase_compensation><radio_frequency>1000000000"
                        "</radio_frequency><antennas_number>1</antennas_number>"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("<cfg_nr_carrier><cfg_nr_carrier><enable>true</enable><frequency_offset>0</frequency_offset>"
                        "<timing_offset>0</timing_offset><power_boosting>0</power_boosting><init_phase>0</init_phase>"
                        "<baseband_filter>true</baseband_filter><carrier_type>LIB_NR_DOWNLINK</carrier_type>"
                        "<ncell_id>0</ncell_id><channel_bandwidth>LIB_NR_CHANNEL_FR1_100M</channel_bandwidth>"
                        "<windowing_beta>0.01</windowing_beta><numerology_mode>LIB_NR_NUMBEROLOGY_MODE_SINGLE"
                        "</numerology_mode><numerology>LIB_NR_SCS_30K</numerology><cfg_nr_phy_numerology>"
                        "<cfg_nr_phy_numerology><enable>true</enable><rb_size>273</rb_size><rb_start>0</rb_start>"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("<auto_cofig_mib>true</auto_cofig_mib>"), std::string::npos);
}

TEST(cfg_nr_save_recall, brings_back_carriers_types_and_numerologies)
{
    nr_test::captured_output_t silence;
    cfg_nr_waveform_t waveform;
    waveform.add_carrier();
    waveform.add_carrier();
    waveform.get_carrier(1)->set_carrier_type(LIB_NR_UPLINK);
    waveform.get_carrier(1)->add_ul_pucch();
    waveform.get_carrier(2)->set_channel_bandwidth(LIB_NR_CHANNEL_FR2_1_200M);
    waveform.get_carrier(2)->set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
    waveform.get_carrier(2)->get_numerology(1)->set_enable(true);
    waveform.get_carrier(2)->get_numerology(0)->set_enable(false);
    waveform.get_carrier(2)->get_numerology(1)->set_rb_start(7);
    waveform.get_carrier(2)->add_dl_bwp();
    waveform.get_carrier(2)->get_dl_prs(0)->set_periodicity(32); // 10 slots are no period at 120 kHz
    nr_test::choose_test_models_anew(waveform);
    const std::string text = saved(waveform);

    cfg_nr_waveform_t recalled;
    recalled.add_carrier();
    recalled.set_radio_frequency(5);
    ASSERT_TRUE(recall(recalled, text));
    EXPECT_EQ(saved(recalled), text);
    EXPECT_EQ(recalled.get_carrier_number(), 3u);
    EXPECT_EQ(recalled.get_carrier(1)->get_carrier_type(), LIB_NR_UPLINK);
    EXPECT_EQ(recalled.get_carrier(1)->get_ul_pucch_number(), 2u);
    EXPECT_EQ(recalled.get_carrier(2)->get_enable_numerology_list(),
              std::vector<lib_nr_numerology_type_t>{LIB_NR_SCS_120K});

    // A file of one carrier leaves one.
    cfg_nr_waveform_t single;
    nr_test::choose_test_models_anew(single);
    ASSERT_TRUE(recall(recalled, saved(single)));
    EXPECT_EQ(recalled.get_carrier_number(), 1u);
    EXPECT_TRUE(nr_test::differences(recalled, single, nr_test::scope_t::in_the_tree).empty());
}

TEST(cfg_nr_save_recall, stands_with_its_own_cursors_wherever_the_host_left_them)
{
    nr_test::captured_output_t silence;
    cfg_nr_waveform_t waveform;
    waveform.add_carrier();
    waveform.get_carrier(1)->get_dl_ssb()->set_pss_power_boosting(2.5);
    nr_test::choose_test_models_anew(waveform);
    const std::string text = saved(waveform);
    waveform.get_carrier(0)->get_dl_ssb()->set_current_carrier_index(1);
    EXPECT_EQ(saved(waveform), text);
    waveform.get_carrier(0)->get_dl_ssb()->set_current_carrier_index(1);
    EXPECT_TRUE(recall(waveform, text));
    EXPECT_EQ(saved(waveform), text);
}

TEST(cfg_nr_save_recall, takes_no_other_protocol_and_an_empty_tree_as_zeros)
{
    nr_test::captured_output_t output;
    cfg_nr_waveform_t waveform;
    waveform.set_frame_number(3);
    waveform.get_carrier(0)->set_power_boosting(4.5);
    const std::string before = saved(waveform);

    // Another protocol, or none: nothing changes and nothing is said.
    for (const char* attribute : {"", " ProtocolType=\"nr\"", " ProtocolType=\"LTE\"", " ProtocolType=\"\""}) {
        EXPECT_FALSE(recall(waveform, std::string("<settings") + attribute + "/>"));
        EXPECT_EQ(saved(waveform), before);
    }
    EXPECT_EQ(output.text(), "");

    ASSERT_TRUE(recall(waveform, "<settings ProtocolType=\"NR\"/>"));
    EXPECT_EQ(waveform.get_frame_number(), 1u);
    EXPECT_EQ(waveform.get_radio_frequency(), 0u);
    EXPECT_FALSE(waveform.get_phase_compensation());
    EXPECT_EQ(waveform.get_carrier(0)->get_channel_bandwidth(), LIB_NR_CHANNEL_FR1_100M);
    EXPECT_TRUE(waveform.get_carrier(0)->get_enable());

    ASSERT_TRUE(recall(waveform, "<settings ProtocolType=\"NR\"><cfg_nr_waveform><subframes_number>5</subframes_number>"
                                 "<antennas_number>4</antennas_number></cfg_nr_waveform></settings>"));
    EXPECT_EQ(waveform.get_subframes_number(), 10u);
    EXPECT_EQ(waveform.get_antennas_number(), 1u);
}

TEST(cfg_nr_save_recall, does_not_follow_the_hosts_locale)
{
    nr_test::captured_output_t silence;
    cfg_nr_waveform_t waveform;
    waveform.get_carrier(0)->set_timing_offset(0.00123456789012345678);
    waveform.get_carrier(0)->set_power_boosting(-0.1);
    waveform.get_carrier(0)->get_dl_ssb()->set_power_boosting("1.25,-3.5");
    nr_test::choose_test_models_anew(waveform);
    const std::string text = saved(waveform);

    const nr_test::comma_locale_t comma;
    EXPECT_EQ(saved(waveform), text);
    cfg_nr_waveform_t recalled;
    recalled.get_carrier(0)->get_dl_ssb()->set_power_boosting("1.25,-3.5");
    ASSERT_TRUE(recall(recalled, text));
    EXPECT_EQ(saved(recalled), text);
    EXPECT_EQ(recalled.get_carrier(0)->get_timing_offset(), 0.00123456789012345678);
}

} // namespace
