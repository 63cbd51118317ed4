#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

namespace vek::nr_mod_lib
{

class lib_nr_ul_srs_configure_manager_t;
class lib_nr_waveform_configure_manager_t;

/// Cursor over the carriers' sounding reference signals. Owns nothing: every call looks its target up anew.
class NR_MOD_LIB_EXPORT cfg_nr_ul_srs_t
{
public:
    explicit cfg_nr_ul_srs_t(lib_nr_waveform_configure_manager_t& waveform);

    /// Puts the cursor on the first entry of the first carrier.
    void init();
    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_srs_index(unsigned int carrier, unsigned int srs);

    bool get_enable() const;

private:
    friend struct vek::test_peer_t<cfg_nr_ul_srs_t>;

    const lib_nr_ul_srs_configure_manager_t& _target() const;

    lib_nr_waveform_configure_manager_t& m_waveform;
    unsigned int m_carrier_index = 0;
    unsigned int m_srs_index = 0;
};

} // namespace vek::nr_mod_lib
