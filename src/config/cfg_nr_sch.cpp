#include "config/cfg_nr_sch.h"

#include "manager/lib_nr_sch_configure_manager.h"

namespace vek::nr_mod_lib
{

cfg_nr_sch_t::cfg_nr_sch_t(lib_nr_waveform_configure_manager_t& waveform) : m_waveform(waveform) {}

cfg_nr_sch_t::~cfg_nr_sch_t() = default;

bool cfg_nr_sch_t::get_enable() const { return _get_sch_manager().get_enable(); }

void cfg_nr_sch_t::init()
{
    m_carrier_index = 0;
    set_current_sch_index(0, 0);
}

} // namespace vek::nr_mod_lib
