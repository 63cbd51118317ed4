#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

namespace vek::nr_mod_lib
{

class lib_nr_dl_coreset_configure_manager_t;
class lib_nr_waveform_configure_manager_t;

/// Cursor over the CORESETs of the carriers' downlink bandwidth parts. Owns nothing: every call looks its target up
/// anew.
class NR_MOD_LIB_EXPORT cfg_nr_dl_coreset_t
{
public:
    explicit cfg_nr_dl_coreset_t(lib_nr_waveform_configure_manager_t& waveform);

    /// Puts the cursor on CORESET 0 of the initial BWP of the first carrier.
    void init();
    /// Moves the cursor to a CORESET, named by its id; false, and no move, where an index lies past its list's end or
    /// the BWP does not count that CORESET.
    bool set_current_coreset_index(unsigned int carrier, unsigned int bwp, unsigned int coreset);

private:
    friend struct vek::test_peer_t<cfg_nr_dl_coreset_t>;

    const lib_nr_dl_coreset_configure_manager_t& _target() const;

    lib_nr_waveform_configure_manager_t& m_waveform;
    unsigned int m_carrier_index = 0;
    unsigned int m_bwp_index = 0;
    unsigned int m_coreset_index = 0;
};

} // namespace vek::nr_mod_lib
