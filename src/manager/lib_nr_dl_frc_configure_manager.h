#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_preset_configure_manager.h"

namespace vek::nr_mod_lib
{

/// The choice of a downlink fixed reference channel for a carrier.
class NR_MOD_LIB_EXPORT lib_nr_dl_frc_configure_manager_t final : public lib_nr_preset_configure_manager_t
{
public:
    void init() override
    {
        _init_common(LIB_NR_CHANNEL_FR1_100M);
        m_enable = false;
    }
};

} // namespace vek::nr_mod_lib
