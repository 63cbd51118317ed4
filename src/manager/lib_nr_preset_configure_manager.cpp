#include "manager/lib_nr_preset_configure_manager.h"

#include "manager/lib_nr_setting.h"

namespace vek::nr_mod_lib
{

void lib_nr_preset_configure_manager_t::init()
{
    m_duplex_type = m_nr_ntn ? LIB_NR_DUPLEX_TYPE_FDD : LIB_NR_DUPLEX_TYPE_TDD;
}

bool lib_nr_preset_configure_manager_t::set_nr_ntn(bool ntn)
{
    const bool changed = assign(m_nr_ntn, ntn);
    init();
    return changed;
}

} // namespace vek::nr_mod_lib
