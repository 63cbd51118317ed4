#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_sch_configure_manager.h"

namespace vek::nr_mod_lib
{

class lib_nr_dl_bwp_configure_manager_t;

/// One PDSCH of a carrier. It follows its BWP and cannot be enabled yet.
class NR_MOD_LIB_EXPORT lib_nr_dl_sch_configure_manager_t : public lib_nr_sch_configure_manager_t
{
public:
    explicit lib_nr_dl_sch_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp);

    void init(const lib_nr_dl_bwp_configure_manager_t& bwp);
    /// Brings the channel in line with a changed BWP.
    void update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp);
};

} // namespace vek::nr_mod_lib
