#pragma once

#include "common/nr_mod_lib_export.h"
#include "manager/lib_nr_sch_configure_manager.h"
#include "manager/lib_nr_ul_guard_band_configure_manager.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_ul_bwp_configure_manager_t;
class lib_nr_phy_numerology_configure_manager_t;

/// One PUSCH of a carrier, without UCI: the settings of a shared channel in the form of the uplink, with transform
/// precoding, codebook, interlaces, hopping and the PTRS of the transform-precoded waveform. The façade,
/// `cfg_nr_ul_sch_t`, tells the rules.
class NR_MOD_LIB_EXPORT lib_nr_ul_sch_configure_manager_t final : public lib_nr_sch_configure_manager_t
{
public:
    using rb_set_map_t = lib_nr_ul_guard_band_configure_manager_t::rb_set_map_t;

    lib_nr_ul_sch_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp,
                                      const lib_nr_phy_numerology_configure_manager_t& numerology,
                                      lib_nr_channel_bw_type_t bandwidth);

    /// Everything back to its default, in this BWP.
    void init(const lib_nr_ul_bwp_configure_manager_t& bwp, const lib_nr_phy_numerology_configure_manager_t& numerology,
              lib_nr_channel_bw_type_t bandwidth);
    /// Brings the channel in line with a changed BWP or guard band.
    void update_by_ul_bwp(const lib_nr_ul_bwp_configure_manager_t& bwp,
                          const lib_nr_phy_numerology_configure_manager_t& numerology,
                          lib_nr_channel_bw_type_t bandwidth);

    // What the base does too

    bool set_dmrs_port(const std::string& text) override;
    bool set_cdm_groups_without_data_num(unsigned int number) override;
    bool set_first_symbol(unsigned int symbol, lib_nr_cyclic_prefix_type_t cp_type) override;
    bool set_symbol_num(unsigned int number, lib_nr_cyclic_prefix_type_t cp_type) override;
    bool set_ra_type(lib_nr_sch_ra_type_t type) override;
    bool set_rb_num(unsigned int rb_num, unsigned int bwp_rb_size) override;
    /// Without a codebook the number of layers; 1 and a printed line where that is not 1 to 4.
    lib_nr_antenna_port_number_t get_antenna_port_number() const override;
    std::vector<lib_nr_sch_ra_type_t> get_ra_type_list() const override;
    std::vector<mcs_table_t> get_mcs_table_list() const override;
    std::vector<lib_nr_sch_dmrs_additional_position_t> get_dmrs_additional_position_list() override;
    bool set_dmrs_length(lib_nr_sch_dmrs_length_t length, lib_nr_cyclic_prefix_type_t cp_type) override;
    bool set_ptrs_time_density(lib_nr_sch_ptrs_time_density_t density) override;
    std::vector<lib_nr_sch_ptrs_time_density_t> get_ptrs_time_density_list() const;
    /// Of the MCS, halved for the QPSK of a row that leaves the modulation open. With transform precoding a table that
    /// is not for it prints a line, and `TABLE_6_1_4_1_1` stands in.
    double get_target_code_rate() const override;
    bool set_modulation(lib_nr_modulation_type_t modulation);
    lib_nr_modulation_type_t get_modulation() const override;
    std::vector<lib_nr_modulation_type_t> get_modulation_list() const;

    // Waveform and scrambling

    bool set_enable_transfer_precoding(bool enable);
    bool get_enable_transfer_precoding() const { return m_enable_transfer_precoding; }
    bool set_rapid(int rapid);
    int get_rapid() const { return m_rapid; }
    bool set_enable_lbrm(bool enable);
    bool get_enable_lbrm() const { return m_enable_lbrm; }

    // Codebook

    bool set_enable_codebook(bool enable);
    bool get_enable_codebook() const { return m_enable_codebook; }
    bool set_antenna_port_number(lib_nr_antenna_port_number_t number);
    /// 4 alone and a printed line where a codebook has more than four layers.
    std::vector<lib_nr_antenna_port_number_t> get_antenna_port_number_list() const;
    bool set_tpmi(unsigned int tpmi);
    unsigned int get_tpmi() const { return m_tpmi; }

    // Interlaces

    bool set_rb_set_start(unsigned int rb_set);
    unsigned int get_rb_set_start() const { return m_rb_set_start; }
    bool set_rb_set_number(unsigned int number);
    unsigned int get_rb_set_number() const { return m_rb_set_number; }
    bool set_interlace_index(const std::string& text);
    const std::string& get_interlace_index() const { return m_interlace_index_text; }
    const std::vector<unsigned int>& get_interlace_index_v() const { return m_interlace_index; }
    bool set_unused_rb(unsigned int rb_num);
    unsigned int get_unused_rb() const { return m_unused_rb; }

    // Hopping

    bool set_hopping_mode(lib_nr_sch_hopping_mode_t mode, lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_sch_hopping_mode_t get_hopping_mode() const { return m_hopping_mode; }
    bool set_hopping_rb_offset(unsigned int rb_offset, unsigned int bwp_rb_size);
    unsigned int get_hopping_rb_offset() const { return m_hopping_rb_offset; }
    bool set_dmrs_hopping(lib_nr_sch_dmrs_hopping_t hopping);
    lib_nr_sch_dmrs_hopping_t get_dmrs_hopping() const { return m_dmrs_hopping; }
    bool set_n_rs_id(int id);
    int get_n_rs_id() const { return m_n_rs_id; }

    // PTRS

    bool set_ptrs_port(const std::string& text);
    const std::string& get_ptrs_port() const { return m_ptrs_port_text; }
    const std::vector<unsigned int>& get_ptrs_port_v() const { return m_ptrs_port; }
    bool set_n_ptrs_group_sample(lib_nr_sch_ptrs_group_sample_t samples);
    lib_nr_sch_ptrs_group_sample_t get_n_ptrs_group_sample() const { return m_n_ptrs_group_sample; }
    bool set_n_ptrs_group(lib_nr_sch_ptrs_group_t groups);
    lib_nr_sch_ptrs_group_t get_n_ptrs_group() const { return m_n_ptrs_group; }
    bool set_n_ptrs_id(unsigned int id);
    unsigned int get_n_ptrs_id() const { return m_n_ptrs_id; }

private:
    lib_nr_ul_sch_configure_manager_t() = default;

    bool _hops_in_slot() const { return m_hopping_mode == LIB_NR_SCH_HOPPING_MODE_INTRA; }
    unsigned int _least_symbol_num() const;
    unsigned int _shortest_type_b() const;
    void _follow_allocation();
    bool _leaves_modulation_open() const;
    void _follow_layers();
    unsigned int _largest_tpmi() const;
    void _follow_rb_sets();
    int _rb_set_span() const;

    bool m_enable_transfer_precoding = false;
    int m_rapid = -1;
    bool m_enable_codebook = false;
    lib_nr_antenna_port_number_t m_antenna_port_number = LIB_NR_ANTENNA_PORT_NUMBER_1;
    unsigned int m_tpmi = 0;
    unsigned int m_rb_set_start = 0;
    unsigned int m_rb_set_number = 1;
    std::string m_interlace_index_text = "0";
    unsigned int m_unused_rb = 0;
    std::vector<unsigned int> m_interlace_index{0};
    lib_nr_sch_hopping_mode_t m_hopping_mode = LIB_NR_SCH_HOPPING_MODE_DISABLE;
    unsigned int m_hopping_rb_offset = 0;
    bool m_enable_lbrm = false;
    lib_nr_sch_dmrs_hopping_t m_dmrs_hopping = LIB_NR_SCH_DMRS_HOPPING_DISABLE;
    int m_n_rs_id = -1;
    std::vector<unsigned int> m_ptrs_port{0};
    std::string m_ptrs_port_text = "0";
    lib_nr_sch_ptrs_group_sample_t m_n_ptrs_group_sample = LIB_NR_PTRS_GROUP_SAMPLE_2;
    lib_nr_sch_ptrs_group_t m_n_ptrs_group = LIB_NR_PTRS_GROUP_2;
    unsigned int m_n_ptrs_id = 0;
    lib_nr_modulation_type_t m_modulation = LIB_NR_MODULATION_QPSK;

    // Of the BWP and its numerology.
    bool m_full_bandwidth = false; ///< the BWP spans all RBs that the channel bandwidth can have
    rb_set_map_t m_rb_set_map;
    lib_nr_numerology_type_t m_numerology = LIB_NR_SCS_30K;
    unsigned int m_bwp_rb_size = 0;
};

} // namespace vek::nr_mod_lib
