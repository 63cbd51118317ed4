#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_resource_manager.h"

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Generates the PDCCH, TS 38.211 clause 7.3.2. Bound to its channel, it writes nothing yet.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_pdcch_process_t
{
public:
    /// Binds the process to an entry of a carrier's list, for the pass of a numerology. Always true.
    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int dci,
                             const lib_nr_waveform_configure_manager_t& waveform);
    /// Generates one slot of the frame.
    bool pdcch_encode_process(unsigned int slot);
    /// Maps a slot of the frame in one of the two modes.
    bool dl_phy_pdcch_remap(unsigned int slot, lib_nr_remap_mode_t mode);

private:
    unsigned int m_carrier_index = 0;
    unsigned int m_numerology_index = 0;
    unsigned int m_dci_index = 0;
};

} // namespace vek::nr_mod_lib
