#include "phy/lib_nr_phy.h"
#include "support/captured_output.h"
#include "support/engine_peer.h"
#include "support/settings.h"

#include <gtest/gtest.h>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <vector>

// Which calls the engine makes of its processes: pass, frame, entry, slot and PN seed, and what failures leave behind.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::engine_peer_t;

using steps_t = std::vector<std::string>;

/// Two frames of 20 MHz with spacings of 15, 30 and 60 kHz; the channel's BWP 0 has 30 kHz, downlink BWP 1 has 60 kHz.
/// Then steps of one carrier.
nr_test::waveform_of_t make_waveform(const char* type, const steps_t& steps)
{
    steps_t all = {"carrier_type=" + std::string(type),
                   "channel_bandwidth=LIB_NR_CHANNEL_FR1_20M",
                   "numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE",
                   "numerology[1].enable=true",
                   "numerology[2].enable=true",
                   "dl_bwp[0].scs=LIB_NR_SCS_30K",
                   "dl_bwp[1].scs=LIB_NR_SCS_60K",
                   "ul_bwp[0].numerology=LIB_NR_SCS_30K"};
    all.insert(all.end(), steps.begin(), steps.end());
    for (std::string& step : all)
        step.insert(step.rfind("add ", 0) == 0 ? 4 : 0, "carrier[0].");
    all.insert(all.begin(), "frame_number=2");
    return nr_test::waveform_of_t(all);
}

/// The calls of each channel in a run: "numerology/frame:" and a list of entry@slot.
struct calls_t
{
    std::map<std::string, std::string> marked;
    std::map<std::string, std::string> written;
};

calls_t calls_of(const cfg_nr_waveform_t& configuration)
{
    const lib_nr_waveform_configure_manager_t& waveform = configuration.get_waveform_manager();
    nr_test::captured_output_t silence;
    calls_t calls;
    std::map<std::string, std::string> last;
    std::map<std::pair<unsigned int, unsigned int>, unsigned int> seeds; // by frame and RNTI
    lib_nr_phy_t engine;
    engine_peer_t::instead_of_calls(engine, [&](const lib_nr_channel_step_t& step, lib_nr_remap_mode_t mode) {
        auto& lines = mode == LIB_NR_REMAPP_MODE_UI_VIEW_MAP ? calls.marked : calls.written;
        const std::string channel(step.channel);
        const std::string place = std::to_string(step.numerology) + "/" + std::to_string(step.frame) + ":";
        std::string& before = last[channel + (mode == LIB_NR_REMAPP_MODE_UI_VIEW_MAP ? " view" : "")];
        if (before != place)
            lines[channel] += place;
        before = place;
        lines[channel] += std::to_string(step.entry.value()) + "@" + std::to_string(step.slot.value()) + " ";
        if (channel == "PDSCH" && mode == LIB_NR_REMAPP_MODE_ENCODE_MAP) {
            // Each transmission leaves a state of its own; the next of its RNTI must start from it.
            auto& process = engine_peer_t::pdsch_process(engine);
            const unsigned int rnti = waveform.get_carrier(0).get_dl_sch(*step.entry).get_rnti();
            unsigned int& seed = seeds.emplace(std::pair{step.frame, rnti}, 0xFFFFFFFFU).first->second;
            EXPECT_EQ(process.get_pn_seed(), seed) << place << *step.entry << "@" << *step.slot;
            seed = 1000 * rnti + 100 * step.frame + *step.slot;
            process.set_pn_seed(seed);
        }
        return true;
    });
    engine.waveform_config(waveform);
    EXPECT_TRUE(engine.nr_phy_process());
    EXPECT_FALSE(engine.get_first_failed_step().has_value());
    return calls;
}

TEST(lib_nr_phy_dispatch, downlink_channels_run_in_the_pass_of_their_spacing_and_in_their_frames_slots)
{
    nr_test::waveform_of_t waveform = make_waveform("LIB_NR_DOWNLINK", {"add dl_pdsch",
                                                                        "add dl_pdsch",
                                                                        "add dl_pdsch",
                                                                        "dl_pdsch[0].bwp_id=0",
                                                                        "dl_pdsch[0].rnti=7",
                                                                        "dl_pdsch[0].slot_allocation=0,3,19",
                                                                        "dl_pdsch[0].enable=true",
                                                                        "dl_pdsch[1].bwp_id=0",
                                                                        "dl_pdsch[1].rnti=7",
                                                                        "dl_pdsch[1].one_frame_period=false",
                                                                        "dl_pdsch[1].slot_allocation=1,3,21",
                                                                        "dl_pdsch[1].enable=true",
                                                                        "dl_pdsch[2].bwp_id=1",
                                                                        "dl_pdsch[2].rnti=9",
                                                                        "dl_pdsch[2].slot_allocation=0,39",
                                                                        "dl_pdsch[2].enable=true",
                                                                        "dl_pdsch[3].bwp_id=0",
                                                                        "dl_pdsch[3].rnti=5",
                                                                        "dl_pdsch[3].one_frame_period=false",
                                                                        "dl_pdsch[3].slot_allocation=3",
                                                                        "dl_pdsch[3].enable=true",
                                                                        "dl_csirs[0].bwp_id=0",
                                                                        "dl_csirs[0].one_frame_period=false",
                                                                        "dl_csirs[0].slot_allocation=5,25",
                                                                        "dl_csirs[0].enable=true",
                                                                        "dl_dci[0].bwp_id=1",
                                                                        "dl_dci[0].slot_allocation=4,2",
                                                                        "dl_dci[0].enable=true"});
    const calls_t calls = calls_of(waveform);
    EXPECT_EQ(calls.marked.at("PDSCH"), "1/0:0@0 0@3 0@19 1@1 1@3 3@3 1/1:0@0 0@3 0@19 1@1 2/0:2@0 2@39 2/1:2@0 2@39 ");
    // In a TDD cell by slot, RNTI and entry.
    EXPECT_EQ(calls.written.at("PDSCH"),
              "1/0:0@0 1@1 3@3 0@3 1@3 0@19 1/1:0@0 1@1 0@3 0@19 2/0:2@0 2@39 2/1:2@0 2@39 ");
    EXPECT_EQ(calls.marked.at("CSI-RS"), "1/0:0@5 1/1:0@5 ");
    EXPECT_EQ(calls.marked.at("PDCCH"), "2/0:0@4 0@2 2/1:0@4 0@2 ");
    EXPECT_EQ(calls.written.at("CSI-RS"), calls.marked.at("CSI-RS"));
    EXPECT_EQ(calls.written.at("PDCCH"), calls.marked.at("PDCCH"));

    // With 12 symbols a slot, BWP 1 does not fit the grid of BWP 0's prefix.
    nr_test::take(waveform, {"carrier[0].dl_bwp[1].cp_type=LIB_NR_EXTEND_CP"});
    EXPECT_EQ(calls_of(waveform).marked.count("PDCCH"), 0u);
}

TEST(lib_nr_phy_dispatch, uplink_channels_and_positioning_signals_run_where_span_and_period_say)
{
    const nr_test::waveform_of_t waveform = make_waveform("LIB_NR_DOWNLINK", {"dl_prs[0].enable=true"});
    const calls_t downlink = calls_of(waveform);
    const unsigned int prs = waveform.get_waveform_manager().get_carrier(0).get_dl_prs(0).get_numerology();
    std::string frame;
    for (unsigned int slot = 0; slot < 10u << prs; ++slot)
        frame += "0@" + std::to_string(slot) + " ";
    const std::string pass = std::to_string(prs);
    EXPECT_EQ(downlink.marked.at("PRS"), pass + "/0:" + frame + pass + "/1:" + frame);
    EXPECT_EQ(downlink.written.at("PRS"), downlink.marked.at("PRS"));

    const calls_t uplink = calls_of(make_waveform(
        "LIB_NR_UPLINK",
        {"ul_pusch[0].one_frame_period=false", "ul_pusch[0].slot_allocation=2,20", "ul_pusch[0].enable=true",
         "ul_srs[0].srs_periodity=LIB_NR_SRS_40MS_PERIODICITY", "ul_srs[0].t_offset=3", "ul_srs[0].enable=true"}));
    EXPECT_EQ(uplink.written.at("PUSCH"), "1/0:0@2 1/1:0@0 ");
    EXPECT_EQ(uplink.marked.at("PUSCH"), uplink.written.at("PUSCH"));
    EXPECT_EQ(uplink.written.at("SRS"), "1/0:0@3 ");
}

TEST(lib_nr_phy_dispatch, the_first_failure_is_kept_and_an_exception_leaves_no_results)
{
    const nr_test::waveform_of_t waveform = make_waveform(
        "LIB_NR_DOWNLINK", {"dl_dci[0].bwp_id=0", "dl_dci[0].slot_allocation=6,8", "dl_dci[0].enable=true"});
    nr_test::captured_output_t output;
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    for (const bool throws : {false, true}) {
        engine_peer_t::instead_of_calls(engine, [&](const lib_nr_channel_step_t& step, lib_nr_remap_mode_t mode) {
            const bool fails = mode == LIB_NR_REMAPP_MODE_ENCODE_MAP && step.frame == 1 && step.slot == 8u;
            if (fails && throws)
                throw std::bad_alloc();
            return !fails;
        });
        if (throws)
            EXPECT_THROW(engine.nr_phy_process(), std::bad_alloc);
        else
            EXPECT_TRUE(engine.nr_phy_process());
        EXPECT_EQ(engine.get_baseband_signal_data().empty(), throws);
        ASSERT_TRUE(engine.get_first_failed_step().has_value());
        const lib_nr_channel_step_t& step = *engine.get_first_failed_step();
        EXPECT_EQ(step.channel, "PDCCH");
        EXPECT_EQ(std::make_tuple(step.carrier, step.numerology, step.frame, step.entry, step.slot),
                  std::make_tuple(0u, 1u, 1u, std::optional(0u), std::optional(8u)));
    }
    EXPECT_NE(output.text().find("error!!!PDCCH process fail\n"), std::string::npos);
    engine_peer_t::instead_of_calls(engine, {});
    EXPECT_TRUE(engine.nr_phy_process());
    EXPECT_FALSE(engine.get_first_failed_step().has_value());
}

TEST(lib_nr_phy_dispatch, an_extended_prefix_stays_with_its_own_pass)
{
    const nr_test::waveform_of_t waveform =
        make_waveform("LIB_NR_DOWNLINK", {"dl_bwp[0].scs=LIB_NR_SCS_60K", "dl_bwp[0].cp_type=LIB_NR_EXTEND_CP"});
    nr_test::captured_output_t silence;
    lib_nr_phy_t engine;
    std::vector<std::size_t> symbols;
    engine_peer_t::after_channel_steps(engine, [&](unsigned int, unsigned int, unsigned int) {
        auto& payload = lib_nr_channel_resource_manager_t::get_inst().get_payload_mapping();
        symbols.push_back(payload.size());
        for (auto& row : payload)
            row[40] = 1.0;
    });
    engine.waveform_config(waveform.get_waveform_manager());
    ASSERT_TRUE(engine.nr_phy_process());
    const lib_nr_phy_t::signal_t first = engine.get_baseband_signal_data();
    ASSERT_TRUE(engine.nr_phy_process());
    EXPECT_EQ(first, engine.get_baseband_signal_data());
    EXPECT_EQ(symbols, (std::vector<std::size_t>{140, 140, 280, 280, 480, 480, 140, 140, 280, 280, 480, 480}));
}

} // namespace
