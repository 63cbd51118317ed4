#include "manager/lib_nr_ul_frc_configure_manager.h"

namespace vek::nr_mod_lib
{

lib_nr_ul_frc_configure_manager_t::lib_nr_ul_frc_configure_manager_t() { init(); }

void lib_nr_ul_frc_configure_manager_t::init()
{
    m_duplex_type = m_nr_ntn ? LIB_NR_DUPLEX_TYPE_FDD : LIB_NR_DUPLEX_TYPE_TDD;
}

bool lib_nr_ul_frc_configure_manager_t::set_nr_ntn(bool ntn)
{
    const bool changed = ntn != m_nr_ntn;
    m_nr_ntn = ntn;
    init();
    return changed;
}

} // namespace vek::nr_mod_lib
