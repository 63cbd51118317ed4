#pragma once

#include "common/lib_test_peer.h"
#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_sch_configure_manager.h"
#include "manager/lib_nr_ul_guard_band_configure_manager.h"

namespace vek::nr_mod_lib
{

class lib_nr_ul_bwp_configure_manager_t;
class lib_nr_phy_numerology_configure_manager_t;

/// One PUSCH of a carrier. It follows its BWP and the RB sets of its numerology, and cannot be enabled yet.
class NR_MOD_LIB_EXPORT lib_nr_ul_sch_configure_manager_t final : public lib_nr_sch_configure_manager_t
{
public:
    lib_nr_ul_sch_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp,
                                      const lib_nr_phy_numerology_configure_manager_t& numerology,
                                      lib_nr_channel_bw_type_t bandwidth);

    void init(const lib_nr_ul_bwp_configure_manager_t& bwp, const lib_nr_phy_numerology_configure_manager_t& numerology,
              lib_nr_channel_bw_type_t bandwidth);
    /// Brings the channel in line with a changed BWP or guard band.
    void update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp,
                          const lib_nr_phy_numerology_configure_manager_t& numerology,
                          lib_nr_channel_bw_type_t bandwidth);

    bool set_first_symbol(unsigned int symbol, lib_nr_cyclic_prefix_type_t cp_type) override;
    bool set_symbol_num(unsigned int number, lib_nr_cyclic_prefix_type_t cp_type) override;
    std::vector<lib_nr_sch_ra_type_t> get_ra_type_list() const override;
    std::vector<mcs_table_t> get_mcs_table_list() const override;

private:
    lib_nr_ul_sch_configure_manager_t() = default;

    friend struct vek::test_peer_t<lib_nr_ul_sch_configure_manager_t>;

    bool m_full_bandwidth = false; ///< the BWP spans all RBs that the channel bandwidth can have
    lib_nr_ul_guard_band_configure_manager_t::rb_set_map_t m_rb_set_map;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
};

} // namespace vek::nr_mod_lib
