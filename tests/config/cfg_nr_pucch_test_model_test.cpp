#include "config/cfg_nr_pucch_test_model.h"

#include "config/cfg_nr_waveform.h"
#include "phy_common/lib_nr_phy_common.h"
#include "receiver/bits.h"
#include "receiver/pucch_receiver.h"
#include "support/generated.h"
#include "support/preset_choices.h"
#include "support/settings.h"
#include "support/test_grid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

constexpr unsigned int k_tests = 14;
constexpr unsigned int k_first_interlaced = 9;

/// The number behind a key of a test's text; that of the second case where there are two.
std::optional<unsigned int> told(const std::string& text, const std::string& key, bool second = false)
{
    std::size_t at = text.find("\n- " + key + ": ");
    if (at == std::string::npos)
        return std::nullopt;
    at += key.size() + 5;
    const std::string line = text.substr(at, text.find('\n', at) - at);
    return std::stoul(second && line.find(';') != std::string::npos ? line.substr(line.find(';') + 1) : line);
}

/// The PUCCH is the one that the text of the test tells of.
void expect_told(cfg_nr_waveform_t& waveform)
{
    cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
    const cfg_nr_pucch_test_model_t& test = *carrier.get_pucch_test_model();
    const std::string text = test.get_display_infomation();
    const unsigned int type = test.get_test_model_type();
    const bool second = type == 0 ? test.get_number_of_symbols() == 2 : test.get_format3_test_type() != 0;
    const unsigned int N =
        lib_nr_phy_common_t::get_max_transmit_rb_num(carrier.get_numerology(), carrier.get_channel_bandwidth());
    EXPECT_EQ(carrier.get_carrier_type(), LIB_NR_UPLINK);
    EXPECT_EQ(static_cast<unsigned int>(carrier.get_numerology()), test.get_subcarrier_spacing());
    EXPECT_EQ(carrier.get_ul_bwp(0)->get_rb_number(), N);
    EXPECT_TRUE(test.get_enable());
    EXPECT_NE(text.find("PUCCH format " + std::to_string(test.get_pucch_format())), std::string::npos);
    EXPECT_EQ(
        test.get_payload_size(),
        told(text, "Number of information bits").value_or(told(text, "Number of UCI information bits").value_or(0)));
    EXPECT_EQ(test.get_first_symbol(), told(text, "First symbol", second).value_or(0));
    EXPECT_EQ(test.get_symbol_num(),
              type == 0 ? test.get_number_of_symbols() : told(text, "Number of Symbols", second).value_or(0));
    EXPECT_EQ(test.get_use_interlace_pucch(), type >= k_first_interlaced);
    EXPECT_EQ(test.get_payload_data(), text.find("ACK missed") != std::string::npos ? LIB_NR_USER_CFG : LIB_NR_PN9_ITU);
    EXPECT_EQ(test.get_number_of_slots_for_pucch_repetition(),
              told(text, "Number of slots for PUCCH repetition").value_or(1));
    EXPECT_EQ(test.get_inter_slot_frequency_hopping(),
              text.find("Inter-slot frequency hopping: Enabled") != std::string::npos);
    EXPECT_EQ(test.get_additional_dmrs(), (type == 5 || type == 6 || type == 13) && test.get_additional_dmes_state());
    EXPECT_EQ(carrier.get_ul_pusch(0)->get_rbg_bitmap_number(), carrier.get_ul_pusch(0)->get_rbg_bitmap().size());
    if (type >= k_first_interlaced)
        return;
    EXPECT_EQ(test.get_rb_num(), told(text, "Number of PRBs", second).value_or(1));
    EXPECT_EQ(test.get_rb_offset(), 0u);
    EXPECT_EQ(test.get_second_hop_prb(), N - test.get_rb_num());
    EXPECT_EQ(test.get_intra_slot_frequency_hopping(), test.get_symbol_num() > 1 && type < 7);
}

// The texts are held by their 64-bit FNV-1a.
TEST(cfg_nr_pucch_test_model, every_choice_configures_the_carrier_as_its_text_tells)
{
    constexpr std::array<std::uint64_t, k_tests> k_texts = {
        0x12b60d9f1cd1488bu, 0x1e89b85f38aab93eu, 0xb91da0a5b63014e0u, 0x0b7d75cfa1b54f84u, 0xdb0292e7134baa79u,
        0xd80da2b2174d113fu, 0x0296f912829412e4u, 0x0d996ddb6cd7014bu, 0xd19bb2b26322cd0bu, 0xe617aef3b2b09366u,
        0xad21a8fcf4e1c461u, 0xed15db5deb2871e7u, 0x5a3cf5ec4f669ce0u, 0x1799157fba09c199u};
    const nr_test::preset_family_t family = {"pucch_test_model",
                                             {{"test_model_type", {}},
                                              {"subcarrier_spacing", {}},
                                              {"bandwidth", {}},
                                              {"duplex_type", {}},
                                              {"number_of_symbols", {"1", "2"}},
                                              {"format3_test_type", {}},
                                              {"additional_dmes_state", {"false", "true"}}}};
    unsigned int choices = 0;
    for (const bool ntn : {false, true})
        for (const nr_test::steps_t& choice : nr_test::every_choice(family, ntn)) {
            SCOPED_TRACE(testing::PrintToString(choice));
            cfg_nr_waveform_t waveform;
            EXPECT_EQ(nr_test::unexpected_of_presets(nr_test::take(waveform, choice), ntn), "");
            expect_told(waveform);
            ++choices;
            const cfg_nr_pucch_test_model_t& test = *waveform.get_carrier(0)->get_pucch_test_model();
            std::uint64_t text = 0xcbf29ce484222325u;
            for (const char* letter = test.get_display_infomation(); *letter != '\0'; ++letter)
                text = (text ^ static_cast<unsigned char>(*letter)) * 0x100000001b3u;
            EXPECT_EQ(text, k_texts[test.get_test_model_type()]);
            if (HasFailure())
                return;
        }
    EXPECT_EQ(choices, 3488u);
}

/// What the slots say, decoded, in their order.
std::vector<bits_t> uci_of(const cfg_nr_waveform_t& waveform)
{
    const nr_test::generated_t generated = nr_test::generate(waveform);
    EXPECT_EQ(generated.output.find("error!!!"), std::string::npos);
    const auto& carrier = waveform.get_waveform_manager().get_carrier(0);
    const auto& pucch = carrier.get_ul_pucch(0);
    const nr_test::rows_t& mapped = nr_test::test_grid_t::grid().get_payload_mapping();
    nr_test::rows_t rows = nr_test::demodulate_frame(generated.samples, generated.setup,
                                                     static_cast<unsigned int>(mapped[0].size()), 0.0, 0);
    const auto gain = nr_test::fitted_gain(rows, mapped);
    for (auto& row : rows)
        for (auto& value : row)
            value /= gain;
    std::vector<bits_t> bits;
    for (const unsigned int slot : pucch.get_allocated_slots()) {
        if (pucch.get_pucch_format() > LIB_NR_UL_PUCCH_FORMAT_1) {
            const auto uci = nr_test::receive_uci(rows, carrier, pucch, slot, pucch.get_payload().size, 0, false);
            EXPECT_LT(uci.error, 1e-6) << slot;
            bits.push_back(uci.bits);
            continue;
        }
        const auto received = nr_test::receive_sequence(rows, carrier, pucch, slot, false);
        EXPECT_LT(received.error, 1e-6) << slot;
        EXPECT_GT(received.next_error, 0.1) << slot;
        if (pucch.get_pucch_format() == LIB_NR_UL_PUCCH_FORMAT_0)
            bits.push_back({static_cast<unsigned char>(received.shift == 6)});
        else
            bits.push_back({static_cast<unsigned char>(received.point.real() < 0),
                            static_cast<unsigned char>(received.point.imag() < 0)});
        if (pucch.get_use_interlace_pucch()) {
            const auto& row = rows.at(slot * 14 + pucch.get_first_symbol());
            const auto loud = std::count_if(row.begin(), row.end(), [](const auto& v) { return std::abs(v) > 1e-6; });
            EXPECT_EQ(loud, 11 * 12) << slot;
        }
    }
    return bits;
}

TEST(cfg_nr_pucch_test_model, uci_of_every_test_is_decoded)
{
    for (unsigned int i = 0; i < k_tests * 4; ++i) {
        SCOPED_TRACE(i);
        const nr_test::captured_output_t silence;
        cfg_nr_waveform_t waveform;
        cfg_nr_pucch_test_model_t& test = *waveform.get_carrier(0)->get_pucch_test_model();
        test.set_test_model_type(static_cast<lib_nr_pucch_test_model_t>(i / 4));
        test.set_subcarrier_spacing(static_cast<lib_nr_pucch_test_model_subcarrier_spacing_t>(i / 2 % 2));
        test.set_bandwidth(test.get_bandwidth_range().front());
        test.set_duplex_type(static_cast<lib_nr_duplex_type_t>(i % 2));
        test.set_number_of_symbols(1 + i / 2 % 2);
        test.set_format3_test_type(static_cast<lib_nr_pucch_format3_test_model_type_t>(i / 2 % 2));
        test.set_additional_dmes_state(i % 2 != 0);
        test.apply_test_model();
        waveform.get_carrier(0)->set_baseband_filter(false);
        const std::vector<bits_t> received = uci_of(waveform);
        EXPECT_EQ(received.size(), i % 2 != 0 ? 10u << i / 2 % 2 : 4u);
        nr_test::data_source_t source(test.get_payload_data(), {1});
        bits_t bits;
        for (std::size_t slot = 0; slot < received.size(); ++slot) {
            if (slot % test.get_number_of_slots_for_pucch_repetition() == 0)
                bits = source.take(test.get_payload_size());
            EXPECT_EQ(received[slot], bits) << slot;
        }
    }
}

TEST(cfg_nr_pucch_test_model, choices_stay_within_what_the_test_offers)
{
    cfg_nr_waveform_t waveform;
    cfg_nr_pucch_test_model_t& test = *waveform.get_carrier(0)->get_pucch_test_model();
    EXPECT_TRUE(test.set_subcarrier_spacing(LIB_NR_TEST_MODEL_SCS_15K));
    EXPECT_EQ(test.get_bandwidth(), LIB_NR_TEST_MODEL_BANDWIDTH_FR1_20MHZ);
    EXPECT_TRUE(test.set_subcarrier_spacing(LIB_NR_TEST_MODEL_SCS_60K));
    EXPECT_EQ(test.get_bandwidth(), LIB_NR_TEST_MODEL_BANDWIDTH_FR2_50MHZ);
    EXPECT_FALSE(test.set_bandwidth(LIB_NR_TEST_MODEL_BANDWIDTH_FR1_5MHZ));
    test.set_duplex_type(LIB_NR_DUPLEX_TYPE_TDD);
    EXPECT_TRUE(test.set_test_model_type(TS_38_141_839_UCI_BLER_PERFORMANCE_FOR_INTERLACED_PUCCH_FORMAT_2));
    EXPECT_FALSE(test.set_subcarrier_spacing(LIB_NR_TEST_MODEL_SCS_60K));
    test.set_test_model_type(TS_38_141_835_UCI_BLER_PERFORMANCE_FOR_PUCCH_FORMAT_4);
    EXPECT_EQ(test.get_subcarrier_spacing(), LIB_NR_TEST_MODEL_SCS_30K);
    EXPECT_EQ(test.get_bandwidth(), LIB_NR_TEST_MODEL_BANDWIDTH_FR1_20MHZ);
    EXPECT_TRUE(test.set_number_of_symbols(5));
    EXPECT_EQ(test.get_number_of_symbols(), 2u);
    EXPECT_TRUE(test.set_number_of_symbols(0));
    test.set_number_of_downlink_slots(0xFFFFFFFF);
    EXPECT_EQ(test.get_number_of_downlink_slots(), 10u) << "the pattern follows the spacing that the clamp gave";
    EXPECT_TRUE(test.set_number_of_uplink_slots(0));
    EXPECT_EQ(test.get_number_of_uplink_slots(), 1u);
}

TEST(cfg_nr_pucch_test_model, is_sent_in_the_uplink_slots_of_the_pattern)
{
    const std::string path = "carrier[0].pucch_test_model.";
    const std::string tdd = path + "duplex_type=LIB_NR_DUPLEX_TYPE_TDD";
    const std::string short_period = path + "transmission_periodicity=LIB_NR_TDD_TRANSMISSION_PERIODICITY_500_US";
    const std::string at_15_khz = path + "subcarrier_spacing=LIB_NR_TEST_MODEL_SCS_15K";
    const std::pair<std::vector<std::string>, const char*> rows[] = {
        {{tdd}, "8,9,18,19"},
        {{tdd, path + "number_of_uplink_slots=3"}, "7:9,17:19"},
        {{tdd, path + "tdd_slot_allocation=LIB_NR_TDD_UPLINK_SLOT"}, "0,10"},
        {{tdd, short_period}, "0:19"},
        {{tdd, short_period, at_15_khz}, "0"},               // no slots
        {{tdd, path + "number_of_downlink_slots=10"}, "0"}}; // none of the uplink
    for (const auto& [steps, slots] : rows) {
        nr_test::waveform_of_t waveform(steps);
        nr_test::take(waveform, {"apply carrier[0].pucch_test_model"});
        EXPECT_EQ(nr_test::value_of(waveform, "carrier[0].ul_pucch[0].allocated_slots"), slots) << steps.back();
    }
}

TEST(cfg_nr_pucch_test_model, what_is_no_test_is_told)
{
    const nr_test::captured_output_t silence;
    cfg_nr_waveform_t waveform;
    cfg_nr_pucch_test_model_t& test = *waveform.get_carrier(0)->get_pucch_test_model();
    test.set_subcarrier_spacing(static_cast<lib_nr_pucch_test_model_subcarrier_spacing_t>(99));
    test.set_bandwidth(static_cast<lib_nr_pucch_test_model_bandwidth_t>(99));
    EXPECT_TRUE(test.apply_test_model());
    EXPECT_EQ(waveform.get_carrier(0)->get_numerology(), LIB_NR_SCS_15K);
    EXPECT_EQ(waveform.get_carrier(0)->get_channel_bandwidth(), LIB_NR_CHANNEL_FR1_20M);
    test.set_test_model_type(static_cast<lib_nr_pucch_test_model_t>(k_tests));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(test.apply_test_model());
    EXPECT_EQ(test.get_display_infomation(), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              " Error: Undefined test model type\n Error: Undefined test model type\n");
}

} // namespace
