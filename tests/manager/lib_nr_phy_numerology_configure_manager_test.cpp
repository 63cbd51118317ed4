#include "manager/lib_nr_phy_numerology_configure_manager.h"

#include "support/captured_output.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using numerology_t = lib_nr_phy_numerology_configure_manager_t;

TEST(lib_nr_phy_numerology_configure_manager, takes_valid_pairs_only_and_starts_at_full_width)
{
    numerology_t numerology;
    EXPECT_FALSE(numerology.get_enable());
    EXPECT_EQ(numerology.get_numerolgy(), LIB_NR_SCS_30K);
    EXPECT_EQ(numerology.get_rb_size(), 273U);
    EXPECT_EQ(numerology.get_k0(), 0U);

    EXPECT_TRUE(numerology.set_numerology(LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_20M));
    EXPECT_EQ(numerology.get_rb_size(), 24U);
    EXPECT_EQ(numerology.get_cp_type_list(), (std::vector{LIB_NR_NORMAL_CP, LIB_NR_EXTEND_CP}));

    // The present pair keeps the width; an invalid pair or an unknown bandwidth changes nothing at all.
    numerology.set_rb_start(4);
    EXPECT_TRUE(numerology.set_numerology(LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_20M));
    EXPECT_FALSE(numerology.set_numerology(LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_5M));
    EXPECT_FALSE(numerology.set_numerology(LIB_NR_SCS_30K, static_cast<lib_nr_channel_bw_type_t>(24)));
    EXPECT_FALSE(numerology.set_numerology(static_cast<lib_nr_numerology_type_t>(7), LIB_NR_CHANNEL_FR1_20M));
    EXPECT_EQ(numerology.get_rb_start(), 4U);
    EXPECT_EQ(numerology.get_rb_size(), 20U);

    EXPECT_TRUE(numerology.set_numerology(LIB_NR_SCS_15K, LIB_NR_CHANNEL_FR1_20M));
    EXPECT_EQ(numerology.get_rb_start(), 0U);
    EXPECT_EQ(numerology.get_rb_size(), 106U);
    EXPECT_EQ(numerology.get_cp_type_list(), std::vector{LIB_NR_NORMAL_CP});
}

TEST(lib_nr_phy_numerology_configure_manager, start_wins_against_width)
{
    struct row_t
    {
        bool is_start;
        unsigned int asked;
        unsigned int start;
        unsigned int size;
        bool changed;
    };
    // 51 resource blocks, one row after the other.
    const row_t rows[] = {
        {false, 3, 0, 6, true},   {false, 0, 0, 6, false},    {false, 4000000000U, 0, 51, true},
        {true, 40, 40, 11, true}, {false, 12, 40, 11, false}, {true, 4000000000U, 45, 6, true},
        {true, 45, 45, 6, false}, {false, 51, 45, 6, false},  {true, 0, 0, 6, true},
        {false, 50, 0, 50, true}, {true, 1, 1, 50, true},     {true, 2, 2, 49, true},
    };
    numerology_t numerology;
    numerology.set_numerology(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M);
    for (const row_t& row : rows) {
        const bool changed = row.is_start ? numerology.set_rb_start(row.asked) : numerology.set_rb_size(row.asked);
        EXPECT_EQ(changed, row.changed) << row.asked;
        EXPECT_EQ(numerology.get_rb_start(), row.start) << row.asked;
        EXPECT_EQ(numerology.get_rb_size(), row.size) << row.asked;
    }
    numerology.init_resource_occupation();
    EXPECT_EQ(numerology.get_rb_start(), 0U);
    EXPECT_EQ(numerology.get_rb_size(), 51U);
}

TEST(lib_nr_phy_numerology_configure_manager, guard_bands_follow_the_width)
{
    numerology_t numerology;
    numerology.set_numerology(LIB_NR_SCS_60K, LIB_NR_CHANNEL_FR1_100M);
    lib_nr_ul_guard_band_configure_manager_t& guard_band = numerology.get_ul_guard_band();
    guard_band.add_guard_band();
    ASSERT_TRUE(guard_band.confirm_configuration());
    EXPECT_EQ(guard_band.get_rb_set_info().size(), 2U);
    EXPECT_EQ(guard_band.get_rb_set_info().at(1).second, 134U);

    numerology.set_rb_start(33);
    EXPECT_EQ(numerology.get_rb_size(), 102U);
    EXPECT_EQ(guard_band.get_guard_band_end(0), 100U);
    EXPECT_EQ(guard_band.get_rb_set_info().at(1).second, 101U);
    numerology.set_rb_size(100);
    EXPECT_EQ(guard_band.get_guard_band_number(), 0U);
    EXPECT_EQ(guard_band.get_rb_set_info().at(0).second, 99U);
}

} // namespace
