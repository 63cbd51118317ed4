#include "phy_ul/lib_nr_ul_phy_srs_process.h"

namespace vek::nr_mod_lib
{

bool lib_nr_ul_phy_srs_process_t::set_waveform_config(unsigned int carrier, unsigned int frame, unsigned int numerology,
                                                      unsigned int srs,
                                                      const lib_nr_waveform_configure_manager_t& /*waveform*/)
{
    m_carrier_index = carrier;
    m_frame = frame;
    m_numerology_index = numerology;
    m_srs_index = srs;
    return true;
}

bool lib_nr_ul_phy_srs_process_t::srs_process(unsigned int /*slot*/) { return true; }

bool lib_nr_ul_phy_srs_process_t::nr_ul_phy_srs_re_map(unsigned int /*slot*/, lib_nr_remap_mode_t /*mode*/)
{
    return true;
}

} // namespace vek::nr_mod_lib
