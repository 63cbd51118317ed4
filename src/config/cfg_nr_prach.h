#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' PRACH bursts.
class NR_MOD_LIB_EXPORT cfg_nr_prach_t : public cfg_nr_list_cursor_t<lib_nr_ul_prach_configure_manager_t>
{
public:
    explicit cfg_nr_prach_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_prach_index(unsigned int carrier, unsigned int prach) { return set_current_index(carrier, prach); }

    bool get_enable() const { return _get_prach_manager().get_enable(); }

private:
    lib_nr_ul_prach_configure_manager_t& _get_prach_manager() { return _target(); }
    const lib_nr_ul_prach_configure_manager_t& _get_prach_manager() const { return _target(); }
};

} // namespace vek::nr_mod_lib
