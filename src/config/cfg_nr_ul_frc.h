#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' uplink fixed reference channels.
class NR_MOD_LIB_EXPORT cfg_nr_ul_frc_t : public cfg_nr_single_cursor_t
{
public:
    explicit cfg_nr_ul_frc_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_single_cursor_t(waveform, "cfg_nr_ul_frc_t")
    {}

    bool get_enable() const { return _get_nr_ul_frc_manager().get_enable(); }

private:
    lib_nr_ul_frc_configure_manager_t& _get_nr_ul_frc_manager() { return _carrier().get_ul_frc(); }
    const lib_nr_ul_frc_configure_manager_t& _get_nr_ul_frc_manager() const { return _carrier().get_ul_frc(); }
};

} // namespace vek::nr_mod_lib
