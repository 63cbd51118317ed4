#include "manager/lib_nr_phy_numerology_configure_manager.h"

#include "manager/lib_nr_rb_limits.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

namespace vek::nr_mod_lib
{

bool lib_nr_phy_numerology_configure_manager_t::set_enable(bool enable) { return assign(m_enable, enable); }

bool lib_nr_phy_numerology_configure_manager_t::set_numerology(lib_nr_numerology_type_t numerology,
                                                               lib_nr_channel_bw_type_t bandwidth)
{
    if (bandwidth > LIB_NR_CHANNEL_FR2_2_2000M ||
        !lib_nr_phy_common_t::check_numerology_bandwidth_valid(numerology, bandwidth))
        return false;
    if (numerology == m_numerology && bandwidth == m_bandwidth)
        return true;
    m_numerology = numerology;
    m_bandwidth = bandwidth;
    init_resource_occupation();
    return true;
}

bool lib_nr_phy_numerology_configure_manager_t::set_rb_size(unsigned int rb_size)
{
    const lib_nr_rb_limits_t limits{0, _max_rb_number()};
    m_rb_start = limits.fit_start(m_rb_start);
    const bool changed = assign(m_rb_size, limits.fit_size(rb_size, m_rb_start));
    m_ul_guard_band.set_config(m_rb_size);
    return changed;
}

bool lib_nr_phy_numerology_configure_manager_t::set_rb_start(unsigned int rb_start)
{
    const std::uint32_t max_rb_number = _max_rb_number();
    const bool changed = assign(m_rb_start, lib_nr_rb_limits_t{0, max_rb_number}.fit_start(rb_start));
    if (m_rb_start + m_rb_size > max_rb_number)
        set_rb_size(max_rb_number - m_rb_start);
    return changed;
}

void lib_nr_phy_numerology_configure_manager_t::init_resource_occupation()
{
    m_rb_start = 0;
    m_rb_size = _max_rb_number();
    m_ul_guard_band.set_config(m_rb_size);
}

unsigned int lib_nr_phy_numerology_configure_manager_t::get_occupied_bandwidth() const
{
    const std::uint32_t spacing = lib_nr_phy_common_t::get_scs_hz_value(m_numerology);
    return 2 * (m_k0 * spacing + 6 * m_rb_size * spacing);
}

std::vector<lib_nr_cyclic_prefix_type_t> lib_nr_phy_numerology_configure_manager_t::get_cp_type_list() const
{
    if (lib_nr_phy_common_t::has_extended_prefix(m_numerology))
        return {LIB_NR_NORMAL_CP, LIB_NR_EXTEND_CP};
    return {LIB_NR_NORMAL_CP};
}

std::uint32_t lib_nr_phy_numerology_configure_manager_t::_max_rb_number() const
{
    return lib_nr_phy_common_t::get_max_transmit_rb_num(m_numerology, m_bandwidth);
}

} // namespace vek::nr_mod_lib
