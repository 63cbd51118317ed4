#pragma once

#include "common/nr_mod_lib_export.h"
#include "phy_common/lib_nr_numerology_type.h"
#include "phy_common/lib_nr_pn_seq.h"
#include "phy_common/lib_nr_ul_pucch_type.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

class lib_nr_ul_bwp_configure_manager_t;

/// The bits of one UCI field: where they come from and how many a slot has.
struct lib_nr_ul_pucch_payload_t
{
    bool enable = true;
    lib_nr_pn_seq_t data = LIB_NR_PN9_ITU;
    unsigned int size = 4;
    std::vector<unsigned char> user_bits = {0};
    std::string user_bits_text = "0";
};

/// One PUCCH of a carrier: allocation, hopping, identifiers, format options and UCI, consistent with each other and
/// with the BWP that it lives in. The façade tells the rules; what a rule needs of the BWP is handed to the setter.
/// Whether the payload fits the resource is judged where the PUCCH is sent.
class NR_MOD_LIB_EXPORT lib_nr_ul_pucch_configure_manager_t
{
public:
    explicit lib_nr_ul_pucch_configure_manager_t(const lib_nr_ul_bwp_configure_manager_t& bwp);

    /// Name "UCI1" and most other settings at their defaults, in the BWP given. Switch, format, slots, symbols,
    /// resource blocks, interlace numbers and HARQ-ACK stay.
    void init(const lib_nr_ul_bwp_configure_manager_t& bwp);
    /// Takes the BWP's id and brings slots, symbols and resource blocks inside its prefix, spacing and width; 240 kHz
    /// has no uplink and switches the PUCCH off. The number of resource blocks is cut to the room behind their offset
    /// at every change, also where the offset stays: a BWP may become too narrow for the last of them alone.
    void updata_param_when_bwp_change(const lib_nr_ul_bwp_configure_manager_t& bwp);

    /// Always true.
    bool set_name(const std::string& name);
    const std::string& get_name() const { return m_name; }
    bool set_enable(bool enable, lib_nr_numerology_type_t bwp_numerology);
    bool get_enable() const { return m_enable; }
    bool set_power(double power);
    double get_power() const { return m_power; }
    bool set_pucch_format(lib_nr_ul_pucch_format_t format, unsigned int bwp_rb_number,
                          lib_nr_cyclic_prefix_type_t bwp_cp_type);
    lib_nr_ul_pucch_format_t get_pucch_format() const { return m_pucch_format; }
    bool set_allocated_slots(const std::string& text, lib_nr_numerology_type_t bwp_numerology);
    /// Slots of the frame, never empty.
    const std::vector<unsigned int>& get_allocated_slots() const { return m_allocated_slots; }
    /// The same as text.
    std::string get_allocated_slots_feedback() const;
    bool set_first_symbol(unsigned int first_symbol, lib_nr_cyclic_prefix_type_t bwp_cp_type);
    unsigned int get_first_symbol() const { return m_first_symbol; }
    bool set_symbol_num(unsigned int symbol_num, lib_nr_cyclic_prefix_type_t bwp_cp_type);
    unsigned int get_symbol_num() const { return m_symbol_num; }
    /// Moves to another BWP and follows it; false where it is there already.
    bool set_bwp_id(const lib_nr_ul_bwp_configure_manager_t& bwp);
    unsigned int get_bwp_id() const { return m_bwp_id; }
    bool set_use_interlace_pucch(bool use_interlace, lib_nr_numerology_type_t bwp_numerology);
    bool get_use_interlace_pucch() const { return m_use_interlace_pucch; }
    bool set_rb_offset(unsigned int rb_offset, unsigned int bwp_rb_number);
    unsigned int get_rb_offset() const { return m_rb_offset; }
    bool set_rb_num(unsigned int rb_num, unsigned int bwp_rb_number);
    unsigned int get_rb_num() const { return m_rb_num; }
    bool set_rb_set_index(unsigned int index, unsigned int rb_set_number);
    unsigned int get_rb_set_index() const { return m_rb_set_index; }
    bool set_interlace0(unsigned int interlace, lib_nr_numerology_type_t bwp_numerology);
    unsigned int get_interlace0() const { return m_interlace0; }
    bool set_pucch_interlace0(lib_nr_ul_pucch_interlace_rb_num_t rb_num);
    lib_nr_ul_pucch_interlace_rb_num_t get_pucch_interlace0() const { return m_pucch_interlace0; }
    bool set_interlace1(int interlace, lib_nr_numerology_type_t bwp_numerology);
    int get_interlace1() const { return m_interlace1; }
    bool set_pucch_interlace1(lib_nr_ul_pucch_interlace_rb_num_t rb_num);
    lib_nr_ul_pucch_interlace_rb_num_t get_pucch_interlace1() const { return m_pucch_interlace1; }
    bool set_hopping_id(int hopping_id);
    int get_hopping_id() const { return m_hopping_id; }
    bool set_pucch_group_hopping(lib_nr_ul_group_hopping_t hopping);
    lib_nr_ul_group_hopping_t get_pucch_group_hopping() const { return m_pucch_group_hopping; }
    bool set_initial_cyclic_shift(unsigned int shift);
    unsigned int get_initial_cyclic_shift() const { return m_initial_cyclic_shift; }
    bool set_scrambling_id(int scrambling_id);
    int get_scrambling_id() const { return m_scrambling_id; }
    bool set_n_rnti(unsigned int n_rnti);
    unsigned int get_n_rnti() const { return m_n_rnti; }
    bool set_scrambling_id0(int scrambling_id);
    int get_scrambling_id0() const { return m_scrambling_id0; }
    bool set_intra_slot_frequency_hopping(bool hopping);
    bool get_intra_slot_frequency_hopping() const { return m_intra_slot_frequency_hopping; }
    bool set_inter_slot_frequency_hopping(bool hopping);
    bool get_inter_slot_frequency_hopping() const { return m_inter_slot_frequency_hopping; }
    bool set_number_of_slots_for_pucch_repetition(unsigned int number);
    unsigned int get_number_of_slots_for_pucch_repetition() const { return m_number_of_slots_for_pucch_repetition; }
    bool set_second_hop_prb(unsigned int prb, unsigned int bwp_rb_number);
    unsigned int get_second_hop_prb() const { return m_second_hop_prb; }
    bool set_occ_index(unsigned int index);
    unsigned int get_occ_index() const { return m_occ_index; }
    bool set_occ_length(lib_nr_ul_pucch_occ_length_t length);
    lib_nr_ul_pucch_occ_length_t get_occ_length() const { return m_occ_length; }
    bool set_pi_2_bpsk(bool pi_2_bpsk);
    bool get_pi_2_bpsk() const { return m_pi_2_bpsk; }
    bool set_additional_dmrs(bool additional_dmrs);
    bool get_additional_dmrs() const { return m_additional_dmrs; }
    bool set_dmrs_power(double power);
    double get_dmrs_power() const { return m_dmrs_power; }
    bool set_dmrs_uplink_transform_precoding_pucch(bool precoding);
    bool get_dmrs_uplink_transform_precoding_pucch() const { return m_dmrs_uplink_transform_precoding_pucch; }
    bool set_uci_format(lib_nr_ul_uci_content_t content);
    lib_nr_ul_uci_content_t get_uci_format() const { return m_uci_format; }
    std::vector<lib_nr_ul_uci_content_t> get_uci_format_range() const;
    bool set_sr_configuration(lib_nr_ul_sr_configuration_t sr);
    lib_nr_ul_sr_configuration_t get_sr_configuration() const { return m_sr_configuration; }
    bool set_scrambling_state(bool scrambling);
    bool get_scrambling_state() const { return m_scrambling_state; }
    bool set_channel_coding(bool coding);
    bool get_channel_coding() const { return m_channel_coding; }
    bool set_uci_content(bool uci_content);
    bool get_uci_content() const { return m_uci_content; }
    bool set_max_code_rate(lib_nr_ul_pucch_max_code_rate_x100_t rate);
    lib_nr_ul_pucch_max_code_rate_x100_t get_max_code_rate() const { return m_max_code_rate; }

    // UCI fields of formats 2 to 4, where `get_uci_content()` holds.

    const lib_nr_ul_pucch_payload_t& get_harq_ack() const { return m_harq_ack; }
    bool set_harq_ack_enable(bool enable);
    bool get_harq_ack_enable() const { return m_harq_ack.enable; }
    bool set_harq_ack_payload_data(lib_nr_pn_seq_t data);
    lib_nr_pn_seq_t get_harq_ack_payload_data() const { return m_harq_ack.data; }
    bool set_harq_ack_payload_size(unsigned int size);
    unsigned int get_harq_ack_payload_size() const { return m_harq_ack.size; }
    bool set_harq_ack_user_bits(const std::string& text);
    const std::string& get_harq_ack_user_bits() const { return m_harq_ack.user_bits_text; }

    const lib_nr_ul_pucch_payload_t& get_sr() const { return m_sr; }
    bool set_sr_enable(bool enable);
    bool get_sr_enable() const { return m_sr.enable; }
    bool set_sr_payload_data(lib_nr_pn_seq_t data);
    lib_nr_pn_seq_t get_sr_payload_data() const { return m_sr.data; }
    bool set_sr_payload_size(unsigned int size);
    unsigned int get_sr_payload_size() const { return m_sr.size; }
    bool set_sr_user_bits(const std::string& text);
    const std::string& get_sr_user_bits() const { return m_sr.user_bits_text; }

    const lib_nr_ul_pucch_payload_t& get_csi1() const { return m_csi1; }
    bool set_csi1_enable(bool enable);
    bool get_csi1_enable() const { return m_csi1.enable; }
    bool set_csi1_payload_data(lib_nr_pn_seq_t data);
    lib_nr_pn_seq_t get_csi1_payload_data() const { return m_csi1.data; }
    bool set_csi1_payload_size(unsigned int size);
    unsigned int get_csi1_payload_size() const { return m_csi1.size; }
    bool set_csi1_user_bits(const std::string& text);
    const std::string& get_csi1_user_bits() const { return m_csi1.user_bits_text; }

    const lib_nr_ul_pucch_payload_t& get_csi2() const { return m_csi2; }
    bool set_csi2_enable(bool enable);
    bool get_csi2_enable() const { return m_csi2.enable; }
    bool set_csi2_payload_data(lib_nr_pn_seq_t data);
    lib_nr_pn_seq_t get_csi2_payload_data() const { return m_csi2.data; }
    bool set_csi2_payload_size(unsigned int size);
    unsigned int get_csi2_payload_size() const { return m_csi2.size; }
    bool set_csi2_user_bits(const std::string& text);
    const std::string& get_csi2_user_bits() const { return m_csi2.user_bits_text; }

    // The plain payload of formats 2 to 4 without UCI fields, and the HARQ-ACK bits of formats 0 and 1.

    const lib_nr_ul_pucch_payload_t& get_payload() const { return m_payload; }
    bool set_payload_data(lib_nr_pn_seq_t data);
    lib_nr_pn_seq_t get_payload_data() const { return m_payload.data; }
    bool set_payload_size(unsigned int size);
    unsigned int get_payload_size() const { return m_payload.size; }
    bool set_payload_user_bits(const std::string& text);
    const std::string& get_payload_user_bits() const { return m_payload.user_bits_text; }

    /// Formats 0 and 1: the bits of each allocated slot, in the order of the list.
    const std::vector<std::vector<unsigned char>>& get_uci_bits_per_slot() const { return m_uci_bits_per_slot; }

private:
    unsigned int _limited_symbol_num(unsigned int symbol_num, lib_nr_cyclic_prefix_type_t cp_type) const;
    bool _end_hopping_of_one_symbol();
    bool _limit_rb_num(unsigned int rb_num, unsigned int bwp_rb_number);
    bool _limit_occ_index(unsigned int index);
    void _updata_uci_bit_per_slot();

    std::string m_name;
    bool m_enable = false;
    double m_power = 0.0;
    lib_nr_ul_pucch_format_t m_pucch_format = LIB_NR_UL_PUCCH_FORMAT_0;
    std::vector<unsigned int> m_allocated_slots = {0};
    unsigned int m_first_symbol = 13;
    unsigned int m_symbol_num = 1;
    unsigned int m_bwp_id = 0;
    bool m_use_interlace_pucch = false;
    unsigned int m_rb_offset = 0;
    unsigned int m_rb_num = 1;
    unsigned int m_rb_set_index = 0;
    unsigned int m_interlace0 = 0;
    lib_nr_ul_pucch_interlace_rb_num_t m_pucch_interlace0 = LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10;
    int m_interlace1 = -1;
    lib_nr_ul_pucch_interlace_rb_num_t m_pucch_interlace1 = LIB_NR_UL_PUCCH_INTERLACE_RB_NUM_10;
    int m_hopping_id = 0;
    lib_nr_ul_group_hopping_t m_pucch_group_hopping = LIB_NR_UL_GROUP_HOPPING_NEITHER;
    unsigned int m_initial_cyclic_shift = 0;
    int m_scrambling_id = 0;
    unsigned int m_n_rnti = 0;
    int m_scrambling_id0 = -1;
    bool m_intra_slot_frequency_hopping = false;
    bool m_inter_slot_frequency_hopping = false;
    unsigned int m_number_of_slots_for_pucch_repetition = 1;
    unsigned int m_second_hop_prb = 0;
    unsigned int m_occ_index = 0;
    lib_nr_ul_pucch_occ_length_t m_occ_length = LIB_NR_UL_PUCCH_OCC_LENGTH_1;
    bool m_pi_2_bpsk = false;
    bool m_additional_dmrs = false;
    double m_dmrs_power = 0.0;
    bool m_dmrs_uplink_transform_precoding_pucch = false;
    lib_nr_ul_uci_content_t m_uci_format = LIB_NR_UL_UCI_SR_AND_HARQ_ACK;
    lib_nr_ul_sr_configuration_t m_sr_configuration = LIB_NR_UL_SR_NEGATIVE;
    bool m_scrambling_state = true;
    bool m_channel_coding = true;
    bool m_uci_content = false;
    lib_nr_ul_pucch_max_code_rate_x100_t m_max_code_rate = LIB_NR_UL_PUCCH_MAX_CODE_RATE_80;
    lib_nr_ul_pucch_payload_t m_harq_ack;
    lib_nr_ul_pucch_payload_t m_sr;
    lib_nr_ul_pucch_payload_t m_csi1;
    lib_nr_ul_pucch_payload_t m_csi2;
    lib_nr_ul_pucch_payload_t m_payload;
    std::vector<std::vector<unsigned char>> m_uci_bits_per_slot;
};

} // namespace vek::nr_mod_lib
