#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_preset.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' choices of an uplink fixed reference channel (annex A of TS 38.104, for non-terrestrial
/// networks of TS 38.108), which `cfg_nr_carrier_t::deal_ul_fixed_reference_channels` lays on the carrier.
///
/// A channel fixes its spacing, resource blocks, symbols, layers and waveform. Frequency range, mapping type,
/// bandwidth, position of the first DMRS and period follow it, each to the first value on offer where it is not. The
/// bandwidths are those of the channel's frequency range that have room for it; an interlaced channel has one.
class NR_MOD_LIB_EXPORT cfg_nr_ul_frc_t : public cfg_nr_preset_t<lib_nr_ul_frc_configure_manager_t>
{
public:
    explicit cfg_nr_ul_frc_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_preset_t(waveform, "cfg_nr_ul_frc_t")
    {}

    /// Family of channels, in NTN mode those of such networks. A channel of another family gives way to the first.
    bool set_fixed_reference_channels(lib_nr_ul_fixed_reference_channels_t family)
    {
        return _target().set_fixed_reference_channels(family);
    }
    lib_nr_ul_fixed_reference_channels_t get_fixed_reference_channels() const
    {
        return _target().get_fixed_reference_channels();
    }
    std::vector<lib_nr_ul_fixed_reference_channels_t> get_valid_fixed_reference_channels_list() const
    {
        return _target().get_valid_fixed_reference_channels_list();
    }
    /// Channel of the family.
    bool set_frc_reference_channels(lib_nr_ul_frc_reference_channel_t channel)
    {
        return _target().set_frc_reference_channels(channel);
    }
    lib_nr_ul_frc_reference_channel_t get_frc_reference_channels() const
    {
        return _target().get_frc_reference_channels();
    }
    std::vector<lib_nr_ul_frc_reference_channel_t> get_valid_frc_reference_channels_list() const
    {
        return _target().get_valid_frc_reference_channels_list();
    }
    std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list() const
    {
        return _target().get_valid_bandwidth_list();
    }
    /// The spacings of the bandwidth; the channel has one of its own.
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const
    {
        return _target().get_valid_numerology_list();
    }
    /// Period of the TDD pattern in ms, of the list; NaN changes nothing. Limits the uplink slots.
    bool set_periodicity(double periodicity) { return _target().set_periodicity(periodicity); }
    double get_periodicity() const { return _target().get_periodicity(); }
    std::vector<double> get_valid_periodicity_list() const { return _target().get_valid_periodicity_list(); }
    /// Slots of the uplink at the end of each period, from 1 to all.
    bool set_tdd_ul_slot_number(unsigned int number) { return _target().set_tdd_ul_slot_number(number); }
    unsigned int get_tdd_ul_slot_number() const { return _target().get_tdd_ul_slot_number(); }
    /// First resource block, as far up as the bandwidth has room; not of an interlaced channel.
    bool set_rb_offset(unsigned int rb_offset) { return _target().set_rb_offset(rb_offset); }
    unsigned int get_rb_offset() const { return _target().get_rb_offset(); }
    /// Of the channel's list.
    bool set_mapping_type(lib_nr_sch_dmrs_mapping_type_t mapping_type)
    {
        return _target().set_mapping_type(mapping_type);
    }
    lib_nr_sch_dmrs_mapping_type_t get_mapping_type() const { return _target().get_mapping_type(); }
    std::vector<lib_nr_sch_dmrs_mapping_type_t> get_valid_mapping_type_list() const
    {
        return _target().get_valid_mapping_type_list();
    }
    /// First DMRS symbol of mapping type A, 2 and with some channels 3; 0 with mapping type B. A change of the mapping
    /// type leaves it until it or the channel is set again, and applied it then counts as 2 or, any other, as 3.
    bool set_dmrs_type_a_position(unsigned int position) { return _target().set_dmrs_type_a_position(position); }
    unsigned int get_dmrs_type_a_position() const { return _target().get_dmrs_type_a_position(); }
    std::vector<unsigned int> get_valid_dmrs_type_a_position_list() const
    {
        return _target().get_valid_dmrs_type_a_position_list();
    }
    /// Interlace of an interlaced channel, at most 10 at 15 kHz and 5 elsewhere; applied, the highest of these is none,
    /// and interlace 0 stands in for it.
    bool set_interlace_index(unsigned int index) { return _target().set_interlace_index(index); }
    unsigned int get_interlace_index() const { return _target().get_interlace_index(); }

    lib_nr_freq_range_type_t get_frequency_range() const { return _target().get_frequency_range(); }
    lib_nr_numerology_type_t get_numerolgy() const { return _target().get_numerolgy(); }
    unsigned int get_rb_num() const { return _target().get_rb_num(); }
    unsigned int get_symbol_number() const { return _target().get_symbol_number(); }
    unsigned int get_layers() const { return _target().get_layers(); }
    bool get_enable_transfer_precoding() const { return _target().get_enable_transfer_precoding(); }
    unsigned int get_dmrs_additional_position() const { return _target().get_dmrs_additional_position(); }
    /// Whether the channel is interlaced.
    bool is_type_2() const { return _target().is_type_2(); }
    /// A period of the TDD pattern: a letter U for each slot of the uplink, ahead of them an S for each other.
    std::string get_slot_allocation_str() const { return _target().get_slot_allocation_str(); }
};

} // namespace vek::nr_mod_lib
