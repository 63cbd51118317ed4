#include "config/cfg_nr_preset_deal.h"

#include "host/nrwave_listing.h"
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
};

steps_t steps_of(const std::pair<std::string, steps_t>& choice)
{
    return nr_test::preset_steps(choice.first, choice.second);
}

nr_test::signal_t samples_of(const cfg_nr_waveform_t& waveform) { return nr_test::generate(waveform).samples; }

/// What is printed when a choice is taken and applied: traces, and what plain changes of bandwidth and spacing print.
bool is_expected(const std::string& line, bool ntn)
{
    const auto begins_line = [&](const char* beginning) { return line.rfind(beginning, 0) == 0; };
    constexpr const char* k_beginnings[] = {"test : ",
                                            "--------get_carrier_sample_rate()",
                                            "ibandwith_tmp:",
                                            "update_by_numerology:60khz invalid",
                                            "ssb-rb_offset reach limitation",
                                            "current frequency range within FR2",
                                            "check_lra:",
                                            "check_scs_and_format:",
                                            "validate_prach_and_carrier:"};
    return line.empty() || std::any_of(std::begin(k_beginnings), std::end(k_beginnings), begins_line) ||
           (ntn && line == "cfg_nr_carrier_t::_test_model_pdsch_cfg : Error test model in FDD!");
}

// Every choice on offer lays down without a word; some are generated.
TEST(cfg_nr_preset_deal, every_choice_configures_the_carrier)
{
    unsigned int narrow = 0;
    for (const bool ntn : {false, true})
        for (const nr_test::preset_family_t& family : k_families)
            for (const steps_t& choice : nr_test::every_choice(family, ntn)) {
                SCOPED_TRACE(testing::PrintToString(choice));
                cfg_nr_waveform_t waveform;
                std::istringstream printed(take(waveform, choice));
                for (std::string line; std::getline(printed, line);)
                    EXPECT_TRUE(is_expected(line, ntn)) << line;
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
/// has no effect on a PDSCH.
bool is_left(cfg_nr_waveform_t& waveform, const std::string& path, const std::string& before)
{
    const std::string known[] = {"dl_prs[",    "ul_bwp[",           "dl_bwp[0].",          "vrb_bundle_size",
                                 "rbg_bitmap", "ptrs_time_density", "carrier[0]." + before};
    const auto is_in_path = [&](const std::string& part) { return path.find(part) != std::string::npos; };
    return std::any_of(std::begin(known), std::end(known), is_in_path) ||
           ((is_in_path("dl_csirs[") || is_in_path("dl_dci[") || is_in_path("ul_pusch[")) &&
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
            for (const nr_test::difference_t& difference :
                 nr_test::differences(fresh, used, nr_test::scope_t::read_by_a_signal))
                EXPECT_TRUE(is_left(used, difference.path, first.first))
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
                for (const nr_test::preset_family_t& family : k_families)
                    for (const std::string& step :
                         nrwave::steps_at(waveform, std::string("carrier[0].") + family.facade))
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
        take(waveform, {"carrier[0].dl_pdsch[0].power_boosting=-2", "add carrier[0].dl_pdsch"});
        const nr_test::captured_output_t silence;
        cfg_nr_waveform_t loaded;
        ASSERT_TRUE(nr_test::recall(loaded, nr_test::saved(waveform)));
        EXPECT_EQ(samples_of(loaded), samples_of(waveform)) << choice.first;
        EXPECT_EQ(loaded.get_antennas_number(), 1u);
    }
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
