#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_preset_configure_manager.h"

namespace vek::nr_mod_lib
{

/// The choice of a downlink test model for a carrier.
class NR_MOD_LIB_EXPORT lib_nr_dl_tm_configure_manager_t : public lib_nr_preset_configure_manager_t
{
};

} // namespace vek::nr_mod_lib
