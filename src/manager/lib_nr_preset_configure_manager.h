#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_duplex_type.h"

namespace vek::nr_mod_lib
{

/// What the choices of a carrier's presets have in common: the duplex type, and whether the carrier is non-terrestrial,
/// where every preset is FDD.
class NR_MOD_LIB_EXPORT lib_nr_preset_configure_manager_t
{
public:
    /// Everything but the NTN flag back to its default.
    virtual void init();
    /// Stores the flag and starts from its defaults. True where the flag changed.
    bool set_nr_ntn(bool ntn);

    bool get_enable() const { return m_enable; }
    lib_nr_duplex_type_t get_duplex_type() const { return m_duplex_type; }

protected:
    lib_nr_preset_configure_manager_t() = default;
    ~lib_nr_preset_configure_manager_t() = default;
    lib_nr_preset_configure_manager_t(const lib_nr_preset_configure_manager_t&) = default;
    lib_nr_preset_configure_manager_t& operator=(const lib_nr_preset_configure_manager_t&) = default;

    bool m_enable = false;
    lib_nr_duplex_type_t m_duplex_type = LIB_NR_DUPLEX_TYPE_TDD;
    bool m_nr_ntn = false;
};

} // namespace vek::nr_mod_lib
