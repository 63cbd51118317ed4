#pragma once

#include "phy_common/lib_nr_pucch_test_model_type.h"

namespace vek::nr_mod_lib
{

/// What a performance test of the PUCCH sends, in lines; null for a value that is no test.
const char* find_pucch_test_model_text(lib_nr_pucch_test_model_t model);

} // namespace vek::nr_mod_lib
