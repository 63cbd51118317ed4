#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"

namespace vek::nr_mod_lib
{

class lib_nr_ul_guard_band_configure_manager_t;
class lib_nr_waveform_configure_manager_t;

/// Cursor over the guard bands of the carriers' numerologies. Owns nothing: every call looks its target up anew.
class NR_MOD_LIB_EXPORT cfg_nr_ul_guard_band_t
{
public:
    explicit cfg_nr_ul_guard_band_t(lib_nr_waveform_configure_manager_t& waveform);

    /// Puts the cursor on the first entry of the first carrier.
    void init();
    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_guard_band_index(unsigned int carrier, unsigned int numerology);

private:
    friend struct vek::test_peer_t<cfg_nr_ul_guard_band_t>;

    const lib_nr_ul_guard_band_configure_manager_t& _get_guard_band_manager() const;

    lib_nr_waveform_configure_manager_t& m_waveform;
    unsigned int m_carrier_index = 0;
    unsigned int m_numerology_index = 0;
};

} // namespace vek::nr_mod_lib
