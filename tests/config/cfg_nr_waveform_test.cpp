#include "config/cfg_nr_waveform.h"

#include "support/captured_output.h"
#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::captured_output_t;

TEST(cfg_nr_waveform, settings_are_limited_and_start_anew)
{
    cfg_nr_waveform_t waveform;
    EXPECT_EQ(waveform.get_protocol_type(), 12U);
    EXPECT_FALSE(waveform.set_subframes_number(3)); // pinned to 10, as the antennas to 1
    EXPECT_EQ(waveform.get_subframes_number(), 10U);
    nr_test::run_rows(waveform, {{"antennas_number", "4", "1", false},
                                 {"frame_number", "0", "1", true},
                                 {"frame_number", "9", "4", true},
                                 {"radio_frequency", "3500000001", "3500000001", true},
                                 {"radio_frequency", "3500000001", "3500000001", false},
                                 {"radio_frequency", "18446744073709551615", "18446744073709551615", true},
                                 {"mirror_spectrum", "true", "true", true},
                                 {"phase_compensation", "false", "false", true},
                                 {"crest_factor_reduction_enable", "true", "true", true},
                                 {"crest_factor_reduction_enable", "true", "true", false},
                                 {"cfr_target_papr", "-1", "0", true},
                                 {"cfr_target_papr", "31", "30", true},
                                 {"cfr_target_papr", "30", "30", false},
                                 {"cfr_max_iteration", "4294967295", "100", true},
                                 {"cfr_cancel_percent", "-1", "0", true},
                                 {"cfr_cancel_percent", "55.5", "55.5", true},
                                 {"cfr_cancel_percent", "1e9", "100", true},
                                 {"cfr_block_size", "4096", "4096", true},
                                 {"cfr_filter_mask_data_arr", "5e6:-1,-5e6:-2", "-5e+06:-2,5e+06:-1", true}});
    waveform.init();
    EXPECT_FALSE(waveform.get_mirror_spectrum());
    EXPECT_EQ(waveform.get_crest_factor_reduction_setting(), cfg_nr_waveform_t().get_crest_factor_reduction_setting());
}

TEST(cfg_nr_waveform, one_cursor_walks_the_carriers)
{
    cfg_nr_waveform_t waveform;
    cfg_nr_carrier_t* const carrier = waveform.get_carrier(0);
    waveform.add_carrier();
    EXPECT_TRUE(waveform.copy_carrier(1));
    EXPECT_FALSE(waveform.copy_carrier(3));
    EXPECT_EQ(waveform.get_carrier_number(), 3U);
    EXPECT_EQ(carrier->get_current_carrier_id(), 0U);
    EXPECT_EQ(waveform.get_carrier(2), carrier);
    EXPECT_EQ(carrier->get_current_carrier_id(), 2U);
    carrier->set_ncell_id(9);

    const captured_output_t output;
    EXPECT_EQ(waveform.get_carrier(3), carrier);
    EXPECT_EQ(output.text(), "cfg_nr_carrier_t::set_current_carrier Report: Carrier Index Out of Range!\n");
    EXPECT_EQ(carrier->get_current_carrier_id(), 2U);
    EXPECT_FALSE(waveform.remove_carrier(3));
    EXPECT_EQ(carrier->get_current_carrier_id(), 2U);
    EXPECT_TRUE(waveform.remove_carrier(0));
    EXPECT_EQ(carrier->get_current_carrier_id(), 0U);
    EXPECT_EQ(waveform.get_carrier(1)->get_ncell_id(), 9U);

    // With the carriers gone below the cursor, the façade serves the last one.
    EXPECT_TRUE(waveform.set_nr_ntn(true));
    EXPECT_EQ(waveform.get_carrier_number(), 1U);
    EXPECT_EQ(carrier->get_ncell_id(), 0U);
    EXPECT_TRUE(carrier->set_ncell_id(3));
    EXPECT_EQ(waveform.get_carrier(0)->get_ncell_id(), 3U);
    EXPECT_FALSE(waveform.set_nr_ntn(true));
    EXPECT_FALSE(waveform.remove_carrier(0));
}

} // namespace
