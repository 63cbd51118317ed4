#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_ul_pucch.h"

namespace vek::nr_mod_lib
{

/// PUCCH performance test set-ups (TS 38.141-1 clause 8.3) for a carrier's first PUCCH. So far it only stands on that
/// PUCCH.
class NR_MOD_LIB_EXPORT cfg_nr_pucch_test_model_t : public cfg_nr_ul_pucch_t
{
public:
    explicit cfg_nr_pucch_test_model_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_ul_pucch_t(waveform) {}

    /// Moves the cursor to the first PUCCH of a carrier; false, and no move, past the end of the carriers.
    bool set_current_carrier_index(unsigned int carrier) { return set_current_pucch_index(carrier, 0); }
};

} // namespace vek::nr_mod_lib
