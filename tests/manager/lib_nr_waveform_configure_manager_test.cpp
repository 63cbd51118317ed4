#include "manager/lib_nr_waveform_configure_manager.h"

#include "phy_common/lib_nr_phy_common.h"
#include "support/captured_output.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::captured_output_t;
using waveform_t = lib_nr_waveform_configure_manager_t;
using mask_t = std::vector<std::pair<double, double>>;

constexpr double k_nan = std::numeric_limits<double>::quiet_NaN();

// The least power of two times the spacing that holds the occupied width and a quarter more, by trying them all.
TEST(lib_nr_waveform_configure_manager, rate_is_the_least_that_leaves_a_fifth_free)
{
    const captured_output_t silence;
    for (unsigned int bw = 0; bw < 24; ++bw) {
        const auto bandwidth = static_cast<lib_nr_channel_bw_type_t>(bw);
        for (const lib_nr_numerology_type_t spacing : lib_nr_phy_common_t::get_valid_numerology_list(bandwidth))
            for (const unsigned int rb_size : {6U, 11U, 17U, 51U, 128U, 273U}) {
                waveform_t waveform;
                lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
                carrier.set_bandwidth(bandwidth);
                carrier.set_numerology(spacing);
                carrier.set_numerology_rb_size(0, rb_size);
                const unsigned long long scs = lib_nr_phy_common_t::get_scs_hz_value(spacing);
                const unsigned long long width = 12 * scs * carrier.get_numerology_manager(0U).get_rb_size();
                unsigned long long rate = scs;
                while (4 * rate < 5 * width)
                    rate *= 2;
                EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), static_cast<double>(rate)) << bw << " " << spacing;
                EXPECT_EQ(waveform.get_frame_sample_points(), rate / 100) << bw << " " << spacing;
                EXPECT_EQ(carrier.get_base_sample_rate(), static_cast<double>(rate)) << bw << " " << spacing;
            }
    }
}

TEST(lib_nr_waveform_configure_manager, carriers_off_the_centre_and_disabled_ones_move_the_rate)
{
    const captured_output_t silence;
    waveform_t waveform;
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    const double half = 98280000.0 / 2;
    const std::pair<double, double> rows[] = {{0.9, 1}, {1.0, 2}, {-1.5, 2}, {2.0, 3}, {-4.1, 5}, {8.1, 9}};
    for (const auto& [halves, multiple] : rows) {
        carrier.set_frequency_offset_hz(1e9, halves * half);
        EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), multiple * 122880000.0) << halves;
    }

    // A narrow carrier far out is charged with the rate of the widest so far, in list order.
    carrier.set_frequency_offset_hz(1e9, 0.0);
    waveform.add_carrier();
    waveform.get_carrier(1).set_bandwidth(LIB_NR_CHANNEL_FR1_20M);
    waveform.get_carrier(1).set_frequency_offset_hz(1e9, 30e6);
    EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), 4 * 122880000.0);
    waveform.get_carrier(0).set_enable(false);
    EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), 4 * 30720000.0);
    waveform.get_carrier(1).set_enable(false);
    EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), 0.0);
    EXPECT_EQ(waveform.get_waveform_sample_points(), 0U);
    EXPECT_EQ(waveform.get_frame_sample_points(), 0U);
}

TEST(lib_nr_waveform_configure_manager, widest_enabled_numerology_decides)
{
    const captured_output_t silence;
    waveform_t waveform;
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    carrier.set_bandwidth(LIB_NR_CHANNEL_FR1_50M);
    carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
    carrier.set_numerology_rb_size(0, 25);
    EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), 7680000.0);
    carrier.set_numerology_enable(2, true);
    EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), 61440000.0);
    // The base of the offset term is the last enabled numerology, here 60 kHz with 12 resource blocks.
    carrier.set_numerology_rb_size(2, 12);
    EXPECT_EQ(carrier.get_configured_bandwidth(), 8640000U);
    EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), 15360000.0);
    carrier.set_frequency_offset_hz(1e9, -9e6);
    EXPECT_EQ(waveform.get_waveform_sample_rate_hz(), 3 * 15360000.0);
}

TEST(lib_nr_waveform_configure_manager, frames_and_subframes_are_held_to_their_limits)
{
    waveform_t waveform;
    struct row_t
    {
        bool is_frames;
        unsigned int asked;
        bool result;
        unsigned int frames;
        unsigned int subframes;
    };
    const row_t rows[] = {
        {true, 0, true, 1, 10},    {true, 9, true, 4, 10},  {true, 4, false, 4, 10}, {false, 3, true, 4, 10},
        {false, 10, false, 4, 10}, {true, 1, true, 1, 10},  {false, 0, true, 1, 1},  {false, 77, true, 1, 10},
        {false, 5, true, 1, 5},    {false, 5, false, 1, 5}, {true, 2, true, 2, 10},
    };
    for (const row_t& row : rows) {
        EXPECT_EQ(row.is_frames ? waveform.set_frames_number(row.asked) : waveform.set_subframes_number(row.asked),
                  row.result)
            << row.asked;
        EXPECT_EQ(waveform.get_frame_number(), row.frames) << row.asked;
        EXPECT_EQ(waveform.get_subframes_number(), row.subframes) << row.asked;
        EXPECT_EQ(waveform.get_waveform_sample_points(), 122880ULL * row.frames * row.subframes) << row.asked;
        EXPECT_EQ(waveform.get_frame_sample_points(), 1228800U);
    }
    EXPECT_EQ(waveform.get_waveform_length_s(), 0.02);
}

TEST(lib_nr_waveform_configure_manager, cfr_blocks_never_exceed_the_waveform)
{
    waveform_t waveform;
    waveform.set_frames_number(4);
    waveform.set_cfr_block_size(4000000000U);
    EXPECT_EQ(waveform.get_cfr_block_size(), 4915200U);
    waveform.set_frames_number(2);
    EXPECT_EQ(waveform.get_cfr_block_size(), 2457600U);
    waveform.set_frames_number(1);
    waveform.set_subframes_number(3);
    EXPECT_EQ(waveform.get_cfr_block_size(), 368640U);
    waveform.get_carrier(0).set_numerology_rb_size(0, 51);
    waveform.set_cfr_filter_mask_data_arr(waveform.get_cfr_filter_mask_data_arr());
    EXPECT_EQ(waveform.get_cfr_block_size(), 92160U);
}

TEST(lib_nr_waveform_configure_manager, filter_mask_is_sorted_and_cut_to_the_rate)
{
    waveform_t waveform;
    const double edge = 61440000.0;
    const mask_t fallback = waveform.get_cfr_filter_mask_data_arr();

    EXPECT_TRUE(waveform.set_cfr_filter_mask_data_arr(
        {{edge, -3}, {1e6, 1}, {k_nan, 5}, {-edge, -4}, {edge + 1, 7}, {0, 2}, {-1e300, 8}, {2e6, k_nan}, {1e6, 0}}));
    EXPECT_EQ(waveform.get_cfr_filter_mask_data_arr(), (mask_t{{-edge, -4}, {0, 2}, {1e6, 1}, {1e6, 0}, {edge, -3}}));
    EXPECT_FALSE(waveform.set_cfr_filter_mask_data_arr(waveform.get_cfr_filter_mask_data_arr()));

    // A smaller rate cuts the mask for good; without a point left the default of that rate stands.
    waveform.get_carrier(0).set_numerology_rb_size(0, 51);
    waveform.set_cfr_filter_mask_data_arr(waveform.get_cfr_filter_mask_data_arr());
    EXPECT_EQ(waveform.get_cfr_filter_mask_data_arr(), (mask_t{{0, 2}, {1e6, 1}, {1e6, 0}}));
    waveform.get_carrier(0).set_numerology_rb_size(0, 273);
    EXPECT_TRUE(waveform.set_cfr_filter_mask_data_arr({{2 * edge, 0}, {-2 * edge, 0}}));
    EXPECT_EQ(waveform.get_cfr_filter_mask_data_arr(), fallback);
    EXPECT_FALSE(waveform.set_cfr_filter_mask_data_arr({}));
}

TEST(lib_nr_waveform_configure_manager, carriers_are_added_copied_and_removed_alone)
{
    const captured_output_t silence;
    waveform_t waveform;
    EXPECT_FALSE(waveform.remove_carrier(0));
    EXPECT_FALSE(waveform.copy_carrier(1));
    waveform.get_carrier(0).set_cell_index(7);
    waveform.get_carrier(0).add_dl_bwp();
    waveform.get_carrier(0).set_timing_offset_s(0.003);
    ASSERT_TRUE(waveform.copy_carrier(0));
    waveform.add_carrier();
    ASSERT_EQ(waveform.get_carrier_number(), 3U);
    EXPECT_EQ(waveform.get_carrier(1).get_cell_index(), 7U);
    EXPECT_EQ(waveform.get_carrier(1).get_dl_bwp_number(), 3U);
    EXPECT_EQ(waveform.get_carrier(2).get_cell_index(), 0U);
    EXPECT_EQ(&waveform.get_carrier(3), &waveform.get_carrier(2));

    // A deep copy: what changes in one does not change in the other.
    waveform.get_carrier(1).set_bandwidth(LIB_NR_CHANNEL_FR1_5M);
    waveform.get_carrier(1).remove_dl_bwp(2);
    EXPECT_EQ(waveform.get_carrier(0).get_dl_bwp_number(), 3U);
    EXPECT_EQ(waveform.get_carrier(0).get_numerology_manager(0U).get_rb_size(), 273U);

    EXPECT_FALSE(waveform.remove_carrier(3));
    EXPECT_TRUE(waveform.remove_carrier(0));
    EXPECT_EQ(waveform.get_carrier(0).get_bandwidth(), LIB_NR_CHANNEL_FR1_5M);
    waveform.init();
    EXPECT_EQ(waveform.get_carrier_number(), 1U);
    EXPECT_EQ(waveform.get_carrier(0).get_cell_index(), 0U);
    EXPECT_EQ(waveform.get_carrier(0).get_timing_offset_s(), 0.003);
}

TEST(lib_nr_waveform_configure_manager, ntn_starts_everything_anew)
{
    waveform_t waveform;
    waveform.add_carrier();
    waveform.set_frames_number(3);
    waveform.set_mirror_spectrum(true);
    EXPECT_TRUE(waveform.set_nr_ntn(true));
    EXPECT_EQ(waveform.get_carrier_number(), 1U);
    EXPECT_EQ(waveform.get_frame_number(), 1U);
    EXPECT_FALSE(waveform.get_mirror_spectrum());
    EXPECT_TRUE(waveform.get_carrier(0).get_nr_ntn());

    waveform.add_carrier();
    EXPECT_TRUE(waveform.get_carrier(1).get_nr_ntn());
    waveform.set_frames_number(2);
    EXPECT_FALSE(waveform.set_nr_ntn(true));
    EXPECT_EQ(waveform.get_carrier_number(), 2U);
    waveform.init();
    EXPECT_TRUE(waveform.get_nr_ntn());
    EXPECT_TRUE(waveform.get_carrier(0).get_nr_ntn());
}

TEST(lib_nr_waveform_configure_manager, channels_follow_frames_antennas_and_frequency)
{
    const captured_output_t silence;
    waveform_t waveform;
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    EXPECT_FALSE(waveform.set_antennas_number(1));
    EXPECT_TRUE(waveform.set_antennas_number(4));
    EXPECT_EQ(carrier.get_dl_sch(0).get_antenna_port().size(), 4U);
    EXPECT_EQ(carrier.get_ul_sch(0).get_antenna_port().size(), 4U);
    EXPECT_EQ(carrier.get_dl_csirs(0).get_antenna_port().size(), 4U);
    EXPECT_EQ(carrier.get_ul_srs(0).get_antenna_port().size(), 4U);
    carrier.set_carrier_type(LIB_NR_PRACH);
    carrier.add_dl_sch();
    carrier.add_ul_srs();
    EXPECT_EQ(carrier.get_dl_csirs(0).get_antenna_port().size(), 4U);
    EXPECT_EQ(carrier.get_dl_sch(1).get_antenna_port().size(), 4U);
    EXPECT_EQ(carrier.get_ul_srs(1).get_antenna_port().size(), 4U);
    waveform.set_antennas_number(4000000000U);
    EXPECT_EQ(waveform.get_antennas_number(), 32U);

    EXPECT_FALSE(waveform.set_radio_frequency(1e9));
    EXPECT_FALSE(waveform.set_radio_frequency(k_nan));
    EXPECT_EQ(carrier.get_dl_ssb().get_lmax(), LIB_NR_LMAX_4);
    EXPECT_TRUE(waveform.set_radio_frequency(3e9));
    EXPECT_EQ(carrier.get_dl_ssb().get_lmax(), LIB_NR_LMAX_4);
    carrier.set_frequency_offset_hz(waveform.get_radio_frequency(), 1.0);
    EXPECT_EQ(carrier.get_dl_ssb().get_lmax(), LIB_NR_LMAX_8);
    waveform.set_radio_frequency(2e9);
    EXPECT_EQ(carrier.get_dl_ssb().get_radio_frequency(), 2e9 + 1);
    EXPECT_EQ(carrier.get_dl_ssb().get_lmax(), LIB_NR_LMAX_4);

    // A carrier that comes late or starts anew knows the frequency too.
    waveform.set_radio_frequency(3.5e9);
    waveform.get_carrier(0).get_dl_ssb().set_active_idx("5");
    waveform.copy_carrier(0);
    EXPECT_EQ(waveform.get_carrier(1).get_dl_ssb().get_active_idx_text(), "5");
    waveform.add_carrier();
    waveform.get_carrier(0).set_carrier_type(LIB_NR_UPLINK);
    for (unsigned int i = 0; i < 3; ++i)
        EXPECT_EQ(waveform.get_carrier(i).get_dl_ssb().get_lmax(), LIB_NR_LMAX_8) << i;
    EXPECT_EQ(waveform.get_carrier(0).get_dl_ssb().get_radio_frequency(), 3.5e9) << "without the former offset";
    waveform.init();
    EXPECT_EQ(waveform.get_carrier(0).get_dl_ssb().get_radio_frequency(), 1e9);
}

} // namespace
