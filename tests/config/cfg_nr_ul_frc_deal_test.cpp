#include "config/cfg_nr_enum_name_maps.h"
#include "config/cfg_nr_waveform.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_ul/lib_nr_ul_phy_pusch_process.h"
#include "receiver/bits.h"
#include "support/generated.h"
#include "support/presets.h"
#include "support/settings.h"
#include "support/shared_channel.h"
#include "support/test_grid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using nr_test::sch_channel_t;

constexpr unsigned int k_channels = 253;

template <class enum_t>
std::string name_of(enum_t value)
{
    return enum_name_map(value).at(value);
}

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

TEST(cfg_nr_ul_frc_deal, every_choice_configures_a_fresh_carrier)
{
    std::set<std::string> printed;
    unsigned int choices = 0;
    for (unsigned int i = 0; i < k_channels; ++i) {
        const auto channel = static_cast<lib_nr_ul_frc_reference_channel_t>(i);
        const auto first = nr_test::waveform_of(channel);
        const cfg_nr_ul_frc_t& offered = *first->get_carrier(0)->get_ul_frc();
        for (const auto bandwidth : offered.get_valid_bandwidth_list())
            for (const auto duplex : offered.get_valid_duplex_type_list())
                for (const auto mapping : offered.get_valid_mapping_type_list()) {
                    SCOPED_TRACE(name_of(channel) + ' ' + name_of(bandwidth) + ' ' + name_of(duplex));
                    const auto waveform = nr_test::waveform_of(channel);
                    const nr_test::captured_output_t output;
                    cfg_nr_ul_frc_t& frc = *waveform->get_carrier(0)->get_ul_frc();
                    frc.set_bandwidth(bandwidth);
                    frc.set_duplex_type(duplex);
                    frc.set_mapping_type(mapping);
                    frc.set_rb_offset(i);
                    waveform->get_carrier(0)->deal_ul_fixed_reference_channels();
                    expect_told(*waveform);
                    // Two channels of FR2-2 have a spacing that it has not.
                    if (channel != LIB_NR_G_FR2_A4_16 && channel != LIB_NR_G_FR2_A4_17)
                        for (const std::string& line : nr_test::surprises(output.text()))
                            printed.insert(line);
                    ++choices;
                }
    }
    EXPECT_EQ(choices, 3850u);
    for (const std::string& line : printed)
        ADD_FAILURE() << line;
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

// Those that TS 38.104 annex A prints; of the others their size is that of the receiver.
TEST(cfg_nr_ul_frc_deal, every_channel_carries_a_block_of_its_size_that_is_decoded)
{
    const std::pair<lib_nr_ul_frc_reference_channel_t, std::vector<std::size_t>> published[] = {
        {LIB_NR_G_FR1_A1_1, {2152, 984, 984, 9224, 4352, 2088, 1320, 528, 528}},
        {LIB_NR_G_FR1_A3_8, {1352, 2856, 5768, 1320, 2792, 5768, 14856}},
        {LIB_NR_G_FR1_A4_8, {9224, 19464, 38936, 8968, 18960, 38936, 100392}}};
    unsigned int found = 0;
    for (unsigned int i = 0; i < k_channels; ++i) {
        const auto channel = static_cast<lib_nr_ul_frc_reference_channel_t>(i);
        SCOPED_TRACE(name_of(channel));
        const nr_test::captured_output_t silence;
        const auto waveform = nr_test::waveform_of(channel);
        cfg_nr_carrier_t& carrier = *waveform->get_carrier(0);
        carrier.get_ul_frc()->set_bandwidth(carrier.get_ul_frc()->get_valid_bandwidth_list().front());
        carrier.deal_ul_fixed_reference_channels();
        nr_test::test_grid_t grid(carrier.get_numerology(), carrier.get_ul_bwp(0)->get_rb_number(),
                                  carrier.get_channel_bandwidth());

        const auto& manager = waveform->get_waveform_manager().get_carrier(0);
        const auto slot = static_cast<unsigned int>(manager.get_ul_sch(0).get_slot_allocation_v().back());
        const sch_channel_t sent = nr_test::pusch_channel_of(manager, 0, slot);
        const std::size_t size = nr_test::transport_block_size(sent);
        EXPECT_EQ(nr_test::decode_sch({sent}, {code_word_of(*waveform, sent, slot, grid)}),
                  nr_test::data_source_t(LIB_NR_PN9).take(size));
        for (const auto& [first, sizes] : published)
            if (i >= first && i < first + sizes.size()) {
                EXPECT_EQ(size, sizes[i - first]);
                ++found;
            }
    }
    EXPECT_EQ(found, 9u + 7u + 7u);
}

/// The narrowest channel of each family, and of each kind within it.
std::vector<lib_nr_ul_frc_reference_channel_t> narrow_channels()
{
    std::map<std::string, std::pair<double, lib_nr_ul_frc_reference_channel_t>> narrowest;
    for (unsigned int i = 0; i < k_channels; ++i) {
        const auto channel = static_cast<lib_nr_ul_frc_reference_channel_t>(i);
        const auto waveform = nr_test::waveform_of(channel);
        const cfg_nr_ul_frc_t& frc = *waveform->get_carrier(0)->get_ul_frc();
        const std::string kind = std::to_string(frc.get_fixed_reference_channels()) + std::to_string(frc.get_layers()) +
                                 std::to_string(frc.get_enable_transfer_precoding()) + std::to_string(frc.is_type_2());
        const double width = frc.get_rb_num() * std::pow(2.0, frc.get_numerolgy());
        const auto kept = narrowest.try_emplace(kind, width, channel).first;
        if (width < kept->second.first)
            kept->second = {width, channel};
    }
    std::vector<lib_nr_ul_frc_reference_channel_t> channels;
    for (const auto& [kind, row] : narrowest)
        channels.push_back(row.second);
    return channels;
}

TEST(cfg_nr_ul_frc_deal, narrow_channels_of_every_kind_send_layer_0_in_their_slots)
{
    const std::vector<lib_nr_ul_frc_reference_channel_t> channels = narrow_channels();
    EXPECT_GT(channels.size(), 30u);
    for (const auto channel : channels) {
        SCOPED_TRACE(name_of(channel));
        const nr_test::captured_output_t silence;
        const auto waveform = nr_test::waveform_of(channel);
        cfg_nr_carrier_t& carrier = *waveform->get_carrier(0);
        carrier.get_ul_frc()->set_bandwidth(carrier.get_ul_frc()->get_valid_bandwidth_list().front());
        carrier.get_ul_frc()->set_periodicity(10.0);
        carrier.get_ul_frc()->set_tdd_ul_slot_number(2);
        carrier.deal_ul_fixed_reference_channels();
        carrier.set_baseband_filter(false);
        const nr_test::generated_t generated = nr_test::generate(*waveform);
        EXPECT_EQ(generated.output.find("error!!!"), std::string::npos);
        const auto& manager = waveform->get_waveform_manager().get_carrier(0);
        const auto rows = nr_test::demodulate_frame(
            generated.samples, generated.setup, nr_test::test_grid_t::grid().get_mapped_subcarrier_number(), 0.0, 0);
        const auto& slots = manager.get_ul_sch(0).get_slot_allocation_v();
        for (const auto slot : slots)
            EXPECT_LT(nr_test::receive_sch_layer(nr_test::pusch_channel_of(manager, 0, slot), rows,
                                                 static_cast<unsigned int>(slot), k_no_other)
                          .error,
                      1e-6)
                << slot;
        std::set<int> heard;
        for (std::size_t symbol = 0; symbol < rows.size(); ++symbol)
            if (std::any_of(rows[symbol].begin(), rows[symbol].end(),
                            [](const auto& value) { return std::abs(value) > 1e-6; }))
                heard.insert(static_cast<int>(symbol / 14));
        EXPECT_TRUE(std::equal(heard.begin(), heard.end(), slots.begin(), slots.end()));
    }
}

} // namespace
