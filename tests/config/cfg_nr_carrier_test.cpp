#include "config/cfg_nr_carrier.h"

#include "manager/lib_nr_waveform_configure_manager.h"
#include "support/captured_output.h"
#include "support/facade_cursors.h"
#include "support/settings.h"

#include <functional>
#include <gtest/gtest.h>
#include <tuple>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::captured_output_t;
using nr_test::cursor_of;
using nr_test::cursor_t;

/// A list that an embedded façade walks. `index_t` is that of the accessor.
template <class facade_t, class index_t>
struct list_t
{
    const char* name;
    facade_t* (cfg_nr_carrier_t::*get)(index_t);
    unsigned int (cfg_nr_carrier_t::*number)() const;
    void (cfg_nr_carrier_t::*add)();
    bool (cfg_nr_carrier_t::*remove)(unsigned int);
    bool (cfg_nr_carrier_t::*copy)(unsigned int);
    bool follows = true;
};

template <class step_t>
void for_each_list(step_t step)
{
    using c = cfg_nr_carrier_t;
    step(list_t<cfg_nr_dl_bwp_t, int>{"dl_bwp", &c::get_dl_bwp, &c::get_dl_bwp_number, &c::add_dl_bwp,
                                      &c::delete_dl_bwp, &c::copy_dl_bwp});
    step(list_t<cfg_nr_dl_dci_t, int>{"dl_dci", &c::get_dl_dci, &c::get_dl_dci_number, &c::add_dl_dci,
                                      &c::delete_dl_dci, &c::copy_dl_dci});
    step(list_t<cfg_nr_dl_sch_t, int>{"dl_sch", &c::get_dl_pdsch, &c::get_dl_pdsch_number, &c::add_dl_sch,
                                      &c::delete_dl_sch, &c::copy_dl_sch});
    step(list_t<cfg_nr_dl_csirs_t, int>{"dl_csirs", &c::get_dl_csirs, &c::get_dl_csirs_number, &c::add_dl_csirs,
                                        &c::delete_dl_csirs, &c::copy_dl_csirs});
    step(list_t<cfg_nr_dl_prs_t, int>{"dl_prs", &c::get_dl_prs, &c::get_dl_prs_number, &c::add_dl_prs,
                                      &c::delete_dl_prs, &c::copy_dl_prs});
    step(list_t<cfg_nr_ul_bwp_t, int>{"ul_bwp", &c::get_ul_bwp, &c::get_ul_bwp_number, &c::add_ul_bwp,
                                      &c::delete_ul_bwp, &c::copy_ul_bwp});
    step(list_t<cfg_nr_ul_sch_t, int>{"ul_sch", &c::get_ul_pusch, &c::get_ul_pusch_number, &c::add_ul_sch,
                                      &c::delete_ul_sch, &c::copy_ul_sch});
    step(list_t<cfg_nr_ul_srs_t, unsigned int>{"ul_srs", &c::get_ul_srs, &c::get_ul_srs_number, &c::add_ul_srs,
                                               &c::remove_ul_srs, &c::copy_ul_srs});
    step(list_t<cfg_nr_prach_t, unsigned int>{"ul_prach", &c::get_ul_prach, &c::get_ul_prach_number, &c::add_ul_prach,
                                              &c::remove_ul_prach, &c::copy_ul_prach});
    step(list_t<cfg_nr_ul_pucch_t, unsigned int>{"ul_pucch", &c::get_ul_pucch, &c::get_ul_pucch_number,
                                                 &c::add_ul_pucch, &c::remove_ul_pucch, &c::copy_ul_pucch, false});
}

TEST(cfg_nr_carrier, one_facade_per_kind_follows_adding_and_removing)
{
    for_each_list([](const auto& list) {
        lib_nr_waveform_configure_manager_t waveform;
        cfg_nr_carrier_t carrier(waveform);
        carrier.init();
        const auto number = [&] { return (carrier.*list.number)(); };
        const unsigned int smallest = number();
        auto* const facade = (carrier.*list.get)(0);
        const auto expect_at = [&](unsigned int index) {
            EXPECT_EQ(cursor_of(facade), cursor_t(0, index)) << list.name;
        };
        const bool has_initial_entry = smallest == 2; // that of the downlink BWPs
        EXPECT_EQ(has_initial_entry, std::string(list.name) == "dl_bwp");
        for (unsigned int i = 0; i <= smallest; ++i)
            EXPECT_FALSE((carrier.*list.remove)(i)) << list.name;
        EXPECT_FALSE((carrier.*list.copy)(smallest)) << list.name;

        (carrier.*list.add)();
        EXPECT_EQ(number(), smallest + 1) << list.name;
        expect_at(list.follows ? smallest : 0);
        EXPECT_EQ((carrier.*list.get)(1), facade) << list.name;
        expect_at(1);
        EXPECT_EQ((carrier.*list.get)(99), facade) << list.name;
        expect_at(1);
        (carrier.*list.get)(-1);
        expect_at(1);
        EXPECT_TRUE((carrier.*list.copy)(smallest)) << list.name;
        EXPECT_EQ(number(), smallest + 1 + (list.follows ? 1 : 2)) << list.name; // a PUCCH is copied twice
        EXPECT_EQ((carrier.*list.copy)(0), !has_initial_entry) << list.name;
        expect_at(1);
        EXPECT_EQ((carrier.*list.remove)(0), !has_initial_entry) << list.name;
        (carrier.*list.get)(1);
        EXPECT_FALSE((carrier.*list.remove)(99)) << list.name;
        expect_at(list.follows ? 0 : 1);
        (carrier.*list.get)(1);
        while ((carrier.*list.remove)(number() - 1))
            expect_at(list.follows ? 0 : 1);
        EXPECT_EQ(number(), smallest) << list.name;
    });
}

TEST(cfg_nr_carrier, a_new_carrier_moves_all_facades_but_that_of_the_srs)
{
    lib_nr_waveform_configure_manager_t waveform;
    waveform.get_carrier(0).add_ul_srs();
    waveform.copy_carrier(0);
    waveform.get_carrier(1).set_cell_index(17);
    cfg_nr_carrier_t carrier(waveform);
    carrier.init();
    for_each_list([&](const auto& list) {
        (carrier.*list.add)();
        (carrier.*list.get)(1);
    });

    const captured_output_t output;
    EXPECT_FALSE(carrier.set_current_carrier_index(2));
    EXPECT_EQ(output.text(), "cfg_nr_carrier_t::set_current_carrier Report: Carrier Index Out of Range!\n");
    EXPECT_EQ(carrier.get_current_carrier_id(), 0U);
    EXPECT_TRUE(carrier.set_current_carrier_index(0));
    for_each_list(
        [&](const auto& list) { EXPECT_EQ(cursor_of((carrier.*list.get)(99)), cursor_t(0, 1)) << list.name; });

    EXPECT_TRUE(carrier.set_current_carrier_index(1));
    EXPECT_EQ(carrier.get_current_carrier_id(), 1U);
    EXPECT_EQ(carrier.get_ncell_id(), 17U);
    for_each_list([&](const auto& list) {
        const bool is_srs = std::string(list.name) == "ul_srs";
        EXPECT_EQ(cursor_of((carrier.*list.get)(99)), is_srs ? cursor_t(0, 1) : cursor_t(1, 0)) << list.name;
    });
    EXPECT_EQ(cursor_of(carrier.get_ul_srs(1)), cursor_t(1, 1));
    EXPECT_EQ(cursor_of<cfg_nr_ul_pucch_t>(carrier.get_pucch_test_model()), cursor_t(1, 0));
    carrier.set_ncell_id(18);
    EXPECT_EQ(waveform.get_carrier(1).get_cell_index(), 18U);
    EXPECT_EQ(waveform.get_carrier(0).get_cell_index(), 0U);

    carrier.init();
    for_each_list(
        [&](const auto& list) { EXPECT_EQ(cursor_of((carrier.*list.get)(99)), cursor_t(0, 0)) << list.name; });
}

TEST(cfg_nr_carrier, offers_what_the_setters_accept)
{
    const captured_output_t silence;
    lib_nr_waveform_configure_manager_t waveform;
    cfg_nr_carrier_t carrier(waveform);
    EXPECT_EQ(carrier.get_valid_bandwidth_list().size(), 24U);
    waveform.set_nr_ntn(true);
    EXPECT_EQ(carrier.get_valid_bandwidth_list().size(), 9U);
    for (const lib_nr_channel_bw_type_t bandwidth : carrier.get_valid_bandwidth_list()) {
        carrier.set_channel_bandwidth(bandwidth);
        EXPECT_EQ(carrier.get_channel_bandwidth(), bandwidth);
    }
    carrier.set_channel_bandwidth(LIB_NR_CHANNEL_FR1_100M);
    EXPECT_EQ(carrier.get_channel_bandwidth(), LIB_NR_CHANNEL_FR1_30M);
}

TEST(cfg_nr_carrier, settings_are_limited_and_tell_changes)
{
    cfg_nr_waveform_t waveform;
    nr_test::run_rows(waveform, {{"carrier[0].frequency_offset", "500000000", "400000000", true},
                                 {"carrier[0].frequency_offset", "600000000", "400000000", false},
                                 {"carrier[0].frequency_offset", "-2147483648", "-400000000", true},
                                 {"carrier[0].timing_offset", "-1", "0", false},
                                 {"carrier[0].timing_offset", "0.5", "0.01", true},
                                 {"carrier[0].power_boosting", "41", "40", true},
                                 {"carrier[0].power_boosting", "-41", "-40", true},
                                 {"carrier[0].init_phase", "400", "360", true},
                                 {"carrier[0].init_phase", "4294967295", "360", false},
                                 {"carrier[0].ncell_id", "1008", "1007", true},
                                 {"carrier[0].ncell_id", "1007", "1007", false},
                                 {"carrier[0].windowing_beta", "-0.1", "0", true},
                                 {"carrier[0].windowing_beta", "0.6", "0.5", true},
                                 {"carrier[0].enable", "true", "true", false},
                                 {"carrier[0].enable", "false", "false", true},
                                 {"carrier[0].baseband_filter", "true", "true", false},
                                 {"carrier[0].baseband_filter", "false", "false", true}});
}

TEST(cfg_nr_carrier, settings_reach_the_manager)
{
    lib_nr_waveform_configure_manager_t waveform;
    cfg_nr_carrier_t carrier(waveform);
    EXPECT_EQ(carrier.get_sample_rate(), 122880000U);
    EXPECT_EQ(carrier.get_bandwidth(), 98280000U);
    EXPECT_EQ(carrier.get_point_a(), -49140000.0);

    waveform.set_radio_frequency(3e9);
    EXPECT_TRUE(carrier.set_frequency_offset(500000000));
    EXPECT_EQ(carrier.get_frequency_offset(), 400000000);
    EXPECT_EQ(waveform.get_carrier(0).get_dl_ssb().get_radio_frequency(), 3.4e9);
    waveform.get_carrier(0).set_frequency_offset_hz(3e9, -1.9);
    EXPECT_EQ(carrier.get_frequency_offset(), -1);

    EXPECT_TRUE(carrier.set_carrier_type(LIB_NR_PRACH));
    carrier.set_numerology(LIB_NR_SCS_60K);
    carrier.add_ul_bwp();
    EXPECT_TRUE(carrier.set_prach_cp_type(LIB_NR_EXTEND_CP));
    EXPECT_EQ(carrier.get_prach_cp_type(), LIB_NR_EXTEND_CP);
    EXPECT_EQ(waveform.get_carrier(0).get_ul_bwp(1).get_cp_type(), LIB_NR_EXTEND_CP);
    EXPECT_TRUE(carrier.set_prach_cp_type(LIB_NR_EXTEND_CP));
}

// What moves the sample rate fits mask and block size of the crest factor reduction to it.
TEST(cfg_nr_carrier, a_moved_sample_rate_fits_the_mask)
{
    const std::vector<std::pair<double, double>> mask = {{-6e7, -1}, {-1e6, -2}, {1e6, -3}, {6e7, -4}};
    const captured_output_t silence;
    lib_nr_waveform_configure_manager_t waveform;
    cfg_nr_carrier_t carrier(waveform);
    const auto start_anew = [&] {
        waveform.init();
        waveform.set_cfr_filter_mask_data_arr(mask);
        waveform.set_cfr_block_size(1228800);
    };
    const auto expect_cut = [&](const char* what) {
        EXPECT_EQ(waveform.get_cfr_filter_mask_data_arr().size(), 2U) << what;
        EXPECT_EQ(waveform.get_cfr_block_size(), waveform.get_waveform_sample_points()) << what;
    };

    const std::tuple<const char*, bool, std::function<void()>> changes[] = {
        {"bandwidth", true, [&] { carrier.set_channel_bandwidth(LIB_NR_CHANNEL_FR1_20M); }},
        {"rb size", true, [&] { carrier.get_numerology(0)->set_rb_size(20); }},
        {"frequency offset", false, [&] { carrier.set_frequency_offset(1); }},
        {"numerology", false, [&] { carrier.set_numerology(LIB_NR_SCS_30K); }},
        {"enable", false, [&] { carrier.get_numerology(0)->set_enable(true); }}};
    for (const auto& [what, is_moving, change] : changes) {
        start_anew();
        // What moves no rate by itself refits to one that the manager moved before.
        waveform.get_carrier(0).set_numerology_rb_size(0, is_moving ? 273 : 20);
        EXPECT_EQ(waveform.get_cfr_filter_mask_data_arr().size(), 4U) << what;
        change();
        expect_cut(what);
    }
    start_anew();
    carrier.get_numerology(0)->set_rb_start(260);
    EXPECT_EQ(waveform.get_cfr_filter_mask_data_arr().size(), 4U);
}

} // namespace
