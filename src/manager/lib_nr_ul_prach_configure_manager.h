#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_phy_common.h"
#include "phy_common/lib_nr_prach_type.h"

#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_phy_numerology_configure_manager_t;
class lib_nr_ul_bwp_configure_manager_t;

/// One PRACH burst of a carrier. Its row of a configuration table gives format, period and places; spacing, sequence
/// length and restricted set follow what that row, the carrier's spacing and its frequency range leave to choose from,
/// so a setter corrects its neighbours too. `cfg_nr_prach_t` tells the rule of each setting. The burst is forced off at
/// 240 kHz, a spacing without uplink.
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

    /// Always false, whether or not anything changed.
    bool set_enable(bool enable, lib_nr_numerology_type_t numerology);
    bool get_enable() const { return m_enable; }
    bool set_power_boosting(double boosting);
    double get_power_boosting() const { return m_power_boosting; }
    bool set_timeoffset(double seconds);
    double get_timeoffset() const { return m_timeoffset; }
    bool set_premable_index(unsigned int index);
    unsigned int get_premable_index() const { return m_preamble_index; }
    bool set_frame_offset(unsigned int offset);
    unsigned int get_frame_offset() const { return m_frame_offset; }
    bool set_subframe_index(unsigned int index);
    unsigned int get_subframe_index() const { return m_subframe_index; }
    bool set_slot_index(unsigned int index);
    unsigned int get_slot_index() const { return m_slot_index; }
    bool set_n_RA_t(unsigned int occasion);
    unsigned int get_n_RA_t() const { return m_n_RA_t; }
    bool set_n_RA_slot(unsigned int slot);
    unsigned int get_n_RA_slot() const { return m_n_RA_slot; }
    bool set_n_RA_f(unsigned int occasion);
    unsigned int get_n_RA_f() const { return m_n_RA_f; }
    /// This and the index take the BWP's spacing along as the setters below do; no rule of a row reads it.
    bool set_configuration_table(prach_config_table_type_t table, lib_nr_numerology_type_t numerology);
    prach_config_table_type_t get_configuration_table() const { return m_configuration_table; }
    bool set_configuration_idx(unsigned int index, lib_nr_numerology_type_t numerology);
    unsigned int get_configuration_idx() const { return m_configuration_idx; }
    bool set_prach_scs(prach_scs_type_t scs, lib_nr_channel_bw_type_t bandwidth, lib_nr_numerology_type_t numerology);
    prach_scs_type_t get_prach_scs() const { return m_prach_scs; }
    bool set_lra(prach_lra_type_t lra, lib_nr_numerology_type_t numerology);
    prach_lra_type_t get_lra() const { return m_lra; }
    bool set_root_sequence_index(unsigned int index);
    unsigned int get_sequence_index() const { return m_sequence_index; }
    bool set_restrictedset(prach_restricted_set_type_t set);
    prach_restricted_set_type_t get_restrictedset() const { return m_restricted_set; }
    bool set_zeroCorrelation_zone(unsigned int zone);
    unsigned int get_ZeroCorrelationZone() const { return m_zero_correlation_zone; }
    bool set_n_RA_start(unsigned int start);
    unsigned int get_n_RA_start() const { return m_n_RA_start; }
    bool set_msg1_fdm(prach_msg1_fdm_type_t fdm);
    prach_msg1_fdm_type_t get_msg1_fdm() const { return m_msg1_fdm; }
    bool set_rb_num(unsigned int rb_num);
    unsigned int get_rb_num() const { return m_rb_num; }
    bool set_rb_offset(unsigned int rb_offset);
    unsigned int get_rb_offset() const { return m_rb_offset; }
    unsigned int get_bwp_id() const { return m_bwp_id; }

    // What follows from the settings. Those that a row of the configuration table gives read it anew.

    /// The row's format; where it has two, the second for the last occasion of a slot.
    prach_format_t get_Format() const;
    /// x, in frames.
    unsigned int get_frame_period() const;
    /// 255 for the long formats, which have none.
    unsigned int get_prach_slot_per_subframe_and_60khz() const;
    /// N_t, occasions in time within a slot, 1 for the long formats.
    unsigned int get_n_RA_slot_t() const;
    /// 0 where the sequence length is 839.
    unsigned int get_first_symbol() const;
    /// The repetitions of a long format; the symbols of a short one, after a printed line.
    unsigned int get_prach_duration() const;
    /// N_CS.
    int get_ncs() const;
    /// The logical index of the root that the preamble came to lie on.
    unsigned int get_logical_root_sequence_index() const { return m_logical_root_sequence_index; }
    unsigned int get_root_sequence_u() const { return m_root_sequence_u; }
    /// The root of a logical index, which becomes the burst's; a printed line for a length without a table.
    unsigned int get_sequence_number(prach_lra_type_t lra, unsigned int index);
    /// Lets root and logical index follow the preamble index. Always true.
    bool update_preamble_sequence_parameters();

    // What a user interface may offer. A printed line where format or spacing have none.

    static std::vector<prach_config_table_type_t> get_config_table_for_ui(lib_nr_channel_bw_type_t bandwidth);
    static std::vector<prach_scs_type_t> get_prach_scs_for_ui(prach_format_t format,
                                                              lib_nr_channel_bw_type_t bandwidth);
    static std::vector<prach_msg1_fdm_type_t> get_msg1_fdm_for_ui();
    static std::vector<prach_lra_type_t> get_lra_for_ui(prach_format_t format, prach_scs_type_t scs);
    static std::vector<unsigned int> get_n_RA_slot_for_ui(prach_scs_type_t scs);
    std::vector<unsigned int> get_frame_offset_for_ui() const;
    std::vector<unsigned int> get_subframe_index_for_ui() const;
    std::vector<unsigned int> get_slot_index_for_ui() const;
    std::vector<unsigned int> get_n_RA_t_for_ui() const;

private:
    lib_nr_ul_prach_configure_manager_t() = default;

    configuration_table_t _row() const;
    void _force_off_without_channels(lib_nr_numerology_type_t numerology);
    void _check_lra(prach_format_t format);
    void _check_n_RA_slot();
    void _follow_lra();

    prach_config_table_type_t m_configuration_table = FR1_FDD_SUL;
    unsigned int m_configuration_idx = 16;
    prach_scs_type_t m_prach_scs = PRACH_SCS_1P25K;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_num = 273;
    unsigned int m_n_RA_start = 0;
    prach_msg1_fdm_type_t m_msg1_fdm = Msg1_FDM1;
    unsigned int m_sequence_index = 0;
    unsigned int m_logical_root_sequence_index = 0;
    unsigned int m_zero_correlation_zone = 0;
    prach_lra_type_t m_lra = PRACH_LRA_839;
    prach_restricted_set_type_t m_restricted_set = UNRESTRICTED;
    bool m_enable = true;
    double m_power_boosting = 0.0;
    double m_timeoffset = 0.0;
    unsigned int m_preamble_index = 0;
    unsigned int m_root_sequence_u = 0;
    unsigned int m_frame_offset = 0;
    unsigned int m_subframe_index = 1;
    unsigned int m_slot_index = 17;
    unsigned int m_n_RA_t = 0;
    unsigned int m_n_RA_slot = 0;
    unsigned int m_n_RA_f = 0;
    unsigned int m_bwp_id = 0;
};

} // namespace vek::nr_mod_lib
