#include "phy_dl/lib_nr_dl_phy_csirs_process.h"

namespace vek::nr_mod_lib
{

bool lib_nr_dl_phy_csirs_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology,
                                                        unsigned int csirs,
                                                        const lib_nr_waveform_configure_manager_t& /*waveform*/)
{
    m_carrier_index = carrier;
    m_numerology_index = numerology;
    m_csirs_index = csirs;
    return true;
}

bool lib_nr_dl_phy_csirs_process_t::csirs_process(unsigned int /*slot*/) { return true; }

bool lib_nr_dl_phy_csirs_process_t::nr_dl_phy_csirs_re_map(unsigned int /*slot*/, lib_nr_remap_mode_t /*mode*/)
{
    return true;
}

} // namespace vek::nr_mod_lib
