#include "config/cfg_nr_ul_pucch.h"
#include "config/leaves/cfg_nr_leaf_rows.h"
#include "config/leaves/cfg_nr_leaf_tables.h"

namespace vek::nr_mod_lib
{

namespace
{

using pucch_t = cfg_nr_ul_pucch_t;
using row = rows_of_t<pucch_t>;

constexpr auto k_uci_bits_per_slot = static_cast<std::string (pucch_t::*)() const>(&pucch_t::get_uci_bits_per_slot);

constexpr auto k_leaves = row::leaves(
    row::leaf<&pucch_t::get_name, &pucch_t::set_name>("name", "label"),
    row::leaf<&pucch_t::get_enable, &pucch_t::set_enable>("enable", "whether the PUCCH is sent; not at 240 kHz"),
    row::leaf<&pucch_t::get_power, &pucch_t::set_power>("power", "dB, -40 to 40, of all cells"),
    row::leaf<&pucch_t::get_pucch_format, &pucch_t::set_pucch_format>(
        "pucch_format", "limits resource blocks, symbols and payload_size"),
    row::leaf<&pucch_t::get_allocated_slots, &pucch_t::set_allocated_slots>("allocated_slots",
                                                                            "slots of the frame, such as 0:2,5"),
    row::leaf<&pucch_t::get_first_symbol, &pucch_t::set_first_symbol>(
        "first_symbol",
        "symbol of the slot, 0 to 13 (formats 0, 2) or 10, 2 less with extended prefix; limits symbol_num"),
    row::leaf<&pucch_t::get_symbol_num, &pucch_t::set_symbol_num>(
        "symbol_num", "symbols, 1 to 2 (formats 0, 2) or 4 to 14, at most 14 - first_symbol"),
    row::leaf<&pucch_t::get_bwp_id, &pucch_t::set_bwp_id>("bwp_id", "uplink BWP, by its place in the list")
        .before("name"),
    row::leaf<&pucch_t::get_use_interlace_pucch, &pucch_t::set_use_interlace_pucch>(
        "use_interlace_pucch", "interlaces, at 15 and 30 kHz, not format 4; ends hopping"),
    row::leaf<&pucch_t::get_rb_offset, &pucch_t::set_rb_offset>("rb_offset",
                                                                "first resource block of the BWP; limits rb_num"),
    row::leaf<&pucch_t::get_rb_num, &pucch_t::set_rb_num>(
        "rb_num", "resource blocks, 1 to 16 (formats 2, 3) or 1, within the BWP"),
    row::leaf<&pucch_t::get_rb_set_index, &pucch_t::set_rb_set_index>(
        "rb_set_index", "RB set between guard bands that interlaces lie in"),
    row::leaf<&pucch_t::get_interlace0, &pucch_t::set_interlace0>("interlace0",
                                                                  "interlace, 0 to 9 at 15 kHz, 0 to 4 at 30 kHz"),
    row::leaf<&pucch_t::get_pucch_interlace0, &pucch_t::set_pucch_interlace0>(
        "pucch_interlace0", "how many of its resource blocks are used"),
    row::leaf<&pucch_t::get_interlace1, &pucch_t::set_interlace1>("interlace1", "second interlace, or -1"),
    row::leaf<&pucch_t::get_pucch_interlace1, &pucch_t::set_pucch_interlace1>(
        "pucch_interlace1", "how many of its resource blocks are used"),
    row::leaf<&pucch_t::get_hopping_id, &pucch_t::set_hopping_id>(
        "hopping_id", "n_ID of sequence and cyclic shift hopping, 0 to 1023, or -1: the cell's identity"),
    row::leaf<&pucch_t::get_pucch_group_hopping, &pucch_t::set_pucch_group_hopping>(
        "pucch_group_hopping", "hopping over sequence groups, over the sequences of a group, or neither"),
    row::leaf<&pucch_t::get_initial_cyclic_shift, &pucch_t::set_initial_cyclic_shift>(
        "initial_cyclic_shift", "m_0 of formats 0 and 1, 0 to 11"),
    row::leaf<&pucch_t::get_scrambling_id, &pucch_t::set_scrambling_id>(
        "scrambling_id", "n_ID of the scrambling, formats 2 to 4, 0 to 1023, or -1: the cell's identity"),
    row::leaf<&pucch_t::get_n_rnti, &pucch_t::set_n_rnti>("n_rnti", "0 to 65535"),
    row::leaf<&pucch_t::get_scrambling_id0, &pucch_t::set_scrambling_id0>(
        "scrambling_id0", "n_ID^0 of the DMRS, 0 to 65535, or -1: the cell's identity"),
    row::leaf<&pucch_t::get_intra_slot_frequency_hopping, &pucch_t::set_intra_slot_frequency_hopping>(
        "intra_slot_frequency_hopping", "later half of the symbols at second_hop_prb; ends inter-slot hopping"),
    row::leaf<&pucch_t::get_inter_slot_frequency_hopping, &pucch_t::set_inter_slot_frequency_hopping>(
        "inter_slot_frequency_hopping",
        "every second slot at second_hop_prb: format 1 in two slots or more; under standard_rules within a repetition"),
    row::leaf<&pucch_t::get_number_of_slots_for_pucch_repetition, &pucch_t::set_number_of_slots_for_pucch_repetition>(
        "number_of_slots_for_pucch_repetition",
        "slots of format 1 with the same bits, 1 to 8; counts when slots or payload are next set"),
    row::leaf<&pucch_t::get_second_hop_prb, &pucch_t::set_second_hop_prb>(
        "second_hop_prb", "first resource block of the second hop, in the BWP"),
    row::leaf<&pucch_t::get_occ_index, &pucch_t::set_occ_index>("occ_index", "orthogonal sequence, below its length"),
    row::leaf<&pucch_t::get_occ_length, &pucch_t::set_occ_length>(
        "occ_length", "length of the orthogonal sequence, formats 2 to 4; limits occ_index"),
    row::leaf<&pucch_t::get_pi_2_bpsk, &pucch_t::set_pi_2_bpsk>("pi_2_bpsk",
                                                                "pi/2-BPSK instead of QPSK, formats 3 and 4"),
    row::leaf<&pucch_t::get_additional_dmrs, &pucch_t::set_additional_dmrs>(
        "additional_dmrs", "four DMRS symbols from 10 symbols on, formats 3 and 4"),
    row::leaf<&pucch_t::get_dmrs_power, &pucch_t::set_dmrs_power>(
        "dmrs_power", "dB, -40 to 40, of the DMRS of formats 1 to 4 beside power"),
    row::leaf<&pucch_t::get_dmrs_uplink_transform_precoding_pucch, &pucch_t::set_dmrs_uplink_transform_precoding_pucch>(
        "dmrs_uplink_transform_precoding_pucch", "DMRS of low-PAPR type 2, formats 3 and 4 with pi_2_bpsk"),
    row::leaf<&pucch_t::get_uci_format, &pucch_t::set_uci_format>("uci_format",
                                                                  "what formats 0 and 1 tell, of uci_format_range"),
    row::leaf<&pucch_t::get_sr_configuration, &pucch_t::set_sr_configuration>(
        "sr_configuration", "positive or negative SR; positive where nothing else is told"),
    row::leaf<&pucch_t::get_scrambling_state, &pucch_t::set_scrambling_state>("scrambling_state",
                                                                              "scrambling, formats 2 to 4"),
    row::leaf<&pucch_t::get_channel_coding, &pucch_t::set_channel_coding>(
        "channel_coding", "channel coding, formats 2 to 4; without it no UCI fields"),
    row::leaf<&pucch_t::get_uci_content, &pucch_t::set_uci_content>(
        "uci_content", "UCI fields instead of the plain payload, formats 2 to 4"),
    row::leaf<&pucch_t::get_max_code_rate, &pucch_t::set_max_code_rate>("max_code_rate",
                                                                        "of what stands ahead of CSI part 2"),
    row::leaf<&pucch_t::get_harq_ack_enable, &pucch_t::set_harq_ack_enable>("harq_ack_enable",
                                                                            "whether the UCI has a HARQ-ACK field"),
    row::leaf<&pucch_t::get_harq_ack_payload_data, &pucch_t::set_harq_ack_payload_data>("harq_ack_payload_data",
                                                                                        "source of the HARQ-ACK bits"),
    row::leaf<&pucch_t::get_harq_ack_payload_size, &pucch_t::set_harq_ack_payload_size>("harq_ack_payload_size",
                                                                                        "HARQ-ACK bits a slot"),
    row::leaf<&pucch_t::get_harq_ack_user_bits, &pucch_t::set_harq_ack_user_bits>(
        "harq_ack_user_bits", "HARQ-ACK bits of the user, such as 100, repeated"),
    row::leaf<&pucch_t::get_sr_enable, &pucch_t::set_sr_enable>("sr_enable", "whether the UCI has a SR field"),
    row::leaf<&pucch_t::get_sr_payload_data, &pucch_t::set_sr_payload_data>("sr_payload_data", "source of the SR bits"),
    row::leaf<&pucch_t::get_sr_payload_size, &pucch_t::set_sr_payload_size>("sr_payload_size", "SR bits a slot"),
    row::leaf<&pucch_t::get_sr_user_bits, &pucch_t::set_sr_user_bits>("sr_user_bits",
                                                                      "SR bits of the user, such as 100, repeated"),
    row::leaf<&pucch_t::get_csi1_enable, &pucch_t::set_csi1_enable>("csi1_enable",
                                                                    "whether the UCI has a CSI part 1 field"),
    row::leaf<&pucch_t::get_csi1_payload_data, &pucch_t::set_csi1_payload_data>("csi1_payload_data",
                                                                                "source of the CSI part 1 bits"),
    row::leaf<&pucch_t::get_csi1_payload_size, &pucch_t::set_csi1_payload_size>("csi1_payload_size",
                                                                                "CSI part 1 bits a slot"),
    row::leaf<&pucch_t::get_csi1_user_bits, &pucch_t::set_csi1_user_bits>(
        "csi1_user_bits", "CSI part 1 bits of the user, such as 100, repeated"),
    row::leaf<&pucch_t::get_csi2_enable, &pucch_t::set_csi2_enable>("csi2_enable",
                                                                    "whether the UCI has a CSI part 2 field"),
    row::leaf<&pucch_t::get_csi2_payload_data, &pucch_t::set_csi2_payload_data>("csi2_payload_data",
                                                                                "source of the CSI part 2 bits"),
    row::leaf<&pucch_t::get_csi2_payload_size, &pucch_t::set_csi2_payload_size>("csi2_payload_size",
                                                                                "CSI part 2 bits a slot"),
    row::leaf<&pucch_t::get_csi2_user_bits, &pucch_t::set_csi2_user_bits>(
        "csi2_user_bits", "CSI part 2 bits of the user, such as 100, repeated"),
    row::leaf<&pucch_t::get_payload_data, &pucch_t::set_payload_data>(
        "payload_data", "source of the bits of formats 0 and 1, and of the plain payload"),
    row::leaf<&pucch_t::get_payload_size, &pucch_t::set_payload_size>(
        "payload_size", "bits a slot, 1 to 2 (formats 0, 1) or 3 to 2026"),
    row::leaf<&pucch_t::get_payload_user_bits, &pucch_t::set_payload_user_bits>(
        "payload_user_bits", "bits of the user, such as 100, repeated"));

constexpr auto k_figures =
    row::rows(row::figure<&pucch_t::get_allocated_slots_vct>("allocated_slots_vct", "the slots, one by one"),
              row::figure<&pucch_t::get_uci_format_range>("uci_format_range", "what the format may tell"),
              row::figure<k_uci_bits_per_slot>("uci_bits_per_slot", "bits of the slots, formats 0 and 1"));

} // namespace

constinit const cfg_nr_table_of_t<pucch_t> g_cfg_nr_ul_pucch_table = row::table("cfg_nr_ul_pucch", k_leaves, k_figures);

} // namespace vek::nr_mod_lib
