#pragma once

#include "common/lib_xml_common.h"
#include "common/nr_mod_lib_export.h"

namespace vek::common_lib
{

/// The root of one protocol's configuration, as the host application sees it whatever the radio standard.
class NR_MOD_LIB_EXPORT cfg_protocol_base_t
{
public:
    virtual ~cfg_protocol_base_t();

    /// Rebuilds the configuration from the tree below `node`; false, and nothing changed, where the tree belongs to
    /// another protocol.
    virtual bool recall_setting(const pugi::xml_node& node) = 0;

    /// Appends the configuration to `node`.
    virtual bool save_setting(pugi::xml_node& node) = 0;

    virtual plib_protocol_type_t get_protocol_type() const = 0;
};

} // namespace vek::common_lib
