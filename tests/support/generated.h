#pragma once

#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_phy.h"
#include "receiver/ofdm_receiver.h"
#include "support/captured_output.h"

#include <gtest/gtest.h>
#include <string>

namespace nr_test
{

/// A generated waveform: samples, what the run printed, and what a receiver has to know of a carrier.
struct generated_t
{
    signal_t samples;
    std::string output;
    ofdm_setup_t setup;
};

/// What a receiver has to know of a carrier.
inline ofdm_setup_t setup_of(const vek::nr_mod_lib::lib_nr_waveform_configure_manager_t& waveform,
                             unsigned int carrier = 0)
{
    const auto& configuration = waveform.get_carrier(carrier);
    ofdm_setup_t setup;
    setup.mu = configuration.get_numerology();
    setup.sample_rate = waveform.get_waveform_sample_rate_hz();
    const auto cp_type = configuration.get_carrier_type() == vek::nr_mod_lib::LIB_NR_DOWNLINK
                             ? configuration.get_dl_bwp(0).get_cp_type()
                             : configuration.get_ul_bwp(0).get_cp_type();
    setup.extended_prefix = cp_type == vek::nr_mod_lib::LIB_NR_EXTEND_CP;
    setup.frequency_offset = configuration.get_frequency_offset_hz();
    setup.standard_rules = waveform.get_standard_rules();
    if (waveform.get_phase_compensation_enable())
        setup.radio_frequency = waveform.get_radio_frequency() + (setup.standard_rules ? setup.frequency_offset : 0.0);
    return setup;
}

/// Runs the engine, which must succeed. The set-up is that of one carrier, its centre brought to 0 Hz.
inline generated_t generate(const vek::nr_mod_lib::cfg_nr_waveform_t& waveform, unsigned int carrier = 0)
{
    generated_t generated;
    const captured_output_t output;
    generated.setup = setup_of(waveform.get_waveform_manager(), carrier);
    vek::nr_mod_lib::lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    EXPECT_TRUE(engine.nr_phy_process()) << output.text();
    generated.samples = mixed_down(engine.get_baseband_signal_data(), generated.setup);
    generated.output = output.text();
    return generated;
}

} // namespace nr_test
