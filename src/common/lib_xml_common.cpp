#include "common/lib_xml_common.h"

namespace vek::common_lib
{

namespace
{

// Stands in every saved file, so it never changes.
constexpr const char* k_nr_name = "NR";

} // namespace

std::string lib_xml_common_t::get_protocol_name(plib_protocol_type_t type)
{
    return type == PLIB_PROTOCOL_NR ? k_nr_name : "";
}

bool lib_xml_common_t::get_protocol_type(const std::string& name, plib_protocol_type_t& type)
{
    if (name != k_nr_name)
        return false;
    type = PLIB_PROTOCOL_NR;
    return true;
}

} // namespace vek::common_lib
