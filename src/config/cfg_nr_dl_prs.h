#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' positioning reference signals.
class NR_MOD_LIB_EXPORT cfg_nr_dl_prs_t : public cfg_nr_list_cursor_t<lib_nr_dl_prs_configure_manager_t>
{
public:
    explicit cfg_nr_dl_prs_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_prs_index(unsigned int carrier, unsigned int prs) { return set_current_index(carrier, prs); }

    bool get_enable() const { return _target().get_enable(); }
};

} // namespace vek::nr_mod_lib
