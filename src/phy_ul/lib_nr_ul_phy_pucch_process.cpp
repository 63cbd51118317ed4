#include "phy_ul/lib_nr_ul_phy_pucch_process.h"

namespace vek::nr_mod_lib
{

bool lib_nr_ul_phy_pucch_process_t::deal_ul_pucch_resource_mapping(
    const lib_nr_waveform_configure_manager_t& /*waveform*/, unsigned int /*carrier*/, unsigned int /*numerology*/)
{
    return true;
}

bool lib_nr_ul_phy_pucch_process_t::deal_ul_pucch_link_process(const lib_nr_waveform_configure_manager_t& /*waveform*/,
                                                               unsigned int /*carrier*/, unsigned int /*numerology*/)
{
    return true;
}

} // namespace vek::nr_mod_lib
