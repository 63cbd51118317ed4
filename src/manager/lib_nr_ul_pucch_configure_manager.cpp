#include "manager/lib_nr_ul_pucch_configure_manager.h"

#include "manager/lib_nr_ul_bwp_configure_manager.h"

namespace vek::nr_mod_lib
{

lib_nr_ul_pucch_configure_manager_t::lib_nr_ul_pucch_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_ul_pucch_configure_manager_t::init(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    m_name = "UCI1";
    updata_param_when_bwp_change(bwp);
}

void lib_nr_ul_pucch_configure_manager_t::updata_param_when_bwp_change(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    m_bwp_id = bwp.get_bwp_id();
    m_bwp_numerology = bwp.get_numerology();
    m_bwp_cp_type = bwp.get_cp_type();
    m_bwp_rb_number = bwp.get_rb_number();
}

bool lib_nr_ul_pucch_configure_manager_t::set_name(const std::string& name)
{
    m_name = name;
    return true;
}

bool lib_nr_ul_pucch_configure_manager_t::set_bwp_id(const lib_nr_ul_bwp_configure_manager_t& bwp)
{
    if (bwp.get_bwp_id() == m_bwp_id)
        return false;
    updata_param_when_bwp_change(bwp);
    return true;
}

} // namespace vek::nr_mod_lib
