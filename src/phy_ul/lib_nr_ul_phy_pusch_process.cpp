#include "phy_ul/lib_nr_ul_phy_pusch_process.h"

namespace vek::nr_mod_lib
{

bool lib_nr_ul_phy_pusch_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology,
                                                        unsigned int channel,
                                                        const lib_nr_waveform_configure_manager_t& /*waveform*/)
{
    m_channel_index = channel;
    return _bind(carrier, numerology);
}

} // namespace vek::nr_mod_lib
