#pragma once

#include "common/nr_mod_lib_export.h"

namespace vek::nr_mod_lib
{

class lib_nr_sch_configure_manager_t;
class lib_nr_waveform_configure_manager_t;

/// Cursor over the shared channels of one direction. Owns nothing: every call looks its target up anew.
class NR_MOD_LIB_EXPORT cfg_nr_sch_t
{
public:
    virtual ~cfg_nr_sch_t();

    /// Puts the cursor on the first channel of the first carrier.
    void init();
    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    virtual bool set_current_sch_index(unsigned int carrier, unsigned int index) = 0;

    bool get_enable() const;

protected:
    explicit cfg_nr_sch_t(lib_nr_waveform_configure_manager_t& waveform);
    cfg_nr_sch_t(const cfg_nr_sch_t&) = default;
    cfg_nr_sch_t& operator=(const cfg_nr_sch_t&) = delete;

    virtual lib_nr_sch_configure_manager_t& _get_sch_manager() const = 0;

    lib_nr_waveform_configure_manager_t& m_waveform;
    unsigned int m_carrier_index = 0;
    unsigned int m_sch_index = 0;
};

} // namespace vek::nr_mod_lib
