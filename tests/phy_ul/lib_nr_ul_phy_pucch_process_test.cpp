#include "phy_ul/lib_nr_ul_phy_pucch_process.h"

#include "receiver/pucch_receiver.h"
#include "support/engine_peer.h"
#include "support/generated.h"
#include "support/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using texts_t = std::vector<std::string>;

/// Steps to an uplink carrier of 20 MHz, then those given, separated by blanks, a ~ being a blank within; one that
/// names no carrier is of its PUCCH, which is enabled at last.
texts_t uplink(const std::string& given)
{
    texts_t steps = {"carrier[0].carrier_type=LIB_NR_UPLINK", "carrier[0].baseband_filter=false",
                     "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M", "carrier[0].ncell_id=123"};
    std::istringstream text(given + " enable=true");
    for (std::string step; text >> step;) {
        std::replace(step.begin(), step.end(), '~', ' ');
        steps.push_back(step.find("carrier[") != std::string::npos ? step : "carrier[0].ul_pucch[0]." + step);
    }
    return steps;
}

/// A run of the engine, with the symbols of its frame in the first numerology; none of a frame that stays silent.
struct run_t
{
    explicit run_t(const cfg_nr_waveform_t& waveform)
    {
        const nr_test::captured_output_t captured;
        nr_test::engine_peer_t::after_channel_steps(engine, [&](unsigned int, unsigned int numerology, unsigned int) {
            if (numerology == 0)
                payload = lib_nr_channel_resource_manager_t::get_inst().get_payload_mapping();
        });
        engine.waveform_config(waveform.get_waveform_manager());
        try {
            succeeded = engine.nr_phy_process();
        } catch (const std::out_of_range&) {
            threw = true;
        }
        output = captured.text();
    }
    lib_nr_phy_t engine;
    nr_test::rows_t payload;
    std::string output;
    bool succeeded = false;
    bool threw = false;
};

/// Receives what is sent by the own rules, then by the standard's: under these nothing deviates; where the cells
/// differ something does under the others.
template <class expect_t>
void expect_by_both_rules(const std::string& steps, expect_t expect_arrives)
{
    SCOPED_TRACE(steps);
    nr_test::waveform_of_t waveform(uplink(steps));
    const run_t own(waveform);
    expect_arrives(waveform, own);
    nr_test::take(waveform, {"standard_rules=true"});
    const run_t standard(waveform);
    expect_arrives(waveform, standard);
    EXPECT_TRUE(standard.engine.get_met_deviations().empty());
    bool maps_differ = waveform.get_carrier(0)->get_ul_pucch(0)->get_inter_slot_frequency_hopping();
    EXPECT_TRUE((own.payload != standard.payload) == !own.engine.get_met_deviations().empty() || maps_differ);
}

void expect_uci_arrives_in(const cfg_nr_waveform_t& waveform, const run_t& run)
{
    ASSERT_TRUE(run.succeeded && !run.payload.empty()) << run.output;
    const auto& manager = waveform.get_waveform_manager();
    const auto received = nr_test::demodulate_frame(run.engine.get_baseband_signal_data(), nr_test::setup_of(manager),
                                                    static_cast<unsigned int>(run.payload[0].size()), 0.0, 0);
    EXPECT_LT(nr_test::error_vector_magnitude(received, run.payload), 1e-9);

    const auto& pucch = manager.get_carrier(0).get_ul_pucch(0);
    // Each field's stream runs on from slot to slot.
    std::vector<lib_nr_ul_pucch_payload_t> list = {pucch.get_payload()};
    if (pucch.get_uci_content())
        list = {pucch.get_harq_ack(), pucch.get_sr(), pucch.get_csi1(), pucch.get_csi2()};
    std::vector<nr_test::data_source_t> streams;
    for (const auto& field : list)
        streams.emplace_back(field.data, field.user_bits);
    for (std::size_t i = 0; i < pucch.get_allocated_slots().size(); ++i) {
        bits_t expected;
        std::size_t first_bits = 0;
        for (std::size_t k = 0; k < list.size(); ++k) {
            const unsigned int size = !pucch.get_channel_coding() ? 2 * 12 * 5 : list[k].enable ? list[k].size : 0;
            const bits_t bits = streams[k].take(size);
            if (k < 3)
                first_bits += size;
            expected.insert(expected.end(), bits.begin(), bits.end());
        }
        const std::size_t second_bits = first_bits == 0 ? 0 : expected.size() - first_bits;
        const auto uci =
            nr_test::receive_uci(run.payload, manager.get_carrier(0), pucch, pucch.get_allocated_slots()[i],
                                 expected.size() - second_bits, second_bits, manager.get_standard_rules());
        EXPECT_EQ(uci.bits, expected);
        EXPECT_LT(uci.error, 1e-9);
    }
}
void expect_uci_arrives(const std::string& steps) { expect_by_both_rules(steps, expect_uci_arrives_in); }

const std::string f2 = "pucch_format=LIB_NR_UL_PUCCH_FORMAT_2 first_symbol=3 symbol_num=2 ";
const std::string f3 = "pucch_format=LIB_NR_UL_PUCCH_FORMAT_3 first_symbol=0 symbol_num=14 ";
const std::string f4 = "pucch_format=LIB_NR_UL_PUCCH_FORMAT_4 first_symbol=0 symbol_num=14 ";
const std::string wide = "rb_num=16 rb_offset=20 ";
const std::string at_15_khz = "carrier[0].numerology=LIB_NR_SCS_15K carrier[0].ul_bwp[0].rb_number=106 ";
const std::string extended_uplink = "carrier[0].numerology=LIB_NR_SCS_60K "
                                    "carrier[0].ul_bwp[0].cp_type=LIB_NR_EXTEND_CP allocated_slots=0,39 ";
const std::string extended = extended_uplink + "carrier[0].dl_bwp[0].scs=LIB_NR_SCS_60K "
                                               "carrier[0].dl_bwp[0].cp_type=LIB_NR_EXTEND_CP ";
const std::string second_rb_set =
    "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_50M " + at_15_khz +
    "carrier[0].ul_bwp[0].rb_number=270 add~carrier[0].numerology[0].ul_guard_band.guard_band "
    "confirm~carrier[0].numerology[0].ul_guard_band use_interlace_pucch=true rb_set_index=1 "
    "pucch_interlace0=LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_NOT_CONFIGURED " +
    f3;
const std::string fields = " uci_content=true harq_ack_payload_size=";
const std::string alone = " sr_enable=false csi1_enable=false csi2_enable=false ";
const std::string hops_to = " intra_slot_frequency_hopping=true second_hop_prb=";

// Repetition, the simplex and the (32, K) code, repeated and cut short.
TEST(lib_nr_ul_phy_pucch_process, uci_of_the_small_block_code_is_decoded)
{
    for (const std::string& content : {fields + "1" + alone, fields + "2" + alone})
        for (const std::string& settings : {f2 + "n_rnti=65535 scrambling_id=1023", f2 + "scrambling_state=false",
                                            f4 + "symbol_num=5 pi_2_bpsk=true"})
            expect_uci_arrives(settings + content);
    expect_uci_arrives(f2 + "symbol_num=1 payload_size=3 allocated_slots=0,3,19 dmrs_power=3 power=-2");
    expect_uci_arrives("carrier[0].ul_bwp[0].rb_offset=4 " + f2 + "rb_num=5 rb_offset=2 payload_size=11 " +
                       "allocated_slots=1:2:9 scrambling_id=-1" + hops_to + "40");
    expect_uci_arrives(f4 +
                       "symbol_num=4 payload_size=4 occ_length=LIB_NR_UL_PUCCH_OCC_LENGTH_4 occ_index=3 "
                       "allocated_slots=19,2" +
                       hops_to + "30");
}

// CRC6 with parity bits, one of them by weight from E - K above 189 on; CRC11; two blocks from E = 1088 on, and from
// 1013 bits on.
TEST(lib_nr_ul_phy_pucch_process, uci_of_the_polar_code_is_decoded)
{
    for (const std::string size : {"12", "19", "20"})
        for (const std::string rb_num : {"2", "6", "7", "16"})
            expect_uci_arrives(f2 + "scrambling_id0=65535 rb_num=" + rb_num + " payload_size=" + size);
    for (const std::string size : {"4 payload_size=360", "16 payload_size=360", "16 payload_size=1001",
                                   "16 payload_size=1012", "16 payload_size=1013", "16 payload_size=2026"})
        expect_uci_arrives(f3 + "payload_data=LIB_NR_PN15 rb_num=" + size);
}

// HARQ-ACK, SR and CSI part 1 together, CSI part 2 behind them where there is room.
TEST(lib_nr_ul_phy_pucch_process, uci_of_two_parts_is_decoded)
{
    const std::string content = fields +
                                "3 harq_ack_payload_data=LIB_NR_PN11 sr_payload_data=LIB_NR_USER_CFG "
                                "sr_user_bits=10110 allocated_slots=0:5 max_code_rate=LIB_NR_UL_PUCCH_MAX_CODE_RATE_";
    for (const std::string& settings :
         {f2 + "rb_num=8" + content + "60 csi2_payload_size=30",
          f3 + "symbol_num=8 rb_num=3" + content + "35 csi1_payload_size=40 csi2_payload_size=11",
          f4 + content + "25 csi1_enable=false csi2_payload_size=2 pi_2_bpsk=true",
          f4 + content + "15 csi1_enable=false sr_payload_size=8 csi2_payload_size=11", // 11 bits ahead of CSI part 2
          f3 + "additional_dmrs=true" + hops_to + "20" + content + "15 csi2_payload_size=15",
          f3 + wide + content + "60 csi1_payload_size=1013 csi2_payload_size=1500",
          f3 + wide + content + "35 csi1_payload_size=396 pi_2_bpsk=true", // an odd E in two blocks
          // Only one of them: all bits are its own. One that is empty counts as absent.
          f3 + content + "80 harq_ack_enable=false sr_payload_size=0 csi1_enable=false csi2_payload_size=100",
          f2 + content + "80 csi2_payload_size=0"})
        expect_uci_arrives(settings);
}

TEST(lib_nr_ul_phy_pucch_process, resources_of_every_kind_carry_uci)
{
    texts_t rows = {"carrier[0].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE carrier[0].numerology[1].enable=true "
                    "carrier[0].ul_bwp[0].numerology=LIB_NR_SCS_15K " +
                        f2,
                    extended + f2 + "payload_size=15 rb_num=3",
                    extended + f3 + "symbol_num=12 payload_size=15 rb_num=3 additional_dmrs=true"};
    for (const std::string& settings : {f3 + "symbol_num=7", f3 + "symbol_num=7 scrambling_state=false"})
        rows.push_back(settings + " channel_coding=false payload_data=LIB_NR_USER_CFG payload_user_bits=1101000 "
                                  "allocated_slots=0:2");
    for (const std::string& variant : {std::string(), " additional_dmrs=true" + hops_to + "44"})
        for (unsigned int symbols = 4; symbols <= 14; ++symbols)
            rows.push_back(f3 +
                           "payload_size=5 hopping_id=1023 pucch_group_hopping=LIB_NR_UL_GROUP_HOPPING_ENABLED "
                           "allocated_slots=7 symbol_num=" +
                           std::to_string(symbols) + " rb_num=" + std::to_string(symbols - 3) + variant);
    for (const std::string rb_num : {"1", "2", "3", "13"}) {
        const std::string half_pi = f3 + "symbol_num=9 pi_2_bpsk=true hopping_id=-1 dmrs_power=-3 rb_num=" + rb_num +
                                    hops_to +
                                    "8 pucch_group_hopping=LIB_NR_UL_GROUP_HOPPING_DISABLED allocated_slots=4,11";
        rows.push_back(half_pi);
        rows.push_back(half_pi + " dmrs_uplink_transform_precoding_pucch=true");
    }
    // Interlaces of 10 and 11 RBs, one spread or two.
    for (const std::string& settings : {f2, f3, at_15_khz + f2, at_15_khz + f3}) {
        const std::string interlaced = settings + "use_interlace_pucch=true payload_size=20 ";
        for (const std::string occ : {"1", "2", "2 occ_index=1", "4 occ_index=1", "4 occ_index=2", "4 occ_index=3"})
            for (const std::string choice : {" interlace0=4", " pucch_interlace0=LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11",
                                             " interlace0=2 interlace1=0 pucch_interlace1="
                                             "LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_NOT_CONFIGURED"})
                rows.push_back(interlaced + "occ_length=LIB_NR_UL_PUCCH_OCC_LENGTH_" + occ + choice);
    }
    // RB sets and BWPs that begin anywhere.
    rows.push_back(second_rb_set);
    for (const std::string& settings : {f2, f3})
        for (const std::string occ : {"1 interlace1=3", "4 occ_index=1"})
            rows.push_back(second_rb_set + settings +
                           "carrier[0].ul_bwp[0].rb_offset=103 rb_set_index=1 "
                           "interlace0=7 payload_size=20 occ_length=LIB_NR_UL_PUCCH_OCC_LENGTH_" +
                           occ);
    for (const std::string& row : rows)
        expect_uci_arrives(row);
}

/// Formats 0 and 1: of all that could have been sent, what was sent comes closest, and nothing else comes near.
void expect_sequence_arrives_in(cfg_nr_waveform_t& waveform, const run_t& run)
{
    ASSERT_TRUE(run.succeeded && !run.payload.empty()) << run.output;
    const auto& manager = waveform.get_waveform_manager();
    const auto& pucch = manager.get_carrier(0).get_ul_pucch(0);
    const bool told_alone = pucch.get_uci_format() == LIB_NR_UL_UCI_SR_ONLY;
    const bool sr = told_alone || (pucch.get_uci_format() == LIB_NR_UL_UCI_SR_AND_HARQ_ACK &&
                                   pucch.get_sr_configuration() == LIB_NR_UL_SR_POSITIVE);
    const std::map<std::string, unsigned int> shifts = {{"0", 0}, {"1", 6}, {"00", 0}, {"01", 3}, {"11", 6}, {"10", 9}};
    std::istringstream bits_of_slots(nr_test::value_of(waveform, "carrier[0].ul_pucch[0].uci_bits_per_slot"));
    for (const unsigned int slot : pucch.get_allocated_slots()) {
        std::string bits;
        std::getline(bits_of_slots, bits, ',');
        const bool standard_rules = manager.get_standard_rules();
        const auto received =
            nr_test::receive_sequence(run.payload, manager.get_carrier(0), pucch, slot, standard_rules);
        EXPECT_LT(received.error, 1e-9);
        EXPECT_GT(received.next_error, 0.1);
        unsigned int shift = pucch.get_initial_cyclic_shift();
        if (pucch.get_pucch_format() == LIB_NR_UL_PUCCH_FORMAT_0 && !told_alone)
            shift += shifts.at(bits) + (!sr ? 0u : bits.size() == 1 ? 3u : 1u);
        EXPECT_EQ(received.shift, shift % 12) << bits;
        if (pucch.get_pucch_format() == LIB_NR_UL_PUCCH_FORMAT_1) {
            EXPECT_EQ(received.occ_index, pucch.get_occ_index());
            if (sr) // by the standard a 0, where nothing else is told
                bits = !standard_rules ? "1" : told_alone ? "0" : bits;
            const std::complex<double> point(bits.front() == '1' ? -1.0 : 1.0, bits.back() == '1' ? -1.0 : 1.0);
            EXPECT_LT(std::abs(received.point - point * std::sqrt(0.5)), 1e-9) << bits;
        }
    }
}
void expect_sequence_arrives(const std::string& steps) { expect_by_both_rules(steps, expect_sequence_arrives_in); }

const std::string all_pairs = "payload_data=LIB_NR_USER_CFG payload_user_bits=00011011 allocated_slots=1,2,5,19 ";

TEST(lib_nr_ul_phy_pucch_process, format_0_tells_every_content_by_its_shift)
{
    const texts_t settings = {"symbol_num=1 hopping_id=-1",
                              "first_symbol=3 symbol_num=2 initial_cyclic_shift=11 "
                              "pucch_group_hopping=LIB_NR_UL_GROUP_HOPPING_ENABLED hopping_id=1023" +
                                  hops_to + "40",
                              "first_symbol=12 symbol_num=2 initial_cyclic_shift=5 hopping_id=77 power=-7 "
                              "pucch_group_hopping=LIB_NR_UL_GROUP_HOPPING_DISABLED" +
                                  hops_to + "1"};
    for (const std::string& setting : settings)
        for (const std::string content : {"HARQ_ACK_ONLY", "SR_AND_HARQ_ACK", "SR_ONLY"})
            for (const std::string size :
                 {"1", "2 sr_configuration=LIB_NR_UL_SR_POSITIVE", "2", "1 sr_configuration=LIB_NR_UL_SR_POSITIVE"})
                expect_sequence_arrives(all_pairs + setting + " uci_format=LIB_NR_UL_UCI_" + content +
                                        " payload_size=" + size);
    const std::string interlaced = all_pairs + "use_interlace_pucch=true initial_cyclic_shift=3 "
                                               "pucch_group_hopping=LIB_NR_UL_GROUP_HOPPING_ENABLED interlace0=";
    expect_sequence_arrives(interlaced + "0 pucch_interlace0=LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11" + hops_to + "9");
    expect_sequence_arrives(interlaced + "4 interlace1=2 first_symbol=0 symbol_num=2");
    expect_sequence_arrives(second_rb_set +
                            "pucch_format=LIB_NR_UL_PUCCH_FORMAT_0 carrier[0].ul_bwp[0].rb_offset=103 rb_set_index=1 "
                            "first_symbol=3 interlace0=9 interlace1=2");
    expect_sequence_arrives(extended + "first_symbol=10 symbol_num=2 hopping_id=500");
}

TEST(lib_nr_ul_phy_pucch_process, format_1_carries_its_point_over_every_number_of_symbols)
{
    const std::string f1 = all_pairs + "pucch_format=LIB_NR_UL_PUCCH_FORMAT_1 first_symbol=0 symbol_num=";
    for (unsigned int symbols = 4; symbols <= 14; ++symbols)
        for (const std::string& hopping :
             {std::string(), hops_to + "30 pucch_group_hopping=LIB_NR_UL_GROUP_HOPPING_DISABLED",
              std::string(" inter_slot_frequency_hopping=true second_hop_prb=50")})
        {
            const std::string setting =
                f1 + std::to_string(symbols) + " first_symbol=" + std::to_string(14 - symbols) +
                " dmrs_power=2 hopping_id=45 initial_cyclic_shift=" + std::to_string(symbols % 12) + hopping;
            expect_sequence_arrives(setting + " occ_index=6 payload_size=1");
            expect_sequence_arrives(setting + " occ_index=1 payload_size=2");
        }
    expect_sequence_arrives(f1 + "14 uci_format=LIB_NR_UL_UCI_SR_ONLY");
    expect_sequence_arrives(f1 + "9 occ_index=2 use_interlace_pucch=true interlace0=3 interlace1=1");
    expect_sequence_arrives("pucch_format=LIB_NR_UL_PUCCH_FORMAT_1 " + at_15_khz +
                            "use_interlace_pucch=true first_symbol=0 symbol_num=5 occ_index=1");
    expect_sequence_arrives(extended + "pucch_format=LIB_NR_UL_PUCCH_FORMAT_1 first_symbol=0 symbol_num=12" + hops_to +
                            "20 occ_index=2");
    // Two repetitions of the first two entries of the stream, with a gap between those of the second.
    expect_sequence_arrives(f1 + "14 number_of_slots_for_pucch_repetition=2 payload_data=LIB_NR_USER_CFG");
    expect_sequence_arrives(f1 + "14 number_of_slots_for_pucch_repetition=2 allocated_slots=1,2,5,19,4,7 "
                                 "payload_data=LIB_NR_USER_CFG inter_slot_frequency_hopping=true second_hop_prb=50");
    // A positive SR beside HARQ-ACK.
    expect_sequence_arrives("uci_format=LIB_NR_UL_UCI_SR_AND_HARQ_ACK sr_configuration=LIB_NR_UL_SR_POSITIVE " + f1 +
                            "9 payload_size=2");
}

TEST(lib_nr_ul_phy_pucch_process, symbols_of_pucchs_on_the_same_cells_add_up)
{
    nr_test::waveform_of_t waveform(uplink(f2));
    const run_t one(waveform);
    nr_test::take(waveform, {"copy carrier[0].ul_pucch[0]", "carrier[0].ul_pucch[1].power=20"}); // appends two
    const run_t three(waveform);
    for (std::size_t k = 0; k < 12; ++k)
        EXPECT_LT(std::abs(three.payload.at(3).at(k) - 12.0 * one.payload.at(3).at(k)), 1e-12);
}

TEST(lib_nr_ul_phy_pucch_process, what_does_not_fit_is_refused_and_the_frame_stays_silent)
{
    const std::string unfit = "!!! error: payload or resource does not meet channel coding requirements !!!\n";
    const std::string interlaced = at_15_khz + f2 + "use_interlace_pucch=true ";
    const std::vector<std::pair<std::string, std::string>> rows = {
        {f2 + "symbol_num=1 payload_size=12", "max payload size = 7 current payload size = 12\n" + unfit},
        {f2 + "symbol_num=1 rb_num=2 payload_size=12 pi_2_bpsk=true", unfit},
        {f3 + "rb_num=8 payload_size=1600 pi_2_bpsk=true", unfit},
        {f2 + fields + "4 harq_ack_enable=false" + alone, unfit},
        {f3 + wide + "uci_content=true csi1_payload_size=2019", unfit},
        {f3 + wide + "uci_content=true csi2_payload_size=4294967295 csi1_payload_size=4294967295", unfit},
        {f2 + fields + "12 csi2_payload_size=12", unfit},
        {interlaced + "interlace0=3 interlace1=3",
         "interlace 0 and interlace 1 conflict\n pucch interlace not finish \n"},
        {interlaced + "interlace0=9 pucch_interlace0=LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_11",
         " Cannot assign 11 RBs for interleaving \n pucch interlace not finish \n"},
        {interlaced + "carrier[0].ul_bwp[0].rb_number=90", " pucch interlace not finish \n"},
        {extended + f3 + "first_symbol=8 symbol_num=6", "error: pucch resource mapping for ui conflict\n"},
    };
    for (const auto& [steps, printed] : rows) {
        SCOPED_TRACE(steps);
        nr_test::waveform_of_t waveform(uplink(steps));
        nr_test::take(waveform, {"add carrier[0].ul_pucch"});
        const run_t run(waveform);
        EXPECT_TRUE(run.succeeded && run.payload.empty());
        EXPECT_NE(run.output.find(printed), std::string::npos) << run.output;
        for (const auto& sample : run.engine.get_baseband_signal_data())
            ASSERT_EQ(sample, 0.0);
        const auto& failed = run.engine.get_first_failed_step();
        EXPECT_TRUE(failed && failed->channel == "PUCCH" && failed->entry == 0u && !failed->reason.empty());
    }
}

TEST(lib_nr_ul_phy_pucch_process, stale_settings_throw_and_leave_the_engine_usable)
{
    const std::string lost_rb_set = second_rb_set + "remove~carrier[0].numerology[0].ul_guard_band.guard_band[0] "
                                                    "confirm~carrier[0].numerology[0].ul_guard_band";
    const std::string lost_occ =
        "pucch_format=LIB_NR_UL_PUCCH_FORMAT_1 first_symbol=0 symbol_num=14 occ_index=6 symbol_num=6";
    for (const std::string& row : {lost_rb_set, extended_uplink + f2, lost_occ}) {
        SCOPED_TRACE(row);
        run_t run(nr_test::waveform_of_t(uplink(row)));
        EXPECT_TRUE(run.threw && run.engine.get_baseband_signal_data().empty());
        const auto& failed = run.engine.get_first_failed_step();
        EXPECT_TRUE(failed && failed->channel == "PUCCH" && failed->entry == 0u);
        const nr_test::captured_output_t silence;
        run.engine.waveform_init();
        EXPECT_TRUE(run.engine.nr_phy_process());
    }
}

// Every RB and symbol that is marked holds symbols, no other does; inter-slot hopping alone is excepted.
TEST(lib_nr_ul_phy_pucch_process, the_view_shows_what_random_settings_send)
{
    std::mt19937 random(11);
    const auto below = [&](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
    const std::vector<std::pair<std::string, unsigned int>> settings = {
        {"pucch_format=LIB_NR_UL_PUCCH_FORMAT_", 5},
        {"first_symbol=", 14},
        {"symbol_num=", 15},
        {"rb_offset=", 60},
        {"rb_num=", 17},
        {"interlace0=", 10},
        {"interlace1=", 10},
        {"second_hop_prb=", 60},
        {"occ_index=", 4},
        {"pucch_interlace0=LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_1", 2},
        {"occ_length=LIB_NR_UL_PUCCH_OCC_LENGTH_4 occ_index=", 4},
        {"use_interlace_pucch=", 0},
        {"intra_slot_frequency_hopping=", 0},
        {"pi_2_bpsk=", 0},
        {"additional_dmrs=", 0},
        {"channel_coding=", 0},
        {"uci_content=", 0},
        {"payload_size=", 30},
        {"csi1_payload_size=", 20}};
    unsigned int sent = 0;
    for (unsigned int round = 0; round < 300; ++round) {
        const unsigned int first_slot = below(10);
        std::string steps = below(2) != 0 ? at_15_khz : "carrier[0].ul_bwp[0].rb_offset=3 ";
        steps += " allocated_slots=" + std::to_string(first_slot) + ":3:" + std::to_string(first_slot + below(10));
        for (unsigned int i = 0; i < 30; ++i) {
            const auto& [name, limit] = settings[below(static_cast<unsigned int>(settings.size()))];
            steps += " " + name + (limit != 0 ? std::to_string(below(limit)) : below(2) != 0 ? "true" : "false");
        }
        SCOPED_TRACE(steps);
        nr_test::waveform_of_t waveform(uplink(steps));
        waveform.set_standard_rules(round % 2 != 0);
        const run_t run(waveform);
        sent += run.payload.empty() ? 0 : 1;
        const auto& grid = lib_nr_channel_resource_manager_t::get_inst();
        for (unsigned int l = 0; l < run.payload.size(); ++l)
            for (unsigned int first = 0; first < run.payload[l].size(); first += 12) {
                double power = 0.0;
                for (unsigned int k = first; k < first + 12; ++k)
                    power += std::norm(run.payload[l][k]);
                ASSERT_EQ(power > 1e-6, grid.get_owner(l, first) == LIB_NR_RESOURCE_MAPPING_PUCCH) << l << ' ' << first;
            }
    }
    EXPECT_GT(sent, 90u);
}

} // namespace
