#include "phy_dl/lib_nr_dl_phy_pdsch_process.h"

namespace vek::nr_mod_lib
{

bool lib_nr_dl_phy_pdsch_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology,
                                                        unsigned int channel,
                                                        const lib_nr_waveform_configure_manager_t& /*waveform*/)
{
    m_channel_index = channel;
    return _bind(carrier, numerology);
}

} // namespace vek::nr_mod_lib
