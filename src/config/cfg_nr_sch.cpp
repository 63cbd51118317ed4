#include "config/cfg_nr_sch.h"

namespace vek::nr_mod_lib
{

cfg_nr_sch_t::~cfg_nr_sch_t() = default;

} // namespace vek::nr_mod_lib
