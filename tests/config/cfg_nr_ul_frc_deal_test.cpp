#include "config/cfg_nr_waveform.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_ul/lib_nr_ul_phy_pusch_process.h"
#include "receiver/bits.h"
#include "support/generated.h"
#include "support/preset_choices.h"
#include "support/settings.h"
#include "support/shared_channel.h"
#include "support/test_grid.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using nr_test::sch_channel_t;

const auto k_no_other = [](unsigned int, unsigned int) { return false; };

/// The PUSCH that a channel comes to on its carrier.
void expect_told(cfg_nr_waveform_t& waveform)
{
    cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
    const cfg_nr_ul_frc_t& frc = *carrier.get_ul_frc();
    const cfg_nr_ul_sch_t& sch = *carrier.get_ul_pusch(0);
    EXPECT_EQ(carrier.get_carrier_type(), LIB_NR_UPLINK);
    EXPECT_EQ(carrier.get_channel_bandwidth(), frc.get_bandwidth());
    EXPECT_EQ(carrier.get_numerology(), frc.get_numerolgy());
    EXPECT_EQ(carrier.get_ul_bwp(0)->get_rb_number(),
              lib_nr_phy_common_t::get_max_transmit_rb_num(frc.get_numerolgy(), frc.get_bandwidth()));
    EXPECT_TRUE(sch.get_enable() && sch.get_enable_coding());
    EXPECT_EQ(sch.get_mapping_type(), frc.get_mapping_type());
    EXPECT_EQ(sch.get_symbol_num(), frc.get_symbol_number());
    EXPECT_EQ(sch.get_enable_transfer_precoding(), frc.get_enable_transfer_precoding());
    EXPECT_EQ(sch.get_layers_num(), frc.get_layers());
    EXPECT_EQ(waveform.get_antennas_number(), frc.get_layers());
    EXPECT_EQ(sch.get_antenna_port().size(), frc.get_layers());
    EXPECT_EQ(sch.get_dmrs_additional_position(), frc.get_dmrs_additional_position());

    const auto& settings = waveform.get_waveform_manager().get_carrier(0).get_ul_sch(0);
    const sch_channel_t channel = nr_test::pusch_channel_of(waveform.get_waveform_manager().get_carrier(0), 0, 0);
    EXPECT_EQ(channel.rbs.size(), frc.get_rb_num());
    EXPECT_EQ(channel.rbs.at(0), frc.is_type_2() ? 0 : frc.get_rb_offset());

    const std::string period = frc.get_slot_allocation_str();
    std::vector<int> slots;
    for (unsigned int slot = 0; slot < 10u << frc.get_numerolgy(); ++slot)
        if (frc.get_duplex_type() == LIB_NR_DUPLEX_TYPE_FDD || period.at(slot % period.size()) == 'U')
            slots.push_back(static_cast<int>(slot));
    EXPECT_TRUE(std::equal(slots.begin(), slots.end(), settings.get_slot_allocation_v().begin(),
                           settings.get_slot_allocation_v().end()));
}

const nr_test::preset_family_t k_family = {"ul_frc",
                                           {{"fixed_reference_channels", {}},
                                            {"frc_reference_channels", {}},
                                            {"bandwidth", {}},
                                            {"duplex_type", {}},
                                            {"mapping_type", {}},
                                            {"rb_offset", {"7"}}}};

TEST(cfg_nr_ul_frc_deal, every_choice_configures_a_fresh_carrier)
{
    unsigned int choices = 0;
    for (const bool ntn : {false, true})
        for (const nr_test::steps_t& choice : nr_test::every_choice(k_family, ntn)) {
            SCOPED_TRACE(testing::PrintToString(choice));
            cfg_nr_waveform_t waveform;
            const std::string output = nr_test::take(waveform, choice);
            // They are of FR2-2, which has no 60 kHz.
            if (choice[2].find("A4_16") == std::string::npos && choice[2].find("A4_17") == std::string::npos) {
                EXPECT_EQ(nr_test::unexpected_of_presets(output, ntn), "");
            }
            expect_told(waveform);
            ++choices;
        }
    EXPECT_EQ(choices, 3850u);
}

/// The first choice of each channel: in FDD, with the least bandwidth.
std::vector<nr_test::steps_t> every_channel()
{
    std::vector<nr_test::steps_t> channels;
    for (const bool ntn : {false, true})
        for (const nr_test::steps_t& choice : nr_test::every_choice(k_family, ntn))
            if (channels.empty() || channels.back()[2] != choice[2])
                channels.push_back(choice);
    return channels;
}

/// The code word of a slot, descrambled: what each antenna sends of it is one of its layers.
nr_test::sch_slot_t code_word_of(cfg_nr_waveform_t& waveform, const sch_channel_t& channel, unsigned int slot,
                                 nr_test::test_grid_t& grid)
{
    lib_nr_ul_phy_pusch_process_t process;
    process.set_waveform_config(0, 0, 0, waveform.get_waveform_manager());
    std::vector<bits_t> layers;
    for (unsigned int layer = 0; layer < channel.settings.get_layers_num(); ++layer) {
        grid.clear();
        process.set_antenna_port({static_cast<lib_nr_antenna_port_t>(LIB_NR_ANTENNA_PORT_0 + layer)});
        process.set_pn_seed(0xFFFFFFFFu);
        process.sch_encode_process(slot);
        sch_channel_t read = channel;
        read.layer = layer;
        const nr_test::sch_slot_t received =
            nr_test::receive_sch_layer(read, grid.grid().get_payload_mapping(), slot, k_no_other);
        EXPECT_LT(received.error, 1e-6) << layer;
        layers.push_back(received.bits);
    }
    const std::size_t order = lib_nr_modulator_t::get_modulation_order(channel.settings.get_modulation());
    nr_test::sch_slot_t code_word;
    for (std::size_t i = 0; i < layers[0].size(); i += order)
        for (const bits_t& layer : layers)
            code_word.bits.insert(code_word.bits.end(), &layer[i], &layer[i] + order);
    nr_test::descramble(channel, code_word.bits);
    return code_word;
}

// Those that TS 38.104 annex A prints; the size of the others is that of the receiver.
TEST(cfg_nr_ul_frc_deal, every_channel_carries_a_block_of_its_size_that_is_decoded)
{
    const std::pair<unsigned int, std::vector<std::size_t>> published[] = {
        {LIB_NR_G_FR1_A1_1, {2152, 984, 984, 9224, 4352, 2088, 1320, 528, 528}},
        {LIB_NR_G_FR1_A3_8, {1352, 2856, 5768, 1320, 2792, 5768, 14856}},
        {LIB_NR_G_FR1_A4_8, {9224, 19464, 38936, 8968, 18960, 38936, 100392}}};
    const std::vector<nr_test::steps_t> channels = every_channel();
    ASSERT_EQ(channels.size(), 253u);
    for (unsigned int i = 0; i < channels.size(); ++i) {
        SCOPED_TRACE(channels[i][2]);
        nr_test::waveform_of_t waveform(channels[i]);
        cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
        nr_test::test_grid_t grid(carrier.get_numerology(), carrier.get_ul_bwp(0)->get_rb_number(),
                                  carrier.get_channel_bandwidth());

        const auto& manager = waveform.get_waveform_manager().get_carrier(0);
        const auto slot = static_cast<unsigned int>(manager.get_ul_sch(0).get_slot_allocation_v().back());
        const sch_channel_t sent = nr_test::pusch_channel_of(manager, 0, slot);
        const std::size_t size = nr_test::transport_block_size(sent);
        EXPECT_EQ(nr_test::decode_sch({sent}, {code_word_of(waveform, sent, slot, grid)}),
                  nr_test::data_source_t(LIB_NR_PN9).take(size));
        for (const auto& [first, sizes] : published)
            if (i >= first && i < first + sizes.size()) {
                EXPECT_EQ(size, sizes[i - first]);
            }
    }
}

// The first of each family and, within it, of each number of layers, waveform and allocation; in two slots where there
// is TDD.
TEST(cfg_nr_ul_frc_deal, channels_of_every_kind_send_layer_0_in_their_slots)
{
    std::set<std::string> kinds;
    for (const nr_test::steps_t& channel : every_channel()) {
        SCOPED_TRACE(channel[2]);
        nr_test::waveform_of_t waveform(channel);
        cfg_nr_ul_frc_t& frc = *waveform.get_carrier(0)->get_ul_frc();
        if (!kinds
                 .insert(channel[1] + std::to_string(frc.get_layers()) +
                         std::to_string(frc.get_enable_transfer_precoding()) + std::to_string(frc.is_type_2()))
                 .second)
            continue;
        frc.set_duplex_type(LIB_NR_DUPLEX_TYPE_TDD);
        frc.set_periodicity(10.0);
        frc.set_tdd_ul_slot_number(2);
        nr_test::take(waveform, {"apply carrier[0].ul_frc"});
        waveform.get_carrier(0)->set_baseband_filter(false);
        const nr_test::generated_t generated = nr_test::generate(waveform);
        EXPECT_EQ(generated.output.find("error!!!"), std::string::npos);
        const auto& manager = waveform.get_waveform_manager().get_carrier(0);
        const auto rows = nr_test::demodulate_frame(
            generated.samples, generated.setup, nr_test::test_grid_t::grid().get_mapped_subcarrier_number(), 0.0, 0);
        const auto& slots = manager.get_ul_sch(0).get_slot_allocation_v();
        for (const unsigned int slot : slots) {
            const sch_channel_t sent = nr_test::pusch_channel_of(manager, 0, slot);
            EXPECT_LT(nr_test::receive_sch_layer(sent, rows, slot, k_no_other).error, 1e-6) << slot;
        }
        std::set<unsigned int> heard;
        for (std::size_t symbol = 0; symbol < rows.size(); ++symbol)
            if (std::any_of(rows[symbol].begin(), rows[symbol].end(),
                            [](const auto& value) { return std::abs(value) > 1e-6; }))
                heard.insert(static_cast<unsigned int>(symbol / 14));
        EXPECT_TRUE(std::equal(heard.begin(), heard.end(), slots.begin(), slots.end()));
    }
    EXPECT_GT(kinds.size(), 30u);
}

} // namespace
