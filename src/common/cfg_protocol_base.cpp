#include "common/cfg_protocol_base.h"

namespace vek::common_lib
{

// Here, so that the class's table of virtual operations has one home.
cfg_protocol_base_t::~cfg_protocol_base_t() = default;

} // namespace vek::common_lib
