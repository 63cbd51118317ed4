#include "manager/lib_nr_dl_sch_configure_manager.h"

#include "manager/lib_nr_dl_bwp_configure_manager.h"

namespace vek::nr_mod_lib
{

lib_nr_dl_sch_configure_manager_t::lib_nr_dl_sch_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    init(bwp);
}

void lib_nr_dl_sch_configure_manager_t::init(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    _reset(bwp.get_bwp_id());
    update_by_dl_bwp(bwp);
}

void lib_nr_dl_sch_configure_manager_t::update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp)
{
    _fit_resource_blocks(bwp.get_bwp_rb_size());
}

} // namespace vek::nr_mod_lib
