#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_preset.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' choices of a downlink test model (TS 38.141-1 and TS 38.141-2 clause 4.9.2), which
/// `cfg_nr_carrier_t::deal_test_model` lays on the carrier. The duplex type also decides how every PDSCH of the carrier
/// draws its data, applied or not: in TDD those of one RNTI share one sequence.
///
/// In NTN mode a bandwidth that has none becomes 30 MHz; outside it any is stored. Frequency range, test model, spacing
/// and duplex type follow the bandwidth.
class NR_MOD_LIB_EXPORT cfg_nr_dl_tm_t : public cfg_nr_preset_t<lib_nr_dl_tm_configure_manager_t>
{
public:
    explicit cfg_nr_dl_tm_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_preset_t(waveform, "cfg_nr_dl_tm_t")
    {}

    /// What the list of the frequency range has not becomes its first; the modulation follows.
    bool set_test_model(lib_nr_test_mode_t test_model) { return _target().set_test_model(test_model); }
    lib_nr_test_mode_t get_test_model() const { return _target().get_test_model(); }
    /// Prints a trace line.
    std::vector<lib_nr_test_mode_t> get_valid_test_model_list() const { return _target().get_valid_test_model_list(); }
    std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list() const;
    /// A spacing that the bandwidth has, 240 kHz too, though no channel can be sent there; any other becomes the
    /// list's first.
    bool set_numerology(lib_nr_numerology_type_t numerology) { return _target().set_numerology(numerology); }
    lib_nr_numerology_type_t get_numerology() const { return _target().get_numerology(); }
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const
    {
        return _target().get_valid_numerology_list();
    }
    /// Identity of cell and PDCCH. Applied, it is limited to 1007 for the cell and to 65535 for the PDCCH, where values
    /// past the range of an int are -1, the cell's.
    bool set_n_id(unsigned int n_id) { return _target().set_n_id(n_id); }
    unsigned int get_n_id() const { return _target().get_n_id(); }
    /// 1 or 2; any other value becomes 1, but with TM1.1 of FR1, which takes all. Applied, it is the number of
    /// antennas, 1 to 32; a PDSCH sends one layer, the first.
    bool set_layers(unsigned int layers) { return _target().set_layers(layers); }
    unsigned int get_layers() const { return _target().get_layers(); }
    /// What the test model's list has not becomes its first.
    bool set_modulation(lib_nr_modulation_type_t modulation) { return _target().set_modulation(modulation); }
    lib_nr_modulation_type_t get_modulation() const { return _target().get_modulation(); }
    std::vector<lib_nr_modulation_type_t> get_valid_modulation_list() const
    {
        return _target().get_valid_modulation_list();
    }
    /// Of the bandwidth.
    lib_nr_freq_range_type_t get_frequency_range() const { return _target().get_frequency_range(); }
};

} // namespace vek::nr_mod_lib
