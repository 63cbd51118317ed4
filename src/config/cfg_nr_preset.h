#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' choices in one family of presets: what the families have in common. Nothing of a choice
/// reaches the carrier until the family's operation of `cfg_nr_carrier_t` applies it. Setters return true when the
/// stored value changed.
template <class choice_t>
class NR_MOD_LIB_EXPORT cfg_nr_preset_t : public cfg_nr_single_cursor_t
{
public:
    /// For the host's own use: nothing follows it.
    bool set_enable(bool enable) { return _target().set_enable(enable); }
    bool get_enable() const { return _target().get_enable(); }
    /// What the list has not becomes its first, or what the family tells; spacing, duplex type and row follow.
    bool set_bandwidth(lib_nr_channel_bw_type_t bandwidth) { return _target().set_bandwidth(bandwidth); }
    lib_nr_channel_bw_type_t get_bandwidth() const { return _target().get_bandwidth(); }
    /// What the list has not becomes its first. Non-terrestrial carriers and the bandwidths of FR2 leave no choice.
    bool set_duplex_type(lib_nr_duplex_type_t duplex_type) { return _target().set_duplex_type(duplex_type); }
    lib_nr_duplex_type_t get_duplex_type() const { return _target().get_duplex_type(); }
    std::vector<lib_nr_duplex_type_t> get_valid_duplex_type_list() const
    {
        return _target().get_valid_duplex_type_list();
    }
    /// Whether the waveform gets the phase terms of the radio frequency; at 0 Hz it gets none.
    bool set_phase_compensation_state(bool state) { return _target().set_phase_compensation_state(state); }
    bool get_phase_compensation_state() const { return _target().get_phase_compensation_state(); }
    /// Radio frequency of the waveform in hertz, taken as it is; NaN changes nothing.
    bool set_radio_frequency(double radio_frequency) { return _target().set_radio_frequency(radio_frequency); }
    double get_radio_frequency() const { return _target().get_radio_frequency(); }

protected:
    using cfg_nr_single_cursor_t::cfg_nr_single_cursor_t;
    ~cfg_nr_preset_t() = default;
    cfg_nr_preset_t(const cfg_nr_preset_t&) = default;

    choice_t& _target() { return _carrier().template get_preset<choice_t>(); }
    const choice_t& _target() const { return _carrier().template get_preset<choice_t>(); }
};

} // namespace vek::nr_mod_lib
