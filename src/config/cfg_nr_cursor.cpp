#include "config/cfg_nr_cursor.h"

#include <iostream>

namespace vek::nr_mod_lib
{

cfg_nr_single_cursor_t::cfg_nr_single_cursor_t(lib_nr_waveform_configure_manager_t& waveform, const char* facade)
    : cfg_nr_cursor_t(waveform), m_facade(facade)
{
    init();
}

bool cfg_nr_single_cursor_t::set_current_carrier_index(unsigned int carrier)
{
    if (carrier >= m_waveform.get_carrier_number()) {
        std::cout << m_facade << "::set_current_carrier_index Report : Carrier index out of range!" << std::endl;
        return false;
    }
    m_carrier_index = carrier;
    return true;
}

} // namespace vek::nr_mod_lib
