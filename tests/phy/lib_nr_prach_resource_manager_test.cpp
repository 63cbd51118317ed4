#include "phy/lib_nr_prach_resource_manager.h"

#include "phy/lib_nr_phy.h"
#include "support/captured_output.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using namespace vek::nr_mod_lib;

TEST(lib_nr_prach_resource_manager, the_grid_has_a_column_for_each_prach_subcarrier)
{
    lib_nr_prach_resource_manager_t& grid = lib_nr_prach_resource_manager_t::get_inst();
    prach_resource_param_t param;
    param.numerology = LIB_NR_SCS_15K;
    param.bandwidth = LIB_NR_CHANNEL_FR1_20M;
    param.ratio = 12.0;
    param.row_number = 3;
    grid.set_resource_param(param);
    grid.init_payload_mapping();
    ASSERT_EQ(grid.get_prach_payload_mapping().size(), 3U);
    EXPECT_EQ(grid.get_prach_payload_mapping().back().size(), 106U * 12U * 12U);
    grid.get_prach_payload_mapping()[1][5] = 1.0;
    grid.init_payload_mapping();
    EXPECT_EQ(grid.get_prach_payload_mapping()[1][5], 0.0);
}

TEST(lib_nr_prach_resource_manager, a_prach_carrier_is_silent_and_of_full_length)
{
    for (const lib_nr_channel_bw_type_t bandwidth : {LIB_NR_CHANNEL_FR1_5M, LIB_NR_CHANNEL_FR2_1_50M}) {
        nr_test::captured_output_t output;
        lib_nr_waveform_configure_manager_t waveform;
        waveform.set_frames_number(2);
        waveform.get_carrier(0).set_carrier_type(LIB_NR_PRACH);
        waveform.get_carrier(0).set_bandwidth(bandwidth);
        waveform.get_carrier(0).add_ul_prach();
        lib_nr_phy_t phy;
        phy.waveform_config(waveform);
        ASSERT_TRUE(phy.nr_phy_process());
        const auto& signal = phy.get_baseband_signal_data();
        EXPECT_EQ(signal.size(), waveform.get_waveform_sample_points());
        EXPECT_TRUE(std::all_of(signal.begin(), signal.end(), [](const auto& sample) { return sample == 0.0; }));
    }
}

} // namespace
