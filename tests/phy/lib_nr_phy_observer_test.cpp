#include "phy/lib_nr_phy_observer.h"

#include "phy/lib_nr_phy.h"
#include "receiver/gold_sequence.h"
#include "receiver/low_papr.h"
#include "receiver/polar_decoder.h"
#include "receiver/prach_receiver.h"
#include "receiver/pucch_receiver.h"
#include "receiver/ssb_receiver.h"
#include "support/captured_output.h"
#include "support/engine_peer.h"
#include "support/pdsch_run.h"
#include "support/settings.h"
#include "support/shared_channel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <string_view>
#include <vector>

// What a run tells of its slots, against what the receiver finds in them.

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using steps_t = std::vector<std::string>;
using values_t = std::vector<std::uint32_t>;

/// A run over a carrier of 20 MHz with steps of its own: all that it tells, and the last frame's cells.
struct explained_t : lib_nr_phy_observer_t
{
    explicit explained_t(const steps_t& steps) : explained_t(nr_test::waveform_of_t(steps)) {}
    explicit explained_t(const nr_test::waveform_of_t& waveform) : manager(waveform.get_waveform_manager())
    {
        const nr_test::captured_output_t silence;
        lib_nr_phy_t engine;
        engine.set_trace_file_enable(false);
        engine.set_observer(this);
        nr_test::engine_peer_t::after_channel_steps(engine, [&](unsigned int, unsigned int, unsigned int) {
            rows = std::as_const(lib_nr_channel_resource_manager_t::get_inst()).get_payload_mapping();
        });
        engine.waveform_config(manager);
        EXPECT_TRUE(engine.nr_phy_process());
        samples = engine.get_baseband_signal_data();
    }
    void note(const lib_nr_explanation_t& explanation) override { slots.push_back(explanation); }
    const lib_nr_carrier_configure_manager_t& carrier() const { return manager.get_carrier(0); }

    lib_nr_waveform_configure_manager_t manager;
    std::vector<lib_nr_explanation_t> slots;
    nr_test::rows_t rows;
    nr_test::signal_t samples;
};

steps_t steps_of(const std::string& type, const steps_t& steps)
{
    steps_t all = {"carrier[0].carrier_type=LIB_NR_" + type, "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M",
                   "carrier[0].ncell_id=123"};
    for (const std::string& step : steps)
        all.push_back(step.front() == '.' ? "carrier[0]" + step : step);
    return all;
}

void expect_stage(const lib_nr_explanation_t& told, std::string_view name, const bits_t& bits)
{
    std::string text;
    for (const unsigned char bit : bits)
        text += bit != 0 ? '1' : '0';
    const auto stage =
        std::find_if(told.stages.begin(), told.stages.end(), [&](const auto& other) { return other.name == name; });
    ASSERT_NE(stage, told.stages.end()) << name;
    EXPECT_EQ(stage->bits, bits.size()) << name;
    EXPECT_EQ(stage->first, text.substr(0, 32)) << name;
    EXPECT_EQ(stage->last, text.substr(text.size() - std::min<std::size_t>(text.size(), 32))) << name;
}

bits_t scrambled(bits_t bits, std::uint32_t c_init)
{
    const bits_t sequence = nr_test::gold_sequence(c_init, 0, bits.size());
    std::transform(bits.begin(), bits.end(), sequence.begin(), bits.begin(), std::bit_xor<>());
    return bits;
}

bits_t with_crc(bits_t bits, unsigned long polynomial, unsigned int length)
{
    const bits_t parity = nr_test::long_division(bits, nr_test::bits_of(polynomial, length + 1));
    bits.insert(bits.end(), parity.begin(), parity.end());
    return bits;
}

std::uint32_t dmrs_c_init(std::uint64_t symbol_in_frame, std::uint64_t n_id, std::uint64_t rest)
{
    return static_cast<std::uint32_t>((((symbol_in_frame + 1) * (2 * n_id + 1) << 17) + 2 * n_id + rest) %
                                      (std::uint64_t{1} << 31));
}

/// TS 38.211 clause 7.4.1.1.1.
values_t dmrs_c_inits(const nr_test::sch_channel_t& channel, const lib_nr_explanation_t& told)
{
    const auto& sch = channel.settings;
    const unsigned int port = sch.get_dmrs_port_v().front();
    const bool is_type_2 = sch.get_dmrs_configuration_type() == LIB_NR_DMRS_CFG_TYPE2;
    const unsigned int group = !sch.get_enable_dmrs_downlink_r16() ? 0 : is_type_2 ? port % 6 / 2 : port / 2 % 2;
    const unsigned int n_scid = group == 1 ? 1 - sch.get_nscid() : sch.get_nscid();
    const unsigned int n_id =
        nr_test::sch_identity(n_scid == 1 ? sch.get_nid1() : sch.get_nid0(), channel.cell, channel.standard_rules);
    values_t values;
    for (const unsigned int symbol : told.dmrs_symbols)
        values.push_back(
            dmrs_c_init(channel.symbols_in_slot * told.slot + symbol, n_id, n_scid + (std::uint64_t{group / 2} << 17)));
    return values;
}

/// The division of a transport block, and that the receiver decodes it by what is told.
void expect_coding(const lib_nr_explanation_t& told, const bits_t& block, const bits_t& received, unsigned int q_m,
                   unsigned int rv)
{
    ASSERT_TRUE(told.coding);
    const auto& coding = *told.coding;
    const std::size_t g = received.size();
    const nr_test::ldpc_segmentation_t segments(*coding.base_graph, block.size());
    EXPECT_EQ(coding.tbs, block.size());
    EXPECT_EQ(coding.g, g);
    EXPECT_EQ(*coding.lifting, segments.z);
    EXPECT_EQ(coding.code_blocks, segments.block_count);
    values_t e; // TS 38.212 clause 5.4.2.1
    for (std::size_t r = 0; r < segments.block_count; ++r)
        e.push_back(static_cast<std::uint32_t>((g / q_m + r) / segments.block_count * q_m));
    EXPECT_EQ(coding.e, e);
    constexpr unsigned int k_starts[2][4] = {{0, 17, 33, 56}, {0, 13, 25, 43}};
    EXPECT_EQ(*coding.k0, k_starts[*coding.base_graph - 1][rv] * segments.z);
    nr_test::ldpc_receiver_t receiver(*coding.base_graph, block.size());
    std::vector<double> soft_bits;
    for (const unsigned char bit : received)
        soft_bits.push_back(1.0 - 2.0 * bit);
    EXPECT_TRUE(receiver.add({g, q_m, 1, rv}, soft_bits));
    if (const auto decoded = receiver.decode()) {
        EXPECT_EQ(*decoded, block);
    }
}

void expect_shared(const explained_t& run, const lib_nr_explanation_t& told, const nr_test::sch_channel_t& channel,
                   bool has_sequence, nr_test::data_source_t& source)
{
    const auto received =
        nr_test::receive_sch_slot(channel, run.rows, told.slot, [](unsigned int, unsigned int) { return false; });
    const auto& sch = channel.settings;
    const auto shifted = [&](unsigned int symbol) {
        std::vector<std::int32_t> rbs(channel.rbs.begin(), channel.rbs.end());
        for (std::int32_t& rb : rbs)
            rb += channel.shifts.empty() ? 0 : channel.shifts.at(symbol);
        return rbs;
    };
    const bool hops = channel.second_hop != nr_test::sch_channel_t::k_no_hop;
    std::vector<unsigned int> dmrs = channel.dmrs_symbols;
    std::sort(dmrs.begin(), dmrs.end());
    EXPECT_EQ(told.symbols.size(), sch.get_symbol_num());
    EXPECT_EQ(told.symbols.front(), sch.get_first_symbol());
    if (sch.get_symbol_num() > 1 || !hops) {
        EXPECT_EQ(told.rbs, shifted(sch.get_first_symbol()));
        EXPECT_EQ(told.second_hop_rbs, hops ? shifted(channel.second_hop) : std::vector<std::int32_t>{});
    }
    EXPECT_EQ(told.dmrs_symbols, dmrs);
    EXPECT_EQ(told.dmrs_c_init, has_sequence ? dmrs_c_inits(channel, told) : values_t{});
    EXPECT_EQ(told.c_init, values_t{channel.c_init % (1u << 31)});
    const bool is_coded = sch.get_enable_coding();
    const bits_t payload = source.take(is_coded ? transport_block_size(channel) : received.bits.size());
    if (std::isnan(received.error)) // no DMRS
        return;
    expect_stage(told, "payload", payload);
    expect_stage(told, "scrambled", scrambled(received.bits, channel.c_init));
    if (!is_coded)
        return;
    const bool is_long = payload.size() > 3824;
    expect_stage(told, "crc", with_crc(payload, is_long ? 0x1864CFB : 0x11021, is_long ? 24 : 16));
    expect_stage(told, "rate_matched", received.bits);
    const auto q_m =
        std::find_if(told.figures.begin(), told.figures.end(), [](const auto& figure) { return figure.name == "q_m"; });
    expect_coding(told, payload, received.bits, static_cast<unsigned int>(q_m->value), sch.get_rv());
}

TEST(lib_nr_phy_observer, tells_of_shared_channels_what_the_receiver_finds)
{
    std::mt19937 random(22);
    for (unsigned int i = 0; i < 80 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        const bool is_uplink = i % 2 == 1;
        const std::string path = is_uplink ? ".ul_pusch[0]" : ".dl_pdsch[0]";
        nr_test::waveform_of_t waveform(
            steps_of(is_uplink ? "UPLINK" : "DOWNLINK",
                     {i % 4 < 2 ? "standard_rules=true" : "standard_rules=false", path + ".enable=true"}));
        nr_test::draw_shared_channel(waveform, "carrier[0]" + path, random);
        if (is_uplink) { // another type of allocation could leave the grid, and PTRS be inexact by the own rules
            const bool hops = waveform.get_carrier(0)->get_ul_pusch(0)->get_ra_type() == LIB_NR_SCH_RA_TYPE1;
            const std::string offset = hops ? std::to_string(random() % 30) : "0";
            nr_test::take(waveform, {"carrier[0].ul_pusch[0].rb_num=" + std::to_string(random() % 20),
                                     "carrier[0].ul_pusch[0].hopping_rb_offset=" + offset,
                                     "carrier[0].ul_pusch[0].power_boosting=0"});
        }
        const explained_t run(waveform);
        const auto& carrier = run.carrier();
        const bool standard_rules = run.manager.get_standard_rules();
        nr_test::data_source_t source(is_uplink ? carrier.get_ul_sch(0).get_data_source()
                                                : carrier.get_dl_sch(0).get_data_source());
        for (const lib_nr_explanation_t& told : run.slots) {
            if (told.silence != LIB_NR_SILENCE_NONE)
                continue;
            expect_shared(run, told,
                          is_uplink ? nr_test::pusch_channel_of(carrier, 0, told.slot, standard_rules)
                                    : nr_test::pdsch_channel(carrier, 0, standard_rules),
                          !is_uplink || !carrier.get_ul_sch(0).get_enable_transfer_precoding(), source);
            for (const lib_nr_explained_cell_t& cell : told.cells)
                EXPECT_EQ(cell.value, run.rows[run.rows.size() / 20 * told.slot + cell.symbol]
                                              [static_cast<std::size_t>(cell.subcarrier)]);
        }
    }
}

// A receiver that knows no more than it is told reads the DCI.
TEST(lib_nr_phy_observer, tells_of_a_pdcch_what_its_receiver_needs)
{
    for (const std::string mapping : {"NO_INTERLEAVE", "INTERLEAVE"}) {
        const explained_t run(
            steps_of("DOWNLINK", {".dl_bwp[1].coreset[1].cce2reg_mapping_type=LIB_NR_CORSET_" + mapping,
                                  ".dl_dci[0].rnti=4660", ".dl_dci[0].scrambling_id=77", ".dl_dci[0].crnti=32867",
                                  ".dl_dci[0].coding=true", ".dl_dci[0].enable=true"}));
        ASSERT_FALSE(run.slots.empty());
        nr_test::data_source_t source(LIB_NR_PN9_ITU);
        for (const lib_nr_explanation_t& told : run.slots) {
            bits_t bits;
            for (const unsigned int symbol : told.symbols)
                for (const std::int32_t rb : told.rbs)
                    for (unsigned int k = 0; k < 12; ++k)
                        if (k % 4 != 1) {
                            const auto cell = run.rows[14 * told.slot + symbol][12 * static_cast<unsigned int>(rb) + k];
                            bits.push_back(cell.real() < 0 ? 1 : 0);
                            bits.push_back(cell.imag() < 0 ? 1 : 0);
                        }
            EXPECT_EQ(told.c_init, (values_t{(99u << 16) + 77}));
            ASSERT_EQ(told.dmrs_symbols, told.symbols);
            for (std::size_t i = 0; i < told.symbols.size(); ++i)
                EXPECT_EQ(told.dmrs_c_init[i], dmrs_c_init(14 * told.slot + told.symbols[i], 77, 0));
            EXPECT_EQ(bits.size(), 108 * told.cces.size());
            const bits_t data = source.take(told.coding->tbs);
            bits_t behind_ones(24 + data.size(), 1);
            std::copy(data.begin(), data.end(), behind_ones.begin() + 24);
            bits_t checked = with_crc(behind_ones, 0x1B2B117, 24);
            checked.erase(checked.begin(), checked.begin() + 24);
            const bits_t rnti = nr_test::bits_of(4660, 16);
            std::transform(rnti.begin(), rnti.end(), checked.end() - 16, checked.end() - 16, std::bit_xor<>());
            const bits_t coded = scrambled(bits, told.c_init.front());
            expect_stage(told, "payload", data);
            expect_stage(told, "crc", checked);
            expect_stage(told, "rate_matched", coded);
            expect_stage(told, "scrambled", bits);
            std::vector<double> soft_bits;
            for (const unsigned char bit : coded)
                soft_bits.push_back(1.0 - 2.0 * bit);
            EXPECT_EQ(nr_test::polar_decode({static_cast<unsigned int>(checked.size()), told.coding->g}, soft_bits),
                      checked);
        }
    }
}

TEST(lib_nr_phy_observer, tells_of_blocks_what_the_receiver_reads)
{
    const explained_t run(steps_of("DOWNLINK", {"standard_rules=true", ".dl_ssb.active_idx=0,2",
                                                ".dl_ssb.half_frame_idx=1", ".dl_ssb.enable=true"}));
    ASSERT_EQ(run.slots.size(), 2u);
    for (const lib_nr_explanation_t& told : run.slots) {
        const auto first = static_cast<std::size_t>(told.cells.front().subcarrier); // 123 has its DMRS at 3
        std::array<nr_test::signal_t, 4> symbols;
        for (std::size_t l = 0; l < 4; ++l) {
            const auto row = run.rows[14 * told.slot + told.symbols.at(l)].begin() + static_cast<std::ptrdiff_t>(first);
            symbols[l].assign(row, row + 240);
        }
        const nr_test::ssb_content_t content = nr_test::read_pbch(symbols, 123, run.carrier().get_dl_ssb().get_lmax());
        ASSERT_TRUE(content.crc_matches);
        EXPECT_EQ(content.block_index, *told.index);
        EXPECT_EQ(told.c_init, values_t{123});
        const std::uint32_t i = content.dmrs_index + 1;
        EXPECT_EQ(told.dmrs_c_init, (values_t{2048 * i * (123 / 4 + 1) + 64 * i + 123 % 4}));
        EXPECT_EQ(told.dmrs_symbols, (std::vector(told.symbols.begin() + 1, told.symbols.end())));
        expect_stage(told, "payload", nr_test::bits_of(content.payload, 32));
        expect_stage(told, "rate_matched", content.coded_bits);
        EXPECT_EQ(told.rbs.front(), static_cast<std::int32_t>(first / 12));
    }
}

TEST(lib_nr_phy_observer, tells_of_pucchs_what_the_receiver_finds)
{
    const std::string hops = ".ul_pucch[0].intra_slot_frequency_hopping=true";
    for (const unsigned int format : {2u, 3u}) {
        const explained_t run(steps_of(
            "UPLINK", {".ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_" + std::to_string(format),
                       ".ul_pucch[0].first_symbol=0", ".ul_pucch[0].symbol_num=" + std::to_string(format == 2 ? 2 : 9),
                       ".ul_pucch[0].rb_num=4", ".ul_pucch[0].rb_offset=5", ".ul_pucch[0].payload_size=20", hops,
                       ".ul_pucch[0].second_hop_prb=40", ".ul_pucch[0].enable=true"}));
        const auto& pucch = run.carrier().get_ul_pucch(0);
        ASSERT_EQ(run.slots.size(), pucch.get_allocated_slots().size());
        for (const lib_nr_explanation_t& told : run.slots) {
            const auto uci = nr_test::receive_uci(run.rows, run.carrier(), pucch, told.slot, 20, 0, false);
            EXPECT_LT(uci.error, 1e-9);
            expect_stage(told, "payload", uci.bits);
            expect_stage(told, "crc", with_crc(uci.bits, 0xE21, 11));
            EXPECT_EQ(told.coding->e, values_t{told.coding->g});
            EXPECT_EQ(told.rbs, (std::vector<std::int32_t>{5, 6, 7, 8}));
            EXPECT_EQ(told.second_hop_rbs, (std::vector<std::int32_t>{40, 41, 42, 43}));
        }
    }
    const explained_t run(steps_of("UPLINK", {".ul_pucch[0].first_symbol=3", ".ul_pucch[0].symbol_num=2", hops,
                                              ".ul_pucch[0].second_hop_prb=40", ".ul_pucch[0].hopping_id=1000",
                                              ".ul_pucch[0].pucch_group_hopping=LIB_NR_UL_GROUP_HOPPING_ENABLED",
                                              ".ul_pucch[0].allocated_slots=3,8", ".ul_pucch[0].enable=true"}));
    ASSERT_EQ(run.slots.size(), 2u);
    for (const lib_nr_explanation_t& told : run.slots)
        for (std::size_t hop = 0; hop < 2; ++hop) // TS 38.211 clause 6.3.2.2.1
            EXPECT_EQ(told.u.at(hop), (nr_test::hopping_number(1000 / 30, 8 * (2 * told.slot + hop), 8) + 1000) % 30);
}

TEST(lib_nr_phy_observer, tells_no_making_of_a_channel_without_resource_blocks)
{
    const explained_t run(steps_of("DOWNLINK", {".dl_pdsch[0].ra_type=LIB_NR_SCH_RA_TYPE0", ".dl_pdsch[0].rbg_bitmap=0",
                                                ".dl_pdsch[0].enable=true"}));
    ASSERT_FALSE(run.slots.empty());
    EXPECT_EQ(run.slots[0].silence, LIB_NR_SILENCE_RB);
    EXPECT_TRUE(!run.slots[0].coding && run.slots[0].stages.empty() && run.slots[0].dmrs_symbols.empty());
}

TEST(lib_nr_phy_observer, tells_initial_values_and_groups_of_reference_signals)
{
    const explained_t csirs(
        steps_of("DOWNLINK", {".dl_csirs[0].nid=321", ".dl_csirs[0].slot_allocation=2", ".dl_csirs[0].enable=true"}));
    ASSERT_EQ(csirs.slots.size(), 1u);
    const unsigned int symbol = 28 + csirs.slots[0].symbols.at(0);
    EXPECT_EQ(csirs.slots[0].c_init, (values_t{(1024 * (symbol + 1) * 643 + 321) % (1u << 31)}));
    const explained_t prs(steps_of("DOWNLINK", {"standard_rules=true", ".dl_prs[0].n_id=2050",
                                                ".dl_prs[0].slot_offset=3", ".dl_prs[0].enable=true"}));
    ASSERT_FALSE(prs.slots.empty());
    const std::uint64_t in_frame = 14 * prs.slots[0].slot + prs.slots[0].symbols.at(1);
    EXPECT_EQ(prs.slots[0].c_init.at(1), ((2u << 22) + 1024 * (in_frame + 1) * 5 + 2) % (1u << 31));
    const explained_t srs(
        steps_of("UPLINK", {".ul_srs[0].GroupOrSeqHop=1", ".ul_srs[0].n_ID_SRS=17", ".ul_srs[0].enable=true"}));
    ASSERT_FALSE(srs.slots.empty());
    const unsigned int place = 14 * srs.slots[0].slot + srs.slots[0].symbols.at(0);
    EXPECT_EQ(srs.slots[0].u.at(0), (nr_test::hopping_number(17, 8 * place, 8) + 17) % 30);
}

// Root and shift were worked out by another program.
TEST(lib_nr_phy_observer, tells_where_a_burst_begins)
{
    const explained_t run(steps_of("PRACH", {".numerology=LIB_NR_SCS_15K", ".ul_prach[0].configuration_idx=27",
                                             ".timing_offset=1e-4", ".ul_prach[0].zeroCorrelation_zone=8",
                                             ".ul_prach[0].sequence_index=100", ".ul_prach[0].premable_index=29"}));
    ASSERT_EQ(run.slots.size(), 1u);
    ASSERT_TRUE(run.slots[0].burst);
    EXPECT_EQ(run.slots[0].burst->root, 721u);
    EXPECT_EQ(run.slots[0].burst->cyclic_shift, 506u);
    EXPECT_NEAR(static_cast<double>(run.slots[0].burst->start_sample),
                static_cast<double>(nr_test::sounding_span(run.samples).begin), 1.0);
}

} // namespace
