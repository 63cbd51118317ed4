#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_duplex_type.h"

namespace vek::nr_mod_lib
{

/// The choice of a uplink reference measurement channel for a carrier. Today it holds the duplex type and whether the
/// carrier is non-terrestrial, where every preset is FDD.
class NR_MOD_LIB_EXPORT lib_nr_ul_rmc_configure_manager_t
{
public:
    lib_nr_ul_rmc_configure_manager_t();

    /// Everything but the NTN flag back to its default.
    void init();
    /// Stores the flag and starts from its defaults. True where the flag changed.
    bool set_nr_ntn(bool ntn);

    bool get_enable() const { return m_enable; }
    lib_nr_duplex_type_t get_duplex_type() const { return m_duplex_type; }

private:
    bool m_enable = false;
    lib_nr_duplex_type_t m_duplex_type = LIB_NR_DUPLEX_TYPE_TDD;
    bool m_nr_ntn = false;
};

} // namespace vek::nr_mod_lib
