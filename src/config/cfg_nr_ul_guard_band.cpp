#include "config/cfg_nr_ul_guard_band.h"

#include "manager/lib_nr_waveform_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_ul_guard_band_t::cfg_nr_ul_guard_band_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform)
{
    init();
}

void cfg_nr_ul_guard_band_t::init()
{
    m_carrier_index = 0;
    m_numerology_index = 0;
}

bool cfg_nr_ul_guard_band_t::set_current_guard_band_index(unsigned int carrier, unsigned int numerology)
{
    if (carrier >= m_waveform.get_carrier_number() ||
        numerology >= m_waveform.get_carrier(carrier).get_numerology_number())
        return false;
    m_carrier_index = carrier;
    m_numerology_index = numerology;
    return true;
}

const lib_nr_ul_guard_band_configure_manager_t& cfg_nr_ul_guard_band_t::_get_guard_band_manager() const
{
    return m_waveform.get_carrier(m_carrier_index).get_numerology_manager(m_numerology_index).get_ul_guard_band();
}

} // namespace vek::nr_mod_lib
