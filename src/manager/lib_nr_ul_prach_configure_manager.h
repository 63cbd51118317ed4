#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_prach_type.h"

namespace vek::nr_mod_lib
{

class lib_nr_phy_numerology_configure_manager_t;
class lib_nr_ul_bwp_configure_manager_t;

/// One PRACH burst of a carrier, of row 16 of its configuration table. Today it holds its place in the list and follows
/// its BWP and the carrier's bandwidth; it sends nothing. It is enabled but at 240 kHz, a spacing without uplink.
class NR_MOD_LIB_EXPORT lib_nr_ul_prach_configure_manager_t
{
public:
    explicit lib_nr_ul_prach_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp);

    void init(const lib_nr_ul_bwp_configure_manager_t& bwp);
    /// Takes table, sequence length and spacing that the frequency range of a bandwidth starts from.
    void update_by_bandwidth(const lib_nr_phy_numerology_configure_manager_t& numerology,
                             lib_nr_channel_bw_type_t bandwidth);
    /// Takes the RBs of a changed BWP.
    void update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp);

    bool get_enable() const { return m_enable; }
    prach_config_table_type_t get_configuration_table() const { return m_configuration_table; }
    unsigned int get_configuration_idx() const { return m_configuration_idx; }
    prach_format_t get_Format() const { return m_format; }
    prach_scs_type_t get_prach_scs() const { return m_prach_scs; }
    unsigned int get_rb_offset() const { return m_rb_offset; }
    unsigned int get_rb_num() const { return m_rb_num; }
    prach_lra_type_t get_lra() const { return m_lra; }
    /// Seconds.
    double get_timeoffset() const { return m_timeoffset; }
    unsigned int get_frame_offset() const { return m_frame_offset; }
    unsigned int get_subframe_index() const { return m_subframe_index; }
    unsigned int get_slot_index() const { return m_slot_index; }
    unsigned int get_n_RA_t() const { return m_n_RA_t; }
    unsigned int get_n_RA_slot() const { return m_n_RA_slot; }
    unsigned int get_bwp_id() const { return m_bwp_id; }

private:
    lib_nr_ul_prach_configure_manager_t() = default;

    prach_config_table_type_t m_configuration_table = FR1_FDD_SUL;
    unsigned int m_configuration_idx = 16;
    prach_format_t m_format = prach_format_0;
    prach_scs_type_t m_prach_scs = PRACH_SCS_1P25K;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_num = 273;
    prach_lra_type_t m_lra = PRACH_LRA_839;
    bool m_enable = true;
    double m_timeoffset = 0.0;
    unsigned int m_frame_offset = 0;
    unsigned int m_subframe_index = 1;
    unsigned int m_slot_index = 17;
    unsigned int m_n_RA_t = 0;
    unsigned int m_n_RA_slot = 0;
    unsigned int m_bwp_id = 0;
};

} // namespace vek::nr_mod_lib
