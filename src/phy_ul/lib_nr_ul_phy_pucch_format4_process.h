#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_ul/lib_nr_ul_phy_pucch_format3_process.h"

namespace vek::nr_mod_lib
{

/// Generates PUCCH format 4, TS 38.211 clause 6.3.2.6: format 3 of one RB that an orthogonal cover code always spreads.
class NR_MOD_LIB_EXPORT lib_nr_ul_phy_pucch_format4_process_t : public lib_nr_ul_phy_pucch_format3_process_t
{
protected:
    unsigned int _get_m0() const override { return _get_m0_of_occ(); }
};

} // namespace vek::nr_mod_lib
