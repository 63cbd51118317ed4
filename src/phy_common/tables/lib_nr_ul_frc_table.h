#pragma once

#include "phy_common/lib_nr_mcs_table_type.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_ul_frc_type.h"

#include <vector>

namespace vek::nr_mod_lib
{

/// An uplink fixed reference channel.
struct lib_nr_ul_frc_row_t
{
    unsigned int interlace_bandwidth_mhz; ///< of an interlaced channel, which has this bandwidth alone; else 0
    lib_nr_numerology_type_t numerology;
    unsigned int rb_num;
    unsigned int symbol_num;
    unsigned int dmrs_additional_position;
    unsigned int layers;
    bool transform_precoding;
};

/// What the channels of a family have in common.
struct lib_nr_ul_frc_family_t
{
    bool has_mapping_type_a;
    bool has_mapping_type_b;
    mcs_table_t mcs_table;
    unsigned int mcs;
};

/// The first row for a value that is no channel.
const lib_nr_ul_frc_row_t& get_ul_frc_row(lib_nr_ul_frc_reference_channel_t channel);

/// Null for a value that is no family.
const lib_nr_ul_frc_family_t* find_ul_frc_family(lib_nr_ul_fixed_reference_channels_t family);

/// The channels of a family, in their order; none for a value that is no family.
std::vector<lib_nr_ul_frc_reference_channel_t> get_ul_frc_channels(lib_nr_ul_fixed_reference_channels_t family);

} // namespace vek::nr_mod_lib
