#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"

#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_dl_bwp_configure_manager_t;

/// One DCI of a carrier, sent on a CORESET of a downlink BWP. Today it holds its place in the lists and follows its
/// BWP; it cannot be enabled.
class NR_MOD_LIB_EXPORT lib_nr_dl_dci_configure_manager_t
{
public:
    explicit lib_nr_dl_dci_configure_manager_t(const lib_nr_dl_bwp_configure_manager_t& bwp);

    void init(const lib_nr_dl_bwp_configure_manager_t& bwp);
    /// Brings the DCI in line with a changed BWP: a CORESET that the BWP does not have gives way to its first.
    void update_by_dl_bwp(const lib_nr_dl_bwp_configure_manager_t& bwp);

    bool get_enable() const { return m_enable; }
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }
    /// An id outside the BWP's three CORESETs becomes the first of them.
    bool set_coreset_id(unsigned int id);
    unsigned int get_coreset_id() const { return m_coreset_id; }
    const std::vector<int>& get_slot_allocation_for_lib() const { return m_slot_allocation; }

private:
    bool m_enable = false;
    unsigned int m_coreset_id = 0;
    unsigned int m_bwp_id = 0;
    std::vector<int> m_slot_allocation{0};
    unsigned int m_first_coreset_index = 0;
};

} // namespace vek::nr_mod_lib
