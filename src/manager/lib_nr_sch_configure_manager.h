#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_mcs_table_type.h"
#include "phy_common/lib_nr_modulator.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_pn_seq.h"
#include "phy_common/lib_nr_sch_type.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// What PDSCH and PUSCH have in common: their settings, and the rules that tie these together.
///
/// A setter takes any value, cuts it to the nearest legal one or falls back to a legal one, and then applies again what
/// depends on it, in a fixed order; it returns true where its own value changed. The façade, `cfg_nr_sch_t`, tells the
/// rules; where a rule needs something of the BWP, the carrier or the waveform, it is an argument here. A setting with
/// a text has a list as well, `get_x_v`.
class NR_MOD_LIB_EXPORT lib_nr_sch_configure_manager_t
{
public:
    // What the two directions do differently.

    /// At most four ports, one for each layer.
    virtual bool set_dmrs_port(const std::string& text);
    /// A new count resets the DMRS power: 0 dB for one group, 3 dB for two, 4.77 dB for three (TS 38.214 Table 4.1-1).
    virtual bool set_cdm_groups_without_data_num(unsigned int number);
    virtual bool set_first_symbol(unsigned int symbol, lib_nr_cyclic_prefix_type_t cp_type) = 0;
    virtual bool set_symbol_num(unsigned int number, lib_nr_cyclic_prefix_type_t cp_type) = 0;
    /// Type 0 or 1: any other value becomes type 1.
    virtual bool set_ra_type(lib_nr_sch_ra_type_t type);
    virtual bool set_rb_num(unsigned int rb_num, unsigned int bwp_rb_size);
    virtual bool set_dmrs_additional_position(lib_nr_sch_dmrs_additional_position_t position,
                                              lib_nr_cyclic_prefix_type_t cp_type);
    /// The number of layers; 4 and a printed line where that is not 1 to 4.
    virtual lib_nr_antenna_port_number_t get_antenna_port_number() const;
    virtual std::vector<lib_nr_sch_ra_type_t> get_ra_type_list() const = 0;
    virtual std::vector<mcs_table_t> get_mcs_table_list() const = 0;
    virtual std::vector<lib_nr_sch_dmrs_additional_position_t> get_dmrs_additional_position_list();
    virtual bool set_dmrs_length(lib_nr_sch_dmrs_length_t length, lib_nr_cyclic_prefix_type_t cp_type);
    virtual bool set_ptrs_time_density(lib_nr_sch_ptrs_time_density_t density);
    /// Of the MCS, 0 to 1. The uplink's own tables print a line, and `TABLE_5_1_3_1_1` stands in.
    virtual double get_target_code_rate() const;
    /// Of the MCS. A row of one bit a symbol, which leaves the choice to the uplink, prints a line and gives QPSK.
    virtual lib_nr_modulation_type_t get_modulation() const;

    // When and for whom

    bool set_enable(bool enable, lib_nr_numerology_type_t numerology);
    bool get_enable() const { return m_enable; }
    bool set_power_boosting(double power);
    double get_power_boosting() const { return m_power_boosting; }
    bool set_rnti(unsigned int rnti);
    unsigned int get_rnti() const { return m_rnti; }
    bool set_nid(int nid);
    int get_nid() const { return m_nid; }
    bool set_one_frame_period(bool one_frame_period, unsigned int frames, lib_nr_numerology_type_t numerology);
    bool get_one_frame_period() const { return m_one_frame_period; }
    bool set_slot_allocation(const std::string& text, lib_nr_numerology_type_t numerology);
    const std::string& get_slot_allocation() const { return m_slot_allocation_text; }
    const std::vector<unsigned int>& get_slot_allocation_v() const { return m_slot_allocation; }
    unsigned int get_first_symbol() const { return m_first_symbol; }
    unsigned int get_symbol_num() const { return m_symbol_num; }

    // Antennas

    const std::string& get_dmrs_port() const { return m_dmrs_port_text; }
    const std::vector<unsigned int>& get_dmrs_port_v() const { return m_dmrs_port; }
    unsigned int get_layers_num() const { return static_cast<unsigned int>(m_dmrs_port.size()); }
    bool set_antenna_port(const std::vector<lib_nr_antenna_port_t>& ports, unsigned int antennas);
    const std::vector<lib_nr_antenna_port_t>& get_antenna_port() const { return m_antenna_port; }
    /// None and as many ports as the channel has.
    std::vector<lib_nr_antenna_port_t> get_antenna_port_list() const;

    // Resource blocks

    /// Stores the id alone: the carrier moves a channel to another BWP.
    bool set_bwp_id(unsigned int id);
    unsigned int get_bwp_id() const { return m_bwp_id; }
    lib_nr_sch_ra_type_t get_ra_type() const { return m_ra_type; }
    bool set_rbg_size(lib_nr_sch_rbg_size_t size, unsigned int bwp_rb_size, unsigned int bwp_rb_start);
    lib_nr_sch_rbg_size_t get_rbg_size() const { return m_rbg_size; }
    std::vector<lib_nr_sch_rbg_size_t> get_rbg_size_list(unsigned int bwp_rb_size) const;
    bool set_rbg_bitmap(const std::string& text, unsigned int bwp_rb_size, unsigned int bwp_rb_start);
    const std::string& get_rbg_bitmap() const { return m_rbg_bitmap_text; }
    const std::vector<unsigned int>& get_rbg_bitmap_v() const { return m_rbg_bitmap; }
    /// The groups of a BWP, TS 38.214 clause 5.1.2.2.1.
    unsigned int get_rbg_bitmap_number(unsigned int bwp_rb_size, unsigned int bwp_rb_start) const;
    bool set_rb_offset(unsigned int rb_offset, unsigned int bwp_rb_size);
    unsigned int get_rb_offset() const { return m_rb_offset; }
    unsigned int get_rb_num() const { return m_rb_num; }

    // Coding

    bool set_enable_coding(bool enable);
    bool get_enable_coding() const { return m_enable_coding; }
    bool set_mcs_table(mcs_table_t table);
    mcs_table_t get_mcs_table() const { return m_mcs_table; }
    bool set_mcs(unsigned int mcs);
    unsigned int get_mcs() const { return m_mcs; }
    bool set_x_overhead(lib_nr_sch_x_overhead_t overhead);
    lib_nr_sch_x_overhead_t get_x_overhead() const { return m_x_overhead; }
    bool set_data_source(lib_nr_pn_seq_t source);
    lib_nr_pn_seq_t get_data_source() const { return m_data_source; }
    bool set_data_source_custom(const std::string& text);
    const std::string& get_data_source_custom() const { return m_data_source_custom_text; }
    const std::vector<unsigned int>& get_data_source_custom_v() const { return m_data_source_custom; }
    bool set_rv(unsigned int rv);
    unsigned int get_rv() const { return m_rv; }

    // DMRS

    bool set_enable_dmrs_downlink_r16(bool enable);
    bool get_enable_dmrs_downlink_r16() const { return m_enable_dmrs_downlink_r16; }
    bool set_nscid(unsigned int nscid);
    unsigned int get_nscid() const { return m_nscid; }
    bool set_nid0(int nid);
    int get_nid0() const { return m_nid0; }
    bool set_nid1(int nid);
    int get_nid1() const { return m_nid1; }
    bool set_dmrs_power(double power);
    double get_dmrs_power() const { return m_dmrs_power; }
    unsigned int get_cdm_groups_without_data_num() const { return m_cdm_groups_without_data_num; }
    bool set_dmrs_configuration_type(lib_nr_sch_dmrs_configuration_type_t type);
    lib_nr_sch_dmrs_configuration_type_t get_dmrs_configuration_type() const { return m_dmrs_configuration_type; }
    lib_nr_sch_dmrs_length_t get_dmrs_length() const { return m_dmrs_length; }
    lib_nr_sch_dmrs_additional_position_t get_dmrs_additional_position() const { return m_dmrs_additional_position; }
    bool set_mapping_type(lib_nr_sch_dmrs_mapping_type_t type, lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_sch_dmrs_mapping_type_t get_mapping_type() const { return m_mapping_type; }
    /// `pbch_position` counts where the position is that of the MIB. A position that is none becomes position 2; that,
    /// and a PBCH position that is neither 2 nor 3, prints a line.
    bool set_dmrs_type_a_position(lib_nr_sch_dmrs_type_a_position_t position, unsigned int pbch_position,
                                  lib_nr_cyclic_prefix_type_t cp_type);
    lib_nr_sch_dmrs_type_a_position_t get_dmrs_type_a_position() const { return m_dmrs_type_a_position; }
    /// The first DMRS symbol of mapping type A, 2 or 3, wherever it comes from.
    unsigned int get_l0() const { return m_l0; }
    bool set_dmrs_mapping_ref(lib_nr_sch_dmrs_mapping_ref_t reference);
    lib_nr_sch_dmrs_mapping_ref_t get_dmrs_mapping_ref() const { return m_dmrs_mapping_ref; }

    // PTRS

    bool set_enable_ptrs(bool enable);
    bool get_enable_ptrs() const { return m_enable_ptrs; }
    bool set_ptrs_power(double power);
    double get_ptrs_power() const { return m_ptrs_power; }
    bool set_ptrs_freqency_density(lib_nr_sch_ptrs_frequency_density_size_t density);
    lib_nr_sch_ptrs_frequency_density_size_t get_ptrs_freqency_density() const { return m_ptrs_freqency_density; }
    lib_nr_sch_ptrs_time_density_t get_ptrs_time_density() const { return m_ptrs_time_density; }
    bool set_ptrs_re_offset(unsigned int offset);
    unsigned int get_ptrs_re_offset() const { return m_ptrs_re_offset; }

protected:
    static constexpr unsigned int k_max_layers = 4;

    /// Every setting at its default. Lists behind a text and what hangs on the BWP come with the first update by it.
    lib_nr_sch_configure_manager_t() = default;
    ~lib_nr_sch_configure_manager_t() = default;
    lib_nr_sch_configure_manager_t(const lib_nr_sch_configure_manager_t&) = default;
    lib_nr_sch_configure_manager_t& operator=(const lib_nr_sch_configure_manager_t&) = default;

    /// Reads ports from a text and keeps the first `most` of them, port 0 where there is none. What hangs on the ports
    /// follows: antenna ports, CDM groups, PTRS.
    bool _set_dmrs_ports(const std::string& text, std::size_t most);
    /// Symbols of the slot from the first one of the channel on.
    unsigned int _symbols_left(lib_nr_cyclic_prefix_type_t cp_type) const;
    bool _is_configuration_type_1() const { return m_dmrs_configuration_type != LIB_NR_DMRS_CFG_TYPE2; }
    bool _is_mapping_type_b() const { return m_mapping_type == LIB_NR_DMRS_MAPPING_TYPEB; }
    bool _is_double_symbol() const { return m_dmrs_length == LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL; }

    unsigned int m_first_symbol = 0;
    unsigned int m_symbol_num = 14;
    unsigned int m_bwp_id = 0;
    lib_nr_sch_ra_type_t m_ra_type = LIB_NR_SCH_RA_TYPE1;
    lib_nr_sch_rbg_size_t m_rbg_size = LIB_NR_SCH_RBG_SIZE_16;
    unsigned int m_rb_num = 273;
    unsigned int m_antenna_count = 1; ///< of the waveform

private:
    bool m_enable = false;
    double m_power_boosting = 0.0;
    unsigned int m_rnti = 1;
    int m_nid = -1;
    std::vector<unsigned int> m_dmrs_port{0};
    std::string m_dmrs_port_text = "0";
    std::vector<lib_nr_antenna_port_t> m_antenna_port{LIB_NR_ANTENNA_PORT_0};
    unsigned int m_cdm_groups_without_data_num = 1;
    bool m_one_frame_period = true;
    std::vector<unsigned int> m_slot_allocation{0};
    std::string m_slot_allocation_text = "0:19";
    std::vector<unsigned int> m_rbg_bitmap;
    std::string m_rbg_bitmap_text = "0,0,1,0,1,1,1,1,1,1,1,1,0";
    unsigned int m_rb_offset = 0;
    bool m_enable_coding = true;
    mcs_table_t m_mcs_table = TABLE_5_1_3_1_1;
    unsigned int m_mcs = 0;
    lib_nr_sch_x_overhead_t m_x_overhead = LIB_NR_SCH_X_OVERHEAD_0;
    lib_nr_pn_seq_t m_data_source = LIB_NR_PN9;
    std::vector<unsigned int> m_data_source_custom{0};
    std::string m_data_source_custom_text = "0";
    unsigned int m_rv = 0;
    bool m_enable_dmrs_downlink_r16 = false;
    unsigned int m_nscid = 0;
    int m_nid0 = -1;
    int m_nid1 = -1;
    double m_dmrs_power = 0.0;
    lib_nr_sch_dmrs_configuration_type_t m_dmrs_configuration_type = LIB_NR_DMRS_CFG_TYPE1;
    lib_nr_sch_dmrs_length_t m_dmrs_length = LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL;
    lib_nr_sch_dmrs_additional_position_t m_dmrs_additional_position = LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0;
    lib_nr_sch_dmrs_mapping_type_t m_mapping_type = LIB_NR_DMRS_MAPPING_TYPEA;
    lib_nr_sch_dmrs_type_a_position_t m_dmrs_type_a_position = LIB_NR_SCH_DMRS_TYPEA_POSITION_2;
    lib_nr_sch_dmrs_mapping_ref_t m_dmrs_mapping_ref = LIB_NR_DMRS_MAPPING_REF_CRB;
    bool m_enable_ptrs = false;
    double m_ptrs_power = 0.0;
    lib_nr_sch_ptrs_frequency_density_size_t m_ptrs_freqency_density = LIB_NR_SCH_PTRS_FREQUENCY_DENSITYE_2;
    lib_nr_sch_ptrs_time_density_t m_ptrs_time_density = LIB_NR_SCH_PTRS_TIME_DENSITYE_1;
    unsigned int m_ptrs_re_offset = 0;
    unsigned int m_l0 = 2;
    unsigned int m_frame_count = 1;
};

} // namespace vek::nr_mod_lib
