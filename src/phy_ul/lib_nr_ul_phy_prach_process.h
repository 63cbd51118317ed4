#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy/lib_nr_resource_manager.h"

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Generates the random access preamble, TS 38.211 clause 6.3.3. Today it is bound to its burst and writes nothing.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_prach_process_t
{
public:
    /// Binds the process to a burst of a carrier, in a slot and for the pass of a numerology. Always true.
    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int burst, unsigned int slot,
                             const lib_nr_waveform_configure_manager_t& waveform);
    /// Generates the preamble and writes it into the PRACH grid.
    bool prach_process();
    /// Notes where the burst lies, for the view.
    bool nr_ul_phy_prach_re_map(lib_nr_remap_mode_t mode);

private:
    unsigned int m_carrier_index = 0;
    unsigned int m_numerology_index = 0;
    unsigned int m_burst_index = 0;
    unsigned int m_slot = 0;
};

} // namespace vek::nr_mod_lib
