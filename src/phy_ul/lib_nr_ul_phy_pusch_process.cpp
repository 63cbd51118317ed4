#include "phy_ul/lib_nr_ul_phy_pusch_process.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

bool lib_nr_ul_phy_pusch_process_t::set_waveform_config(unsigned int carrier, unsigned int numerology,
                                                        unsigned int channel,
                                                        const lib_nr_waveform_configure_manager_t& waveform)
{
    return set_waveform_config_sch(carrier, numerology, waveform.get_carrier(carrier).get_ul_sch(channel), waveform);
}

} // namespace vek::nr_mod_lib
