#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the shared channels of one direction, PDSCH or PUSCH: what both have in common.
///
/// A setter takes any value and cuts it to the nearest legal one, or falls back to a legal one; what depends on it is
/// then applied again. A change of the channel's BWP does the same.
class NR_MOD_LIB_EXPORT cfg_nr_sch_t : public cfg_nr_cursor_t
{
public:
    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    virtual bool set_current_sch_index(unsigned int carrier, unsigned int index) = 0;
    bool set_current_index(unsigned int carrier, unsigned int index) { return set_current_sch_index(carrier, index); }

    /// Stays off in a BWP of 240 kHz.
    virtual bool set_enable(bool enable);
    bool get_enable() const { return _target().get_enable(); }
    /// dB, limited to -40 to 40.
    bool set_power_boosting(double power) { return _target().set_power_boosting(power); }
    double get_power_boosting() const { return _target().get_power_boosting(); }
    /// n_RNTI of the scrambling (TS 38.211 clauses 7.3.1.1 and 6.3.1.1), at most 65535.
    bool set_rnti(unsigned int rnti) { return _target().set_rnti(rnti); }
    unsigned int get_rnti() const { return _target().get_rnti(); }
    /// n_ID of the scrambling, -1 to 1023; -1, without `standard_rules` 0 too, stands for the cell's identity.
    bool set_nid(int nid) { return _target().set_nid(nid); }
    int get_nid() const { return _target().get_nid(); }
    /// DMRS ports, such as "0" or "0,2:3", counted from the direction's first; one of the PDSCH, up to four of the
    /// PUSCH. Those that configuration type and length do not have are left out, and port 0 stands in for none. Sets
    /// the layers, and with them the antenna ports, the CDM groups and whether there is a PTRS.
    bool set_dmrs_port(const std::string& text) { return _target().set_dmrs_port(text); }
    std::string get_dmrs_port() const { return _target().get_dmrs_port(); }
    /// The port of each antenna of the waveform. One that the channel does not have becomes none; where all would be
    /// silent, the first antenna takes port 0.
    bool set_antenna_port(const std::vector<lib_nr_antenna_port_t>& ports)
    {
        return _target().set_antenna_port(ports, m_waveform.get_antennas_number());
    }
    const std::vector<lib_nr_antenna_port_t>& get_antenna_port() const { return _target().get_antenna_port(); }
    /// At least up to the group of the highest DMRS port, at most 2 with type 1 and 3 with type 2. A new count resets
    /// the DMRS power: 0, 3 or 4.77 dB (TS 38.214 Table 4.1-1).
    bool set_cdm_groups_without_data_num(unsigned int number)
    {
        return _target().set_cdm_groups_without_data_num(number);
    }
    unsigned int get_cdm_groups_without_data_num() const { return _target().get_cdm_groups_without_data_num(); }
    /// Whether the slots repeat in every frame, or count over all frames of the waveform. Applies the slots again;
    /// where none of them lies in the first frame they become slot 0.
    virtual bool set_one_frame_period(bool one_frame_period);
    bool get_one_frame_period() const { return _target().get_one_frame_period(); }
    /// Slots that the channel is sent in, such as "0:4,7"; what lies past the last slot is left out, and a text without
    /// any slot changes nothing.
    virtual bool set_slot_allocation(const std::string& text);
    std::string get_slot_allocation() const { return _target().get_slot_allocation(); }
    /// First symbol of the slot. The mapping type, the length of the DMRS, l0 and the cyclic prefix limit it (TS 38.214
    /// Tables 5.1.2.1-1 and 6.1.2.1-1); cuts the number of symbols.
    bool set_first_symbol(unsigned int symbol) { return _target().set_first_symbol(symbol, _get_bwp().cp_type); }
    unsigned int get_first_symbol() const { return _target().get_first_symbol(); }
    /// Symbols of a slot, limited likewise and by the end of the slot.
    bool set_symbol_num(unsigned int number) { return _target().set_symbol_num(number, _get_bwp().cp_type); }
    unsigned int get_symbol_num() const { return _target().get_symbol_num(); }
    /// Moves the channel to a BWP of its carrier, and fits it in there. One past the end becomes BWP 0, with a printed
    /// line.
    virtual bool set_bwp_id(unsigned int id) = 0;
    unsigned int get_bwp_id() const { return _target().get_bwp_id(); }
    /// How the resource blocks are told; of the list.
    bool set_ra_type(lib_nr_sch_ra_type_t type) { return _target().set_ra_type(type); }
    lib_nr_sch_ra_type_t get_ra_type() const { return _target().get_ra_type(); }
    std::vector<lib_nr_sch_ra_type_t> get_ra_type_list() const { return _target().get_ra_type_list(); }
    /// Resource blocks of a group, for type 0. A size that the BWP does not have (TS 38.214 Table 5.1.2.2.1-1) becomes
    /// the list's first; fits the bitmap.
    bool set_rbg_size(lib_nr_sch_rbg_size_t size);
    lib_nr_sch_rbg_size_t get_rbg_size() const { return _target().get_rbg_size(); }
    std::vector<lib_nr_sch_rbg_size_t> get_rbg_size_list() const
    {
        return _target().get_rbg_size_list(_get_bwp().rb_size);
    }
    /// A bit for each group of the BWP, the first for the lowest, for type 0: cut or padded with 0. A text without bits
    /// changes nothing.
    bool set_rbg_bitmap(const std::string& text);
    std::string get_rbg_bitmap() const { return _target().get_rbg_bitmap(); }
    unsigned int get_rbg_bitmap_number() const;
    /// First resource block within the BWP, for type 1, at most its last; cuts the number.
    virtual bool set_rb_offset(unsigned int rb_offset);
    unsigned int get_rb_offset() const { return _target().get_rb_offset(); }
    /// Resource blocks, for type 1, from 1 to what the BWP has from the offset on.
    virtual bool set_rb_num(unsigned int rb_num);
    unsigned int get_rb_num() const { return _target().get_rb_num(); }

    /// Without coding the bits of the data source are scrambled and sent as they are.
    bool set_enable_coding(bool enable) { return _target().set_enable_coding(enable); }
    bool get_enable_coding() const { return _target().get_enable_coding(); }
    /// MCS table of TS 38.214; what the list has not becomes its first. Limits the MCS.
    bool set_mcs_table(mcs_table_t table) { return _target().set_mcs_table(table); }
    mcs_table_t get_mcs_table() const { return _target().get_mcs_table(); }
    std::vector<mcs_table_t> get_mcs_table_list() const { return _target().get_mcs_table_list(); }
    /// Row of the table, at most its last, 26 to 28. Gives modulation and code rate.
    bool set_mcs(unsigned int mcs) { return _target().set_mcs(mcs); }
    unsigned int get_mcs() const { return _target().get_mcs(); }
    /// 0 to 1.
    double get_target_code_rate() const { return _target().get_target_code_rate(); }
    lib_nr_modulation_type_t get_modulation() const { return _target().get_modulation(); }
    /// xOverhead of the transport block size, resource elements of a resource block (TS 38.214 clause 5.1.3.2).
    bool set_x_overhead(lib_nr_sch_x_overhead_t overhead) { return _target().set_x_overhead(overhead); }
    lib_nr_sch_x_overhead_t get_x_overhead() const { return _target().get_x_overhead(); }
    /// Where the bits of the transport block come from.
    bool set_data_source(lib_nr_pn_seq_t source) { return _target().set_data_source(source); }
    lib_nr_pn_seq_t get_data_source() const { return _target().get_data_source(); }
    /// The user's bits, such as "1011"; a text without bits changes nothing.
    bool set_data_source_custom(const std::string& text) { return _target().set_data_source_custom(text); }
    std::string get_data_source_custom() const { return _target().get_data_source_custom(); }
    /// Redundancy version, at most 3.
    bool set_rv(unsigned int rv) { return _target().set_rv(rv); }
    unsigned int get_rv() const { return _target().get_rv(); }

    /// dmrs-Downlink-r16: the sequence of each CDM group starts from a value of its own (TS 38.211 clause 7.4.1.1.1).
    bool set_enable_dmrs_downlink_r16(bool enable) { return _target().set_enable_dmrs_downlink_r16(enable); }
    bool get_enable_dmrs_downlink_r16() const { return _target().get_enable_dmrs_downlink_r16(); }
    /// n_SCID of the DMRS; any value above 0 is 1.
    bool set_nscid(unsigned int nscid) { return _target().set_nscid(nscid); }
    unsigned int get_nscid() const { return _target().get_nscid(); }
    /// N_ID^0 and N_ID^1 of the DMRS, -1 to 65535; -1, without `standard_rules` 0 too, stands for the cell's.
    bool set_nid0(int nid) { return _target().set_nid0(nid); }
    int get_nid0() const { return _target().get_nid0(); }
    /// As N_ID^0.
    bool set_nid1(int nid) { return _target().set_nid1(nid); }
    int get_nid1() const { return _target().get_nid1(); }
    /// DMRS in dB above the channel's power, limited to -40 to 40.
    bool set_dmrs_power(double power) { return _target().set_dmrs_power(power); }
    double get_dmrs_power() const { return _target().get_dmrs_power(); }
    /// Applies the DMRS ports again.
    bool set_dmrs_configuration_type(lib_nr_sch_dmrs_configuration_type_t type)
    {
        return _target().set_dmrs_configuration_type(type);
    }
    lib_nr_sch_dmrs_configuration_type_t get_dmrs_configuration_type() const
    {
        return _target().get_dmrs_configuration_type();
    }
    /// Applies the DMRS ports, the additional position and the symbols again.
    bool set_dmrs_length(lib_nr_sch_dmrs_length_t length)
    {
        return _target().set_dmrs_length(length, _get_bwp().cp_type);
    }
    lib_nr_sch_dmrs_length_t get_dmrs_length() const { return _target().get_dmrs_length(); }
    /// What the list has not becomes its first; applies the symbols again.
    bool set_dmrs_additional_position(lib_nr_sch_dmrs_additional_position_t position)
    {
        return _target().set_dmrs_additional_position(position, _get_bwp().cp_type);
    }
    lib_nr_sch_dmrs_additional_position_t get_dmrs_additional_position() const
    {
        return _target().get_dmrs_additional_position();
    }
    virtual std::vector<lib_nr_sch_dmrs_additional_position_t> get_dmrs_additional_position_list();
    /// Applies the additional position and the symbols again.
    bool set_mapping_type(lib_nr_sch_dmrs_mapping_type_t type)
    {
        return _target().set_mapping_type(type, _get_bwp().cp_type);
    }
    lib_nr_sch_dmrs_mapping_type_t get_mapping_type() const { return _target().get_mapping_type(); }
    /// l0, the first DMRS symbol of mapping type A: given, or that of the carrier's MIB, which it then follows. Applies
    /// the additional position and the symbols again. What is no position becomes 2, with a printed line.
    bool set_dmrs_type_a_position(lib_nr_sch_dmrs_type_a_position_t position)
    {
        return _target().set_dmrs_type_a_position(position, _carrier().get_dl_ssb().get_dmrs_typeA_position(),
                                                  _get_bwp().cp_type);
    }
    lib_nr_sch_dmrs_type_a_position_t get_dmrs_type_a_position() const { return _target().get_dmrs_type_a_position(); }
    /// Where the length of the DMRS sequence counts from; the signal is the same, but for a PDSCH under
    /// `standard_rules`, whose sequence counts from the BWP where the PRB is asked for.
    bool set_dmrs_mapping_ref(lib_nr_sch_dmrs_mapping_ref_t reference)
    {
        return _target().set_dmrs_mapping_ref(reference);
    }
    lib_nr_sch_dmrs_mapping_ref_t get_dmrs_mapping_ref() const { return _target().get_dmrs_mapping_ref(); }

    /// Stays off where the first DMRS port has none: 4 and up with type 1, 6 and up with type 2.
    bool set_enable_ptrs(bool enable) { return _target().set_enable_ptrs(enable); }
    bool get_enable_ptrs() const { return _target().get_enable_ptrs(); }
    /// PTRS in dB above the channel's power, limited to -40 to 40.
    bool set_ptrs_power(double power) { return _target().set_ptrs_power(power); }
    double get_ptrs_power() const { return _target().get_ptrs_power(); }
    /// Resource blocks from one PTRS subcarrier to the next, K of TS 38.211 clause 7.4.1.2.2: 2 or 4.
    bool set_ptrs_freqency_density(lib_nr_sch_ptrs_frequency_density_size_t density)
    {
        return _target().set_ptrs_freqency_density(density);
    }
    lib_nr_sch_ptrs_frequency_density_size_t get_ptrs_freqency_density() const
    {
        return _target().get_ptrs_freqency_density();
    }
    /// Symbols from one PTRS symbol to the next, L of that clause: 1, 2 or 4.
    bool set_ptrs_time_density(lib_nr_sch_ptrs_time_density_t density)
    {
        return _target().set_ptrs_time_density(density);
    }
    lib_nr_sch_ptrs_time_density_t get_ptrs_time_density() const { return _target().get_ptrs_time_density(); }
    /// resourceElementOffset of TS 38.211 Table 7.4.1.2.2-1, at most 3.
    bool set_ptrs_re_offset(unsigned int offset) { return _target().set_ptrs_re_offset(offset); }
    unsigned int get_ptrs_re_offset() const { return _target().get_ptrs_re_offset(); }

    /// One for each DMRS port.
    unsigned int get_layers_num() const { return _target().get_layers_num(); }
    lib_nr_antenna_port_number_t get_antenna_port_number() const { return _target().get_antenna_port_number(); }

protected:
    template <class tested_t>
    friend struct vek::test_peer_t;

    /// What the settings need of the channel's BWP.
    struct bwp_t
    {
        lib_nr_numerology_type_t numerology;
        lib_nr_cyclic_prefix_type_t cp_type;
        unsigned int rb_size;
        unsigned int rb_start;
    };

    using cfg_nr_cursor_t::cfg_nr_cursor_t;
    ~cfg_nr_sch_t() = default;
    cfg_nr_sch_t(const cfg_nr_sch_t&) = default;

    /// The channel that the cursor stands on.
    virtual lib_nr_sch_configure_manager_t& _get_sch_manager() const = 0;
    virtual bwp_t _get_bwp() const = 0;
    lib_nr_sch_configure_manager_t& _target() { return _get_sch_manager(); }
    const lib_nr_sch_configure_manager_t& _target() const { return _get_sch_manager(); }
};

} // namespace vek::nr_mod_lib
