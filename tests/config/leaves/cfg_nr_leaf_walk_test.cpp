#include "config/cfg_nr_waveform.h"
#include "host/nrwave_saved.h"
#include "phy/lib_nr_phy.h"
#include "phy_common/lib_nr_phy_common.h"
#include "support/captured_output.h"
#include "support/leaf_walk.h"
#include "support/settings.h"
#include "support/settings_text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

// Whatever is set, in whatever order: the configuration stays valid, a settings file brings it back, and it generates.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::difference_t;
using nr_test::recall;
using nr_test::saved;

constexpr unsigned int k_walks = 1000;
constexpr unsigned int k_steps = 40;
constexpr unsigned int k_short_walks = 6000;
constexpr unsigned int k_generate_each = 20;
constexpr unsigned long long k_most_samples = 5000000;

/// Each getter lies within what its list offers, or within the limits of its setting.
void expect_valid(cfg_nr_waveform_t& waveform)
{
    EXPECT_GE(waveform.get_frame_number(), 1u);
    EXPECT_LE(waveform.get_frame_number(), 4u);
    EXPECT_EQ(waveform.get_subframes_number(), 10u);
    ASSERT_GE(waveform.get_carrier_number(), 1u);
    // A carrier starts at 100 MHz in NTN mode too, where a setter would not take it, and a test model at 256QAM; a test
    // model takes 240 kHz, and a reference channel any row, which they do not offer.
    for (const difference_t& value : nr_test::not_on_offer(waveform))
        EXPECT_TRUE(value.first == "LIB_NR_CHANNEL_FR1_100M" || value.first == "LIB_NR_SCS_240K" ||
                    value.first == "LIB_NR_MODULATION_256QAM" ||
                    value.path.find("dl_frc[0].fixed_reference_channels") != std::string::npos)
            << value.path << " is " << value.first << ", not on offer";
    for (unsigned int c = 0; c < waveform.get_carrier_number(); ++c) {
        cfg_nr_carrier_t& carrier = *waveform.get_carrier(c);
        EXPECT_LE(std::abs(carrier.get_frequency_offset()), 400000000);
        EXPECT_GE(carrier.get_timing_offset(), 0.0);
        EXPECT_LE(carrier.get_timing_offset(), 0.01);
        EXPECT_LE(std::abs(carrier.get_power_boosting()), 40.0);
        EXPECT_LE(carrier.get_init_phase(), 360u);
        EXPECT_LE(carrier.get_ncell_id(), 1007u);
        EXPECT_LE(carrier.get_windowing_beta(), 0.5);

        const auto enabled = carrier.get_enable_numerology_list();
        EXPECT_FALSE(enabled.empty());
        for (unsigned int n = 0; n < carrier.get_numerology_number(); ++n) {
            cfg_nr_phy_numerology_t& numerology = *carrier.get_numerology(static_cast<int>(n));
            const unsigned int most =
                lib_nr_phy_common_t::get_max_transmit_rb_num(numerology.get_scs(), carrier.get_channel_bandwidth());
            EXPECT_GE(numerology.get_rb_size(), 6u);
            EXPECT_LE(numerology.get_rb_start() + numerology.get_rb_size(), most);
        }

        cfg_nr_dl_ssb_t& ssb = *carrier.get_dl_ssb();
        EXPECT_NE(std::find(enabled.begin(), enabled.end(), ssb.get_numerology()), enabled.end());
        EXPECT_FALSE(ssb.get_enable() && ssb.get_numerology() == LIB_NR_SCS_60K);
        // At 60 kHz, where the block has no place, it follows kssb without a limit; at 480 and 960 kHz that stays.
        EXPECT_TRUE(ssb.get_ssb_subcarrier_offset() <= 31u || ssb.get_numerology() == LIB_NR_SCS_60K ||
                    ssb.get_numerology() >= LIB_NR_SCS_480K);
        EXPECT_LE(ssb.get_pdcch_config_sib1(), 255u);
    }
}

TEST(cfg_nr_leaf_walk, any_settings_in_any_order_stay_valid_and_come_back_from_a_file)
{
    for (unsigned int seed = 0; seed < k_walks; ++seed) {
        nr_test::captured_output_t silence;
        cfg_nr_waveform_t waveform;
        nr_test::leaf_walk_t walk(waveform, seed);
        walk.take_steps(k_steps);
        SCOPED_TRACE("walk " + std::to_string(seed) + ":\n" + walk.history());

        expect_valid(waveform);

        cfg_nr_waveform_t loaded;
        nr_test::load(loaded, nrwave::saved_settings(waveform).text);
        for (const difference_t& difference :
             nr_test::differences(waveform, loaded, nr_test::scope_t::read_by_a_signal))
            ADD_FAILURE() << difference.path << " was " << difference.first << ", came back as " << difference.second;

        // The bare tree loses some of it; a second recall changes nothing any more.
        cfg_nr_waveform_t recalled;
        const std::string tree = saved(waveform);
        ASSERT_TRUE(recall(recalled, tree));
        const std::string kept = saved(recalled);
        ASSERT_TRUE(recall(recalled, tree));
        EXPECT_EQ(saved(recalled), kept);

        if (seed % k_generate_each == 0 && waveform.get_waveform_sample_points() <= k_most_samples) {
            lib_nr_phy_t engine;
            engine.waveform_config(waveform.get_waveform_manager());
            if (engine.nr_phy_process()) {
                EXPECT_EQ(engine.get_baseband_signal_data().size(), waveform.get_waveform_sample_points());
            }
            else {
                EXPECT_NE(silence.text().find("Resource Mapping Conflict!"), std::string::npos);
            }
        }
    }
}

// Eight settings of one façade come back from the tree without any step beside it, but for those that it has ahead of
// what they hang on.
TEST(cfg_nr_leaf_walk, settings_of_one_facade_come_back_from_the_bare_tree)
{
    const std::set<std::string> recalled_too_early = {"dl_csirs[0].antenna_port",
                                                      "dl_csirs[0].csirs_port",
                                                      "dl_dci[0].allocated_candidate",
                                                      "dl_ssb[0].data_source",
                                                      "dl_ssb[0].power_boosting",
                                                      "ul_pucch[0].dmrs_power",
                                                      "ul_pucch[0].occ_index",
                                                      "ul_pucch[0].uci_format",
                                                      "ul_pusch[0].ptrs_port",
                                                      "ul_rmc[0].rmc_rb_allocation",
                                                      "ul_pusch[0].hopping_rb_offset",
                                                      "dl_ssb[0].ssb_pattern",
                                                      "pucch_test_model[0].transmission_periodicity"};
    for (unsigned int seed = 0; seed < k_short_walks; ++seed) {
        const nr_test::captured_output_t silence;
        cfg_nr_waveform_t waveform;
        if (seed % 2 == 0)
            waveform.get_carrier(0)->set_carrier_type(LIB_NR_UPLINK);
        nr_test::leaf_walk_t walk(waveform, seed);
        walk.take_steps(1, 8);
        SCOPED_TRACE("walk " + std::to_string(seed) + ":\n" + walk.history());
        cfg_nr_waveform_t recalled;
        ASSERT_TRUE(recall(recalled, saved(waveform)));
        for (const difference_t& difference : nr_test::differences(waveform, recalled, nr_test::scope_t::in_the_tree))
            EXPECT_EQ(recalled_too_early.count(difference.path.substr(difference.path.find('.') + 1)), 1u)
                << difference.path << " was " << difference.first << ", came back as " << difference.second;
    }
}

} // namespace
