#include "phy_common/lib_nr_new_prach_ofdm_modulator.h"

#include "support/captured_output.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using namespace vek::nr_mod_lib;
using signal_t = std::vector<std::complex<double>>;

TEST(lib_nr_new_prach_ofdm_modulator, oversamples_up_to_the_rate)
{
    lib_nr_new_prach_ofdm_modulator_t modulator;
    modulator.set_numerology(LIB_NR_SCS_30K);
    modulator.set_channel_bandwidth(LIB_NR_CHANNEL_FR1_100M);
    EXPECT_EQ(modulator.get_protocol_defined_fft_length(), 4096U);
    EXPECT_TRUE(modulator.set_target_sample_rate(122.88e6));
    EXPECT_EQ(modulator.get_actual_fft_length(), 4096U);
    EXPECT_TRUE(modulator.set_target_sample_rate(122.88e6 + 1.0));
    EXPECT_EQ(modulator.get_actual_fft_length(), 8192U);

    nr_test::captured_output_t output;
    for (const double rate : {0.0, -1.0, std::nan("")}) {
        output.clear();
        EXPECT_FALSE(modulator.set_target_sample_rate(rate));
        EXPECT_EQ(output.text(), "lib_nr_new_prach_ofdm_modulator_t::set_target_sample_rate Report : "
                                 "Sample Rate Should be a positive value!\n");
    }
    output.clear();
    EXPECT_FALSE(modulator.set_oversamping_ratio(0));
    EXPECT_EQ(output.text(), "lib_nr_new_prach_ofdm_modulator_t::set_oversamping_ratio Report : "
                             "Oversampling Ratio Must NOT be zero!\n");
    EXPECT_EQ(modulator.get_actual_fft_length(), 8192U);
}

TEST(lib_nr_new_prach_ofdm_modulator, takes_the_extended_prefix_at_60_khz_alone)
{
    lib_nr_new_prach_ofdm_modulator_t modulator;
    nr_test::captured_output_t output;
    EXPECT_FALSE(modulator.set_cyclic_prefix_type(LIB_NR_EXTEND_CP));
    EXPECT_EQ(output.text(), "lib_nr_dl_resource_manager_t::set_cyclic_prefix_type Report : "
                             "Extende CP is supported only with 60kHz SCS!\n");
    modulator.set_numerology(LIB_NR_SCS_60K);
    EXPECT_TRUE(modulator.set_cyclic_prefix_type(LIB_NR_EXTEND_CP));
}

TEST(lib_nr_new_prach_ofdm_modulator, makes_a_silent_frame_of_the_length_asked_for)
{
    const lib_nr_new_prach_ofdm_modulator_t modulator;
    signal_t main(100, {1.0, 1.0});
    signal_t head(3);
    signal_t tail(4);
    EXPECT_FALSE(modulator.deal_frame_ofdm_modulation({}, main, head, tail));
    EXPECT_EQ(main, signal_t(100, {1.0, 1.0}));
    EXPECT_TRUE(modulator.deal_frame_ofdm_modulation({signal_t(839)}, main, head, tail));
    EXPECT_EQ(main, signal_t(100));
    EXPECT_TRUE(head.empty());
    EXPECT_TRUE(tail.empty());
}

} // namespace
