#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_preset_configure_manager.h"
#include "phy_common/lib_nr_modulator.h"

#include <cstdint>
#include <vector>

namespace vek::nr_mod_lib
{

/// Where the resource blocks of an uplink reference measurement channel lie, TS 38.521-1 and TS 38.521-2 clause 6.1:
/// up to the right half of the list those of FR1, and from the outer ones of x resource blocks on those of FR2.
enum lib_nr_ul_rmc_rb_allocation_t : std::uint32_t
{
    LIB_NR_UL_RMC_EDGE_FULL_LEFT = 0,
    LIB_NR_UL_RMC_EDGE_FULL_RIGHT = 1,
    LIB_NR_UL_RMC_EDGE_1RB_LEFT = 2,
    LIB_NR_UL_RMC_EDGE_1RB_RIGHT = 3,
    LIB_NR_UL_RMC_OUTER_FULL = 4,
    LIB_NR_UL_RMC_INNER_FULL = 5,
    LIB_NR_UL_RMC_INNER_1RB_LEFT = 6,
    LIB_NR_UL_RMC_INNER_1RB_RIGHT = 7,
    LIB_NR_UL_RMC_OUTER_XRB_LEFT = 8,
    LIB_NR_UL_RMC_OUTER_XRB_RIGHT = 9,
    LIB_NR_UL_RMC_INNER_XRB_LEFT = 10,
    LIB_NR_UL_RMC_INNER_XRB_RIGHT = 11,
    LIB_NR_UL_RMC_INNER_PARTIAL_LEFT = 12,
    LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT = 13,
    LIB_NR_UL_RMC_INNER_PARTIAL2_LEFT = 14,
    LIB_NR_UL_RMC_INNER_PARTIAL2_RIGHT = 15,
    LIB_NR_UL_RMC_INNER_FULL_REGION1 = 16,
    LIB_NR_UL_RMC_INNER_PARTIAL_LEFT_REGION1 = 17,
    LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT_REGION1 = 18,
    LIB_NR_UL_RMC_INNER_FULL_REGION2 = 19,
    LIB_NR_UL_RMC_INNER_PARTIAL_LEFT_REGION2 = 20,
    LIB_NR_UL_RMC_INNER_PARTIAL_RIGHT_REGION2 = 21,
};

/// The choice of an uplink reference measurement channel for a carrier. The rules are told in its façade,
/// `cfg_nr_ul_rmc_t`. A value that its list does not offer becomes the list's first; offset and number of the resource
/// blocks are always those of the other settings.
class NR_MOD_LIB_EXPORT lib_nr_ul_rmc_configure_manager_t : public lib_nr_preset_configure_manager_t
{
public:
    lib_nr_ul_rmc_configure_manager_t() { init(); }

    /// Everything but the NTN flag back to its default.
    void init() override;

    bool set_rmc_rb_allocation(lib_nr_ul_rmc_rb_allocation_t allocation);
    lib_nr_ul_rmc_rb_allocation_t get_rmc_rb_allocation() const { return m_rmc_rb_allocation; }
    std::vector<lib_nr_ul_rmc_rb_allocation_t> get_valid_rmc_rb_allocation_list() const;
    bool set_bandwidth(lib_nr_channel_bw_type_t bandwidth);
    std::vector<lib_nr_channel_bw_type_t> get_valid_bandwidth_list() const;
    bool set_duplex_type(lib_nr_duplex_type_t duplex_type);
    std::vector<lib_nr_duplex_type_t> get_valid_duplex_type_list() const;
    bool set_numerology(lib_nr_numerology_type_t numerology);
    lib_nr_numerology_type_t get_numerology() const { return m_numerology; }
    std::vector<lib_nr_numerology_type_t> get_valid_numerology_list() const;
    bool set_modulation(lib_nr_modulation_type_t modulation);
    lib_nr_modulation_type_t get_modulation() const { return m_modulation; }
    std::vector<lib_nr_modulation_type_t> get_valid_modulation_list() const;
    bool set_enable_transfer_precoding(bool enable);
    bool get_enable_transfer_precoding() const { return m_enable_transfer_precoding; }
    bool set_modified_mpr_behaviour(bool modified);
    bool get_modified_mpr_behaviour() const { return m_modified_mpr_behaviour; }
    bool set_x_rb(unsigned int x_rb);
    unsigned int get_x_rb() const { return m_x_rb; }

    unsigned int get_rb_offset() const { return m_rb_offset; }
    unsigned int get_rb_number() const { return m_rb_number; }

private:
    unsigned int _caculate_rb_number(unsigned int rb_number) const;
    void _update_read_only();
    void _place(unsigned int rb_offset, unsigned int rb_number);
    void _place_inner_full_of_fr1(unsigned int width);
    void _place_inner_full_of_fr2(unsigned int width);
    void _place_x_rb(unsigned int first, unsigned int end, bool at_first);
    void _place_inner_partial(unsigned int width);
    void _place_full_region_1(unsigned int width);
    bool _is_widest() const;
    bool _is_narrowest() const;
    unsigned int _third(unsigned int width) const;

    lib_nr_ul_rmc_rb_allocation_t m_rmc_rb_allocation = LIB_NR_UL_RMC_EDGE_FULL_LEFT;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    lib_nr_modulation_type_t m_modulation = LIB_NR_MODULATION_HALF_PI_BPSK;
    bool m_enable_transfer_precoding = true;
    bool m_modified_mpr_behaviour = false;
    unsigned int m_x_rb = 1;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_number = 0;
};

} // namespace vek::nr_mod_lib
