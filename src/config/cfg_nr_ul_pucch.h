#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' PUCCHs.
class NR_MOD_LIB_EXPORT cfg_nr_ul_pucch_t : public cfg_nr_list_cursor_t<lib_nr_ul_pucch_configure_manager_t>
{
public:
    explicit cfg_nr_ul_pucch_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_pucch_index(unsigned int carrier, unsigned int pucch) { return set_current_index(carrier, pucch); }

    bool get_enable() const { return _get_pucch_manager().get_enable(); }

private:
    lib_nr_ul_pucch_configure_manager_t& _get_pucch_manager() { return _target(); }
    const lib_nr_ul_pucch_configure_manager_t& _get_pucch_manager() const { return _target(); }
};

} // namespace vek::nr_mod_lib
