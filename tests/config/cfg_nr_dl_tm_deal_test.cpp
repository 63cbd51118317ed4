#include "config/cfg_nr_carrier.h"

#include "receiver/gold_sequence.h"
#include "support/pdsch_run.h"
#include "support/preset_choices.h"
#include "support/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using nr_test::steps_t;

/// A waveform with a test model.
struct test_model_t : nr_test::waveform_of_t
{
    explicit test_model_t(const steps_t& steps) : waveform_of_t(steps) { get_carrier(0)->set_baseband_filter(false); }
    const lib_nr_carrier_configure_manager_t& carrier() const { return get_waveform_manager().get_carrier(0); }
    const lib_nr_dl_sch_configure_manager_t& pdsch(unsigned int index) const { return carrier().get_dl_sch(index); }
    unsigned int rb_number() const { return carrier().get_numerology_manager(0U).get_rb_size(); }
    std::vector<unsigned int> rbs(unsigned int index) const
    {
        return nr_test::pdsch_rbs(pdsch(index), carrier().get_dl_bwp(pdsch(index).get_bwp_id()));
    }
    /// The PDSCHs of each slot of a frame, by their RNTIs.
    std::map<unsigned int, std::vector<unsigned int>> channels_by_slot() const
    {
        std::map<unsigned int, std::vector<unsigned int>> channels;
        for (const unsigned int rnti : {0u, 1u, 2u})
            for (unsigned int i = 0; i < carrier().get_dl_sch_number(); ++i)
                if (pdsch(i).get_rnti() == rnti)
                    for (const unsigned int slot : pdsch(i).get_slot_allocation_v())
                        channels[slot].push_back(i);
        return channels;
    }
    std::vector<unsigned int> pdcch_slots() const
    {
        const auto& slots = carrier().get_dl_dci(0).get_slot_allocation_for_lib();
        return {slots.begin(), slots.end()};
    }
};

steps_t narrow(const std::string& model, const std::string& duplex, const std::string& more = "enable=true")
{
    return nr_test::preset_steps("dl_tm", {"bandwidth=LIB_NR_CHANNEL_FR1_5M", "test_model=LIB_NR_FR1_" + model,
                                           "duplex_type=LIB_NR_DUPLEX_TYPE_" + duplex, more});
}

// Every slot with a PDCCH has PDSCHs on resource blocks 0 to N - 1, each once, and their powers come to N.
TEST(cfg_nr_dl_tm_deal, band_and_power_are_shared_out_in_every_slot)
{
    const steps_t models = {"LIB_NR_FR1_TM1_1", "LIB_NR_FR1_TM1_2", "LIB_NR_FR1_TM3_2", "LIB_NR_FR1_TM3_3"};
    for (const steps_t& steps : nr_test::every_choice(
             {"dl_tm", {{"bandwidth", {}}, {"test_model", models}, {"numerology", {}}, {"duplex_type", {}}}}, false))
    {
        SCOPED_TRACE(testing::PrintToString(steps));
        const test_model_t waveform(steps);
        std::vector<unsigned int> all(waveform.rb_number());
        std::iota(all.begin(), all.end(), 0);
        std::vector<unsigned int> slots;
        for (const auto& [slot, channels] : waveform.channels_by_slot()) {
            slots.push_back(slot);
            std::vector<unsigned int> rbs;
            double power = 0.0;
            for (const unsigned int channel : channels)
                for (const unsigned int rb : waveform.rbs(channel)) {
                    rbs.push_back(rb);
                    power += std::pow(10.0, waveform.pdsch(channel).get_power_boosting() / 10);
                }
            std::sort(rbs.begin(), rbs.end());
            ASSERT_EQ(rbs, all) << slot;
            ASSERT_NEAR(power, static_cast<double>(all.size()), 1e-9) << slot;
        }
        ASSERT_EQ(slots, waveform.pdcch_slots());
    }
}

// N = 273, groups of 16 behind the first 3: worked out by hand.
TEST(cfg_nr_dl_tm_deal, the_split_of_a_wide_band_is_that_of_the_model)
{
    nr_test::waveform_of_t waveform({"carrier[0].dl_tm.test_model=LIB_NR_FR1_TM1_2", "apply carrier[0].dl_tm"});
    EXPECT_EQ(nr_test::value_of(waveform, "carrier[0].dl_pdsch[0].rbg_bitmap"), "010101010100000010");
    EXPECT_EQ(nr_test::value_of(waveform, "carrier[0].dl_pdsch[4].rbg_bitmap"), "101010101011111101");
    EXPECT_EQ(nr_test::value_of(waveform, "carrier[0].dl_pdsch[0].power_boosting"), "3");
    EXPECT_NEAR(waveform.get_carrier(0)->get_dl_pdsch(1)->get_power_boosting(), 10 * std::log10(78.454818 / 174), 1e-6);
    EXPECT_EQ(waveform.get_frame_number(), 2u);
}

// The resource block of the TM2 family takes turns between both ends and the middle. At 480 kHz three groups of slots
// send two in each third slot and none in the next.
TEST(cfg_nr_dl_tm_deal, single_resource_blocks_take_turns)
{
    const steps_t models = {"LIB_NR_FR1_TM2", "LIB_NR_FR2_TM2a"};
    for (const steps_t& steps : nr_test::every_choice(
             {"dl_tm", {{"bandwidth", {}}, {"test_model", models}, {"numerology", {}}, {"duplex_type", {}}}}, false))
    {
        test_model_t waveform(steps);
        if (waveform.get_carrier(0)->get_dl_tm()->get_modulation() == LIB_NR_MODULATION_QPSK)
            continue; // a model of the other range, which became its first
        const unsigned int N = waveform.rb_number();
        const unsigned int places[] = {0, N / 2, N - 1};
        const lib_nr_numerology_type_t numerology = waveform.carrier().get_numerology();
        auto channels = waveform.channels_by_slot();
        for (const unsigned int slot : waveform.pdcch_slots()) {
            const unsigned int in_group = numerology == LIB_NR_SCS_480K   ? slot % 40
                                          : numerology == LIB_NR_SCS_960K ? slot % 80
                                                                          : slot;
            const unsigned int group = slot / 40;
            std::vector<unsigned int> wanted = {places[in_group % 3]};
            if (numerology == LIB_NR_SCS_480K && group == 1)
                wanted = {places[(in_group + 1) % 3]};
            if (numerology == LIB_NR_SCS_480K && (group == 3 || group == 5 || group == 7))
                wanted = in_group % 3 == 0   ? std::vector{places[1], places[2]}
                         : in_group % 3 == 2 ? std::vector{places[0]}
                                             : std::vector<unsigned int>{};
            std::vector<unsigned int> sent;
            for (const unsigned int channel : channels[slot])
                sent.push_back(waveform.pdsch(channel).get_rb_offset());
            std::sort(sent.begin(), sent.end());
            ASSERT_EQ(sent, wanted) << testing::PrintToString(steps) << ' ' << slot;
        }
    }
}

// Data, DMRS and PDCCH fill every cell of a slot's symbols with QPSK, but for set A of TM3.2, which has 16QAM: its
// power has a standard deviation of 0.57 a cell.
TEST(cfg_nr_dl_tm_deal, every_symbol_has_the_same_power)
{
    for (const std::string model : {"TM1_1", "TM1_2", "TM3_2", "TM3_3"})
        for (const std::string duplex : {"TDD", "FDD"}) {
            test_model_t waveform(narrow(model, duplex));
            nr_test::pdsch_run_t run(waveform);
            for (const auto& [slot, channels] : waveform.channels_by_slot()) {
                const lib_nr_dl_sch_configure_manager_t& first = waveform.pdsch(channels.front());
                double bound = 0.01;
                if (model == "TM3_2") {
                    const double cells = 12.0 * static_cast<double>(waveform.rbs(channels[1]).size());
                    const double share = cells / 12 / waveform.rb_number() * 0.5011872336272722;
                    bound = -10 * std::log10(1 - 5 * std::sqrt(0.32 / (cells / 2)) * share); // half in DMRS symbols
                }
                const auto power = [&](unsigned int symbol, unsigned int rbs) {
                    double sum = 0.0;
                    for (unsigned int k = 0; k < 12 * rbs; ++k)
                        sum += std::norm(run.rows(0)[14 * slot + symbol][k]);
                    return sum / (12 * rbs);
                };
                for (unsigned int symbol = 0; symbol < first.get_symbol_num(); ++symbol)
                    EXPECT_NEAR(10 * std::log10(power(symbol, waveform.rb_number()) / power(2, 3)), 0.0, bound)
                        << model << ' ' << duplex << ' ' << slot << ' ' << symbol;
            }
        }
}

// One stream of PN23 an RNTI in TDD, in the order of slots and channels; one a channel in FDD; all from the start in
// every frame.
TEST(cfg_nr_dl_tm_deal, payload_is_one_stream_an_rnti_or_a_channel)
{
    for (const std::string model : {"TM1_2", "TM2a", "TM3_1b", "TM3_2"})
        for (const std::string duplex : {"TDD", "FDD"}) {
            test_model_t waveform(narrow(model, duplex, "layers=2"));
            nr_test::pdsch_run_t run(waveform);
            for (unsigned int frame = 0; frame < waveform.get_frame_number(); ++frame) {
                std::map<unsigned int, nr_test::data_source_t> sources;
                for (const auto& [slot, channels] : waveform.channels_by_slot())
                    for (const unsigned int channel : channels) {
                        const nr_test::sch_slot_t received = run.receive(channel, slot, frame);
                        const unsigned int stream = duplex == "TDD" ? waveform.pdsch(channel).get_rnti() : channel;
                        auto& source = sources.try_emplace(stream, LIB_NR_PN23).first->second;
                        ASSERT_LT(received.error, 1e-6);
                        ASSERT_EQ(received.bits, source.take(received.bits.size()))
                            << model << ' ' << duplex << ' ' << frame << ' ' << slot << ' ' << channel;
                    }
            }
        }
}

// One CCE over two symbols of the first three resource blocks: 54 cells of 84 bits of PN23, which run on from slot to
// slot, and zeros behind.
TEST(cfg_nr_dl_tm_deal, pdcch_is_one_uncoded_cce)
{
    test_model_t waveform(narrow("TM1_1", "TDD", "n_id=40000")); // the cell's is cut to 1007
    nr_test::pdsch_run_t run(waveform);
    nr_test::data_source_t source(LIB_NR_PN23);
    for (const unsigned int slot : waveform.pdcch_slots()) {
        bits_t expected = source.take(84);
        expected.resize(108);
        const bits_t scrambling = nr_test::gold_sequence(40000, 0, 108);
        bits_t bits;
        for (unsigned int symbol = 0; symbol < 2; ++symbol)
            for (unsigned int k = 0; k < 36; ++k)
                if (k % 4 != 1) {
                    const std::complex<double> cell = run.rows(0)[14 * slot + symbol][k];
                    bits.push_back(cell.real() < 0 ? 1 : 0);
                    bits.push_back(cell.imag() < 0 ? 1 : 0);
                }
        for (std::size_t i = 0; i < expected.size(); ++i)
            expected[i] ^= scrambling[i];
        EXPECT_EQ(bits, expected) << slot;
    }
    EXPECT_EQ(waveform.get_carrier(0)->get_ncell_id(), 1007u);
}

// 240 kHz can be chosen, and nothing can be sent there; FR2 has no model in FDD, which is what NTN mode offers.
TEST(cfg_nr_dl_tm_deal, tells_what_cannot_be_sent)
{
    const auto errors_of = [](bool ntn, const steps_t& settings) {
        cfg_nr_waveform_t waveform;
        std::istringstream printed(nr_test::take(waveform, nr_test::preset_steps("dl_tm", settings, ntn)));
        std::string errors;
        for (std::string line; std::getline(printed, line);)
            if (line.rfind("cfg_nr_carrier_t::", 0) == 0)
                errors += line.substr(18) + '\n';
        EXPECT_FALSE(waveform.get_carrier(0)->get_dl_pdsch(0)->get_enable());
        EXPECT_EQ(waveform.get_carrier(0)->get_dl_dci(0)->get_enable(), ntn);
        return errors;
    };
    const steps_t at_240_khz = {"bandwidth=LIB_NR_CHANNEL_FR2_1_100M", "numerology=LIB_NR_SCS_240K"};
    const std::string told = "deal_test_model : Error numerology!\n";
    const std::string channel = "_test_model_pdsch_fr2_tm2x_tdd : Error numerology!\n";
    EXPECT_EQ(errors_of(false, at_240_khz), told + "_test_model_pdsch_slot_allocationx_1 : Error numerology!\n");
    EXPECT_EQ(errors_of(false, {at_240_khz[0], at_240_khz[1], "test_model=LIB_NR_FR2_TM2"}),
              told + channel + channel + channel);
    EXPECT_EQ(errors_of(true, {"bandwidth=LIB_NR_CHANNEL_FR2_1_50M"}),
              "_test_model_pdsch_cfg : Error test model in FDD!\n");
}

} // namespace
