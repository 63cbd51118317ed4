#pragma once

#include "common/nr_mod_lib_export.h"

namespace vek::nr_mod_lib
{

class lib_nr_ul_rmc_configure_manager_t;
class lib_nr_waveform_configure_manager_t;

/// Cursor over the carriers' uplink reference measurement channels. Owns nothing: every call looks its target up anew.
class NR_MOD_LIB_EXPORT cfg_nr_ul_rmc_t
{
public:
    explicit cfg_nr_ul_rmc_t(lib_nr_waveform_configure_manager_t& waveform);

    /// Puts the cursor on the first carrier.
    void init();
    /// Moves the cursor; a line, false and no move for a carrier that the waveform has not.
    bool set_current_carrier_index(unsigned int carrier);

    bool get_enable() const;

private:
    const lib_nr_ul_rmc_configure_manager_t& _get_nr_ul_rmc_manager() const;

    lib_nr_waveform_configure_manager_t& m_waveform;
    unsigned int m_carrier_index = 0;
};

} // namespace vek::nr_mod_lib
