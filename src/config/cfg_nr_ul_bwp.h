#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' uplink bandwidth parts.
class NR_MOD_LIB_EXPORT cfg_nr_ul_bwp_t : public cfg_nr_list_cursor_t<lib_nr_ul_bwp_configure_manager_t>
{
public:
    explicit cfg_nr_ul_bwp_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_bwp_index(unsigned int carrier, unsigned int bwp) { return set_current_index(carrier, bwp); }

private:
    lib_nr_ul_bwp_configure_manager_t& _get_bwp_manager() { return _target(); }
    const lib_nr_ul_bwp_configure_manager_t& _get_bwp_manager() const { return _target(); }
};

} // namespace vek::nr_mod_lib
