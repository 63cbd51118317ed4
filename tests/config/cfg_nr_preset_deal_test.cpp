#include "config/cfg_nr_preset_deal.h"

#include "host/nrwave_listing.h"
#include "host/nrwave_saved.h"
#include "host/nrwave_steps.h"
#include "support/generated.h"
#include "support/leaf_walk.h"
#include "support/preset_choices.h"
#include "support/settings.h"
#include "support/settings_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <sstream>
#include <string>
#include <vector>

// What holds for the presets of every family.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::steps_t;
using nr_test::take;

/// The downlink's families; those of the uplink have walks of their own.
const std::vector<nr_test::preset_family_t> k_families = {
    {"dl_tm",
     {{"bandwidth", {}},
      {"test_model", {}},
      {"numerology", {}},
      {"duplex_type", {}},
      {"layers", {"1", "2"}},
      {"modulation", {}}}},
    {"dl_frc", {{"fixed_reference_channels", {}}, {"bandwidth", {}}, {"numerolgy", {}}, {"duplex_type", {}}}},
};

/// A narrow choice of each family.
const std::vector<std::pair<std::string, steps_t>> k_narrow = {
    {"dl_tm", {"bandwidth=LIB_NR_CHANNEL_FR1_5M", "test_model=LIB_NR_FR1_TM3_2", "layers=2", "n_id=7"}},
    {"dl_frc", {"fixed_reference_channels=LIB_NR_DL_FRC_FR1_64QAM", "bandwidth=LIB_NR_CHANNEL_FR1_10M"}},
    {"ul_frc",
     {"fixed_reference_channels=LIB_NR_FR1_FRC_A_3", "frc_reference_channels=LIB_NR_G_FR1_A3_11",
      "bandwidth=LIB_NR_CHANNEL_FR1_10M", "dmrs_type_a_position=3"}},
    {"ul_rmc", {"bandwidth=LIB_NR_CHANNEL_FR1_10M", "numerology=LIB_NR_SCS_15K", "modulation=LIB_NR_MODULATION_16QAM"}},
    {"pucch_test_model",
     {"test_model_type=TS_38_141_834_UCI_BLER_PERFORMANCE_FOR_PUCCH_FORMAT_3",
      "bandwidth=LIB_NR_TEST_MODEL_BANDWIDTH_FR1_10MHZ", "additional_dmes_state=true"}},
};

steps_t steps_of(const std::pair<std::string, steps_t>& choice)
{
    return nr_test::preset_steps(choice.first, choice.second);
}

nr_test::signal_t samples_of(const cfg_nr_waveform_t& waveform) { return nr_test::generate(waveform).samples; }

// Every choice on offer lays down without a word; some are generated.
TEST(cfg_nr_preset_deal, every_choice_configures_the_carrier)
{
    unsigned int narrow = 0;
    for (const bool ntn : {false, true})
        for (const nr_test::preset_family_t& family : k_families)
            for (const steps_t& choice : nr_test::every_choice(family, ntn)) {
                SCOPED_TRACE(testing::PrintToString(choice));
                cfg_nr_waveform_t waveform;
                EXPECT_EQ(nr_test::unexpected_of_presets(take(waveform, choice), ntn), "");
                const nr_test::captured_output_t silence;
                if (waveform.get_waveform_sample_points() > 700000 || narrow++ % 15 != 0)
                    continue;
                const std::string output = nr_test::generate(waveform).output;
                EXPECT_EQ(output.find("error!!!"), std::string::npos) << output;
                // CSI-RS take 24 resource blocks where a carrier has 11 or 18.
                const unsigned int width = waveform.get_carrier(0)->get_numerology(0)->get_rb_size();
                EXPECT_TRUE(output.find("out of range") == std::string::npos || width == 11 || width == 18) << output;
            }
    EXPECT_GT(narrow, 15 * 60u);
}

/// What a preset leaves standing of the one before: its choice, channels that are off, BWPs that are not used, and what
/// has no effect on a PDSCH or PUSCH.
bool is_left(cfg_nr_waveform_t& waveform, const std::string& path, const std::string& before, bool downlink)
{
    const std::string known[] = {
        "dl_prs[",           "dl_bwp[0].",          downlink ? "ul_bwp[" : "dl_bwp[", "vrb_bundle_size", "rbg_",
        "ptrs_time_density", "carrier[0]." + before};
    const auto is_in_path = [&](const std::string& part) { return path.find(part) != std::string::npos; };
    return std::any_of(std::begin(known), std::end(known), is_in_path) ||
           ((is_in_path("dl_csirs[") || is_in_path("dl_dci[") || is_in_path("dl_pdsch[") || is_in_path("dl_ssb[") ||
             is_in_path("ul_pusch[") || is_in_path("ul_pucch[")) &&
            nr_test::value_of(waveform, path.substr(0, path.rfind('.')) + ".enable") == "false");
}

// A preset behind itself and behind any other gives what it gives a fresh carrier.
TEST(cfg_nr_preset_deal, a_preset_covers_what_another_left)
{
    for (const auto& first : k_narrow)
        for (const auto& second : k_narrow) {
            nr_test::waveform_of_t fresh(steps_of(second));
            nr_test::waveform_of_t used(steps_of(first));
            take(used, steps_of(second));
            if (second.first == "pucch_test_model") // which leaves the waveform's own alone
                take(used, {"frame_number=1", "antennas_number=1"});
            for (const nr_test::difference_t& difference :
                 nr_test::differences(fresh, used, nr_test::scope_t::read_by_a_signal))
                EXPECT_TRUE(is_left(used, difference.path, first.first, second.first.rfind("dl_", 0) == 0))
                    << second.first << " behind " << first.first << ": " << difference.path << " is "
                    << difference.second << ", not " << difference.first;
            EXPECT_EQ(samples_of(used), samples_of(fresh)) << second.first << " behind " << first.first;
        }
}

TEST(cfg_nr_preset_deal, choices_outlast_every_preset)
{
    for (const char* type : {"LIB_NR_DOWNLINK", "LIB_NR_UPLINK", "LIB_NR_PRACH"})
        for (const auto& applied : k_narrow) {
            nr_test::waveform_of_t waveform({std::string("carrier[0].carrier_type=") + type});
            steps_t steps = {"carrier[0].dl_tm.enable=true", "carrier[0].dl_tm.duplex_type=LIB_NR_DUPLEX_TYPE_FDD"};
            for (const auto& [family, settings] : k_narrow)
                for (const std::string& setting : settings)
                    steps.push_back("carrier[0]." + family + '.' + setting);
            take(waveform, steps);
            const auto choices = [&] {
                std::string text;
                for (const auto& [family, settings] : k_narrow)
                    for (const std::string& step : nrwave::steps_at(waveform, "carrier[0]." + family))
                        text += step + '\n';
                return text;
            };
            const nr_test::captured_output_t silence;
            const std::string chosen = choices();
            take(waveform, {"apply carrier[0]." + applied.first});
            EXPECT_EQ(choices(), chosen) << type << ' ' << applied.first;
        }
}

TEST(cfg_nr_preset_deal, a_carrier_with_a_preset_is_edited_saved_and_loaded)
{
    for (const auto& choice : k_narrow) {
        nr_test::waveform_of_t waveform(steps_of(choice));
        take(waveform, {"carrier[0].dl_pdsch[0].power_boosting=-2", "add carrier[0].dl_pdsch",
                        "carrier[0].ul_pusch[0].power_boosting=-2", "carrier[0].ul_pucch[0].power=-2"});
        const nr_test::captured_output_t silence;
        cfg_nr_waveform_t loaded;
        ASSERT_TRUE(nr_test::recall(loaded, nr_test::saved(waveform)));
        EXPECT_EQ(samples_of(loaded), samples_of(waveform)) << choice.first;
        EXPECT_EQ(loaded.get_antennas_number(), 1u);

        // The tool's file brings back the antennas too.
        const nrwave::saved_settings_t file = nrwave::saved_settings(waveform);
        EXPECT_EQ(file.losses, steps_t{}) << choice.first;
        EXPECT_EQ(nr_test::load(loaded, file.text), steps_t{}) << choice.first;
        EXPECT_EQ(samples_of(loaded), samples_of(waveform)) << choice.first;
    }
}

// Settings that a PUSCH has from before may refuse what comes ahead of them.
TEST(cfg_nr_preset_deal, interlaces_refuse_transform_precoding_once)
{
    nr_test::waveform_of_t waveform(nr_test::preset_steps("ul_frc", {"frc_reference_channels=LIB_NR_G_FR1_A1_12"}));
    for (const bool precoded : {false, true}) {
        take(waveform, nr_test::preset_steps("ul_rmc", {"modulation=LIB_NR_MODULATION_16QAM"}));
        EXPECT_EQ(waveform.get_carrier(0)->get_ul_pusch(0)->get_enable_transfer_precoding(), precoded);
    }
}

TEST(cfg_nr_preset_deal, numbers_of_uplink_presets_are_cut)
{
    nr_test::waveform_of_t waveform({});
    nr_test::run_rows(waveform,
                      {{"tdd_ul_slot_number", "0", "1", false},
                       {"tdd_ul_slot_number", "4294967295", "2", true},
                       {"rb_offset", "4294967295", "245", true},
                       {"interlace_index", "4294967295", "10", true},
                       {"dmrs_type_a_position", "4294967295", "2", false},
                       {"periodicity", "1e300", "1", true},
                       {"tdd_ul_slot_number", nullptr, "1"},
                       {"bandwidth", "LIB_NR_CHANNEL_FR2_2_2000M", "LIB_NR_CHANNEL_FR1_5M", true},
                       {"rb_offset", nullptr, "0"}},
                      "carrier[0].ul_frc");
    nr_test::run_rows(waveform,
                      {{"x_rb", "0", "1", false},
                       {"x_rb", "4294967295", "4294967295", true},
                       {"bandwidth", "LIB_NR_CHANNEL_FR2_1_50M", "LIB_NR_CHANNEL_FR2_1_50M", true},
                       {"rmc_rb_allocation", "LIB_NR_UL_RMC_OUTER_XRB_LEFT", "LIB_NR_UL_RMC_OUTER_XRB_LEFT", true},
                       {"x_rb", nullptr, "270"}},
                      "carrier[0].ul_rmc");
    take(waveform, {"apply carrier[0].ul_rmc"});
    EXPECT_EQ(waveform.get_carrier(0)->get_ul_pusch(0)->get_rb_num(), 64u); // the most that 66 have room for
    cfg_nr_ul_frc_t& frc = *waveform.get_carrier(0)->get_ul_frc();
    frc.set_periodicity(std::nan(""));
    frc.set_fixed_reference_channels(static_cast<lib_nr_ul_fixed_reference_channels_t>(99));
    frc.set_frc_reference_channels(static_cast<lib_nr_ul_frc_reference_channel_t>(999));
    EXPECT_EQ(frc.get_periodicity(), 1.0);
    EXPECT_EQ(frc.get_frc_reference_channels(), LIB_NR_G_FR1_A1_1);
}

// What no list offers: values of the host's own, and a radio frequency that none could have.
TEST(cfg_nr_preset_deal, bad_values_become_legal_ones)
{
    nr_test::waveform_of_t waveform(nr_test::preset_steps(
        "dl_tm", {"bandwidth=LIB_NR_CHANNEL_FR1_5M", "layers=4294967295", "n_id=4294967295", "radio_frequency=0"}));
    nr_test::run_rows(waveform, {{"antennas_number", nullptr, "32"},
                                 {"phase_compensation", nullptr, "false"},
                                 {"carrier[0].ncell_id", nullptr, "1007"},
                                 {"carrier[0].dl_dci[0].scrambling_id", nullptr, "-1"}});
    for (const char* frequency : {"-5", "1e300", "-1e300", "1e-300"}) {
        take(waveform, nr_test::preset_steps(
                           "ul_rmc", {std::string("radio_frequency=") + frequency, "bandwidth=LIB_NR_CHANNEL_FR1_5M"}));
        for (const std::complex<double>& sample : samples_of(waveform))
            ASSERT_TRUE(std::isfinite(std::norm(sample))) << frequency;
        take(waveform, nr_test::preset_steps(
                           "dl_frc", {std::string("radio_frequency=") + frequency, "bandwidth=LIB_NR_CHANNEL_FR1_5M"}));
        for (const std::complex<double>& sample : samples_of(waveform))
            ASSERT_TRUE(std::isfinite(std::norm(sample))) << frequency;
    }
    const nr_test::captured_output_t output;
    cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
    carrier.get_dl_tm()->set_bandwidth(static_cast<lib_nr_channel_bw_type_t>(99));
    carrier.get_dl_tm()->set_test_model(LIB_NR_FR1_TM1_2);
    EXPECT_TRUE(carrier.deal_test_model());
    carrier.get_dl_frc()->set_fixed_reference_channels(static_cast<lib_nr_dl_fixed_reference_channels_t>(99));
    carrier.get_dl_frc()->set_bandwidth(static_cast<lib_nr_channel_bw_type_t>(99));
    carrier.deal_dl_fixed_reference_channels();
    EXPECT_EQ(carrier.get_channel_bandwidth(), LIB_NR_CHANNEL_FR1_5M);
    EXPECT_NE(output.text().find("_frc_pdsch_set_modulation : Error fixed reference channels"), std::string::npos);
    EXPECT_NE(output.text().find("_get_freq_range_type : Error FRC!"), std::string::npos);
}

} // namespace
