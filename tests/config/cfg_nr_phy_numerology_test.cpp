#include "config/cfg_nr_phy_numerology.h"

#include "manager/lib_nr_waveform_configure_manager.h"
#include "support/captured_output.h"
#include "support/facade_cursors.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::captured_output_t;
using nr_test::cursor_of;
using nr_test::cursor_t;

TEST(cfg_nr_phy_numerology, moves_inside_the_lists_only)
{
    lib_nr_waveform_configure_manager_t waveform;
    waveform.add_carrier();
    waveform.get_carrier(1).set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
    cfg_nr_phy_numerology_t numerology(waveform);
    cfg_nr_ul_guard_band_t* const guard_band = numerology.get_ul_guard_band();

    EXPECT_TRUE(numerology.set_current_numerology_index(1, 1));
    EXPECT_EQ(numerology.get_scs(), LIB_NR_SCS_60K);
    EXPECT_EQ(numerology.get_rb_size(), 135U);
    EXPECT_EQ(cursor_of(guard_band), cursor_t(1, 1));

    const std::string start = "cfg_nr_phy_numerology_t::set_current_numerology_index Report : ";
    const captured_output_t output;
    EXPECT_FALSE(numerology.set_current_numerology_index(2, 0));
    EXPECT_FALSE(numerology.set_current_numerology_index(0, 1));
    EXPECT_EQ(output.text(), start + "Carrier Index out of range!\n" + start + "Numerology Index out of range!\n");
    EXPECT_EQ(numerology.get_scs(), LIB_NR_SCS_60K);
    EXPECT_EQ(cursor_of(guard_band), cursor_t(1, 1));

    numerology.init();
    EXPECT_EQ(numerology.get_scs(), LIB_NR_SCS_30K);
    EXPECT_EQ(cursor_of(guard_band), cursor_t(0, 0));
    EXPECT_EQ(numerology.get_ul_guard_band(), guard_band);
}

TEST(cfg_nr_phy_numerology, serves_the_last_entry_when_the_list_has_shrunk_below_the_cursor)
{
    const captured_output_t silence;
    lib_nr_waveform_configure_manager_t waveform;
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    carrier.set_bandwidth(LIB_NR_CHANNEL_FR1_50M);
    carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
    cfg_nr_phy_numerology_t numerology(waveform);
    numerology.set_current_numerology_index(0, 2);
    EXPECT_TRUE(numerology.set_enable(true));
    EXPECT_TRUE(numerology.set_rb_start(60));
    EXPECT_EQ(numerology.get_rb_size(), 6U);
    EXPECT_EQ(numerology.get_rb_start(), 59U);
    EXPECT_EQ(numerology.get_k0(), 0U);
    EXPECT_EQ(numerology.get_valid_numerology_list(), (std::vector{LIB_NR_SCS_15K, LIB_NR_SCS_30K, LIB_NR_SCS_60K}));

    carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_SINGLE);
    EXPECT_TRUE(numerology.get_enable());
    EXPECT_FALSE(numerology.set_enable(false));
    EXPECT_TRUE(numerology.set_rb_size(100));
    EXPECT_EQ(numerology.get_rb_size(), 100U);
    EXPECT_EQ(carrier.get_numerology_manager(0U).get_rb_size(), 100U);
}

} // namespace
