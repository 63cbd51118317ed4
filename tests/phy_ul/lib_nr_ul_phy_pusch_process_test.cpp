#include "phy_ul/lib_nr_ul_phy_pusch_process.h"

#include "phy_common/lib_nr_pn_payload.h"
#include "phy_common/tables/lib_nr_dmrs_position_table.h"
#include "phy_common/tables/lib_nr_ul_precoding_matrix_table.h"
#include "receiver/sch_receiver.h"
#include "support/generated.h"
#include "support/settings.h"
#include "support/shared_channel.h"
#include "support/test_grid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
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

/// TS 38.214 clause 6.1.2.2: RB by RB. An interlace does not hold a set's last RB by its first number.
std::vector<unsigned int> rbs_of(const lib_nr_carrier_configure_manager_t& carrier,
                                 const lib_nr_ul_sch_configure_manager_t& sch)
{
    const lib_nr_ul_bwp_configure_manager_t& bwp = carrier.get_ul_bwp(sch.get_bwp_id());
    const unsigned int start = bwp.get_rb_offset();
    const unsigned int end = start + bwp.get_rb_number();
    std::vector<unsigned int> rbs;
    if (sch.get_ra_type() == LIB_NR_SCH_RA_TYPE1)
        for (unsigned int i = 0; i < sch.get_rb_num(); ++i)
            rbs.push_back(start + sch.get_rb_offset() + i);
    const unsigned int P = 2u << sch.get_rbg_size();
    if (sch.get_ra_type() == LIB_NR_SCH_RA_TYPE0)
        for (unsigned int rb = start; rb < end; ++rb)
            if (sch.get_rbg_bitmap_v().at(rb / P - start / P) != 0)
                rbs.push_back(rb);
    if (sch.get_ra_type() != LIB_NR_SCH_RA_TYPE2)
        return rbs;
    const unsigned int step = bwp.get_numerology() == LIB_NR_SCS_15K ? 10 : 5;
    const auto sets = carrier.get_numerology_manager(0U).get_ul_guard_band().get_rb_set_info();
    for (const unsigned int interlace : sch.get_interlace_index_v())
        for (unsigned int i = 0; i < sch.get_rb_set_number(); ++i) {
            const auto [first, last] = sets.at(static_cast<std::uint16_t>(sch.get_rb_set_start() + i));
            for (unsigned int rb = first; rb + sch.get_unused_rb() <= last; ++rb)
                if ((rb - first) % step == interlace && (interlace != 0 || rb != last))
                    rbs.push_back(rb);
        }
    return rbs;
}

/// By the tables of the standard; those of two hops from its clause 6.4.1.1.3.
std::vector<unsigned int> dmrs_symbols_of(const lib_nr_ul_sch_configure_manager_t& sch)
{
    const bool is_double = sch.get_dmrs_length() == LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL;
    const bool is_type_b = sch.get_mapping_type() == LIB_NR_DMRS_MAPPING_TYPEB;
    const unsigned int start = is_type_b ? sch.get_first_symbol() : 0;
    const unsigned int front = is_type_b ? 0 : sch.get_l0();
    const unsigned int length = sch.get_first_symbol() + sch.get_symbol_num() - start;
    std::vector<unsigned int> symbols;
    if (sch.get_hopping_mode() == LIB_NR_SCH_HOPPING_MODE_INTRA) {
        const unsigned int hop = length / 2;
        const bool more = sch.get_dmrs_additional_position() == LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1;
        if (!is_type_b && hop < 4)
            return {};
        symbols.push_back(start + front);
        if (more && (is_type_b ? hop >= 5 : front == 2 && hop >= 7))
            symbols.push_back(start + front + 4);
        symbols.push_back(start + hop);
        if (more && length - hop >= 5)
            symbols.push_back(start + hop + 4);
        return symbols;
    }
    const auto* row = get_pusch_dmrs_position_row(is_double, is_type_b, sch.get_dmrs_additional_position(), length);
    for (unsigned int i = 0; row != nullptr && i <= row->number; ++i)
        for (unsigned int second = 0; second <= (is_double ? 1u : 0u); ++second)
            symbols.push_back(start + second + (i > 0 ? row->positions[i - 1] : front));
    return symbols;
}

sch_channel_t channel_of(const lib_nr_carrier_configure_manager_t& carrier, unsigned int index, unsigned int slot)
{
    const lib_nr_ul_sch_configure_manager_t& sch = carrier.get_ul_sch(index);
    const lib_nr_ul_bwp_configure_manager_t& bwp = carrier.get_ul_bwp(sch.get_bwp_id());
    const unsigned int cell = carrier.get_cell_index();
    const unsigned int nid = nr_test::sch_identity(sch.get_nid(), cell);
    const unsigned int rapid = static_cast<unsigned int>(sch.get_rapid()) << 10;
    sch_channel_t channel{sch,
                          cell,
                          bwp.get_cp_type() == LIB_NR_EXTEND_CP ? 12u : 14u,
                          rbs_of(carrier, sch),
                          dmrs_symbols_of(sch),
                          sch.get_rapid() < 0 ? (sch.get_rnti() << 15) + nid : (sch.get_rnti() << 16) + rapid + nid};
    const bool in_slot = sch.get_hopping_mode() == LIB_NR_SCH_HOPPING_MODE_INTRA;
    if (in_slot)
        channel.second_hop = sch.get_first_symbol() + sch.get_symbol_num() / 2;
    const auto size = static_cast<int>(bwp.get_rb_number());
    const auto offset = static_cast<int>(sch.get_hopping_rb_offset());
    const auto end = static_cast<int>(sch.get_rb_offset() + sch.get_rb_num()) + offset;
    for (unsigned int symbol = 0; symbol < channel.symbols_in_slot; ++symbol)
        channel.shifts.push_back(symbol >= channel.second_hop ||
                                         (slot % 2 == 1 && sch.get_hopping_mode() == LIB_NR_SCH_HOPPING_MODE_INTER)
                                     ? offset - (end > size ? size : 0)
                                     : 0);
    channel.ptrs_ports = sch.get_ptrs_port_v();
    channel.precoded = sch.get_enable_transfer_precoding() ? &sch : nullptr;
    return channel;
}

/// The engine's run, and the PUSCHs in it.
class run_t
{
public:
    explicit run_t(const cfg_nr_waveform_t& waveform)
        : m_carrier(waveform.get_waveform_manager().get_carrier(0)), m_generated(nr_test::generate(waveform))
    {}
    sch_channel_t channel(unsigned int index, unsigned int slot = 0) const
    {
        return channel_of(m_carrier, index, slot);
    }
    sch_slot_t receive(unsigned int index, unsigned int slot, unsigned int frame = 0)
    {
        return receive_sch_slot(channel(index, slot), rows(frame), slot,
                                [](unsigned int, unsigned int) { return false; });
    }
    const rows_t& rows(unsigned int frame = 0)
    {
        if (m_frames.size() <= frame)
            m_frames.resize(frame + 1);
        if (m_frames[frame].empty())
            m_frames[frame] =
                nr_test::demodulate_frame(m_generated.samples, m_generated.setup,
                                          nr_test::test_grid_t::grid().get_mapped_subcarrier_number(), 0.0, frame);
        return m_frames[frame];
    }
    /// Cells that belong to PUSCHs; all others are silent.
    std::size_t count_marks()
    {
        const auto& grid = nr_test::test_grid_t::grid();
        std::size_t marks = 0;
        double loudest = 0.0;
        for (unsigned int symbol = 0; symbol < grid.get_mapped_symbol_number(); ++symbol)
            for (unsigned int k = 0; k < grid.get_mapped_subcarrier_number(); ++k)
                if (grid.get_owner(symbol, k) == LIB_NR_RESOURCE_MAPPING_PUSCH)
                    ++marks;
                else
                    loudest = std::max(loudest, std::abs(rows()[symbol][k]));
        EXPECT_LT(loudest, 1e-9);
        return marks;
    }
    const std::string& output() const { return m_generated.output; }

private:
    const lib_nr_carrier_configure_manager_t& m_carrier;
    nr_test::generated_t m_generated;
    std::vector<rows_t> m_frames;
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

void expect_transport_block(run_t& run, unsigned int index, unsigned int slot, lib_nr_pn_payload_t& source)
{
    const sch_slot_t received = run.receive(index, slot);
    EXPECT_LT(received.error, 1e-6) << index;
    bits_t expected;
    source.generate(static_cast<unsigned int>(transport_block_size(run.channel(index, slot))), expected);
    EXPECT_EQ(nr_test::decode_sch({run.channel(index, slot)}, {received}), expected) << index;
}

TEST(pusch, every_mcs_of_every_table_is_decoded)
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
                lib_nr_pn_payload_t source(LIB_NR_PN9);
                expect_transport_block(run, i, i, source);
            }
        }
}

TEST(pusch, every_size_of_a_transform_precoded_allocation_is_decoded)
{
    const std::tuple<const char*, const char*> ptrs[] = {{"2", "2"}, {"2", "4"}, {"4", "2"}, {"4", "4"}, {"8", "4"}};
    const steps_t steps = {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_100M", "carrier[0].ul_bwp[0].rb_number=273",
                           "carrier[0].ncell_id=77"};
    std::vector<unsigned int> sizes;
    for (unsigned int size = 1; size <= 273;) {
        one_channel_a_slot_t waveform(20, steps);
        unsigned int used = 0;
        for (; used < 20 && size <= 273; ++used) {
            const auto& [groups, samples] = ptrs[sizes.size() % 5];
            const std::string sequence = sizes.size() % 3 == 0   ? "DISABLE"
                                         : sizes.size() % 3 == 1 ? "GROUP"
                                                                 : "SEQUENCE";
            waveform.set(used, {"enable_transfer_precoding=true", "rb_num=" + std::to_string(size), "enable_ptrs=true",
                                "modulation=LIB_NR_MODULATION_HALF_PI_BPSK", "rnti=" + std::to_string(size),
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
        for (unsigned int i = 0; i < used; ++i) {
            lib_nr_pn_payload_t source(LIB_NR_PN9);
            expect_transport_block(run, i, i, source);
        }
    }
    EXPECT_EQ(sizes.size(), 53u);
}

// Two channels of one layer in slots of their own on 20 MHz, normal prefix and extended, in one BWP or two, on RB sets:
// every cell holds what it must, and the bits are those of the channel's sequence.
TEST(pusch, random_settings_arrive_bit_by_bit)
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
        nr_test::take(waveform, {"carrier[0].ncell_id=" + up_to(1007)});
        if (i % 4 == 2)
            waveform.set(1, {"bwp_id=1"});
        for (unsigned int index = 0; index < 2; ++index) {
            nr_test::draw_shared_channel(waveform, pusch(index), random);
            cfg_nr_ul_sch_t& sch = *waveform.get_carrier(0)->get_ul_pusch(static_cast<int>(index));
            if (sch.get_enable_transfer_precoding() && sch.get_enable_ptrs())
                sch.set_power_boosting(0.0); // as it must be for PTRS to be exact
            if (sch.get_ra_type() != LIB_NR_SCH_RA_TYPE1)
                sch.set_hopping_rb_offset(0); // the hop could leave the grid
        }
        run_t run(waveform);
        EXPECT_EQ(run.output().find("mapping error"), std::string::npos);
        std::size_t cells = 0;
        for (unsigned int index = 0; index < 2; ++index) {
            const sch_channel_t channel = run.channel(index);
            lib_nr_pn_payload_t source(channel.settings.get_data_source(), {0});
            for (const unsigned int slot : channel.settings.get_slot_allocation_v()) {
                if (channel.rbs.empty())
                    continue;
                const sch_slot_t received = run.receive(index, slot);
                cells += received.cells;
                const bool is_coded = channel.settings.get_enable_coding();
                const std::size_t size = is_coded ? transport_block_size(channel) : received.bits.size();
                bits_t expected;
                source.generate(static_cast<unsigned int>(size), expected);
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
        EXPECT_EQ(run.count_marks(), cells);
        if (HasFailure())
            return;
    }
    EXPECT_GT(decoded_blocks, 200u);
}

} // namespace
