#include "manager/lib_nr_ul_guard_band_configure_manager.h"

#include <gtest/gtest.h>

#include <array>
#include <iostream>
#include <random>
#include <sstream>

namespace
{

using vek::nr_mod_lib::lib_nr_ul_guard_band_configure_manager_t;
using rb_sets_t = lib_nr_ul_guard_band_configure_manager_t::rb_set_map_t;

const std::string k_message =
    "Error: Start Index of GuardBand 1 should larger than the End Index of GuardBand 0 by at least 2";

void expect_band(const lib_nr_ul_guard_band_configure_manager_t& guard_band, std::uint16_t index, int start, int size,
                 int end)
{
    EXPECT_EQ(guard_band.get_guard_band_start(index), start) << index;
    EXPECT_EQ(guard_band.get_guard_band_size(index), size) << index;
    EXPECT_EQ(guard_band.get_guard_band_end(index), end) << index;
}

TEST(lib_nr_ul_guard_band_configure_manager, edits_move_the_other_edge)
{
    lib_nr_ul_guard_band_configure_manager_t guard_band;
    EXPECT_EQ(guard_band.get_guard_band_end(0), 0) << "there is none yet";
    EXPECT_FALSE(guard_band.set_guard_band_start(3, 0));
    guard_band.add_guard_band();
    expect_band(guard_band, 0, 100, 5, 104);
    EXPECT_TRUE(guard_band.set_guard_band_start(0, 0));
    expect_band(guard_band, 0, 1, 5, 5);
    EXPECT_TRUE(guard_band.set_guard_band_start(65535, 0));
    expect_band(guard_band, 0, 267, 5, 271);
    EXPECT_TRUE(guard_band.set_guard_band_size(0, 0));
    expect_band(guard_band, 0, 267, 1, 267);
    EXPECT_TRUE(guard_band.set_guard_band_size(300, 0));
    expect_band(guard_band, 0, 267, 5, 271);
    EXPECT_TRUE(guard_band.set_guard_band_end(50, 0));
    expect_band(guard_band, 0, 267, 1, 267);
    EXPECT_TRUE(guard_band.set_guard_band_end(272, 0));
    expect_band(guard_band, 0, 267, 5, 271);
    EXPECT_FALSE(guard_band.set_guard_band_end(271, 0));
    expect_band(guard_band, 9, 267, 5, 271); // past the end: the last
    EXPECT_FALSE(guard_band.remove_guard_band(1));
    EXPECT_TRUE(guard_band.remove_guard_band(0));
    EXPECT_EQ(guard_band.get_guard_band_number(), 0);
}

TEST(lib_nr_ul_guard_band_configure_manager, only_a_confirmed_list_makes_rb_sets)
{
    lib_nr_ul_guard_band_configure_manager_t guard_band;
    EXPECT_EQ(guard_band.get_rb_set_info(), (rb_sets_t{{0, {0, 272}}}));
    guard_band.add_guard_band();
    EXPECT_EQ(guard_band.get_rb_set_info(), (rb_sets_t{{0, {0, 272}}}));
    EXPECT_TRUE(guard_band.confirm_configuration());
    EXPECT_EQ(guard_band.get_rb_set_info(), (rb_sets_t{{0, {0, 99}}, {1, {105, 272}}}));

    guard_band.add_guard_band();
    guard_band.set_guard_band_start(105, 1); // 106 is the least that leaves an RB between the bands
    std::ostringstream errors;
    std::streambuf* const original = std::cerr.rdbuf(errors.rdbuf());
    EXPECT_FALSE(guard_band.confirm_configuration());
    std::cerr.rdbuf(original);
    EXPECT_EQ(errors.str(), k_message + "\n");
    EXPECT_EQ(guard_band.get_rb_set_info().size(), 2U);

    guard_band.set_guard_band_start(106, 1);
    std::string message;
    rb_sets_t rb_sets;
    EXPECT_TRUE(guard_band.check_configuration_validity(message, rb_sets));
    EXPECT_EQ(message, "");
    EXPECT_EQ(rb_sets, (rb_sets_t{{0, {0, 99}}, {1, {105, 105}}, {2, {111, 272}}}));
    EXPECT_TRUE(guard_band.cancal_configuration());
    EXPECT_EQ(guard_band.get_guard_band_number(), 1);
}

TEST(lib_nr_ul_guard_band_configure_manager, a_narrower_numerology_cuts_and_drops_bands)
{
    lib_nr_ul_guard_band_configure_manager_t guard_band;
    for (const std::uint16_t start : std::array<std::uint16_t, 3>{20, 60, 200}) {
        guard_band.add_guard_band();
        const auto index = static_cast<std::uint16_t>(guard_band.get_guard_band_number() - 1);
        guard_band.set_guard_band_start(start, index);
    }
    EXPECT_TRUE(guard_band.confirm_configuration());
    guard_band.add_guard_band();
    guard_band.set_config(64);
    EXPECT_EQ(guard_band.get_guard_band_number(), 2) << "edits and the band beyond the edge are gone";
    expect_band(guard_band, 1, 60, 3, 62);
    EXPECT_EQ(guard_band.get_rb_set_info(), (rb_sets_t{{0, {0, 19}}, {1, {25, 59}}, {2, {63, 63}}}));
    guard_band.init();
    EXPECT_EQ(guard_band.get_rb_set_info(), (rb_sets_t{{0, {0, 272}}}));

    // The default band lies past the edge of a narrow numerology: no set behind it, none that passes the last RB.
    guard_band.set_config(51);
    guard_band.add_guard_band();
    EXPECT_TRUE(guard_band.confirm_configuration());
    EXPECT_EQ(guard_band.get_rb_set_info(), (rb_sets_t{{0, {0, 50}}}));
}

TEST(lib_nr_ul_guard_band_configure_manager, what_a_setter_touched_lies_inside_any_numerology)
{
    std::mt19937 generator(3);
    const auto random = [&generator] { return static_cast<unsigned int>(generator()); };
    for (int step = 0; step < 5000; ++step) {
        lib_nr_ul_guard_band_configure_manager_t guard_band;
        const unsigned int rbs = 6 + random() % 270;
        guard_band.set_config(rbs);
        guard_band.add_guard_band();
        for (int edit = 0; edit < 3; ++edit) {
            const auto value = static_cast<std::uint16_t>(random() % 4 == 0 ? random() : random() % (rbs + 3));
            switch (random() % 3) {
            case 0:
                guard_band.set_guard_band_start(value, 0);
                break;
            case 1:
                guard_band.set_guard_band_size(value, 0);
                break;
            default:
                guard_band.set_guard_band_end(value, 0);
            }
            const unsigned int start = guard_band.get_guard_band_start(0);
            const unsigned int end = guard_band.get_guard_band_end(0);
            ASSERT_GE(start, 1U) << rbs;
            ASSERT_GE(end, start) << rbs;
            ASSERT_LE(end, rbs - 2) << rbs;
            ASSERT_EQ(guard_band.get_guard_band_size(0), end - start + 1) << rbs;
        }
        ASSERT_TRUE(guard_band.confirm_configuration());
        ASSERT_EQ(guard_band.get_rb_set_info().size(), 2U);
    }
}

} // namespace
