#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

namespace vek::nr_mod_lib
{

/// Cursor over the CORESETs of the carriers' downlink bandwidth parts, each named by its id.
class NR_MOD_LIB_EXPORT cfg_nr_dl_coreset_t : public cfg_nr_cursor_t
{
public:
    explicit cfg_nr_dl_coreset_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_cursor_t(waveform) {}

    /// Puts the cursor on CORESET 0 of the initial BWP of the first carrier.
    void init();
    /// Moves the cursor; false, and no move, where an index lies past its list's end or the BWP does not count that
    /// CORESET.
    bool set_current_coreset_index(unsigned int carrier, unsigned int bwp, unsigned int coreset);

private:
    template <class tested_t>
    friend struct vek::test_peer_t;

    lib_nr_dl_coreset_configure_manager_t& _target()
    {
        return _carrier().get_dl_bwp(m_index).get_coreset(m_coreset_index);
    }
    const lib_nr_dl_coreset_configure_manager_t& _target() const
    {
        return _carrier().get_dl_bwp(m_index).get_coreset(m_coreset_index);
    }

    unsigned int m_coreset_index = 0;
};

} // namespace vek::nr_mod_lib
