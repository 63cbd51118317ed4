// A coded slot of 273 RBs and 256QAM, PDSCH and PUSCH, from its settings to the payload map, beside its plain stages
// one after the other on buffers that are there, and the same without coding. Both channels have the same cells and
// blocks.
#include "manager/lib_nr_waveform_configure_manager.h"
#include "phy/lib_nr_resource_manager.h"
#include "phy_common/lib_nr_crc_calculator.h"
#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"
#include "phy_common/lib_nr_ldpc_rate_match.h"
#include "phy_common/lib_nr_pn_payload.h"
#include "phy_common/lib_nr_sequence_generator.h"
#include "phy_dl/lib_nr_dl_phy_pdsch_process.h"
#include "phy_ul/lib_nr_ul_phy_pusch_process.h"
#include "support/captured_output.h"

#include <benchmark/benchmark.h>

#include <complex>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using bits_t = std::vector<unsigned char>;

constexpr unsigned int k_cells = 273 * 12 * 13 + 273 * 6; // one symbol of DMRS, every second subcarrier of it data
constexpr unsigned int k_order = 8;
constexpr unsigned int k_block_size = 319784; // at rate 948 / 1024
constexpr unsigned int k_slots = 20;

lib_nr_channel_resource_manager_t& grid() { return lib_nr_channel_resource_manager_t::get_inst(); }

void set_up_grid(const lib_nr_carrier_configure_manager_t& carrier)
{
    grid().set_numerology(LIB_NR_SCS_30K);
    grid().set_rb_number(273);
    grid().set_channel_bandwidth(carrier.get_bandwidth());
    grid().set_cyclic_prefix_type(LIB_NR_NORMAL_CP);
    grid().init_resource_mapping();
    grid().init_payload_mapping();
}

lib_nr_dl_sch_configure_manager_t& channel_for(const lib_nr_dl_phy_pdsch_process_t&,
                                               lib_nr_carrier_configure_manager_t& carrier)
{
    return carrier.get_dl_sch(0);
}

lib_nr_ul_sch_configure_manager_t& channel_for(const lib_nr_ul_phy_pusch_process_t&,
                                               lib_nr_carrier_configure_manager_t& carrier)
{
    carrier.set_carrier_type(LIB_NR_UPLINK);
    return carrier.get_ul_sch(0);
}

template <class process_t>
void sch_slot(benchmark::State& state)
{
    const nr_test::captured_output_t silence;
    lib_nr_waveform_configure_manager_t waveform;
    process_t process;
    auto& channel = channel_for(process, waveform.get_carrier(0));
    channel.set_enable_coding(state.range(0) != 0);
    channel.set_mcs_table(TABLE_5_1_3_1_2);
    channel.set_mcs(27);
    set_up_grid(waveform.get_carrier(0));
    process.set_waveform_config(0, 0, 0, waveform);
    for (unsigned int slot = 0; slot < k_slots; ++slot)
        process.phy_sch_remap(slot, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
    unsigned int slot = 0;
    for (auto _ : state) {
        process.set_waveform_config(0, 0, 0, waveform);
        benchmark::DoNotOptimize(process.sch_encode_process(slot));
        slot = (slot + 1) % k_slots;
    }
    state.SetItemsProcessed(state.iterations() * k_cells);
}

void pdsch_slot(benchmark::State& state) { sch_slot<lib_nr_dl_phy_pdsch_process_t>(state); }
void pusch_slot(benchmark::State& state) { sch_slot<lib_nr_ul_phy_pusch_process_t>(state); }

/// The coding stages alone: from a payload to the bits that are scrambled.
void encode(const bits_t& payload, bits_t& coded)
{
    bits_t block;
    lib_nr_crc_calculator_t crc;
    crc.set_crc_type(LIB_NR_CRC_TYPE_24A);
    crc.deal_crc_attachment(payload, block);
    std::vector<bits_t> blocks;
    lib_nr_ldpc_code_block_segmentation_t().deal_code_block_segmentation(block, blocks);
    lib_nr_ldpc_coding_t coder;
    for (bits_t& code_block : blocks)
        coder.deal_ldpc_coding(code_block, code_block);
    lib_nr_ldpc_rate_match_t rate_match;
    rate_match.set_c(static_cast<unsigned int>(blocks.size()));
    rate_match.set_q_m(k_order);
    rate_match.set_g(k_cells * k_order);
    rate_match.deal_rate_match(blocks, blocks);
    coded.clear();
    for (const bits_t& code_block : blocks)
        coded.insert(coded.end(), code_block.begin(), code_block.end());
}

void sch_slot_plain_stages(benchmark::State& state)
{
    const nr_test::captured_output_t silence;
    const lib_nr_waveform_configure_manager_t waveform;
    set_up_grid(waveform.get_carrier(0));
    const bool is_coded = state.range(0) != 0;
    lib_nr_pn_payload_t source(LIB_NR_PN9);
    const lib_nr_modulator_t modulator(LIB_NR_MODULATION_256QAM);
    bits_t payload;
    bits_t bits;
    std::vector<std::complex<double>> symbols;
    unsigned int slot = 0;
    for (auto _ : state) {
        source.generate(is_coded ? k_block_size : k_cells * k_order, payload);
        is_coded ? encode(payload, bits) : bits.swap(payload);
        lib_nr_sequence_generator_t::add_pseudo_random_bits(1u << 15, bits.size(), bits.data(), bits.data());
        modulator.deal_nr_modulation(bits, symbols);
        for (unsigned int symbol = 0; symbol < 13; ++symbol)
            grid().write_run({slot * 14 + symbol, 0, 273 * 12}, &symbols[symbol * 273 * 12]);
        slot = (slot + 1) % k_slots;
        benchmark::DoNotOptimize(symbols.data());
    }
    state.SetItemsProcessed(state.iterations() * k_cells);
}

BENCHMARK(pdsch_slot)->ArgName("coded")->Arg(1)->Arg(0);
BENCHMARK(pusch_slot)->ArgName("coded")->Arg(1)->Arg(0);
BENCHMARK(sch_slot_plain_stages)->Name("pdsch_slot_plain_stages")->ArgName("coded")->Arg(1)->Arg(0);
BENCHMARK(sch_slot_plain_stages)->Name("pusch_slot_plain_stages")->ArgName("coded")->Arg(1)->Arg(0);

} // namespace
