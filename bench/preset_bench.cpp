// Calls a second of each preset at 100 MHz, each laid on the carrier that the one before left.
#include "config/cfg_nr_waveform.h"
#include "support/captured_output.h"

#include <benchmark/benchmark.h>

namespace
{

using namespace vek::nr_mod_lib;

template <class choose_t, class deal_t>
void preset(benchmark::State& state, choose_t choose, deal_t deal)
{
    nr_test::captured_output_t silence;
    cfg_nr_waveform_t waveform;
    cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
    choose(carrier);
    for (auto _ : state) {
        deal(carrier);
        silence.clear();
    }
    state.SetItemsProcessed(state.iterations());
}

void choose_nothing(cfg_nr_carrier_t&) {}

BENCHMARK_CAPTURE(
    preset, dl_tm, [](cfg_nr_carrier_t& carrier) { carrier.get_dl_tm()->set_test_model(LIB_NR_FR1_TM1_2); },
    [](cfg_nr_carrier_t& carrier) { carrier.deal_test_model(); });
BENCHMARK_CAPTURE(preset, dl_frc, choose_nothing,
                  [](cfg_nr_carrier_t& carrier) { carrier.deal_dl_fixed_reference_channels(); });
BENCHMARK_CAPTURE(
    preset, ul_frc,
    [](cfg_nr_carrier_t& carrier) {
        carrier.get_ul_frc()->set_fixed_reference_channels(LIB_NR_FR1_FRC_A_3);
        carrier.get_ul_frc()->set_frc_reference_channels(LIB_NR_G_FR1_A3_28);
        carrier.get_ul_frc()->set_bandwidth(LIB_NR_CHANNEL_FR1_100M);
    },
    [](cfg_nr_carrier_t& carrier) { carrier.deal_ul_fixed_reference_channels(); });
BENCHMARK_CAPTURE(preset, ul_rmc, choose_nothing,
                  [](cfg_nr_carrier_t& carrier) { carrier.deal_ul_reference_measurement_channels(); });
BENCHMARK_CAPTURE(preset, pucch_test_model, choose_nothing,
                  [](cfg_nr_carrier_t& carrier) { carrier.get_pucch_test_model()->apply_test_model(); });

} // namespace
