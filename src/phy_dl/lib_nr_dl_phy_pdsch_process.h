#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_dl/lib_nr_phy_sch_process.h"

namespace vek::nr_mod_lib
{

/// Generates the PDSCH, TS 38.211 clause 7.3.1. Bound to its channel, it writes nothing yet.
class NR_MOD_LIB_EXPORT lib_nr_dl_phy_pdsch_process_t : public lib_nr_phy_sch_process_t
{
public:
    bool set_waveform_config(unsigned int carrier, unsigned int numerology, unsigned int channel,
                             const lib_nr_waveform_configure_manager_t& waveform) override;

private:
    unsigned int m_channel_index = 0;
};

} // namespace vek::nr_mod_lib
