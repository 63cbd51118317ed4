#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"

#include <string>

namespace vek::nr_mod_lib
{

class lib_nr_ul_bwp_configure_manager_t;

/// One PUCCH of a carrier: its name, its place in the list and its BWP. It cannot be enabled yet.
class NR_MOD_LIB_EXPORT lib_nr_ul_pucch_configure_manager_t
{
public:
    explicit lib_nr_ul_pucch_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp);

    /// Everything back to its default, with the name "UCI1".
    void init(const lib_nr_ul_bwp_configure_manager_t& bwp);
    /// Brings the PUCCH in line with a changed BWP.
    void updata_param_when_bwp_change(const lib_nr_ul_bwp_configure_manager_t& bwp);

    /// Always true.
    bool set_name(const std::string& name);
    const std::string& get_name() const { return m_name; }
    bool get_enable() const { return m_enable; }
    /// Moves to another BWP and follows it; false where it is there already.
    bool set_bwp_id(const lib_nr_ul_bwp_configure_manager_t& bwp);
    unsigned int get_bwp_id() const { return m_bwp_id; }

private:
    friend struct vek::test_peer_t<lib_nr_ul_pucch_configure_manager_t>;

    std::string m_name;
    bool m_enable = false;
    unsigned int m_bwp_id = 0;
    // What it was last told of its BWP.
    lib_nr_numerology_type_t m_bwp_numerology = LIB_NR_SCS_30K;
    lib_nr_cyclic_prefix_type_t m_bwp_cp_type = LIB_NR_NORMAL_CP;
    unsigned int m_bwp_rb_number = 273;
};

} // namespace vek::nr_mod_lib
