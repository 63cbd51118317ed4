#include "config/cfg_nr_waveform.h"
#include "phy/lib_nr_phy.h"

#include <iostream>
#include <pugixml.hpp>

// Saves a configuration as XML below a node of the host's own, recalls it into another waveform, and shows that both
// generate the same samples.

namespace
{

using namespace vek::nr_mod_lib;

lib_nr_phy_t::signal_t generated(cfg_nr_waveform_t& waveform)
{
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    return engine.nr_phy_process() ? engine.get_baseband_signal_data() : lib_nr_phy_t::signal_t{};
}

} // namespace

int main(int argc, char** argv)
{
    const char* file = argc > 1 ? argv[1] : "settings.xml";

    cfg_nr_waveform_t waveform;
    cfg_nr_carrier_t* carrier = waveform.get_carrier(0);
    carrier->set_channel_bandwidth(LIB_NR_CHANNEL_FR1_20M);
    carrier->get_dl_ssb()->set_enable(true);
    carrier->get_dl_dci(0)->set_enable(true);

    pugi::xml_document saved;
    pugi::xml_node node = saved.append_child("my_settings"); // any name; the protocol's attribute marks it
    waveform.save_setting(node);
    if (!saved.save_file(file))
        return 1;

    pugi::xml_document loaded;
    cfg_nr_waveform_t recalled;
    if (!loaded.load_file(file) || !recalled.recall_setting(loaded.document_element()))
        return 1; // no XML, or the settings of another protocol

    const auto samples = generated(waveform);
    const bool same = !samples.empty() && samples == generated(recalled);
    std::cerr << file << ": " << samples.size() << (same ? " samples, the same" : " samples, but others")
              << " after the recall\n";
    return same ? 0 : 1;
}
