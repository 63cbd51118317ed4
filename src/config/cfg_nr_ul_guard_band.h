#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the guard bands of the carriers' numerologies.
class NR_MOD_LIB_EXPORT cfg_nr_ul_guard_band_t : public cfg_nr_list_cursor_t<lib_nr_phy_numerology_configure_manager_t>
{
public:
    explicit cfg_nr_ul_guard_band_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_guard_band_index(unsigned int carrier, unsigned int numerology)
    {
        return set_current_index(carrier, numerology);
    }

private:
    lib_nr_ul_guard_band_configure_manager_t& _get_guard_band_manager() { return _target().get_ul_guard_band(); }
    const lib_nr_ul_guard_band_configure_manager_t& _get_guard_band_manager() const
    {
        return _target().get_ul_guard_band();
    }
};

} // namespace vek::nr_mod_lib
