#include "manager/lib_nr_dl_dci_configure_manager.h"

#include "manager/lib_nr_dl_bwp_configure_manager.h"
#include "manager/lib_nr_setting.h"

namespace vek::nr_mod_lib
{

lib_nr_dl_dci_configure_manager_t::lib_nr_dl_dci_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_dl_dci_configure_manager_t::init(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    m_bwp_id = bwp.get_bwp_id();
    m_coreset_id = bwp.get_first_coreset_index();
    update_by_dl_bwp(bwp);
}

void lib_nr_dl_dci_configure_manager_t::update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    m_first_coreset_index = bwp.get_first_coreset_index();
    if (!bwp.check_coreset_index_valid(m_coreset_id))
        m_coreset_id = m_first_coreset_index;
}

bool lib_nr_dl_dci_configure_manager_t::set_bwp_id(unsigned int id) { return assign(m_bwp_id, id); }

bool lib_nr_dl_dci_configure_manager_t::set_coreset_id(unsigned int id)
{
    constexpr unsigned int k_coresets = 3;
    const bool in_bwp = id >= m_first_coreset_index && id - m_first_coreset_index < k_coresets;
    return assign(m_coreset_id, in_bwp ? id : m_first_coreset_index);
}

} // namespace vek::nr_mod_lib
