#pragma once

#include "common/nr_mod_lib_export.h"
#include "config/cfg_nr_cursor.h"

#include <string>
#include <vector>

namespace vek::nr_mod_lib
{

/// Cursor over the carriers' PUCCHs, TS 38.211 clause 6.3.2. A PUCCH lives in an uplink BWP and follows it; whether its
/// payload fits its resource is judged where it is sent.
class NR_MOD_LIB_EXPORT cfg_nr_ul_pucch_t : public cfg_nr_list_cursor_t<lib_nr_ul_pucch_configure_manager_t>
{
public:
    explicit cfg_nr_ul_pucch_t(lib_nr_waveform_configure_manager_t& waveform) : cfg_nr_list_cursor_t(waveform) {}

    /// Moves the cursor; false, and no move, where an index lies past its list's end.
    bool set_current_pucch_index(unsigned int carrier, unsigned int pucch) { return set_current_index(carrier, pucch); }

    /// A label; always true.
    bool set_name(const std::string& name) { return _get_pucch_manager().set_name(name); }
    const std::string& get_name() const { return _get_pucch_manager().get_name(); }
    /// At 240 kHz, which has no uplink, it stays as it is, and a BWP that comes to it switches off.
    bool set_enable(bool enable);
    bool get_enable() const { return _get_pucch_manager().get_enable(); }
    /// dB, of all cells, limited to -40 to 40; a step of 1e-12 or less is none.
    bool set_power(double power) { return _get_pucch_manager().set_power(power); }
    double get_power() const { return _get_pucch_manager().get_power(); }
    /// Limits resource blocks, first symbol, symbols and payload size to those of the format (TS 38.213 clause 9.2.1);
    /// inter-slot hopping remains with format 1 alone, interlaces with all but format 4.
    bool set_pucch_format(lib_nr_ul_pucch_format_t format);
    lib_nr_ul_pucch_format_t get_pucch_format() const { return _get_pucch_manager().get_pucch_format(); }
    /// Slots of the frame such as "0:2,5"; those past its end are dropped, and a text without any changes nothing.
    bool set_allocated_slots(const std::string& text);
    std::string get_allocated_slots() const { return _get_pucch_manager().get_allocated_slots_feedback(); }
    const std::vector<unsigned int>& get_allocated_slots_vct() const
    {
        return _get_pucch_manager().get_allocated_slots();
    }
    /// Symbol of the slot, at most 13 for formats 0 and 2 and 10 for the others, 2 less with extended prefix; limits
    /// the number of symbols.
    bool set_first_symbol(unsigned int first_symbol);
    unsigned int get_first_symbol() const { return _get_pucch_manager().get_first_symbol(); }
    /// 1 to 2 for formats 0 and 2, 4 to 14 for the others (12 with extended prefix), and at most 14 less the first
    /// symbol. A single one ends intra-slot hopping.
    bool set_symbol_num(unsigned int symbol_num);
    unsigned int get_symbol_num() const { return _get_pucch_manager().get_symbol_num(); }
    /// The uplink BWP by its place in the list, which the PUCCH then follows; for one that the carrier has not, a
    /// printed line and BWP 0. False for the BWP that it is in.
    bool set_bwp_id(unsigned int bwp_id);
    unsigned int get_bwp_id() const { return _get_pucch_manager().get_bwp_id(); }
    /// Interlaces instead of a run of resource blocks, at 15 and 30 kHz and not for format 4; end both hoppings.
    bool set_use_interlace_pucch(bool use_interlace);
    bool get_use_interlace_pucch() const { return _get_pucch_manager().get_use_interlace_pucch(); }
    /// First resource block, from the BWP's first, within the BWP; limits the number.
    bool set_rb_offset(unsigned int rb_offset);
    unsigned int get_rb_offset() const { return _get_pucch_manager().get_rb_offset(); }
    /// Resource blocks, 1 to 16 for formats 2 and 3 and 1 for the others, within the BWP; limits the second hop.
    bool set_rb_num(unsigned int rb_num);
    unsigned int get_rb_num() const { return _get_pucch_manager().get_rb_num(); }
    /// RB set between the guard bands of the BWP's numerology, limited to those there are; 0 without any.
    bool set_rb_set_index(unsigned int index);
    unsigned int get_rb_set_index() const { return _get_pucch_manager().get_rb_set_index(); }
    /// First interlace, at most 9 at 15 kHz and 4 at 30 kHz (TS 38.211 clause 4.4.4.6); elsewhere nothing changes.
    bool set_interlace0(unsigned int interlace);
    unsigned int get_interlace0() const { return _get_pucch_manager().get_interlace0(); }
    /// How many of its resource blocks are used.
    bool set_pucch_interlace0(lib_nr_ul_pucch_interlace_rb_num_t rb_num);
    lib_nr_ul_pucch_interlace_rb_num_t get_pucch_interlace0() const
    {
        return _get_pucch_manager().get_pucch_interlace0();
    }
    /// Second interlace, as the first; any negative value is -1, none.
    bool set_interlace1(int interlace);
    int get_interlace1() const { return _get_pucch_manager().get_interlace1(); }
    /// How many of its resource blocks are used.
    bool set_pucch_interlace1(lib_nr_ul_pucch_interlace_rb_num_t rb_num);
    lib_nr_ul_pucch_interlace_rb_num_t get_pucch_interlace1() const
    {
        return _get_pucch_manager().get_pucch_interlace1();
    }
    /// n_ID of the sequence and cyclic shift hopping of TS 38.211 clause 6.3.2.2, at most 1023; any negative value is
    /// -1, the cell's identity.
    bool set_hopping_id(int hopping_id) { return _get_pucch_manager().set_hopping_id(hopping_id); }
    int get_hopping_id() const { return _get_pucch_manager().get_hopping_id(); }
    /// Hopping over sequence groups, over the two sequences of a group, or neither (TS 38.211 clause 6.3.2.2.1).
    bool set_pucch_group_hopping(lib_nr_ul_group_hopping_t hopping);
    lib_nr_ul_group_hopping_t get_pucch_group_hopping() const { return _get_pucch_manager().get_pucch_group_hopping(); }
    /// m_0 of formats 0 and 1, at most 11.
    bool set_initial_cyclic_shift(unsigned int shift) { return _get_pucch_manager().set_initial_cyclic_shift(shift); }
    unsigned int get_initial_cyclic_shift() const { return _get_pucch_manager().get_initial_cyclic_shift(); }
    /// n_ID of the scrambling of formats 2 to 4, at most 1023; any negative value is -1, the cell's identity.
    bool set_scrambling_id(int scrambling_id) { return _get_pucch_manager().set_scrambling_id(scrambling_id); }
    int get_scrambling_id() const { return _get_pucch_manager().get_scrambling_id(); }
    /// At most 65535.
    bool set_n_rnti(unsigned int n_rnti) { return _get_pucch_manager().set_n_rnti(n_rnti); }
    unsigned int get_n_rnti() const { return _get_pucch_manager().get_n_rnti(); }
    /// n_ID^0 of the DMRS of format 2, and of formats 3 and 4 where their DMRS is of type 2 (TS 38.211 clause
    /// 6.4.1.3), at most 65535; any negative value is -1, the cell's identity.
    bool set_scrambling_id0(int scrambling_id) { return _get_pucch_manager().set_scrambling_id0(scrambling_id); }
    int get_scrambling_id0() const { return _get_pucch_manager().get_scrambling_id0(); }
    /// The later half of the symbols at the second hop; ends inter-slot hopping.
    bool set_intra_slot_frequency_hopping(bool hopping);
    bool get_intra_slot_frequency_hopping() const { return _get_pucch_manager().get_intra_slot_frequency_hopping(); }
    /// Every second slot at the second hop, for format 1 in at least two slots; ends intra-slot hopping. Otherwise it
    /// is off. Under `standard_rules` every second slot from the first of a repetition on, those between included.
    bool set_inter_slot_frequency_hopping(bool hopping);
    bool get_inter_slot_frequency_hopping() const { return _get_pucch_manager().get_inter_slot_frequency_hopping(); }
    /// Slots of format 1 that send the same bits, 1 to 8 and at most those allocated (TS 38.213 clause 9.2.6). The bits
    /// take it into account when slots or payload are next set.
    bool set_number_of_slots_for_pucch_repetition(unsigned int number);
    unsigned int get_number_of_slots_for_pucch_repetition() const
    {
        return _get_pucch_manager().get_number_of_slots_for_pucch_repetition();
    }
    /// First resource block of the second hop, from the BWP's first, so that all fit the BWP.
    bool set_second_hop_prb(unsigned int prb);
    unsigned int get_second_hop_prb() const { return _get_pucch_manager().get_second_hop_prb(); }
    /// Orthogonal sequence, below the length over which format 1 spreads (half its symbols, a quarter with intra-slot
    /// hopping) or the OCC length of the others. A recall sets it ahead of the length, so that it comes back no higher
    /// than a fresh PUCCH of the format takes it.
    bool set_occ_index(unsigned int index) { return _get_pucch_manager().set_occ_index(index); }
    unsigned int get_occ_index() const { return _get_pucch_manager().get_occ_index(); }
    /// From 2 on for format 4, within 1 to 4; limits the index.
    bool set_occ_length(lib_nr_ul_pucch_occ_length_t length) { return _get_pucch_manager().set_occ_length(length); }
    lib_nr_ul_pucch_occ_length_t get_occ_length() const { return _get_pucch_manager().get_occ_length(); }
    /// pi/2-BPSK instead of QPSK in formats 3 and 4.
    bool set_pi_2_bpsk(bool pi_2_bpsk) { return _get_pucch_manager().set_pi_2_bpsk(pi_2_bpsk); }
    bool get_pi_2_bpsk() const { return _get_pucch_manager().get_pi_2_bpsk(); }
    /// Four DMRS symbols from 10 symbols on, formats 3 and 4 (TS 38.211 Table 6.4.1.3.3.2-1).
    bool set_additional_dmrs(bool additional_dmrs) { return _get_pucch_manager().set_additional_dmrs(additional_dmrs); }
    bool get_additional_dmrs() const { return _get_pucch_manager().get_additional_dmrs(); }
    /// dB, of the DMRS of formats 1 to 4 beside the power of all cells; limits and steps as there.
    bool set_dmrs_power(double power) { return _get_pucch_manager().set_dmrs_power(power); }
    double get_dmrs_power() const { return _get_pucch_manager().get_dmrs_power(); }
    /// With pi/2-BPSK, DMRS of low-PAPR type 2 in formats 3 and 4.
    bool set_dmrs_uplink_transform_precoding_pucch(bool precoding);
    bool get_dmrs_uplink_transform_precoding_pucch() const
    {
        return _get_pucch_manager().get_dmrs_uplink_transform_precoding_pucch();
    }
    /// What formats 0 and 1 tell, format 1 never both; for the other formats nothing changes. SR alone is positive.
    bool set_uci_format(lib_nr_ul_uci_content_t content) { return _get_pucch_manager().set_uci_format(content); }
    lib_nr_ul_uci_content_t get_uci_format() const { return _get_pucch_manager().get_uci_format(); }
    std::vector<lib_nr_ul_uci_content_t> get_uci_format_range() const
    {
        return _get_pucch_manager().get_uci_format_range();
    }
    /// Stays positive where the PUCCH tells nothing but SR.
    bool set_sr_configuration(lib_nr_ul_sr_configuration_t sr);
    lib_nr_ul_sr_configuration_t get_sr_configuration() const { return _get_pucch_manager().get_sr_configuration(); }
    /// Scrambling of formats 2 to 4.
    bool set_scrambling_state(bool scrambling) { return _get_pucch_manager().set_scrambling_state(scrambling); }
    bool get_scrambling_state() const { return _get_pucch_manager().get_scrambling_state(); }
    /// Channel coding of formats 2 to 4; without it the payload's bits fill the resource, and the UCI fields go.
    bool set_channel_coding(bool coding) { return _get_pucch_manager().set_channel_coding(coding); }
    bool get_channel_coding() const { return _get_pucch_manager().get_channel_coding(); }
    /// HARQ-ACK, SR and CSI fields instead of the plain payload, formats 2 to 4 with channel coding.
    bool set_uci_content(bool uci_content) { return _get_pucch_manager().set_uci_content(uci_content); }
    bool get_uci_content() const { return _get_pucch_manager().get_uci_content(); }
    /// Code rate of what stands ahead of CSI part 2, limited to 8 to 80 hundredths.
    bool set_max_code_rate(lib_nr_ul_pucch_max_code_rate_x100_t rate);
    lib_nr_ul_pucch_max_code_rate_x100_t get_max_code_rate() const { return _get_pucch_manager().get_max_code_rate(); }

    // UCI fields: whether there, source, bits a slot, and the user's bits as "100" or "1,0,0"; a text without bits
    // changes nothing, and a size of 0 is as good as none.

    bool set_harq_ack_enable(bool enable) { return _get_pucch_manager().set_harq_ack_enable(enable); }
    bool get_harq_ack_enable() const { return _get_pucch_manager().get_harq_ack_enable(); }
    bool set_harq_ack_payload_data(lib_nr_pn_seq_t data);
    lib_nr_pn_seq_t get_harq_ack_payload_data() const { return _get_pucch_manager().get_harq_ack_payload_data(); }
    bool set_harq_ack_payload_size(unsigned int size) { return _get_pucch_manager().set_harq_ack_payload_size(size); }
    unsigned int get_harq_ack_payload_size() const { return _get_pucch_manager().get_harq_ack_payload_size(); }
    bool set_harq_ack_user_bits(const std::string& text) { return _get_pucch_manager().set_harq_ack_user_bits(text); }
    const std::string& get_harq_ack_user_bits() const { return _get_pucch_manager().get_harq_ack_user_bits(); }

    bool set_sr_enable(bool enable) { return _get_pucch_manager().set_sr_enable(enable); }
    bool get_sr_enable() const { return _get_pucch_manager().get_sr_enable(); }
    bool set_sr_payload_data(lib_nr_pn_seq_t data) { return _get_pucch_manager().set_sr_payload_data(data); }
    lib_nr_pn_seq_t get_sr_payload_data() const { return _get_pucch_manager().get_sr_payload_data(); }
    bool set_sr_payload_size(unsigned int size) { return _get_pucch_manager().set_sr_payload_size(size); }
    unsigned int get_sr_payload_size() const { return _get_pucch_manager().get_sr_payload_size(); }
    bool set_sr_user_bits(const std::string& text) { return _get_pucch_manager().set_sr_user_bits(text); }
    const std::string& get_sr_user_bits() const { return _get_pucch_manager().get_sr_user_bits(); }

    bool set_csi1_enable(bool enable) { return _get_pucch_manager().set_csi1_enable(enable); }
    bool get_csi1_enable() const { return _get_pucch_manager().get_csi1_enable(); }
    bool set_csi1_payload_data(lib_nr_pn_seq_t data) { return _get_pucch_manager().set_csi1_payload_data(data); }
    lib_nr_pn_seq_t get_csi1_payload_data() const { return _get_pucch_manager().get_csi1_payload_data(); }
    bool set_csi1_payload_size(unsigned int size) { return _get_pucch_manager().set_csi1_payload_size(size); }
    unsigned int get_csi1_payload_size() const { return _get_pucch_manager().get_csi1_payload_size(); }
    bool set_csi1_user_bits(const std::string& text) { return _get_pucch_manager().set_csi1_user_bits(text); }
    const std::string& get_csi1_user_bits() const { return _get_pucch_manager().get_csi1_user_bits(); }

    bool set_csi2_enable(bool enable) { return _get_pucch_manager().set_csi2_enable(enable); }
    bool get_csi2_enable() const { return _get_pucch_manager().get_csi2_enable(); }
    bool set_csi2_payload_data(lib_nr_pn_seq_t data) { return _get_pucch_manager().set_csi2_payload_data(data); }
    lib_nr_pn_seq_t get_csi2_payload_data() const { return _get_pucch_manager().get_csi2_payload_data(); }
    bool set_csi2_payload_size(unsigned int size) { return _get_pucch_manager().set_csi2_payload_size(size); }
    unsigned int get_csi2_payload_size() const { return _get_pucch_manager().get_csi2_payload_size(); }
    bool set_csi2_user_bits(const std::string& text) { return _get_pucch_manager().set_csi2_user_bits(text); }
    const std::string& get_csi2_user_bits() const { return _get_pucch_manager().get_csi2_user_bits(); }

    /// Source of the HARQ-ACK bits of formats 0 and 1 and of the plain payload of the others.
    bool set_payload_data(lib_nr_pn_seq_t data) { return _get_pucch_manager().set_payload_data(data); }
    lib_nr_pn_seq_t get_payload_data() const { return _get_pucch_manager().get_payload_data(); }
    /// Bits a slot, 1 to 2 for formats 0 and 1 and 3 to 2026 for the others.
    bool set_payload_size(unsigned int size) { return _get_pucch_manager().set_payload_size(size); }
    unsigned int get_payload_size() const { return _get_pucch_manager().get_payload_size(); }
    /// The user's bits, as "100" or "1,0,0".
    bool set_payload_user_bits(const std::string& text) { return _get_pucch_manager().set_payload_user_bits(text); }
    const std::string& get_payload_user_bits() const { return _get_pucch_manager().get_payload_user_bits(); }

    /// Formats 0 and 1: the bits of the allocated slots, slot by slot, separated by commas.
    std::string get_uci_bits_per_slot() const;
    /// Appends them to `out`, and prints the line "bits_str = " with `out`.
    void get_uci_bits_per_slot(std::string& out) const;

private:
    lib_nr_ul_pucch_configure_manager_t& _get_pucch_manager() { return _target(); }
    const lib_nr_ul_pucch_configure_manager_t& _get_pucch_manager() const { return _target(); }
    const lib_nr_ul_bwp_configure_manager_t& _get_bwp_manager() const { return _carrier().get_ul_bwp(get_bwp_id()); }
};

} // namespace vek::nr_mod_lib
