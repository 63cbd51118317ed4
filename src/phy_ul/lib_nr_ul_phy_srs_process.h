#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_resource_manager.h"

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Generates the sounding reference signal, TS 38.211 clause 6.4.1.4. Bound to its channel, it writes
/// nothing yet.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_srs_process_t
{
public:
    /// Binds the process to an entry of a carrier's list, for a frame and the pass of a numerology. Always true.
    bool set_waveform_config(unsigned int carrier, unsigned int frame, unsigned int numerology, unsigned int srs,
                             const lib_nr_waveform_configure_manager_t& waveform);
    /// Generates one slot of the frame.
    bool srs_process(unsigned int slot);
    /// Maps a slot of the frame in one of the two modes.
    bool nr_ul_phy_srs_re_map(unsigned int slot, lib_nr_remap_mode_t mode);

private:
    unsigned int m_carrier_index = 0;
    unsigned int m_frame = 0;
    unsigned int m_numerology_index = 0;
    unsigned int m_srs_index = 0;
};

} // namespace vek::nr_mod_lib
