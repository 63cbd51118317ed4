#include "manager/lib_nr_dl_prs_configure_manager.h"

#include "manager/lib_nr_phy_numerology_configure_manager.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

lib_nr_dl_prs_configure_manager_t::lib_nr_dl_prs_configure_manager_t(
    const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    init(numerology);
}

void lib_nr_dl_prs_configure_manager_t::init(const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    m_enable = false;
    update_by_numerology(numerology);
}

void lib_nr_dl_prs_configure_manager_t::update_by_numerology(
    const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    constexpr unsigned int k_min_rb_number = 24;
    const unsigned int rb_start = numerology.get_rb_start();
    const unsigned int rb_size = numerology.get_rb_size();
    const unsigned int end = rb_start + rb_size;
    m_numerology = numerology.get_numerolgy();
    m_cp_type = LIB_NR_NORMAL_CP;
    if (m_rb_offset < rb_start)
        m_rb_offset = rb_start;
    else if (end >= k_min_rb_number)
        m_rb_offset = std::min(m_rb_offset, end - k_min_rb_number);
    m_rb_number = std::min(m_rb_number, rb_size - std::min(rb_size, m_rb_offset));
}

} // namespace vek::nr_mod_lib
