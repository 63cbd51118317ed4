#pragma once

#include "manager/lib_nr_phy_numerology_configure_manager.h"

namespace nr_test
{

/// A numerology of a channel at full width, or from `rb_start` on with `rb_size` resource blocks.
inline vek::nr_mod_lib::lib_nr_phy_numerology_configure_manager_t
numerology_of(vek::nr_mod_lib::lib_nr_numerology_type_t spacing, unsigned int rb_start = 0, unsigned int rb_size = 275,
              vek::nr_mod_lib::lib_nr_channel_bw_type_t bandwidth = vek::nr_mod_lib::LIB_NR_CHANNEL_FR1_100M)
{
    vek::nr_mod_lib::lib_nr_phy_numerology_configure_manager_t numerology;
    numerology.set_numerology(spacing, bandwidth);
    numerology.set_rb_start(rb_start);
    numerology.set_rb_size(rb_size);
    return numerology;
}

} // namespace nr_test
