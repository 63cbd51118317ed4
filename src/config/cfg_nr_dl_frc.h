#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_preset.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' choices of a downlink fixed reference channel (TS 38.101-1 and TS 38.101-2 annex A.3),
/// which `cfg_nr_carrier_t::deal_dl_fixed_reference_channels` lays on the carrier.
///
/// The channel decides the frequency range and, in NTN mode, the spacing too. Where TDD is not to be had the duplex
/// type falls to FDD, and where both are, to FDD as well.
class NR_MOD_LIB_EXPORT cfg_nr_dl_frc_t : public cfg_nr_preset_t<lib_nr_dl_frc_configure_manager_t>
{
public:
    explicit cfg_nr_dl_frc_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_preset_t(waveform, "cfg_nr_dl_frc_t")
    {}

    /// Takes any channel, also one that the list has not: outside NTN mode those of the other mode are sent with the
    /// bandwidths of their range, in NTN mode the others read as its first, with printed lines.
    bool set_fixed_reference_channels(lib_nr_dl_fixed_reference_channels_t channel)
    {
        return _target().set_fixed_reference_channels(channel);
    }
    lib_nr_dl_fixed_reference_channels_t get_fixed_reference_channels() const
    {
        return _target().get_fixed_reference_channels();
    }
    std::vector<lib_nr_dl_fixed_reference_channels_t> get_valid_frc_list() const
    {
        return _target().get_valid_frc_list();
    }
    /// What the list has not becomes its first.
    bool set_numerolgy(lib_nr_numerology_type_t numerology) { return _target().set_numerolgy(numerology); }
    lib_nr_numerology_type_t get_numerolgy() const { return _target().get_numerolgy(); }
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const
    {
        return _target().get_valid_numerology_list();
    }
    std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list() const
    {
        return _target().get_valid_bandwidth_list();
    }
    /// Of the channel.
    lib_nr_freq_range_type_t get_freq_range_type() const { return _target().get_frequency_range(); }
};

} // namespace vek::nr_mod_lib
