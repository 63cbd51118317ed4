#include "config/cfg_nr_waveform.h"
#include "host/nrwave_saved.h"
#include "host/nrwave_steps.h"
#include "phy/lib_nr_phy.h"
#include "support/captured_output.h"
#include "support/leaf_walk.h"
#include "support/settings.h"

#include <complex>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

using samples_t = std::vector<std::complex<double>>;

/// The samples of a configuration that generates.
std::optional<samples_t> samples_of(const cfg_nr_waveform_t& waveform)
{
    constexpr unsigned long long k_most_samples = 1000000;
    if (waveform.get_waveform_sample_points() > k_most_samples)
        return std::nullopt;
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    try {
        if (engine.nr_phy_process())
            return engine.get_baseband_signal_data();
    } catch (const std::out_of_range&) { // a PUCCH with another prefix than downlink BWP 0
    }
    return std::nullopt;
}

/// One channel on a narrow carrier, and settings of it and of what it lies in, in any order.
void take_recipe(cfg_nr_waveform_t& waveform, nr_test::leaf_walk_t& walk, unsigned int seed)
{
    const std::vector<std::string> channels = {"dl_ssb",      "ul_pucch[0]", "dl_csirs[0]", "ul_pusch[0]", "dl_dci[0]",
                                               "ul_prach[0]", "dl_pdsch[0]", "ul_srs[0]",   "dl_prs[0]"};
    const std::string& channel = channels[seed % channels.size()];
    const bool is_downlink = channel[0] == 'd';
    const std::string type = is_downlink ? "DOWNLINK" : channel == "ul_prach[0]" ? "PRACH" : "UPLINK";
    const char* bandwidths[] = {"FR1_10M", "FR2_1_50M", "FR1_20M", "FR1_5M"};
    nr_test::take(waveform, {"carrier[0].carrier_type=LIB_NR_" + type,
                             std::string("carrier[0].channel_bandwidth=LIB_NR_CHANNEL_") + bandwidths[seed % 4],
                             "carrier[0].numerology=LIB_NR_SCS_" + std::string(seed % 3 ? "60K" : "15K"),
                             "carrier[0]." + channel + ".enable=true"});
    for (unsigned int round = 0; round < 3; ++round) {
        walk.take_steps_at("carrier[0]." + channel, 6);
        walk.take_steps_at(is_downlink ? "carrier[0].dl_bwp[1]" : "carrier[0].ul_bwp[0]", 1);
        if (is_downlink)
            walk.take_steps_at("carrier[0].dl_bwp[1].coreset[1]", 1);
    }
    nr_test::take(waveform, {"carrier[0]." + channel + ".enable=true"});
}

// NR_TEST_RECIPES asks for another number of them.
TEST(nrwave_saved, a_recipe_gives_the_same_samples_from_its_file_or_save_tells_why_not)
{
    const char* asked = std::getenv("NR_TEST_RECIPES");
    const unsigned int recipes = asked ? static_cast<unsigned int>(std::atoi(asked)) : 180;
    unsigned int compared = 0;
    for (unsigned int seed = 0; seed < recipes; ++seed) {
        const nr_test::captured_output_t silence;
        cfg_nr_waveform_t waveform;
        nr_test::leaf_walk_t walk(waveform, seed);
        take_recipe(waveform, walk, seed);
        const std::optional<samples_t> samples = samples_of(waveform);
        if (!samples)
            continue;
        const nrwave::saved_settings_t saved = nrwave::saved_settings(waveform);
        if (!saved.losses.empty())
            continue;
        cfg_nr_waveform_t loaded;
        EXPECT_EQ(nr_test::load(loaded, saved.text), std::vector<std::string>{}) << seed << walk.history();
        EXPECT_TRUE(samples_of(loaded) == samples) << seed << walk.history();
        ++compared;
    }
    EXPECT_GE(compared, recipes * 3 / 4);
}

// What a preset lays down for the whole waveform, what is left of a higher sample rate, and a prefix of its own.
TEST(nrwave_saved, what_no_element_holds_comes_back)
{
    nr_test::waveform_of_t waveform({"carrier[0].dl_tm.bandwidth=FR1_5M", "carrier[0].dl_tm.layers=2",
                                     "carrier[0].dl_tm.radio_frequency=2000000000.5", "apply carrier[0].dl_tm",
                                     "frame_number=2", "add carrier", "carrier[1].carrier_type=LIB_NR_PRACH",
                                     "carrier[1].channel_bandwidth=FR1_10M", "carrier[1].numerology=60K",
                                     "carrier[1].prach_cp_type=EXTEND_CP", "crest_factor_reduction_enable=true",
                                     "add carrier", "cfr_filter_mask_data_arr=-2e6:0,5e7:0.5", "remove carrier[2]"});
    const nrwave::saved_settings_t saved = nrwave::saved_settings(waveform);
    EXPECT_EQ(saved.losses, std::vector<std::string>{});
    cfg_nr_waveform_t loaded;
    EXPECT_EQ(nr_test::load(loaded, saved.text), std::vector<std::string>{});
    const nr_test::captured_output_t silence;
    ASSERT_TRUE(samples_of(waveform));
    EXPECT_TRUE(samples_of(loaded) == samples_of(waveform));
    EXPECT_EQ(loaded.get_antennas_number(), 2U);
    EXPECT_EQ(loaded.get_cfr_filter_mask_data_arr().back().first, 5e7);
    EXPECT_EQ(loaded.get_carrier(1)->get_prach_cp_type(), LIB_NR_EXTEND_CP);

    nr_test::waveform_of_t repeated({"carrier[0].carrier_type=UPLINK", "carrier[0].ul_pucch[0].pucch_format=FORMAT_1",
                                     "carrier[0].ul_pucch[0].allocated_slots=0:7",
                                     "carrier[0].ul_pucch[0].number_of_slots_for_pucch_repetition=4"});
    EXPECT_EQ(nrwave::saved_settings(repeated).losses, std::vector<std::string>{});
}

// Files that the tool has written from the examples' recipes.
TEST(nrwave_saved, a_file_kept_since_loads_to_what_its_recipe_sends)
{
    const nr_test::captured_output_t silence;
    const std::filesystem::path source = NR_MOD_LIB_SOURCE_DIR;
    unsigned int files = 0;
    for (const auto& file : std::filesystem::directory_iterator(source / "tests/host/files")) {
        const auto samples_after = [](auto take) {
            cfg_nr_waveform_t waveform;
            nrwave::stepper_t stepper(waveform, [](const std::string& line) { ADD_FAILURE() << line; });
            take(stepper);
            lib_nr_phy_t engine;
            engine.waveform_config(waveform.get_waveform_manager());
            EXPECT_TRUE(engine.nr_phy_process());
            return engine.get_baseband_signal_data();
        };
        const std::string recipe = (source / "examples" / file.path().stem()).string() + ".recipe";
        const samples_t kept = samples_after([&](nrwave::stepper_t& stepper) { stepper.load(file.path().string()); });
        EXPECT_TRUE(kept == samples_after([&](nrwave::stepper_t& stepper) { stepper.apply_recipe(recipe); })) << recipe;
        ++files;
    }
    EXPECT_GE(files, 10U);
}

// A number that a host has cast into an enumeration, as the one between two lengths of orthogonal sequences.
TEST(nrwave_saved, a_value_without_a_name_is_sent_as_a_known_one_and_not_saved)
{
    const nr_test::captured_output_t silence;
    const auto of_length = [](cfg_nr_waveform_t& waveform, int length) {
        nr_test::take(waveform, {"carrier[0].carrier_type=LIB_NR_UPLINK",
                                 "carrier[0].ul_pucch[0].pucch_format=FORMAT_4", "carrier[0].ul_pucch[0].enable=true"});
        waveform.get_carrier(0)->get_ul_pucch(0)->set_occ_length(static_cast<lib_nr_ul_pucch_occ_length_t>(length));
        lib_nr_phy_t engine;
        engine.waveform_config(waveform.get_waveform_manager());
        EXPECT_TRUE(engine.nr_phy_process());
        return engine.get_baseband_signal_data();
    };
    cfg_nr_waveform_t between;
    cfg_nr_waveform_t known;
    EXPECT_EQ(of_length(between, 3), of_length(known, 2));
    try {
        nrwave::saved_settings(between);
        ADD_FAILURE() << "saved";
    } catch (const std::out_of_range& failure) {
        EXPECT_STREQ(failure.what(), "map::at");
    }
}

} // namespace
