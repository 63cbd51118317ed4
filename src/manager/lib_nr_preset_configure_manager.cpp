#include "manager/lib_nr_preset_configure_manager.h"

#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

bool lib_nr_preset_configure_manager_t::set_nr_ntn(bool ntn)
{
    const bool changed = assign(m_nr_ntn, ntn);
    init();
    return changed;
}

bool lib_nr_preset_configure_manager_t::set_enable(bool enable) { return assign(m_enable, enable); }

bool lib_nr_preset_configure_manager_t::set_phase_compensation_state(bool state)
{
    return assign(m_phase_compensation_state, state);
}

bool lib_nr_preset_configure_manager_t::set_radio_frequency(double radio_frequency)
{
    return assign(m_radio_frequency, radio_frequency);
}

unsigned int lib_nr_preset_configure_manager_t::get_rb_number_of(lib_nr_numerology_type_t numerology) const
{
    return lib_nr_phy_common_t::get_max_transmit_rb_num(numerology, m_bandwidth);
}

void lib_nr_preset_configure_manager_t::_init_common(lib_nr_channel_bw_type_t bandwidth)
{
    m_bandwidth = bandwidth;
    m_duplex_type = m_nr_ntn ? LIB_NR_DUPLEX_TYPE_FDD : LIB_NR_DUPLEX_TYPE_TDD;
    m_phase_compensation_state = true;
    m_radio_frequency = 1e9;
    m_frequency_range = NR_FR1;
}

std::vector<lib_nr_numerology_type_t> lib_nr_preset_configure_manager_t::_data_spacings() const
{
    std::vector<lib_nr_numerology_type_t> list = lib_nr_phy_common_t::get_valid_numerology_list(m_bandwidth);
    list.erase(std::remove(list.begin(), list.end(), LIB_NR_SCS_240K), list.end());
    return list;
}

} // namespace vek::nr_mod_lib
