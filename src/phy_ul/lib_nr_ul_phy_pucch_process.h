#pragma once

#include "common/nr_mod_lib_export.h"

namespace vek::nr_mod_lib
{

class lib_nr_waveform_configure_manager_t;

/// Walks a carrier's PUCCHs, TS 38.211 clause 6.3.2. It marks and writes nothing yet.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pucch_process_t
{
public:
    /// Marks the cells of the carrier's PUCCHs in the resource map.
    bool deal_ul_pucch_resource_mapping(const lib_nr_waveform_configure_manager_t& waveform, unsigned int carrier,
                                        unsigned int numerology);
    /// Writes the symbols of the carrier's PUCCHs into the payload map.
    bool deal_ul_pucch_link_process(const lib_nr_waveform_configure_manager_t& waveform, unsigned int carrier,
                                    unsigned int numerology);
};

} // namespace vek::nr_mod_lib
