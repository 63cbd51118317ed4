#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_preset_configure_manager.h"
#include "phy_common/lib_nr_sch_type.h"
#include "phy_common/lib_nr_ul_frc_type.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

struct lib_nr_ul_frc_row_t;

/// The choice of an uplink fixed reference channel for a carrier. The rules are told in its façade, `cfg_nr_ul_frc_t`.
/// A value that its list does not offer becomes the list's first.
class NR_MOD_LIB_EXPORT lib_nr_ul_frc_configure_manager_t : public lib_nr_preset_configure_manager_t
{
public:
    lib_nr_ul_frc_configure_manager_t() { init(); }

    /// Everything but the NTN flag back to its default.
    void init() override;

    bool set_fixed_reference_channels(lib_nr_ul_fixed_reference_channels_t family);
    lib_nr_ul_fixed_reference_channels_t get_fixed_reference_channels() const { return m_fixed_reference_channels; }
    std::vector<lib_nr_ul_fixed_reference_channels_t> get_valid_fixed_reference_channels_list() const;
    bool set_frc_reference_channels(lib_nr_ul_frc_reference_channel_t channel);
    lib_nr_ul_frc_reference_channel_t get_frc_reference_channels() const { return m_frc_reference_channels; }
    std::vector<lib_nr_ul_frc_reference_channel_t> get_valid_frc_reference_channels_list() const;
    bool set_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list() const;
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const;
    bool set_duplex_type(lib_nr_duplex_type_t duplex_type);
    std::vector<lib_nr_duplex_type_t> get_valid_duplex_type_list() const;
    bool set_periodicity(double periodicity);
    double get_periodicity() const { return m_periodicity; }
    std::vector<double> get_valid_periodicity_list() const;
    bool set_tdd_ul_slot_number(unsigned int number);
    unsigned int get_tdd_ul_slot_number() const { return m_tdd_ul_slot_number; }
    bool set_rb_offset(unsigned int rb_offset);
    unsigned int get_rb_offset() const { return m_rb_offset; }
    bool set_mapping_type(lib_nr_sch_dmrs_mapping_type_t mapping_type);
    lib_nr_sch_dmrs_mapping_type_t get_mapping_type() const { return m_mapping_type; }
    std::vector<lib_nr_sch_dmrs_mapping_type_t> get_valid_mapping_type_list() const;
    bool set_dmrs_type_a_position(unsigned int position);
    unsigned int get_dmrs_type_a_position() const { return m_dmrs_type_a_position; }
    std::vector<unsigned int> get_valid_dmrs_type_a_position_list() const;
    bool set_interlace_index(unsigned int index);
    unsigned int get_interlace_index() const { return m_interlace_index; }

    // What the channel fixes

    lib_nr_numerology_type_t get_numerolgy() const;
    unsigned int get_rb_num() const;
    unsigned int get_symbol_number() const;
    unsigned int get_layers() const;
    bool get_enable_transfer_precoding() const;
    unsigned int get_dmrs_additional_position() const;
    /// Whether it is interlaced.
    bool is_type_2() const;
    /// Resource blocks at the end of the RB set that an interlaced channel leaves out, so that it has those it is told;
    /// 0 for any other.
    unsigned int get_unused_rb() const;

    /// Slots of the frame, as text: all of them, or with TDD the uplink slots at the end of each period.
    std::string get_sent_slots() const;
    /// A period of the TDD pattern: a letter S for each slot that is not of the uplink, then a U for each that is.
    std::string get_slot_allocation_str() const;

private:
    const lib_nr_ul_frc_row_t& _row() const;
    unsigned int _get_slot_num() const;
    unsigned int _slots_in_period() const;
    lib_nr_freq_range_type_t _get_freq_range_type() const;
    std::vector<lib_nr_channel_bw_type_t> _bandwidths_with_room(lib_nr_freq_range_type_t range) const;
    lib_nr_channel_bw_type_t _interlace_bandwidth() const;
    unsigned int _last_rb_offset() const;

    lib_nr_ul_fixed_reference_channels_t m_fixed_reference_channels = LIB_NR_FR1_FRC_A_1;
    lib_nr_ul_frc_reference_channel_t m_frc_reference_channels = LIB_NR_G_FR1_A1_1;
    double m_periodicity = 2.0;
    unsigned int m_tdd_ul_slot_number = 1;
    unsigned int m_rb_offset = 0;
    lib_nr_sch_dmrs_mapping_type_t m_mapping_type = LIB_NR_DMRS_MAPPING_TYPEA;
    unsigned int m_dmrs_type_a_position = 2;
    unsigned int m_interlace_index = 0;
};

} // namespace vek::nr_mod_lib
