#include "manager/lib_nr_carrier_configure_manager.h"

#include "phy_common/lib_nr_phy_common.h"
#include "support/captured_output.h"

#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <stdexcept>

namespace vek
{

template <>
struct test_peer_t<nr_mod_lib::lib_nr_carrier_configure_manager_t>
{
    static void init_bwps_without_numerologies(nr_mod_lib::lib_nr_carrier_configure_manager_t carrier)
    {
        carrier.m_numerologies.clear();
        carrier._init_bwp_list();
    }
};

} // namespace vek

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::captured_output_t;
using carrier_t = lib_nr_carrier_configure_manager_t;

constexpr double k_nan = std::numeric_limits<double>::quiet_NaN();
const std::string k_class = "lib_nr_carrier_configure_manager_t::";
const std::string k_no_prach = ": It is not applicable for PRACH carrier.\n \n";

/// The lists, each by its operations.
struct list_t
{
    const char* name;
    unsigned int (carrier_t::*number)() const;
    void (carrier_t::*add)();
    bool (carrier_t::*copy)(unsigned int);
    bool (carrier_t::*remove)(unsigned int);
    bool has_initial_entry = false;
};
const list_t k_lists[] = {
    {"dl_bwp", &carrier_t::get_dl_bwp_number, &carrier_t::add_dl_bwp, &carrier_t::copy_dl_bwp,
     &carrier_t::remove_dl_bwp, true},
    {"dl_dci", &carrier_t::get_dl_dci_number, &carrier_t::add_dl_dci, &carrier_t::copy_dl_dci,
     &carrier_t::remove_dl_dci},
    {"dl_sch", &carrier_t::get_dl_sch_number, &carrier_t::add_dl_sch, &carrier_t::copy_dl_sch,
     &carrier_t::remove_dl_sch},
    {"dl_csirs", &carrier_t::get_dl_csirs_number, &carrier_t::add_dl_csirs, &carrier_t::copy_dl_csirs,
     &carrier_t::remove_dl_csirs},
    {"dl_prs", &carrier_t::get_dl_prs_number, &carrier_t::add_dl_prs, &carrier_t::copy_dl_prs,
     &carrier_t::remove_dl_prs},
    {"ul_bwp", &carrier_t::get_ul_bwp_number, &carrier_t::add_ul_bwp, &carrier_t::copy_ul_bwp,
     &carrier_t::remove_ul_bwp},
    {"ul_pucch", &carrier_t::get_ul_pucch_number, &carrier_t::add_ul_pucch, &carrier_t::copy_ul_pucch,
     &carrier_t::remove_ul_pucch},
    {"ul_sch", &carrier_t::get_ul_sch_number, &carrier_t::add_ul_sch, &carrier_t::copy_ul_sch,
     &carrier_t::remove_ul_sch},
    {"ul_srs", &carrier_t::get_ul_srs_number, &carrier_t::add_ul_srs, &carrier_t::copy_ul_srs,
     &carrier_t::remove_ul_srs},
    {"ul_prach", &carrier_t::get_ul_prach_number, &carrier_t::add_ul_prach, &carrier_t::copy_ul_prach,
     &carrier_t::remove_ul_prach},
};

carrier_t multiple_numerologies(lib_nr_channel_bw_type_t bandwidth, lib_carrier_type_t type = LIB_NR_DOWNLINK)
{
    const captured_output_t silence;
    carrier_t carrier;
    carrier.set_carrier_type(type);
    carrier.set_bandwidth(bandwidth);
    carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
    return carrier;
}

TEST(lib_nr_carrier_configure_manager, is_fresh_as_told)
{
    const captured_output_t output;
    const carrier_t carrier;
    for (const list_t& list : k_lists)
        EXPECT_EQ((carrier.*list.number)(), list.has_initial_entry ? 2U : 1U) << list.name;
    EXPECT_TRUE(carrier.get_dl_bwp(0).is_initial_bwp());
    EXPECT_FALSE(carrier.get_dl_bwp(1).is_initial_bwp());
    EXPECT_EQ(carrier.get_dl_bwp(1).get_bwp_id(), 1U);
    EXPECT_EQ(carrier.get_dl_sch(0).get_bwp_id(), 1U);
    EXPECT_EQ(carrier.get_dl_dci(0).get_coreset_id(), 1U);
    EXPECT_EQ(carrier.get_ul_pucch(0).get_name(), "UCI1");
    EXPECT_EQ(carrier.get_ul_bwp(0).get_bwp_name(), "BWP1");
    EXPECT_EQ(output.text(), "");

    EXPECT_EQ(carrier.get_configured_bandwidth(), 98280000U);
    EXPECT_EQ(carrier.get_base_sample_rate(), 122880000.0);
    EXPECT_EQ(carrier.get_frequency_offset_of_point_a(), -49140000.0);
    const std::string trace = "--------get_carrier_sample_rate()---------\nibandwith_tmp:98280000\n";
    EXPECT_EQ(output.text(), trace + trace);
}

TEST(lib_nr_carrier_configure_manager, nan_changes_nothing)
{
    carrier_t carrier;
    EXPECT_FALSE(carrier.set_frequency_offset_hz(1e9, k_nan));
    EXPECT_FALSE(carrier.set_timing_offset_s(k_nan));
    EXPECT_FALSE(carrier.set_power_boosting(k_nan));
    carrier.set_windowing_beta(k_nan);
    EXPECT_EQ(carrier.get_frequency_offset_hz() + carrier.get_timing_offset_s() + carrier.get_power_boosting(), 0.0);
    EXPECT_EQ(carrier.get_windowing_beta(), 0.01);
}

TEST(lib_nr_carrier_configure_manager, a_new_type_or_ntn_mode_starts_anew_but_for_the_timing_offset)
{
    carrier_t carrier;
    const auto touch = [&] {
        carrier.set_timing_offset_s(0.004);
        carrier.set_bandwidth(LIB_NR_CHANNEL_FR1_20M);
        carrier.set_cell_index(5);
        carrier.add_ul_sch();
        carrier.set_frequency_offset_hz(3e9, 1.0);
        carrier.get_dl_ssb().set_pss_power_boosting(3.0);
    };
    const auto expect_fresh = [&] {
        EXPECT_EQ(carrier.get_bandwidth(), LIB_NR_CHANNEL_FR1_100M);
        EXPECT_EQ(carrier.get_cell_index(), 0U);
        EXPECT_EQ(carrier.get_ul_sch_number(), 1U);
        EXPECT_EQ(carrier.get_timing_offset_s(), 0.004);
        EXPECT_EQ(carrier.get_frequency_offset_hz(), 0.0);
        EXPECT_EQ(carrier.get_dl_ssb().get_pss_power_boosting(), 0.0);
        EXPECT_EQ(carrier.get_dl_ssb().get_radio_frequency(), 1e9);
    };
    const auto expect_duplex = [&](lib_nr_duplex_type_t type) {
        EXPECT_EQ(carrier.get_dl_tm().get_duplex_type(), type);
        EXPECT_EQ(carrier.get_dl_frc().get_duplex_type(), type);
        EXPECT_EQ(carrier.get_ul_frc().get_duplex_type(), type);
        EXPECT_EQ(carrier.get_ul_rmc().get_duplex_type(), type);
    };
    touch();
    EXPECT_FALSE(carrier.set_carrier_type(LIB_NR_DOWNLINK));
    EXPECT_EQ(carrier.get_ul_sch_number(), 2U);
    EXPECT_TRUE(carrier.set_carrier_type(LIB_NR_PRACH));
    EXPECT_EQ(carrier.get_carrier_type(), LIB_NR_PRACH);
    expect_fresh();

    touch();
    EXPECT_TRUE(carrier.set_nr_ntn(true));
    EXPECT_EQ(carrier.get_carrier_type(), LIB_NR_DOWNLINK);
    expect_fresh();
    expect_duplex(LIB_NR_DUPLEX_TYPE_FDD);
    touch();
    EXPECT_FALSE(carrier.set_nr_ntn(true));
    EXPECT_EQ(carrier.get_ul_sch_number(), 2U);
    carrier.set_carrier_type(LIB_NR_UPLINK);
    expect_duplex(LIB_NR_DUPLEX_TYPE_FDD);
    EXPECT_FALSE(carrier.get_dl_tm().set_nr_ntn(true));
    EXPECT_TRUE(carrier.set_nr_ntn(false));
    expect_duplex(LIB_NR_DUPLEX_TYPE_TDD);
}

TEST(lib_nr_carrier_configure_manager, entries_are_named_and_numbered)
{
    carrier_t carrier;
    EXPECT_EQ(&carrier.get_dl_bwp(99), &carrier.get_dl_bwp(1));
    EXPECT_EQ(&carrier.get_ul_prach(99), &carrier.get_ul_prach(0));
    EXPECT_EQ(&carrier.get_numerology_manager(99U), &carrier.get_numerology_manager(0U));
    carrier.copy_ul_pucch(0);
    EXPECT_EQ(carrier.get_ul_pucch_number(), 3U);
    EXPECT_EQ(carrier.get_ul_pucch(1).get_name(), "UCI1");
    EXPECT_EQ(carrier.get_ul_pucch(2).get_name(), "UCI1_copy");
    carrier.add_ul_pucch();
    EXPECT_EQ(carrier.get_ul_pucch(3).get_name(), "UCI4");

    carrier.add_ul_bwp();
    carrier.copy_ul_bwp(1);
    EXPECT_EQ(carrier.get_ul_bwp(1).get_bwp_name(), "BWP2");
    EXPECT_EQ(carrier.get_ul_bwp(2).get_bwp_name(), "BWP2_copy");
    EXPECT_EQ(carrier.get_ul_bwp(2).get_bwp_id(), 1U);
    carrier.remove_ul_bwp(0);
    EXPECT_EQ(carrier.get_ul_bwp(0).get_bwp_id(), 0U);
    EXPECT_EQ(carrier.get_ul_bwp(1).get_bwp_id(), 1U);

    carrier.copy_dl_bwp(1);
    EXPECT_EQ(carrier.get_dl_bwp(2).get_bwp_id(), 1U);
    carrier.add_dl_bwp();
    EXPECT_EQ(carrier.get_dl_bwp(3).get_bwp_id(), 3U);
    EXPECT_TRUE(carrier.remove_dl_bwp(1));
    for (unsigned int i = 0; i < 3; ++i)
        EXPECT_EQ(carrier.get_dl_bwp(i).get_bwp_id(), i);
}

TEST(lib_nr_carrier_configure_manager, channels_of_a_lost_bwp_go_to_the_first)
{
    carrier_t carrier;
    carrier.add_dl_bwp();
    carrier.add_dl_bwp();
    carrier.add_ul_bwp();
    EXPECT_TRUE(carrier.set_coreset_number(3, 3));
    EXPECT_FALSE(carrier.set_coreset_number(4, 3));
    EXPECT_TRUE(carrier.set_dl_dci_bwp_id(0, 3));
    EXPECT_FALSE(carrier.set_dl_dci_bwp_id(0, 3));
    carrier.get_dl_dci(0).set_coreset_id(3);
    carrier.set_dl_sch_bwp_id(0, 3);
    carrier.set_dl_csirs_bwp_id(0, 2);
    carrier.set_ul_pucch_bwp_id(0, 1);
    carrier.set_ul_sch_bwp_id(0, 1);
    carrier.set_ul_srs_bwp_id(0, 1);

    const captured_output_t output;
    carrier.remove_dl_bwp(1); // what was 3 is now 2: numbers stay, 3 is repaired
    EXPECT_EQ(carrier.get_dl_csirs(0).get_bwp_id(), 2U);
    EXPECT_EQ(carrier.get_dl_sch(0).get_bwp_id(), 0U);
    EXPECT_EQ(carrier.get_dl_dci(0).get_bwp_id(), 0U);
    EXPECT_EQ(carrier.get_dl_dci(0).get_coreset_id(), 0U);
    carrier.remove_ul_bwp(1);
    EXPECT_EQ(carrier.get_ul_pucch(0).get_bwp_id(), 0U);
    EXPECT_EQ(carrier.get_ul_sch(0).get_bwp_id(), 0U);
    EXPECT_EQ(carrier.get_ul_srs(0).get_bwp_id(), 0U);
    EXPECT_EQ(output.text(), "");

    // Fewer CORESETs send a DCI to the first one, a CORESET that is still there keeps it.
    carrier.set_dl_dci_bwp_id(0, 1);
    carrier.set_coreset_number(1, 3);
    carrier.get_dl_dci(0).set_coreset_id(2);
    carrier.set_coreset_number(1, 2);
    EXPECT_EQ(carrier.get_dl_dci(0).get_coreset_id(), 2U);
    carrier.set_coreset_number(1, 1);
    EXPECT_EQ(carrier.get_dl_dci(0).get_coreset_id(), 1U);
}

TEST(lib_nr_carrier_configure_manager, a_bwp_that_is_not_there_becomes_the_first_with_a_line)
{
    using set_t = std::function<void(carrier_t&, unsigned int, unsigned int)>;
    const std::pair<const char*, set_t> rows[] = {
        {"set_dl_dci_bwp_id", [](carrier_t& c, unsigned int i, unsigned int id) { c.set_dl_dci_bwp_id(i, id); }},
        {"set_dl_sch_bwp_id", [](carrier_t& c, unsigned int i, unsigned int id) { c.set_dl_sch_bwp_id(i, id); }},
        {"set_dl_csirs_bwp_id", [](carrier_t& c, unsigned int i, unsigned int id) { c.set_dl_csirs_bwp_id(i, id); }},
        {"set_ul_pucch_bwp_id", [](carrier_t& c, unsigned int i, unsigned int id) { c.set_ul_pucch_bwp_id(i, id); }},
        {"set_ul_sch_bwp_id", [](carrier_t& c, unsigned int i, unsigned int id) { c.set_ul_sch_bwp_id(i, id); }},
        {"set_ul_srs_bwp_id", [](carrier_t& c, unsigned int i, unsigned int id) { c.set_ul_srs_bwp_id(i, id); }},
        {"set_ul_prach_bwp_id", [](carrier_t& c, unsigned int i, unsigned int id) { c.set_ul_prach_bwp_id(i, id); }},
    };
    carrier_t carrier;
    for (const auto& [name, set] : rows) {
        const captured_output_t output;
        set(carrier, 0, 2);
        EXPECT_EQ(output.text(), k_class + name + " : Error bwp id\n");
        EXPECT_THROW(set(carrier, 1, 0), std::out_of_range) << name;
    }
    EXPECT_EQ(carrier.get_dl_sch(0).get_bwp_id(), 0U);
    EXPECT_EQ(carrier.get_dl_csirs(0).get_bwp_id(), 0U);
    EXPECT_EQ(carrier.get_dl_dci(0).get_bwp_id(), 0U);

    EXPECT_THROW(carrier.set_numerology_enable(1, true), std::out_of_range);
    EXPECT_THROW(carrier.set_numerology_rb_size(1, 6), std::out_of_range);
    EXPECT_THROW(carrier.set_numerology_rb_start(1, 6), std::out_of_range);
    EXPECT_THROW(carrier.set_dl_bwp_rb_size(2, 6), std::out_of_range);
    EXPECT_THROW(carrier.set_ul_bwp_numerology(1, LIB_NR_SCS_30K), std::out_of_range);
}

TEST(lib_nr_carrier_configure_manager, bandwidth_parts_follow_the_width_of_their_numerology)
{
    carrier_t carrier;
    carrier.set_dl_csirs_bwp_id(0, 0);
    EXPECT_TRUE(carrier.set_numerology_rb_size(0, 100));
    EXPECT_FALSE(carrier.set_numerology_rb_size(0, 100));
    for (unsigned int i = 0; i < 2; ++i)
        EXPECT_EQ(carrier.get_dl_bwp(i).get_bwp_rb_size(), 100U);
    EXPECT_EQ(carrier.get_dl_bwp(1).get_coreset(1).get_fd_resources(), std::string(16, '1'));
    EXPECT_EQ(carrier.get_dl_sch(0).get_rb_num(), 100U);
    EXPECT_EQ(carrier.get_ul_bwp(0).get_rb_number(), 100U);
    EXPECT_EQ(carrier.get_ul_sch(0).get_rb_num(), 100U);
    EXPECT_EQ(carrier.get_ul_prach(0).get_rb_num(), 100U);
    EXPECT_LE(carrier.get_dl_prs(0).get_rb_number(), 100U);

    EXPECT_TRUE(carrier.set_numerology_rb_start(0, 240));
    EXPECT_EQ(carrier.get_numerology_manager(0U).get_rb_size(), 33U);
    for (unsigned int i = 0; i < 2; ++i) {
        EXPECT_EQ(carrier.get_dl_bwp(i).get_bwp_rb_start(), 240U);
        EXPECT_EQ(carrier.get_dl_bwp(i).get_bwp_rb_size(), 33U);
    }
    EXPECT_EQ(carrier.get_dl_sch(0).get_rb_num(), 33U);
    EXPECT_EQ(carrier.get_ul_bwp(0).get_rb_offset(), 240U);
    EXPECT_EQ(carrier.get_ul_bwp(0).get_rb_number(), 33U);
    EXPECT_EQ(carrier.get_ul_sch(0).get_rb_num(), 33U);
    EXPECT_EQ(carrier.get_ul_prach(0).get_rb_offset(), 240U);
    EXPECT_EQ(carrier.get_dl_csirs(0).get_rb_num(), 32U); // in groups of 4

    // One BWP alone, and only the channels in it.
    carrier.set_numerology_rb_start(0, 0);
    carrier.set_numerology_rb_size(0, 273);
    for (unsigned int i = 0; i < 2; ++i) {
        carrier.set_dl_bwp_rb_start(i, 0);
        carrier.set_dl_bwp_rb_size(i, 273);
    }
    carrier.add_dl_sch();
    carrier.add_dl_sch();
    carrier.set_dl_sch_bwp_id(1, 0);
    EXPECT_TRUE(carrier.set_dl_bwp_rb_size(1, 20));
    EXPECT_EQ(carrier.get_dl_sch(1).get_rb_num(), 273U);
    EXPECT_EQ(carrier.get_dl_sch(2).get_rb_num(), 20U);
    EXPECT_EQ(carrier.get_dl_bwp(0).get_coreset(0).get_fd_resources().size(), 45U);
    EXPECT_EQ(carrier.get_dl_bwp(1).get_coreset(1).get_fd_resources().size(), 3U);
    EXPECT_FALSE(carrier.set_dl_bwp_rb_size(1, 3));
    EXPECT_EQ(carrier.get_dl_bwp(1).get_bwp_rb_size(), 6U);
}

TEST(lib_nr_carrier_configure_manager, bandwidth_parts_leave_a_disabled_spacing)
{
    carrier_t carrier = multiple_numerologies(LIB_NR_CHANNEL_FR1_50M);
    EXPECT_EQ(carrier.get_enable_numerology_list(), std::vector{LIB_NR_SCS_15K});
    EXPECT_EQ(carrier.get_dl_bwp(1).get_numerology(), LIB_NR_SCS_15K);
    EXPECT_FALSE(carrier.set_dl_bwp_numerology(1, LIB_NR_SCS_60K));
    EXPECT_TRUE(carrier.set_numerology_enable(2, true));
    EXPECT_TRUE(carrier.set_dl_bwp_numerology(1, LIB_NR_SCS_60K));
    EXPECT_TRUE(carrier.set_dl_prs_numerology(0, LIB_NR_SCS_60K));
    EXPECT_EQ(carrier.get_dl_bwp(1).get_bwp_rb_size(), 65U);
    EXPECT_EQ(carrier.get_dl_sch(0).get_rb_num(), 65U);
    EXPECT_EQ(carrier.get_dl_csirs(0).get_rb_num(), 64U);
    EXPECT_TRUE(carrier.set_dl_bwp_cp_type(1, LIB_NR_EXTEND_CP));
    EXPECT_FALSE(carrier.set_dl_bwp_cp_type(0, LIB_NR_EXTEND_CP));
    EXPECT_EQ(carrier.get_numerology_manager_index_by_bwp(LIB_NR_SCS_60K), 1U);
    EXPECT_EQ(carrier.get_numerology_manager_index_by_bwp(LIB_NR_SCS_30K), 0U);

    // The SS/PBCH block moves to a numerology whose width is set, while it is enabled.
    carrier.set_numerology_enable(1, true);
    carrier.set_numerology_rb_size(1, 100);
    EXPECT_EQ(carrier.get_dl_ssb().get_numerology(), LIB_NR_SCS_30K);
    EXPECT_EQ(carrier.get_dl_prs(0).get_numerology(), LIB_NR_SCS_60K);
    carrier.set_numerology_enable(0, false);
    EXPECT_EQ(carrier.get_dl_bwp(0).get_numerology(), LIB_NR_SCS_30K);
    EXPECT_EQ(carrier.get_dl_bwp(1).get_numerology(), LIB_NR_SCS_60K);
    EXPECT_TRUE(carrier.set_numerology_enable(2, false));
    EXPECT_EQ(carrier.get_dl_bwp(1).get_numerology(), LIB_NR_SCS_30K);
    EXPECT_EQ(carrier.get_dl_bwp(1).get_cp_type(), LIB_NR_NORMAL_CP);
    EXPECT_EQ(carrier.get_dl_prs(0).get_numerology(), LIB_NR_SCS_30K);
    EXPECT_FALSE(carrier.set_numerology_enable(1, false));
    EXPECT_EQ(carrier.get_enable_numerology_list(), std::vector{LIB_NR_SCS_30K});
    EXPECT_EQ(carrier.get_first_enable_numerology_manager().get_numerolgy(), LIB_NR_SCS_30K);
    EXPECT_FALSE(carrier.set_numerology(LIB_NR_SCS_15K));

    // Back to one numerology: the first of the list, at full width.
    carrier.set_numerology_rb_size(0, 20);
    EXPECT_TRUE(carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_SINGLE));
    EXPECT_EQ(carrier.get_numerology_number(), 1U);
    EXPECT_EQ(carrier.get_numerology(), LIB_NR_SCS_15K);
    EXPECT_EQ(carrier.get_numerology_manager(0U).get_rb_size(), 270U);
    EXPECT_EQ(carrier.get_dl_bwp(0).get_numerology(), LIB_NR_SCS_15K);
    EXPECT_FALSE(carrier.set_numerology_enable(0, false));
    EXPECT_TRUE(carrier.get_numerology_manager(0U).get_enable());
    EXPECT_FALSE(carrier.set_numerology(LIB_NR_SCS_120K));
    EXPECT_TRUE(carrier.set_numerology(LIB_NR_SCS_60K));
    EXPECT_EQ(carrier.get_dl_bwp(1).get_numerology(), LIB_NR_SCS_60K);
    EXPECT_EQ(carrier.get_dl_sch(0).get_rb_num(), 65U);
}

TEST(lib_nr_carrier_configure_manager, only_the_bwps_of_the_direction_follow_a_spacing)
{
    carrier_t carrier;
    carrier.set_numerology(LIB_NR_SCS_60K);
    EXPECT_EQ(carrier.get_dl_bwp(0).get_numerology(), LIB_NR_SCS_60K);
    EXPECT_EQ(carrier.get_ul_bwp(0).get_numerology(), LIB_NR_SCS_30K);
    for (const lib_carrier_type_t type : {LIB_NR_UPLINK, LIB_NR_PRACH}) {
        carrier.set_carrier_type(type);
        carrier.set_numerology(LIB_NR_SCS_60K);
        EXPECT_EQ(carrier.get_dl_bwp(0).get_numerology(), LIB_NR_SCS_30K);
        EXPECT_EQ(carrier.get_ul_bwp(0).get_numerology(), LIB_NR_SCS_60K);
        EXPECT_EQ(carrier.get_ul_sch(0).get_rb_num(), 135U);
    }

    // A width is applied to the BWPs of both.
    carrier.set_carrier_type(LIB_NR_UPLINK);
    carrier.set_numerology_rb_start(0, 100);
    EXPECT_EQ(carrier.get_dl_bwp(1).get_bwp_rb_start(), 100U);
    EXPECT_EQ(carrier.get_dl_bwp(1).get_bwp_rb_size(), 173U);
    EXPECT_EQ(carrier.get_ul_bwp(0).get_rb_offset(), 100U);
    carrier.set_numerology(LIB_NR_SCS_60K);

    // A downlink BWP left behind at 30 kHz has no numerology any more.
    const captured_output_t output;
    carrier.set_dl_bwp_rb_start(0, 0);
    EXPECT_EQ(output.text(), k_class + "get_numerology_manager : get numerology error\n");
}

TEST(lib_nr_carrier_configure_manager, uplink_channels_follow_where_they_stand)
{
    carrier_t carrier = multiple_numerologies(LIB_NR_CHANNEL_FR1_50M, LIB_NR_UPLINK);
    const captured_output_t silence;
    carrier.set_numerology_enable(2, true);
    carrier.add_ul_bwp();
    EXPECT_TRUE(carrier.set_ul_bwp_rb_number(1, 30, 0, 270));
    EXPECT_TRUE(carrier.set_ul_sch_bwp_id(0, 1));
    EXPECT_EQ(carrier.get_ul_sch(0).get_rb_num(), 30U);
    carrier.add_ul_sch();
    EXPECT_EQ(carrier.get_ul_sch(1).get_rb_num(), 133U);
    EXPECT_TRUE(carrier.set_ul_bwp_numerology(0, LIB_NR_SCS_60K));
    EXPECT_EQ(carrier.get_ul_sch(1).get_rb_num(), 65U);
    EXPECT_EQ(carrier.get_ul_sch(0).get_rb_num(), 30U);
    EXPECT_TRUE(carrier.set_ul_bwp_cp_type(0, LIB_NR_EXTEND_CP));
}

TEST(lib_nr_carrier_configure_manager, a_bandwidth_rebuilds_the_numerologies)
{
    carrier_t carrier;
    carrier.set_numerology_rb_size(0, 40);
    EXPECT_TRUE(carrier.set_bandwidth(LIB_NR_CHANNEL_FR1_20M));
    EXPECT_FALSE(carrier.set_bandwidth(LIB_NR_CHANNEL_FR1_20M));
    EXPECT_FALSE(carrier.set_bandwidth(static_cast<lib_nr_channel_bw_type_t>(24)));
    EXPECT_EQ(carrier.get_numerology(), LIB_NR_SCS_30K);
    EXPECT_EQ(carrier.get_numerology_manager(0U).get_rb_size(), 51U);
    EXPECT_EQ(carrier.get_dl_ssb().get_rb_offset(), 31U);
    EXPECT_EQ(carrier.get_dl_ssb().get_bandwidth(), LIB_NR_CHANNEL_FR1_20M);
    {
        const captured_output_t silence;
        carrier.set_bandwidth(LIB_NR_CHANNEL_FR2_1_400M);
    }
    EXPECT_EQ(carrier.get_numerology(), LIB_NR_SCS_120K);
    EXPECT_EQ(carrier.get_ul_prach(0).get_configuration_table(), FR2_TDD);

    carrier = multiple_numerologies(LIB_NR_CHANNEL_FR1_20M);
    carrier.set_numerology_enable(1, true);
    carrier.set_numerology_enable(0, false);
    const captured_output_t output;
    carrier.set_bandwidth(LIB_NR_CHANNEL_FR1_100M);
    // The list is built twice, and each time the uplink BWP is fitted to its numerology.
    EXPECT_EQ(output.text(), "set_ul_bwp_rb_number" + k_no_prach + "_update_carrier_bandwidth" + k_no_prach +
                                 "set_ul_bwp_rb_number" + k_no_prach);
    EXPECT_EQ(carrier.get_numerology_number(), 2U);
    EXPECT_EQ(carrier.get_enable_numerology_list(), std::vector{LIB_NR_SCS_30K});
    EXPECT_EQ(carrier.get_ul_prach(0).get_configuration_table(), FR1_FDD_SUL);
}

TEST(lib_nr_carrier_configure_manager, ntn_knows_fewer_bandwidths)
{
    const captured_output_t silence;
    carrier_t carrier;
    carrier.set_nr_ntn(true);
    for (unsigned int value = 0; value < 30; ++value) {
        const auto bandwidth = static_cast<lib_nr_channel_bw_type_t>(value);
        const bool known = value <= 3 || value == 5 || (value >= 15 && value <= 18);
        carrier.set_bandwidth(bandwidth);
        EXPECT_EQ(carrier.get_bandwidth(), known ? bandwidth : LIB_NR_CHANNEL_FR1_30M) << value;
    }
}

TEST(lib_nr_carrier_configure_manager, prachs_do_not_follow_in_multiple_mode)
{
    carrier_t carrier = multiple_numerologies(LIB_NR_CHANNEL_FR1_100M, LIB_NR_UPLINK);
    const captured_output_t output;
    std::string expected;
    const auto expect = [&](const std::string& operation) {
        expected += operation + k_no_prach;
        EXPECT_EQ(output.text(), expected);
    };
    carrier.set_ul_bwp_numerology(0, LIB_NR_SCS_30K);
    expect("set_ul_bwp_numerology");
    carrier.set_ul_bwp_cp_type(0, LIB_NR_EXTEND_CP);
    expect("set_ul_bwp_cp_type");
    EXPECT_TRUE(carrier.set_ul_bwp_rb_number(0, 50, 0, 273));
    expect("set_ul_bwp_rb_number");
    EXPECT_TRUE(carrier.set_ul_bwp_rb_offset(0, 20, 0, 273));
    expect("set_ul_bwp_rb_offset");
    EXPECT_EQ(carrier.get_ul_sch(0).get_rb_num(), 50U);
    EXPECT_EQ(carrier.get_ul_prach(0).get_rb_num(), 273U);
    EXPECT_EQ(carrier.get_ul_prach(0).get_rb_offset(), 0U);
}

TEST(lib_nr_carrier_configure_manager, disabled_numerologies_of_a_bwp_are_reported)
{
    carrier_t carrier = multiple_numerologies(LIB_NR_CHANNEL_FR1_100M, LIB_NR_UPLINK);
    carrier.get_numerology_manager(0U).set_enable(false);
    const captured_output_t output;
    carrier.set_dl_bwp_rb_size(1, 50);
    carrier.set_dl_bwp_rb_start(1, 7);
    EXPECT_EQ(output.text(), k_class + "set_dl_bwp_rb_size : Error! numerology of bwp not enable\n" + k_class +
                                 "set_dl_bwp_rb_start : Error! numerology of bwp not enable\n");
    EXPECT_EQ(carrier.get_dl_bwp(1).get_bwp_rb_size(), 50U);
    EXPECT_EQ(carrier.get_dl_bwp(1).get_bwp_rb_start(), 7U);

    // With every numerology switched off behind the carrier's back the first one still serves.
    EXPECT_EQ(carrier.get_first_enable_numerology_manager().get_numerolgy(), LIB_NR_SCS_30K);
    EXPECT_FALSE(carrier.set_ul_bwp_numerology(0, LIB_NR_SCS_60K));
    EXPECT_EQ(carrier.get_configured_bandwidth(), 0U);
    EXPECT_EQ(carrier.get_base_sample_rate(), 0.0);
    EXPECT_EQ(carrier.get_frequency_offset_of_point_a(), 0.0);
}

TEST(lib_nr_carrier_configure_manager, an_empty_numerology_list_gives_no_bandwidth_parts)
{
    const captured_output_t output;
    vek::test_peer_t<carrier_t>::init_bwps_without_numerologies(carrier_t());
    EXPECT_EQ(output.text(), k_class + "_init_bwp_list Report: Numerology list must NOT be emtpy!\n");
}

TEST(lib_nr_carrier_configure_manager, guard_bands_are_confirmed_through_the_carrier)
{
    carrier_t carrier;
    lib_nr_ul_sch_configure_manager_t& sch = carrier.get_ul_sch(0);
    lib_nr_ul_guard_band_configure_manager_t& guard_band = carrier.get_numerology_manager(0U).get_ul_guard_band();
    guard_band.add_guard_band();
    EXPECT_FALSE(sch.set_rb_set_start(1)) << "one RB set before";
    EXPECT_TRUE(carrier.set_numerology_guard_band(0));
    EXPECT_EQ(guard_band.get_rb_set_info().size(), 2U);
    EXPECT_TRUE(sch.set_rb_set_start(1));
    guard_band.add_guard_band(); // the same band twice
    testing::internal::CaptureStderr();
    EXPECT_FALSE(carrier.set_numerology_guard_band(0));
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(guard_band.get_rb_set_info().size(), 2U);
    EXPECT_THROW(carrier.set_numerology_guard_band(1), std::out_of_range);
}

void expect_consistent(const carrier_t& carrier, int step)
{
    ASSERT_GE(carrier.get_numerology_number(), 1U) << step;
    ASSERT_FALSE(carrier.get_enable_numerology_list().empty()) << step;
    for (unsigned int i = 0; i < carrier.get_numerology_number(); ++i) {
        const auto& numerology = carrier.get_numerology_manager(i);
        ASSERT_EQ(numerology.get_bandwidth(), carrier.get_bandwidth()) << step;
        ASSERT_LE(numerology.get_rb_start() + numerology.get_rb_size(),
                  lib_nr_phy_common_t::get_max_transmit_rb_num(numerology.get_numerolgy(), carrier.get_bandwidth()))
            << step;
    }
    for (const list_t& list : k_lists)
        ASSERT_GE((carrier.*list.number)(), list.has_initial_entry ? 2U : 1U) << step << " " << list.name;

    const auto expect_inside = [&](lib_nr_numerology_type_t spacing, unsigned int start, unsigned int size) {
        const auto& numerology = carrier.get_numerology_manager(spacing);
        ASSERT_TRUE(numerology.get_enable()) << step;
        ASSERT_EQ(numerology.get_numerolgy(), spacing) << step;
        ASSERT_GE(size, 6U) << step;
        ASSERT_GE(start, numerology.get_rb_start()) << step;
        ASSERT_LE(start + size, numerology.get_rb_start() + numerology.get_rb_size()) << step;
    };
    for (unsigned int i = 0; carrier.get_carrier_type() == LIB_NR_DOWNLINK && i < carrier.get_dl_bwp_number(); ++i) {
        const auto& bwp = carrier.get_dl_bwp(i);
        expect_inside(bwp.get_numerology(), bwp.get_bwp_rb_start(), bwp.get_bwp_rb_size());
        ASSERT_EQ(bwp.is_initial_bwp(), i == 0) << step;
    }
    for (unsigned int i = 0; carrier.get_carrier_type() != LIB_NR_DOWNLINK && i < carrier.get_ul_bwp_number(); ++i) {
        const auto& bwp = carrier.get_ul_bwp(i);
        expect_inside(bwp.get_numerology(), bwp.get_rb_offset(), bwp.get_rb_number());
    }
    for (unsigned int i = 0; i < carrier.get_dl_dci_number(); ++i) {
        const auto& dci = carrier.get_dl_dci(i);
        ASSERT_LT(dci.get_bwp_id(), carrier.get_dl_bwp_number()) << step;
        ASSERT_TRUE(carrier.get_dl_bwp(dci.get_bwp_id()).check_coreset_index_valid(dci.get_coreset_id())) << step;
    }
    for (unsigned int i = 0; i < carrier.get_dl_sch_number(); ++i)
        ASSERT_LT(carrier.get_dl_sch(i).get_bwp_id(), carrier.get_dl_bwp_number()) << step;
    for (unsigned int i = 0; i < carrier.get_dl_csirs_number(); ++i)
        ASSERT_LT(carrier.get_dl_csirs(i).get_bwp_id(), carrier.get_dl_bwp_number()) << step;
    for (unsigned int i = 0; i < carrier.get_ul_pucch_number(); ++i)
        ASSERT_LT(carrier.get_ul_pucch(i).get_bwp_id(), carrier.get_ul_bwp_number()) << step;
    for (unsigned int i = 0; i < carrier.get_ul_sch_number(); ++i)
        ASSERT_LT(carrier.get_ul_sch(i).get_bwp_id(), carrier.get_ul_bwp_number()) << step;
    for (unsigned int i = 0; i < carrier.get_ul_srs_number(); ++i)
        ASSERT_LT(carrier.get_ul_srs(i).get_bwp_id(), carrier.get_ul_bwp_number()) << step;
}

TEST(lib_nr_carrier_configure_manager, stays_consistent_under_random_operations)
{
    std::mt19937 random(3);
    const auto below = [&](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
    const auto spacing = [&] { return static_cast<lib_nr_numerology_type_t>(below(7)); };
    const captured_output_t silence;
    carrier_t carrier;
    const std::function<void()> operations[] = {
        [&] {
            const list_t& list = k_lists[below(std::size(k_lists))];
            if ((carrier.*list.number)() < 8)
                below(2) ? (carrier.*list.add)() : void((carrier.*list.copy)(below(8)));
        },
        [&] { (carrier.*k_lists[below(std::size(k_lists))].remove)(below(8)); },
        [&] { carrier.set_bandwidth(static_cast<lib_nr_channel_bw_type_t>(below(25))); },
        [&] { carrier.set_numerology_mode(static_cast<lib_nr_numerology_mode_t>(below(2))); },
        [&] { carrier.set_numerology(spacing()); },
        [&] { carrier.set_numerology_enable(below(carrier.get_numerology_number()), below(2) == 0); },
        [&] { carrier.set_numerology_rb_size(below(carrier.get_numerology_number()), below(300)); },
        [&] { carrier.set_numerology_rb_start(below(carrier.get_numerology_number()), below(300)); },
        [&] { carrier.set_dl_bwp_numerology(below(carrier.get_dl_bwp_number()), spacing()); },
        [&] { carrier.set_dl_bwp_rb_size(below(carrier.get_dl_bwp_number()), 6 + below(300)); },
        [&] { carrier.set_dl_bwp_rb_start(below(carrier.get_dl_bwp_number()), below(300)); },
        [&] { carrier.set_coreset_number(below(8), below(5)); },
        [&] { carrier.set_ul_bwp_numerology(below(carrier.get_ul_bwp_number()), spacing()); },
        [&] { carrier.set_dl_dci_bwp_id(below(carrier.get_dl_dci_number()), below(8)); },
        [&] {
            carrier.get_dl_dci(below(8)).set_coreset_id(below(4));
            carrier.set_coreset_number(0, below(5));
        },
        [&] { carrier.set_dl_sch_bwp_id(below(carrier.get_dl_sch_number()), below(8)); },
        [&] { carrier.set_dl_csirs_bwp_id(below(carrier.get_dl_csirs_number()), below(8)); },
        [&] { carrier.set_ul_pucch_bwp_id(below(carrier.get_ul_pucch_number()), below(8)); },
        [&] { carrier.set_ul_sch_bwp_id(below(carrier.get_ul_sch_number()), below(8)); },
        [&] { carrier.set_ul_srs_bwp_id(below(carrier.get_ul_srs_number()), below(8)); },
        [&] { carrier.set_dl_ssb_numerology(spacing()); },
        [&] {
            if (below(10) == 0)
                carrier.set_carrier_type(static_cast<lib_carrier_type_t>(below(3)));
        },
    };
    for (int step = 0; step < 20000 && !testing::Test::HasFatalFailure(); ++step) {
        operations[below(std::size(operations))]();
        expect_consistent(carrier, step);
    }
}

} // namespace
