#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' downlink fixed reference channels.
class NR_MOD_LIB_EXPORT cfg_nr_dl_frc_t : public cfg_nr_single_cursor_t
{
public:
    explicit cfg_nr_dl_frc_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_single_cursor_t(waveform, "cfg_nr_dl_frc_t")
    {}

    bool get_enable() const { return _target().get_enable(); }

private:
    lib_nr_dl_frc_configure_manager_t& _target() { return _carrier().get_dl_frc(); }
    const lib_nr_dl_frc_configure_manager_t& _target() const { return _carrier().get_dl_frc(); }
};

} // namespace vek::nr_mod_lib
