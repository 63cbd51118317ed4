// From the settings of a PRACH burst to the samples of its frame, beside what cannot be left out: one inverse transform
// of a row and one pass over the frame. And the longest walk over root sequences.
#include "common/lib_fft_plan.h"
#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_prach_resource_manager.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_prach_preamble.h"
#include "phy_ul/lib_nr_ul_phy_prach_process.h"
#include "support/captured_output.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <complex>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

/// Format 0 at 122.88 MS/s and, beside a second carrier far off, at 245.76 MS/s; length 1151 at 120 kHz.
void configure(cfg_nr_waveform_t& waveform, std::int64_t which)
{
    const nr_test::captured_output_t output;
    cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
    carrier.set_carrier_type(LIB_NR_PRACH);
    cfg_nr_prach_t& prach = *carrier.get_ul_prach(0);
    if (which == 2) {
        carrier.set_channel_bandwidth(LIB_NR_CHANNEL_FR2_1_200M);
        carrier.set_numerology(LIB_NR_SCS_120K);
        prach.set_configuration_idx(124);
        prach.set_prach_scs(PRACH_SCS_120K);
        prach.set_lra(PRACH_LRA_1151);
        return;
    }
    prach.set_configuration_idx(27);
    if (which == 1) {
        waveform.add_carrier();
        waveform.get_carrier(1)->set_frequency_offset(60'000'000);
    }
}

void prach_frame(benchmark::State& state)
{
    cfg_nr_waveform_t settings;
    configure(settings, state.range(0));
    const nr_test::captured_output_t output;
    const auto& waveform = settings.get_waveform_manager();
    const auto& carrier = waveform.get_carrier(0);
    const auto& prach = carrier.get_ul_prach(0);
    auto& grid = lib_nr_prach_resource_manager_t::get_inst();
    prach_resource_param_t param;
    param.numerology = carrier.get_numerology();
    param.bandwidth = carrier.get_bandwidth();
    param.row_number = lib_nr_phy_common_t::get_symbol_size(prach.get_Format());
    param.ratio = static_cast<double>(lib_nr_phy_common_t::get_scs_hz_value(param.numerology)) /
                  static_cast<double>(prach.get_prach_scs());
    lib_nr_ul_phy_prach_process_t process;
    lib_nr_new_prach_ofdm_modulator_t modulator;
    std::vector<std::complex<double>> frame(waveform.get_frame_sample_points());
    for (auto _ : state) {
        grid.set_resource_param(param);
        grid.init_payload_mapping();
        process.set_waveform_config(0, 0, 0, waveform);
        process.prach_process();
        modulator.cal_start_symbol(prach.get_configuration_table(), prach.get_configuration_idx(),
                                   prach.get_n_RA_slot(), prach.get_n_RA_t(), prach.get_Format());
        modulator.cal_current_start_locate(prach.get_prach_scs(), prach.get_n_RA_slot(), prach.get_subframe_index(),
                                           prach.get_slot_index());
        modulator.set_prach_ofdm_info(grid.get_prach_ofdm_info());
        std::fill(frame.begin(), frame.end(), 0.0);
        modulator.add_frame(grid.get_prach_payload_mapping(), 0, frame.size(), frame.data(), frame.size());
        benchmark::DoNotOptimize(frame.data());
    }
}

void prach_frame_unavoidable(benchmark::State& state)
{
    cfg_nr_waveform_t settings;
    configure(settings, state.range(0));
    const auto& waveform = settings.get_waveform_manager();
    const double rate = waveform.get_waveform_sample_rate_hz();
    std::vector<std::complex<double>> frame(waveform.get_frame_sample_points());
    std::vector<std::complex<double>> row(
        static_cast<std::size_t>(rate / static_cast<double>(waveform.get_carrier(0).get_ul_prach(0).get_prach_scs())));
    const auto& plan = vek::common_lib::lib_fft_plan_t::get(row.size(), vek::common_lib::LIB_FFT_INVERSE);
    for (auto _ : state) {
        std::fill(row.begin(), row.end(), 1.0);
        plan.execute(row.data(), row.data());
        std::fill(frame.begin(), frame.end(), 0.0);
        benchmark::DoNotOptimize(frame.data());
        benchmark::DoNotOptimize(row.data());
    }
}

void prach_longest_root_walk(benchmark::State& state)
{
    const nr_test::captured_output_t output;
    prach_preamble_setting_t setting{prach_format_3, PRACH_LRA_839, RESTRICTED_TYPE_A, 15, 0, 63};
    for (auto _ : state) {
        setting.sequence_index = (setting.sequence_index + 1) % 838;
        benchmark::DoNotOptimize(lib_nr_prach_preamble_t::get_preamble(setting));
    }
}

} // namespace

BENCHMARK(prach_frame)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(prach_frame_unavoidable)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(prach_longest_root_walk);
