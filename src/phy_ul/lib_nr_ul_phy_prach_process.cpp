#include "phy_ul/lib_nr_ul_phy_prach_process.h"

namespace vek::nr_mod_lib
{

bool lib_nr_ul_phy_prach_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology,
                                                        unsigned int burst, unsigned int slot,
                                                        const lib_nr_waveform_configure_manager_t& /*waveform*/)
{
    m_carrier_index = carrier;
    m_numerology_index = numerology;
    m_burst_index = burst;
    m_slot = slot;
    return true;
}

bool lib_nr_ul_phy_prach_process_t::prach_process() { return true; }

bool lib_nr_ul_phy_prach_process_t::nr_ul_phy_prach_re_map(lib_nr_remap_mode_t /*mode*/) { return true; }

} // namespace vek::nr_mod_lib
