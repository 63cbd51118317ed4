#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_preset.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' choices of an uplink reference measurement channel (TS 38.521-1 and TS 38.521-2 annex A),
/// which `cfg_nr_carrier_t::deal_ul_reference_measurement_channels` lays on the carrier.
///
/// A named allocation gives offset and number of the resource blocks within the bandwidth. Frequency range, duplex
/// type, spacing, allocation and modulation follow the bandwidth, each to the first value on offer where it is not.
class NR_MOD_LIB_EXPORT cfg_nr_ul_rmc_t : public cfg_nr_preset_t<lib_nr_ul_rmc_configure_manager_t>
{
public:
    explicit cfg_nr_ul_rmc_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_preset_t(waveform, "cfg_nr_ul_rmc_t")
    {}

    /// Of the frequency range.
    bool set_rmc_rb_allocation(lib_nr_ul_rmc_rb_allocation_t allocation)
    {
        return _target().set_rmc_rb_allocation(allocation);
    }
    lib_nr_ul_rmc_rb_allocation_t get_rmc_rb_allocation() const { return _target().get_rmc_rb_allocation(); }
    std::vector<lib_nr_ul_rmc_rb_allocation_t> get_valid_rmc_rb_allocation_list() const
    {
        return _target().get_valid_rmc_rb_allocation_list();
    }
    std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list() const
    {
        return _target().get_valid_bandwidth_list();
    }
    /// Of the bandwidth.
    bool set_numerology(lib_nr_numerology_type_t numerology) { return _target().set_numerology(numerology); }
    lib_nr_numerology_type_t get_numerology() const { return _target().get_numerology(); }
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const
    {
        return _target().get_valid_numerology_list();
    }
    /// Of the frequency range; pi/2-BPSK needs transform precoding.
    bool set_modulation(lib_nr_modulation_type_t modulation) { return _target().set_modulation(modulation); }
    lib_nr_modulation_type_t get_modulation() const { return _target().get_modulation(); }
    std::vector<lib_nr_modulation_type_t> get_valid_modulation_list() const
    {
        return _target().get_valid_modulation_list();
    }
    /// With it the number of resource blocks is a product of powers of 2, 3 and 5.
    bool set_enable_transfer_precoding(bool enable) { return _target().set_enable_transfer_precoding(enable); }
    bool get_enable_transfer_precoding() const { return _target().get_enable_transfer_precoding(); }
    /// The inner allocations of FR2 as a terminal with modified MPR behaviour has them.
    bool set_modified_mpr_behaviour(bool modified) { return _target().set_modified_mpr_behaviour(modified); }
    bool get_modified_mpr_behaviour() const { return _target().get_modified_mpr_behaviour(); }
    /// Resource blocks of the allocations of x of them, at least 1. While one of these is chosen, x is cut to what it
    /// has room for. The outer left one with transform precoding has no limit: x may be larger than the bandwidth, and
    /// the PUSCH takes as many as fit.
    bool set_x_rb(unsigned int x_rb) { return _target().set_x_rb(x_rb); }
    unsigned int get_x_rb() const { return _target().get_x_rb(); }

    unsigned int get_rb_offset() const { return _target().get_rb_offset(); }
    /// The PUSCH takes them all, but for x above the bandwidth, and the inner full allocation of 400 MHz, whose 66 are
    /// sent as 72 with transform precoding.
    unsigned int get_rb_number() const { return _target().get_rb_number(); }
    lib_nr_freq_range_type_t get_frequency_range() const { return _target().get_frequency_range(); }
};

} // namespace vek::nr_mod_lib
