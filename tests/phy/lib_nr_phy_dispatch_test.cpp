#include "phy/lib_nr_phy.h"
#include "support/captured_output.h"
#include "support/engine_peer.h"

#include <gtest/gtest.h>
#include <map>
#include <new>
#include <optional>
#include <string>

// Which calls the engine makes of its processes: pass, frame, entry, slot and PN seed, and what failures leave behind.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::engine_peer_t;

// Fields of managers, set past their rules, so that each list and flag of a gate can be had. Naming a private member is
// allowed where a template is instantiated.
template <class owner_t, class value_t, int n>
struct field_t
{
    static inline value_t owner_t::*member = nullptr;
};
template <class owner_t, class value_t, int n, value_t owner_t::*found>
struct finder_t
{
    static inline const bool s_done = (field_t<owner_t, value_t, n>::member = found, true);
};
using sch_t = lib_nr_sch_configure_manager_t;
using csirs_t = lib_nr_dl_csirs_configure_manager_t;
using dci_t = lib_nr_dl_dci_configure_manager_t;
using prs_t = lib_nr_dl_prs_configure_manager_t;
using srs_t = lib_nr_ul_srs_configure_manager_t;
template struct finder_t<sch_t, bool, 0, &sch_t::m_enable>;
template struct finder_t<sch_t, bool, 1, &sch_t::m_one_frame_period>;
template struct finder_t<sch_t, unsigned int, 0, &sch_t::m_rnti>;
template struct finder_t<sch_t, std::vector<unsigned int>, 0, &sch_t::m_slot_allocation>;
template struct finder_t<csirs_t, bool, 0, &csirs_t::m_enable>;
template struct finder_t<csirs_t, bool, 1, &csirs_t::m_one_frame_period>;
template struct finder_t<csirs_t, std::vector<int>, 0, &csirs_t::m_slot_allocation>;
template struct finder_t<dci_t, bool, 0, &dci_t::m_enable>;
template struct finder_t<dci_t, std::vector<int>, 0, &dci_t::m_slot_allocation>;
template struct finder_t<prs_t, bool, 0, &prs_t::m_enable>;
template struct finder_t<srs_t, bool, 0, &srs_t::m_enable>;
template struct finder_t<srs_t, srs_periodity_type_t, 0, &srs_t::m_periodicity>;
template struct finder_t<srs_t, unsigned int, 0, &srs_t::m_t_offset>;
template struct finder_t<srs_t, std::vector<int>, 0, &srs_t::m_slot_allocation>;

template <int n = 0, class owner_t, class value_t>
void put(owner_t& owner, value_t value)
{
    owner.*field_t<owner_t, value_t, n>::member = value;
}

void put_sch(sch_t& sch, unsigned int bwp, unsigned int rnti, bool one_frame, std::vector<unsigned int> slots)
{
    put(sch, true);
    put<1>(sch, one_frame);
    put(sch, rnti);
    put(sch, std::move(slots));
    sch.set_bwp_id(bwp);
}

/// Two frames of 20 MHz with spacings of 15, 30 and 60 kHz; downlink BWP 0 has 30 kHz, BWP 1 has 60 kHz.
lib_nr_waveform_configure_manager_t make_waveform(lib_carrier_type_t type = LIB_NR_DOWNLINK)
{
    nr_test::captured_output_t silence;
    lib_nr_waveform_configure_manager_t waveform;
    waveform.set_frames_number(2);
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    carrier.set_carrier_type(type);
    carrier.set_bandwidth(LIB_NR_CHANNEL_FR1_20M);
    carrier.set_numerology_mode(LIB_NR_NUMBEROLOGY_MODE_MULTIPLE);
    for (unsigned int n = 0; n < carrier.get_numerology_number(); ++n)
        carrier.set_numerology_enable(n, true);
    if (carrier.get_dl_bwp_number() < 2)
        carrier.add_dl_bwp();
    carrier.set_dl_bwp_numerology(0, LIB_NR_SCS_30K);
    carrier.set_dl_bwp_numerology(1, LIB_NR_SCS_60K);
    return waveform;
}

/// The calls of each channel in a run: "numerology/frame:" and a list of entry@slot.
struct calls_t
{
    std::map<std::string, std::string> marked;
    std::map<std::string, std::string> written;
};

calls_t calls_of(const lib_nr_waveform_configure_manager_t& waveform)
{
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
    lib_nr_waveform_configure_manager_t waveform = make_waveform();
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    while (carrier.get_dl_sch_number() < 4)
        carrier.add_dl_sch();
    put_sch(carrier.get_dl_sch(0), 0, 7, true, {0, 3, 19});
    put_sch(carrier.get_dl_sch(1), 0, 7, false, {1, 3, 21});
    put_sch(carrier.get_dl_sch(2), 1, 9, true, {0, 39});
    put_sch(carrier.get_dl_sch(3), 0, 5, false, {3, 40});
    put(carrier.get_dl_csirs(0), true);
    put<1>(carrier.get_dl_csirs(0), false);
    put(carrier.get_dl_csirs(0), std::vector<int>{5, 25});
    put(carrier.get_dl_dci(0), true);
    put(carrier.get_dl_dci(0), std::vector<int>{4, 2});
    carrier.get_dl_csirs(0).set_bwp_id(0);
    carrier.get_dl_dci(0).set_bwp_id(1);

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
    carrier.get_dl_bwp(1).set_cp_type(LIB_NR_EXTEND_CP);
    EXPECT_EQ(calls_of(waveform).marked.count("PDCCH"), 0u);
}

TEST(lib_nr_phy_dispatch, uplink_channels_and_positioning_signals_run_where_span_and_period_say)
{
    lib_nr_waveform_configure_manager_t waveform = make_waveform();
    lib_nr_carrier_configure_manager_t& carrier = waveform.get_carrier(0);
    put(carrier.get_dl_prs(0), true);
    const calls_t downlink = calls_of(waveform);
    const unsigned int prs = carrier.get_dl_prs(0).get_numerology();
    std::string frame;
    for (unsigned int slot = 0; slot < 10u << prs; ++slot)
        frame += "0@" + std::to_string(slot) + " ";
    const std::string pass = std::to_string(prs);
    EXPECT_EQ(downlink.marked.at("PRS"), pass + "/0:" + frame + pass + "/1:" + frame);
    EXPECT_EQ(downlink.written.at("PRS"), downlink.marked.at("PRS"));

    lib_nr_waveform_configure_manager_t uplink_waveform = make_waveform(LIB_NR_UPLINK);
    lib_nr_carrier_configure_manager_t& uplink_carrier = uplink_waveform.get_carrier(0);
    uplink_carrier.set_ul_bwp_numerology(0, LIB_NR_SCS_30K);
    put_sch(uplink_carrier.get_ul_sch(0), 0, 1, false, {2, 20});
    put(uplink_carrier.get_ul_srs(0), true);
    put(uplink_carrier.get_ul_srs(0), static_cast<srs_periodity_type_t>(40));
    put(uplink_carrier.get_ul_srs(0), 3u);
    put(uplink_carrier.get_ul_srs(0), std::vector<int>{0, 3, 5});
    const calls_t uplink = calls_of(uplink_waveform);
    EXPECT_EQ(uplink.written.at("PUSCH"), "1/0:0@2 1/1:0@0 ");
    EXPECT_EQ(uplink.marked.at("PUSCH"), uplink.written.at("PUSCH"));
    EXPECT_EQ(uplink.written.at("SRS"), "1/0:0@3 ");
}

TEST(lib_nr_phy_dispatch, the_first_failure_is_kept_and_an_exception_leaves_no_results)
{
    lib_nr_waveform_configure_manager_t waveform = make_waveform();
    put(waveform.get_carrier(0).get_dl_dci(0), true);
    put(waveform.get_carrier(0).get_dl_dci(0), std::vector<int>{6, 8});
    waveform.get_carrier(0).get_dl_dci(0).set_bwp_id(0);
    nr_test::captured_output_t output;
    lib_nr_phy_t engine;
    engine.waveform_config(waveform);
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
    lib_nr_waveform_configure_manager_t waveform = make_waveform();
    waveform.get_carrier(0).set_dl_bwp_numerology(0, LIB_NR_SCS_60K);
    waveform.get_carrier(0).get_dl_bwp(0).set_cp_type(LIB_NR_EXTEND_CP);
    nr_test::captured_output_t silence;
    lib_nr_phy_t engine;
    std::vector<std::size_t> symbols;
    engine_peer_t::after_channel_steps(engine, [&](unsigned int, unsigned int, unsigned int) {
        auto& payload = lib_nr_channel_resource_manager_t::get_inst().get_payload_mapping();
        symbols.push_back(payload.size());
        for (auto& row : payload)
            row[40] = 1.0;
    });
    engine.waveform_config(waveform);
    ASSERT_TRUE(engine.nr_phy_process());
    const lib_nr_phy_t::signal_t first = engine.get_baseband_signal_data();
    ASSERT_TRUE(engine.nr_phy_process());
    EXPECT_EQ(first, engine.get_baseband_signal_data());
    EXPECT_EQ(symbols, (std::vector<std::size_t>{140, 140, 280, 280, 480, 480, 140, 140, 280, 280, 480, 480}));
}

} // namespace
