#include "manager/lib_nr_ul_bwp_configure_manager.h"

#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_rb_limits.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <cstdint>

namespace vek::nr_mod_lib
{

lib_nr_ul_bwp_configure_manager_t::lib_nr_ul_bwp_configure_manager_t(
    const lib_nr_phy_numerology_configure_manager_t& numerology, unsigned int id)
{
    init(numerology, id);
}

void lib_nr_ul_bwp_configure_manager_t::init(const lib_nr_phy_numerology_configure_manager_t& numerology,
                                             unsigned int id)
{
    m_bwp_id = id;
    m_bwp_name = "BWP" + std::to_string(std::uint64_t{id} + 1);
    set_numerology(numerology);
}

bool lib_nr_ul_bwp_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

bool lib_nr_ul_bwp_configure_manager_t::set_bwp_name(const std::string& name) { return assign(m_bwp_name, name); }

bool lib_nr_ul_bwp_configure_manager_t::set_numerology(const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    m_numerology = numerology.get_numerolgy();
    if (!lib_nr_phy_common_t::has_extended_prefix(m_numerology))
        m_cp_type = LIB_NR_NORMAL_CP;
    const lib_nr_rb_limits_t limits{numerology.get_rb_start(), numerology.get_rb_size()};
    m_rb_offset = limits.fit_start(m_rb_offset);
    m_rb_number = limits.fit_size(m_rb_number, m_rb_offset);
    return true;
}

bool lib_nr_ul_bwp_configure_manager_t::set_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    return lib_nr_phy_common_t::has_extended_prefix(m_numerology) && assign(m_cp_type, cp_type);
}

bool lib_nr_ul_bwp_configure_manager_t::set_rb_offset(unsigned int value, unsigned int rb_start, unsigned int rb_size)
{
    const lib_nr_rb_limits_t limits{rb_start, rb_size};
    if (!assign(m_rb_offset, limits.fit_start(value)))
        return false;
    m_rb_number = limits.fit_size(m_rb_number, m_rb_offset);
    return true;
}

bool lib_nr_ul_bwp_configure_manager_t::set_rb_number(unsigned int value, unsigned int rb_start, unsigned int rb_size)
{
    return assign(m_rb_number, lib_nr_rb_limits_t{rb_start, rb_size}.fit_size(value, m_rb_offset));
}

} // namespace vek::nr_mod_lib
