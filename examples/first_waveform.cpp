#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_phy.h"

#include <iostream>

int main()
{
    using namespace vek::nr_mod_lib;

    cfg_nr_waveform_t waveform; // one 100 MHz downlink carrier, 30 kHz spacing
    waveform.set_radio_frequency(3'500'000'000);
    cfg_nr_carrier_t* carrier = waveform.get_carrier(0);
    carrier->set_ncell_id(17);
    carrier->get_dl_ssb()->set_enable(true);
    carrier->get_dl_ssb()->set_active_idx("0:3");

    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    if (!engine.nr_phy_process())
        return 1;

    const auto& samples = engine.get_baseband_signal_data(); // std::vector<std::complex<double>>
    std::cerr << samples.size() << " samples at " << waveform.get_waveform_sample_rate() << " Hz\n";
}
