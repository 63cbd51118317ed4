#include "manager/lib_nr_dl_bwp_configure_manager.h"

#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_rb_limits.h"
#include "manager/lib_nr_setting.h"
#include "phy_common/lib_nr_phy_common.h"

#include <algorithm>

namespace vek::nr_mod_lib
{

namespace
{

constexpr unsigned int k_coreset_number_minimum = 1;
constexpr unsigned int k_coreset_number_maximum = 3;

} // namespace

lib_nr_dl_bwp_configure_manager_t::lib_nr_dl_bwp_configure_manager_t(
    const lib_nr_phy_numerology_configure_manager_t& numerology, unsigned int id, bool initial)
    : m_initial_bwp(initial), m_bwp_id(id)
{
    init(numerology, id);
    for (unsigned int i = 0; i < k_coreset_number_maximum; ++i)
        m_coresets.emplace_back(m_bwp_rb_size, get_first_coreset_index() + i);
}

void lib_nr_dl_bwp_configure_manager_t::init(const lib_nr_phy_numerology_configure_manager_t& numerology,
                                             unsigned int id)
{
    m_bwp_id = id;
    set_numerology(numerology);
    m_cp_type = LIB_NR_NORMAL_CP;
    m_coreset_number = k_coreset_number_minimum;
}

bool lib_nr_dl_bwp_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

bool lib_nr_dl_bwp_configure_manager_t::set_numerology(const lib_nr_phy_numerology_configure_manager_t& numerology)
{
    const bool changed = assign(m_numerology, numerology.get_numerolgy());
    if (!lib_nr_phy_common_t::has_extended_prefix(m_numerology))
        m_cp_type = LIB_NR_NORMAL_CP;
    _update_rb_limit(numerology.get_rb_start(), numerology.get_rb_size());
    return changed;
}

bool lib_nr_dl_bwp_configure_manager_t::set_cp_type(lib_nr_cyclic_prefix_type_t cp_type)
{
    return lib_nr_phy_common_t::has_extended_prefix(m_numerology) && assign(m_cp_type, cp_type);
}

bool lib_nr_dl_bwp_configure_manager_t::set_bwp_rb_start(unsigned int value, unsigned int limit_start,
                                                         unsigned int limit_number)
{
    const unsigned int before = m_bwp_rb_start;
    m_bwp_rb_start = value;
    _update_rb_limit(limit_start, limit_number);
    return m_bwp_rb_start != before;
}

bool lib_nr_dl_bwp_configure_manager_t::set_bwp_rb_size(unsigned int value, unsigned int limit_start,
                                                        unsigned int limit_number)
{
    if (value < lib_nr_rb_limits_t::k_least) {
        m_bwp_rb_size = lib_nr_rb_limits_t::k_least;
        return false;
    }
    m_bwp_rb_size = value;
    _update_rb_limit(limit_start, limit_number);
    return true;
}

void lib_nr_dl_bwp_configure_manager_t::set_bwp_resource_block_start_limit(unsigned int limit_start)
{
    _update_rb_limit(limit_start, m_rb_number_limit);
}

void lib_nr_dl_bwp_configure_manager_t::set_bwp_resource_block_number_limit(unsigned int limit_number)
{
    _update_rb_limit(m_rb_start_limit, limit_number);
}

bool lib_nr_dl_bwp_configure_manager_t::set_coreset_number(unsigned int number)
{
    return assign(m_coreset_number, std::clamp(number, k_coreset_number_minimum, k_coreset_number_maximum));
}

bool lib_nr_dl_bwp_configure_manager_t::check_coreset_index_valid(unsigned int index) const
{
    const unsigned int first = get_first_coreset_index();
    return index >= first && index - first < m_coreset_number;
}

lib_nr_dl_coreset_configure_manager_t& lib_nr_dl_bwp_configure_manager_t::get_coreset(unsigned int index)
{
    return entry_or_last(m_coresets, index - get_first_coreset_index());
}

const lib_nr_dl_coreset_configure_manager_t& lib_nr_dl_bwp_configure_manager_t::get_coreset(unsigned int index) const
{
    return entry_or_last(m_coresets, index - get_first_coreset_index());
}

void lib_nr_dl_bwp_configure_manager_t::update_coresets()
{
    for (unsigned int i = 0; i < m_coreset_number; ++i)
        m_coresets[i].set_fd_resources(std::string(m_coresets[i].get_fd_resources()), m_bwp_rb_size);
}

void lib_nr_dl_bwp_configure_manager_t::_update_rb_limit(unsigned int limit_start, unsigned int limit_number)
{
    m_rb_start_limit = limit_start;
    m_rb_number_limit = limit_number;
    const lib_nr_rb_limits_t limits{limit_start, limit_number};
    m_bwp_rb_start = limits.fit_start(m_bwp_rb_start);
    m_bwp_rb_size = limits.fit_size(m_bwp_rb_size, m_bwp_rb_start);
}

} // namespace vek::nr_mod_lib
