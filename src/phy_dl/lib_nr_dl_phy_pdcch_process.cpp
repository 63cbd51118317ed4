#include "phy_dl/lib_nr_dl_phy_pdcch_process.h"

namespace vek::nr_mod_lib
{

bool lib_nr_dl_phy_pdcch_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int dci,
                                                        const lib_nr_waveform_configure_manager_t& /*waveform*/)
{
    m_carrier_index = carrier;
    m_numerology_index = numerology;
    m_dci_index = dci;
    return true;
}

bool lib_nr_dl_phy_pdcch_process_t::pdcch_encode_process(unsigned int /*slot*/) { return true; }

bool lib_nr_dl_phy_pdcch_process_t::dl_phy_pdcch_remap(unsigned int /*slot*/, lib_nr_remap_mode_t /*mode*/)
{
    return true;
}

} // namespace vek::nr_mod_lib
