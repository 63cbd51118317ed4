#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"

namespace vek::nr_mod_lib
{

class lib_nr_phy_numerology_configure_manager_t;

/// One positioning reference signal of a carrier, tied to a numerology by its spacing. Today it holds its place in the
/// list and follows its numerology; it cannot be enabled.
class NR_MOD_LIB_EXPORT lib_nr_dl_prs_configure_manager_t
{
public:
    explicit lib_nr_dl_prs_configure_manager_t(const lib_nr_phy_numerology_configure_manager_t& numerology);

    /// Keeps the RBs that it held, clipped to the numerology.
    void init(const lib_nr_phy_numerology_configure_manager_t& numerology);
    /// Takes spacing and RBs of a numerology and keeps its own RBs inside.
    void update_by_numerology(const lib_nr_phy_numerology_configure_manager_t& numerology);

    bool get_enable() const { return m_enable; }
    lib_nr_numerology_type_t get_numerology() const { return m_numerology; }
    lib_nr_cyclic_prefix_type_t get_cp_type() const { return m_cp_type; }
    unsigned int get_rb_number() const { return m_rb_number; }
    unsigned int get_rb_offset() const { return m_rb_offset; }

private:
    bool m_enable = false;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_cyclic_prefix_type_t m_cp_type = LIB_NR_NORMAL_CP;
    unsigned int m_rb_number = 272;
    unsigned int m_rb_offset = 0;
};

} // namespace vek::nr_mod_lib
