#include "phy_ul/lib_nr_ul_phy_pusch_process.h"

#include "receiver/sch_receiver.h"
#include "receiver/tables/pusch_codebooks.h"
#include "support/sch_run.h"
#include "support/settings.h"
#include "support/shared_channel.h"
#include "support/test_grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;
using nr_test::rows_t;
using nr_test::sch_channel_t;
using nr_test::sch_slot_t;
using steps_t = std::vector<std::string>;

std::string pusch(unsigned int index) { return "carrier[0].ul_pusch[" + std::to_string(index) + "]"; }

/// The engine's run, and the PUSCHs in it.
struct run_t : nr_test::sch_run_t
{
    using sch_run_t::sch_run_t;
    sch_channel_t channel(unsigned int index, unsigned int slot = 0) const
    {
        return nr_test::pusch_channel_of(carrier(), index, slot, standard_rules());
    }
    sch_slot_t receive(unsigned int index, unsigned int slot, unsigned int frame = 0)
    {
        return sch_run_t::receive(channel(index, slot), slot, frame);
    }
};

/// An uplink carrier with some PUSCHs, one a slot.
struct one_channel_a_slot_t : nr_test::waveform_of_t
{
    explicit one_channel_a_slot_t(unsigned int channels, const steps_t& steps = {})
        : waveform_of_t({"carrier[0].carrier_type=LIB_NR_UPLINK", "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M",
                         "carrier[0].baseband_filter=false"})
    {
        nr_test::take(*this, steps);
        for (unsigned int i = 0; i < channels; ++i) {
            if (i > 0)
                nr_test::take(*this, {"add carrier[0].ul_pusch"});
            nr_test::take(*this, {pusch(i) + ".slot_allocation=" + std::to_string(i), pusch(i) + ".enable=true"});
        }
    }
    void set(unsigned int index, const steps_t& steps)
    {
        for (const std::string& step : steps)
            nr_test::take(*this, {pusch(index) + "." + step});
    }
};

void expect_transport_block(run_t& run, unsigned int index, unsigned int slot)
{
    const sch_slot_t received = run.receive(index, slot);
    EXPECT_LT(received.error, 1e-6) << index;
    EXPECT_EQ(nr_test::decode_sch({run.channel(index, slot)}, {received}),
              nr_test::data_source_t(LIB_NR_PN9).take(transport_block_size(run.channel(index, slot))))
        << index;
}

TEST(lib_nr_ul_phy_pusch_process, every_mcs_of_every_table_is_decoded)
{
    const std::tuple<bool, const char*, unsigned int> tables[] = {
        {false, "TABLE_5_1_3_1_1", 29}, {false, "TABLE_5_1_3_1_2", 28}, {false, "TABLE_5_1_3_1_3", 29},
        {true, "TABLE_6_1_4_1_1", 28},  {true, "TABLE_5_1_3_1_2", 28},  {true, "TABLE_6_1_4_1_2", 28}};
    for (const auto& [precoded, table, rows] : tables)
        for (const unsigned int first : {0u, rows - 15}) {
            SCOPED_TRACE(testing::Message() << table << " from " << first);
            one_channel_a_slot_t waveform(15);
            for (unsigned int i = 0; i < 15; ++i)
                waveform.set(i, {"enable_transfer_precoding=" + std::string(precoded ? "true" : "false"),
                                 "mcs_table=" + std::string(table), "mcs=" + std::to_string(first + i),
                                 "modulation=LIB_NR_MODULATION_" + std::string(i % 2 == 0 ? "QPSK" : "HALF_PI_BPSK")});
            run_t run(waveform);
            for (unsigned int i = 0; i < 15; ++i) {
                expect_transport_block(run, i, i);
            }
        }
}

TEST(lib_nr_ul_phy_pusch_process, every_size_of_a_transform_precoded_allocation_is_decoded)
{
    const std::tuple<const char*, const char*> ptrs[] = {{"2", "2"}, {"2", "4"}, {"4", "2"}, {"4", "4"}, {"8", "4"}};
    const steps_t steps = {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_100M", "carrier[0].ul_bwp[0].rb_number=273",
                           "carrier[0].ncell_id=77"};
    std::vector<unsigned int> sizes;
    for (const char* const type :
         {"dmrs_configuration_type=LIB_NR_DMRS_CFG_TYPE1", "dmrs_configuration_type=LIB_NR_DMRS_CFG_TYPE2"})
    {
        for (unsigned int size = 1; size <= 273;) {
            one_channel_a_slot_t waveform(20, steps);
            unsigned int used = 0;
            for (; used < 20 && size <= 273; ++used) {
                const auto& [groups, samples] = ptrs[sizes.size() % 53 % 5];
                const std::string sequence = sizes.size() % 3 == 0   ? "DISABLE"
                                             : sizes.size() % 3 == 1 ? "GROUP"
                                                                     : "SEQUENCE";
                waveform.set(used,
                             {"enable_transfer_precoding=true", "rb_num=" + std::to_string(size), "enable_ptrs=true",
                              type, "modulation=LIB_NR_MODULATION_HALF_PI_BPSK", "rnti=" + std::to_string(size),
                              "n_ptrs_group=LIB_NR_PTRS_GROUP_" + std::string(groups),
                              "n_ptrs_group_sample=LIB_NR_PTRS_GROUP_SAMPLE_" + std::string(samples),
                              "dmrs_hopping=LIB_NR_SCH_DMRS_HOPPING_" + sequence});
                sizes.push_back(waveform.get_carrier(0)->get_ul_pusch(static_cast<int>(used))->get_rb_num());
                size = std::max(size, sizes.back()) + 1;
                if (sizes.size() > 1 && sizes.back() == sizes[sizes.size() - 2]) { // 271 and up
                    sizes.pop_back();
                    size = 274;
                }
            }
            run_t run(waveform);
            for (unsigned int i = 0; i < used; ++i)
                expect_transport_block(run, i, i);
        }
    }
    EXPECT_EQ(sizes.size(), 2 * 53u);
}

// One and two symbols of DMRS, without hopping and with it in the slot, mapping type A with both positions and type B.
TEST(lib_nr_ul_phy_pusch_process, every_length_is_decoded_with_every_additional_position)
{
    constexpr unsigned int k_slots = 20;
    const steps_t steps = {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_5M"};
    auto waveform = std::make_unique<one_channel_a_slot_t>(k_slots, steps);
    unsigned int used = 0;
    unsigned int decoded = 0;
    unsigned int without_dmrs = 0;
    std::string standard_rules = "standard_rules=false";
    const auto receive = [&] {
        run_t run(*waveform);
        for (unsigned int i = 0; i < used; ++i) {
            without_dmrs += run.channel(i).dmrs_symbols.empty() ? 1 : 0;
            if (run.channel(i).dmrs_symbols.empty())
                continue;
            expect_transport_block(run, i, i);
            ++decoded;
        }
        waveform = std::make_unique<one_channel_a_slot_t>(k_slots, steps);
        used = 0;
    };
    for (unsigned int i = 0; i < 14 * 4 * 3 * 2 * 2 * 2; ++i) {
        if (i == 14 * 4 * 3 * 2 * 2) {
            receive();
            EXPECT_EQ(without_dmrs, 4u + 4u) << "length 4 of type A and 1 of type B, by the own rules";
            standard_rules = "standard_rules=true";
            waveform = std::make_unique<one_channel_a_slot_t>(k_slots, steps);
        }
        nr_test::take(*waveform, {standard_rules});
        const unsigned int length = 1 + i % 14;
        const auto additional = static_cast<lib_nr_sch_dmrs_additional_position_t>(i / 14 % 4);
        const unsigned int mapping = i / 14 / 4 % 3; // type A with l0 2, with l0 3, type B
        const auto symbols = static_cast<lib_nr_sch_dmrs_length_t>(i / 14 / 4 / 3 % 2);
        const bool hops = i / 14 / 4 / 3 / 2 % 2 == 1;
        cfg_nr_ul_sch_t& sch = *waveform->get_carrier(0)->get_ul_pusch(static_cast<int>(used));
        sch.set_hopping_mode(hops ? LIB_NR_SCH_HOPPING_MODE_INTRA : LIB_NR_SCH_HOPPING_MODE_DISABLE);
        sch.set_dmrs_length(symbols);
        sch.set_mapping_type(mapping == 2 ? LIB_NR_DMRS_MAPPING_TYPEB : LIB_NR_DMRS_MAPPING_TYPEA);
        sch.set_dmrs_type_a_position(mapping == 1 ? LIB_NR_SCH_DMRS_TYPEA_POSITION_3
                                                  : LIB_NR_SCH_DMRS_TYPEA_POSITION_2);
        sch.set_dmrs_additional_position(additional);
        sch.set_first_symbol(std::min(14 - length, length / 3));
        sch.set_symbol_num(length);
        if (sch.get_symbol_num() != length || sch.get_dmrs_length() != symbols ||
            sch.get_dmrs_additional_position() != additional)
            continue;
        sch.set_rb_num(4);
        sch.set_hopping_rb_offset(6);
        sch.set_enable_ptrs(true);
        if (++used == k_slots)
            receive();
    }
    receive();
    EXPECT_EQ(without_dmrs, 4u + 4u) << "by the standard";
    EXPECT_GT(decoded, 400u);
}

// Two channels of one layer in slots of their own on 20 MHz, normal prefix and extended, in one BWP or two, on RB sets:
// every cell holds what it must, and the bits are those of the channel's sequence.
TEST(lib_nr_ul_phy_pusch_process, random_settings_arrive_bit_by_bit)
{
    std::mt19937 random(3);
    const auto up_to = [&](unsigned int last) { return std::to_string(random() % (last + 1)); };
    unsigned int decoded_blocks = 0;
    for (unsigned int i = 0; i < 300; ++i) {
        SCOPED_TRACE(i);
        const steps_t steps[] = {
            {},
            {"carrier[0].numerology=LIB_NR_SCS_60K", "carrier[0].dl_bwp[0].scs=LIB_NR_SCS_60K",
             "carrier[0].dl_bwp[0].cp_type=LIB_NR_EXTEND_CP", "carrier[0].ul_bwp[0].cp_type=LIB_NR_EXTEND_CP"},
            {"add carrier[0].ul_bwp", "carrier[0].ul_bwp[1].rb_offset=7",
             "carrier[0].ul_bwp[1].rb_number=" + up_to(44)},
            {"carrier[0].numerology=LIB_NR_SCS_" + std::string(random() % 2 == 0 ? "15K" : "30K"),
             "add carrier[0].numerology[0].ul_guard_band.guard_band",
             "carrier[0].numerology[0].ul_guard_band.guard_band_start[0]=" + std::to_string(20 + random() % 10),
             "carrier[0].numerology[0].ul_guard_band.guard_band_size[0]=3",
             "confirm carrier[0].numerology[0].ul_guard_band"}};
        one_channel_a_slot_t waveform(2, steps[i % 4]);
        const bool standard_rules = i / 4 % 2 != 0;
        nr_test::take(waveform, {"carrier[0].ncell_id=" + up_to(1007),
                                 std::string("standard_rules=") + (standard_rules ? "true" : "false")});
        if (i % 4 == 2)
            waveform.set(1, {"bwp_id=1"});
        for (unsigned int index = 0; index < 2; ++index) {
            nr_test::draw_shared_channel(waveform, pusch(index), random);
            cfg_nr_ul_sch_t& sch = *waveform.get_carrier(0)->get_ul_pusch(static_cast<int>(index));
            if (sch.get_enable_transfer_precoding() && sch.get_enable_ptrs() && !standard_rules)
                sch.set_power_boosting(0.0); // as it must be for PTRS to be exact by the own rules
            // Room to hop; another type of allocation could leave the grid.
            const bool hops = sch.get_ra_type() == LIB_NR_SCH_RA_TYPE1;
            waveform.set(index, {"rb_num=" + up_to(30), "hopping_rb_offset=" + (hops ? up_to(50) : "0")});
        }
        run_t run(waveform);
        EXPECT_EQ(run.output().find("mapping error"), std::string::npos);
        std::size_t cells = 0;
        for (unsigned int index = 0; index < 2; ++index) {
            const sch_channel_t channel = run.channel(index);
            nr_test::data_source_t source(channel.settings.get_data_source());
            for (const unsigned int slot : channel.settings.get_slot_allocation_v()) {
                if (channel.rbs.empty())
                    continue;
                const sch_slot_t received = run.receive(index, slot);
                cells += received.cells;
                const bool is_coded = channel.settings.get_enable_coding();
                const std::size_t size = is_coded ? transport_block_size(channel) : received.bits.size();
                const bits_t expected = source.take(size);
                if (std::isnan(received.error)) // no DMRS
                    continue;
                EXPECT_LT(received.error, 1e-6) << slot;
                const auto block = is_coded ? nr_test::decode_sch({channel}, {received}) : std::optional(received.bits);
                const bool is_too_short = static_cast<double>(size) > 0.9 * static_cast<double>(received.bits.size());
                if (block || !is_coded || !is_too_short) {
                    EXPECT_EQ(block, expected) << slot;
                }
                decoded_blocks += is_coded && block ? 1 : 0;
            }
        }
        EXPECT_EQ(run.count_marks(LIB_NR_RESOURCE_MAPPING_PUSCH), cells);
        if (HasFailure())
            return;
    }
    EXPECT_GT(decoded_blocks, 200u);
}

/// A layer's stream as it stands in the grid, for each of the antenna ports in turn.
std::vector<std::vector<std::complex<double>>> streams_of(lib_nr_ul_phy_pusch_process_t& process,
                                                          nr_test::test_grid_t& grid, unsigned int ports)
{
    std::vector<std::vector<std::complex<double>>> streams(ports);
    for (unsigned int port = 0; port < ports; ++port) {
        grid.clear();
        process.set_antenna_port({static_cast<lib_nr_antenna_port_t>(LIB_NR_ANTENNA_PORT_0 + port)});
        process.set_pn_seed(0xFFFFFFFFu);
        process.sch_encode_process(3);
        for (unsigned int symbol = 3 * 14; symbol < 4 * 14; ++symbol)
            for (const auto& value : grid.symbols_at(symbol, 0, 24 * 12))
                streams[port].push_back(value);
    }
    return streams;
}

/// What a character of a codebook stands for.
std::complex<double> weight_of(char sign)
{
    const std::complex<double> j(0.0, 1.0);
    return sign == '+' ? 1.0 : sign == '-' ? -1.0 : sign == 'j' ? j : sign == 'J' ? -j : 0.0;
}

// Data, DMRS and PTRS alike.
TEST(lib_nr_ul_phy_pusch_process, every_matrix_of_every_codebook_joins_the_streams_of_the_layers)
{
    const std::map<unsigned int, std::vector<unsigned int>> ports = {
        {1, {2}}, {2, {0, 3}}, {3, {0, 2, 3}}, {4, {3, 1, 2, 0}}};
    nr_test::test_grid_t grid(LIB_NR_SCS_30K, 24, LIB_NR_CHANNEL_FR1_10M);
    for (const nr_test::codebook_part_t& codebook : nr_test::k_pusch_codebooks) {
        lib_nr_ul_phy_pusch_process_t process;
        process.set_dmrs_port(ports.at(codebook.layers));
        process.set_ptrs_port({ports.at(codebook.layers)[0]});
        process.set_rb_offset(5);
        process.set_rb_num(9);
        process.set_enable_transfer_precoding(codebook.is_transform_precoded);
        process.update_read_only_parament();
        process.set_enable_codebook(false);
        const auto layers = streams_of(process, grid, codebook.layers);
        process.set_enable_codebook(true);
        process.set_antenna_port_number(static_cast<lib_nr_antenna_port_number_t>(codebook.antennas));
        std::istringstream matrices{std::string(codebook.matrices)};
        unsigned int tpmi = codebook.first_tpmi;
        for (std::string matrix; matrices >> matrix; ++tpmi)
            for (const bool standard_rules : {false, true}) {
                const bool is_exchanged = codebook.antennas == 4 && codebook.layers == 1 && (tpmi == 10 || tpmi == 11);
                process.set_standard_rules(standard_rules);
                process.set_tpmi(standard_rules && is_exchanged ? 21 - tpmi : tpmi);
                const double amplitude = std::sqrt(standard_rules ? codebook.standard_power : codebook.power);
                const auto streams = streams_of(process, grid, codebook.antennas);
                double error = 0.0;
                for (unsigned int antenna = 0; antenna < codebook.antennas; ++antenna)
                    for (std::size_t i = 0; i < streams[antenna].size(); ++i) {
                        std::complex<double> expected;
                        for (std::size_t layer = 0; layer < layers.size(); ++layer)
                            expected += weight_of(matrix[layer * (codebook.antennas + 1) + antenna]) * layers[layer][i];
                        error = std::max(error, std::abs(streams[antenna][i] - amplitude * expected));
                    }
                EXPECT_LT(error, 1e-12) << codebook.layers << " layers, TPMI " << tpmi;
                EXPECT_EQ(process.get_rules().has_met(),
                          !standard_rules && (is_exchanged || codebook.power != codebook.standard_power));
            }
    }
}

TEST(lib_nr_ul_phy_pusch_process, layers_carry_one_code_word)
{
    for (const char* const ports : {"0,1", "2,1,0", "3,0:2"}) {
        one_channel_a_slot_t waveform(1);
        waveform.set(0, {std::string("dmrs_port=") + ports, "enable_ptrs=true", "ptrs_port=0,1", "mcs=20",
                         "hopping_mode=LIB_NR_SCH_HOPPING_MODE_INTRA", "rb_num=20", "hopping_rb_offset=17"});
        const unsigned int layers = waveform.get_carrier(0)->get_ul_pusch(0)->get_layers_num();
        std::vector<bits_t> bits(layers);
        for (unsigned int layer = 0; layer < layers; ++layer) {
            waveform.set(0, {"antenna_port=LIB_NR_ANTENNA_PORT_" + std::to_string(layer)});
            run_t run(waveform);
            sch_channel_t channel = run.channel(0);
            channel.layer = layer;
            const sch_slot_t received =
                receive_sch_layer(channel, run.rows(), 0, [](unsigned int, unsigned int) { return false; });
            EXPECT_LT(received.error, 1e-6) << ports << ", layer " << layer;
            bits[layer] = received.bits;
        }
        run_t run(waveform);
        constexpr std::size_t k_order = 6;
        sch_slot_t code_word;
        for (std::size_t i = 0; i < bits[0].size(); i += k_order)
            for (const bits_t& layer : bits)
                code_word.bits.insert(code_word.bits.end(), &layer[i], &layer[i] + k_order);
        descramble(run.channel(0), code_word.bits);
        const bits_t expected = nr_test::data_source_t(LIB_NR_PN9).take(transport_block_size(run.channel(0)));
        EXPECT_EQ(nr_test::decode_sch({run.channel(0)}, {code_word}), expected) << ports;
    }
}

// Two channels of one RNTI beside each other in two frames, in slots that repeat and slots that count on.
TEST(lib_nr_ul_phy_pusch_process, bits_go_on_across_slots_and_begin_anew_with_each_channel_and_frame)
{
    one_channel_a_slot_t waveform(2, {"frame_number=2"});
    for (unsigned int i = 0; i < 2; ++i)
        waveform.set(i, {"enable_coding=false", "rb_num=10", "rb_offset=" + std::to_string(15 * i), "rv=3",
                         i == 0 ? "slot_allocation=7,2" : "one_frame_period=false"});
    waveform.set(1, {"slot_allocation=2,23"});
    run_t run(waveform);
    std::vector sources(3, nr_test::data_source_t(LIB_NR_PN9));
    const unsigned int sent[][4] = {{0, 0, 7, 0}, {0, 0, 2, 0}, {1, 0, 7, 1}, {0, 1, 2, 2}};
    for (const auto& [frame, index, slot, source] : sent)
        EXPECT_EQ(run.receive(index, slot, frame).bits, sources[source].take(10 * (12 * 13 + 6) * 2))
            << frame << ' ' << index << ' ' << slot;
}

TEST(lib_nr_ul_phy_pusch_process, redundancy_versions_complete_each_other)
{
    one_channel_a_slot_t waveform(4);
    for (unsigned int rv = 0; rv < 4; ++rv)
        waveform.set(rv, {"mcs_table=TABLE_5_1_3_1_2", "mcs=27", "rv=" + std::to_string(rv), "enable_lbrm=true"});
    run_t run(waveform);
    const bits_t expected = nr_test::data_source_t(LIB_NR_PN9).take(transport_block_size(run.channel(0)));
    std::vector<sch_channel_t> channels;
    std::vector<sch_slot_t> slots;
    for (const unsigned int rv : {2u, 1u, 3u, 0u}) {
        channels.push_back(run.channel(rv));
        slots.push_back(run.receive(rv, rv));
        EXPECT_EQ(nr_test::decode_sch(channels, slots).value_or(expected), expected) << rv;
    }
}

TEST(lib_nr_ul_phy_pusch_process, keeps_its_quality_through_the_filter)
{
    one_channel_a_slot_t waveform(
        1, {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_100M", "carrier[0].ul_bwp[0].rb_number=273"});
    waveform.set(0, {"mcs_table=TABLE_5_1_3_1_2", "mcs=27", "slot_allocation=0:19", "rb_num=273"});
    run_t plain(waveform);
    const rows_t expected = plain.rows();
    nr_test::take(waveform, {"carrier[0].baseband_filter=true"});
    EXPECT_LT(nr_test::error_vector_magnitude(run_t(waveform).rows(), expected), 0.0015);
}

// Any settings: the engine runs, and nothing is written beside the marks.
TEST(lib_nr_ul_phy_pusch_process, whatever_is_set_stays_on_its_marks)
{
    std::mt19937 random(4);
    for (unsigned int i = 0; i < 400; ++i) {
        one_channel_a_slot_t waveform(1, {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_5M"});
        nr_test::draw_shared_channel(waveform, pusch(0), random);
        const char* const ports[] = {"0", "1,0", "4,2,1", "0:3", "8:11", "3,5"};
        waveform.set(0, {std::string("enable_codebook=") + (i % 3 == 0 ? "false" : "true"),
                         std::string("dmrs_port=") + ports[random() % 6], "ptrs_port=0:5",
                         "tpmi=" + std::to_string(random() % 28), "hopping_rb_offset=" + std::to_string(random() % 12),
                         "antenna_port_number=LIB_NR_ANTENNA_PORT_NUMBER_" + std::to_string(1 + random() % 4),
                         "antenna_port=LIB_NR_ANTENNA_PORT_" + std::to_string(random() % 4)});
        waveform.set_standard_rules(i % 2 != 0);
        run_t run(waveform);
        run.count_marks(LIB_NR_RESOURCE_MAPPING_PUSCH);
    }
    // A narrowed BWP refuses interlaces, so that what is set for them stays behind: here more than the RB set has.
    one_channel_a_slot_t stale(1);
    stale.set(0, {"ra_type=LIB_NR_SCH_RA_TYPE2", "unused_rb=50"});
    const std::string band = "carrier[0].numerology[0].ul_guard_band";
    nr_test::take(stale, {"carrier[0].ul_bwp[0].rb_number=50", "add " + band + ".guard_band",
                          band + ".guard_band_start[0]=10", "confirm " + band});
    EXPECT_EQ(run_t(stale).count_marks(LIB_NR_RESOURCE_MAPPING_PUSCH), 0u);
}

TEST(lib_nr_ul_phy_pusch_process, works_without_a_configuration_and_tells_what_cannot_be)
{
    nr_test::test_grid_t grid(LIB_NR_SCS_30K, 273, LIB_NR_CHANNEL_FR1_100M);
    lib_nr_ul_phy_pusch_process_t process;
    EXPECT_TRUE(process.phy_sch_remap(1, LIB_NR_REMAPP_MODE_UI_VIEW_MAP));
    EXPECT_TRUE(process.sch_encode_process(1));
    EXPECT_EQ(grid.count_marks(LIB_NR_RESOURCE_MAPPING_PUSCH), 100u * 12 * 13);
    EXPECT_EQ(grid.output(), "");
    process.set_mcs_table(TABLE_5_1_3_1_4);
    process.update_read_only_parament();
    process.set_mcs_table(TABLE_6_1_4_1_2);
    process.set_modulation(LIB_NR_MODULATION_16QAM);
    process.update_read_only_parament();
    EXPECT_EQ(process.get_modulation(), LIB_NR_MODULATION_QPSK);
    process.set_antenna_port_number(static_cast<lib_nr_antenna_port_number_t>(5));
    process.set_n_ptrs_group(static_cast<lib_nr_sch_ptrs_group_t>(3));
    process.set_n_ptrs_group_sample(static_cast<lib_nr_sch_ptrs_group_sample_t>(2));
    process.set_hopping_mode(static_cast<lib_nr_sch_hopping_mode_t>(3));
    process.phy_sch_remap(3, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
    process.set_hopping_mode(LIB_NR_SCH_HOPPING_MODE_INTRA);
    process.set_ra_type(LIB_NR_SCH_RA_TYPE0);
    process.set_rbg_bitmap(std::vector<unsigned int>(20, 1));
    process.set_hopping_rb_offset(100);
    process.sch_encode_process(5);            // the second hop leaves the grid
    process.sch_encode_process(20);           // the slot leaves the frame
    process.set_ra_type(LIB_NR_SCH_RA_TYPE2); // without RB sets
    process.sch_encode_process(6);
    EXPECT_EQ(grid.output(), "lib_nr_phy_sch_process_t::_phy_sch_payload_generation : Error MCS table!\n"
                             "lib_nr_phy_sch_process_t::update_read_only_parament : Error modulation!\n"
                             "lib_nr_ul_phy_pusch_process_t::set_antenna_port_number : Error antenna port number\n"
                             "lib_nr_ul_phy_pusch_process_t::set_n_ptrs_group : Error PT-RS N^{PT-RS}_{group}\n"
                             "lib_nr_ul_phy_pusch_process_t::set_n_ptrs_group_sample : Error PT-RS N^{group}_{sample}\n"
                             "lib_nr_ul_phy_pusch_process_t::_phy_sch_view_re_map : Error hopping mode!\n"
                             " mapping error\n mapping error\n");
}

} // namespace
