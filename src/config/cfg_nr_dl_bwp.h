#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"
#include "config/cfg_nr_dl_coreset.h"

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' downlink bandwidth parts, with one over their CORESETs.
class NR_MOD_LIB_EXPORT cfg_nr_dl_bwp_t : public cfg_nr_list_cursor_t<lib_nr_dl_bwp_configure_manager_t>
{
public:
    explicit cfg_nr_dl_bwp_t(lib_nr_waveform_configure_manager_t& waveform)
        : cfg_nr_list_cursor_t(waveform), m_coreset(waveform)
    {}

    /// Puts the cursor on the initial BWP of the first carrier.
    void init();
    /// Moves the cursor, and that of the CORESETs to the first one of the BWP; false, and no move, where an index lies
    /// past its list's end. Indices that are current already move nothing.
    bool set_current_dl_bwp_index(unsigned int carrier, unsigned int bwp);
    bool set_current_index(unsigned int carrier, unsigned int bwp) { return set_current_dl_bwp_index(carrier, bwp); }
    /// The CORESET cursor, moved to a CORESET of the current BWP; it stays where it was for an invalid index.
    cfg_nr_dl_coreset_t* get_coreset(unsigned int index);

private:
    cfg_nr_dl_coreset_t m_coreset;
};

} // namespace vek::nr_mod_lib
