#include "config/cfg_nr_ul_pucch.h"

#include "support/captured_output.h"
#include "support/settings.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::waveform_of_t;

const std::string k_pucch = "carrier[0].ul_pucch[0]";

TEST(cfg_nr_ul_pucch, a_format_limits_symbols_resource_blocks_and_payload)
{
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK", "carrier[0].ul_bwp[0].rb_number=20"});
    nr_test::run_rows(waveform,
                      {
                          {"symbol_num", "2", "1", false}, // 14 - 13
                          {"first_symbol", "14", "13", false},
                          {"first_symbol", "12", "12", true},
                          {"symbol_num", "5", "2", true},
                          {"intra_slot_frequency_hopping", "true", "true", true},
                          {"symbol_num", "0", "1", true},
                          {"intra_slot_frequency_hopping", nullptr, "false"},
                          {"payload_size", "5", "2", false},
                          {"payload_size", "0", "1", true},
                          {"rb_num", "16", "1", false},
                          {"pucch_format", "LIB_NR_UL_PUCCH_FORMAT_1", "LIB_NR_UL_PUCCH_FORMAT_1", true},
                          {"pucch_format", "LIB_NR_UL_PUCCH_FORMAT_1", "LIB_NR_UL_PUCCH_FORMAT_1", false},
                          {"first_symbol", nullptr, "10"},
                          {"symbol_num", nullptr, "4"},
                          {"first_symbol", "0", "0", true},
                          {"symbol_num", "20", "14", true},
                          {"first_symbol", "14", "10", true},
                          {"symbol_num", nullptr, "4"},
                          {"symbol_num", "3", "4", false},
                          {"pucch_format", "LIB_NR_UL_PUCCH_FORMAT_3", "LIB_NR_UL_PUCCH_FORMAT_3", true},
                          {"payload_size", nullptr, "3"},
                          {"payload_size", "9999", "2026", true},
                          {"rb_num", "17", "16", true},
                          {"second_hop_prb", "17", "4", true},
                          {"rb_offset", "7", "7", true},
                          {"rb_num", nullptr, "13"},
                          {"second_hop_prb", "99", "7", true},
                          {"rb_offset", "99", "19", true},
                          {"rb_num", nullptr, "1"},
                          {"rb_num", "0", "1", false},
                          {"second_hop_prb", "99", "19", true},
                          {"rb_offset", "0", "0", true},
                          {"rb_num", "16", "16", true},
                          {"second_hop_prb", nullptr, "4"},
                          {"pucch_format", "LIB_NR_UL_PUCCH_FORMAT_4", "LIB_NR_UL_PUCCH_FORMAT_4", true},
                          {"rb_num", nullptr, "1"},
                          {"pucch_format", "LIB_NR_UL_PUCCH_FORMAT_2", "LIB_NR_UL_PUCCH_FORMAT_2", true},
                          {"symbol_num", nullptr, "2"},
                          {"rb_num", "16", "16", true},
                          {"payload_size", "2", "3", true},
                          {"pucch_format", "LIB_NR_UL_PUCCH_FORMAT_0", "LIB_NR_UL_PUCCH_FORMAT_0", true},
                          {"payload_size", nullptr, "2"},
                      },
                      k_pucch);
}

TEST(cfg_nr_ul_pucch, hoppings_interlaces_and_orthogonal_sequences_limit_each_other)
{
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK"});
    nr_test::run_rows(waveform,
                      {
                          {"inter_slot_frequency_hopping", "true", "false", false},
                          {"carrier[0].ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_1"},
                          {"carrier[0].ul_pucch[0].first_symbol=0"},
                          {"symbol_num", "14", "14", true},
                          {"inter_slot_frequency_hopping", "true", "false", false},
                          {"allocated_slots", "0,1,2,19:20,1", "0:2,19", true},
                          {"allocated_slots", "0:1,2,19", "0:2,19", false},
                          {"allocated_slots", "20", "0:2,19", false},
                          {"allocated_slots_vct", nullptr, "0,1,2,19"},
                          {"inter_slot_frequency_hopping", nullptr, "false"},
                          {"inter_slot_frequency_hopping", "true", "true", true},
                          {"number_of_slots_for_pucch_repetition", "9", "4", true},
                          {"number_of_slots_for_pucch_repetition", "0", "1", true},
                          {"occ_index", "9", "6", true},
                          {"intra_slot_frequency_hopping", "true", "true", true},
                          {"inter_slot_frequency_hopping", nullptr, "false"},
                          {"occ_index", "5", "2", true},
                          {"inter_slot_frequency_hopping", "true", "true", true},
                          {"intra_slot_frequency_hopping", nullptr, "false"},
                          {"interlace0", "5", "4", true},
                          {"interlace1", "7", "4", true},
                          {"interlace1", "-7", "-1", true},
                          {"use_interlace_pucch", "true", "true", true},
                          {"inter_slot_frequency_hopping", nullptr, "false"},
                          {"inter_slot_frequency_hopping", "true", "true", true},
                          {"pucch_format", "LIB_NR_UL_PUCCH_FORMAT_4", "LIB_NR_UL_PUCCH_FORMAT_4", true},
                          {"inter_slot_frequency_hopping", nullptr, "false"},
                          {"use_interlace_pucch", "true", "false", false},
                          {"occ_length", nullptr, "LIB_NR_UL_PUCCH_OCC_LENGTH_2"},
                          {"occ_index", "3", "1", true},
                          {"occ_length", "LIB_NR_UL_PUCCH_OCC_LENGTH_4", "LIB_NR_UL_PUCCH_OCC_LENGTH_4", true},
                          {"occ_index", "4", "3", true},
                          {"occ_length", "LIB_NR_UL_PUCCH_OCC_LENGTH_1", "LIB_NR_UL_PUCCH_OCC_LENGTH_2", true},
                          {"occ_index", nullptr, "1"},
                          {"pucch_format", "LIB_NR_UL_PUCCH_FORMAT_3", "LIB_NR_UL_PUCCH_FORMAT_3", true},
                          {"occ_length", "LIB_NR_UL_PUCCH_OCC_LENGTH_1", "LIB_NR_UL_PUCCH_OCC_LENGTH_1", true},
                          {"occ_index", nullptr, "0"},
                      },
                      k_pucch);
    cfg_nr_ul_pucch_t& pucch = *waveform.get_carrier(0)->get_ul_pucch(0);
    EXPECT_TRUE(pucch.set_occ_length(static_cast<lib_nr_ul_pucch_occ_length_t>(3)));
    EXPECT_EQ(pucch.get_occ_length(), 3u);
    EXPECT_TRUE(pucch.set_max_code_rate(static_cast<lib_nr_ul_pucch_max_code_rate_x100_t>(30)));
    EXPECT_EQ(pucch.get_max_code_rate(), 30u);
    EXPECT_TRUE(pucch.set_max_code_rate(static_cast<lib_nr_ul_pucch_max_code_rate_x100_t>(7)));
    EXPECT_EQ(pucch.get_max_code_rate(), 8u);
}

TEST(cfg_nr_ul_pucch, what_is_told_and_who_tells_it_stay_in_range)
{
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK"});
    nr_test::run_rows(waveform,
                      {
                          {"power", "-41", "-40", true},
                          {"power", "-39.9999999999999", "-40", false}, // a step below 1e-12 is none
                          {"dmrs_power", "1e300", "40", true},
                          {"hopping_id", "1024", "1023", true},
                          {"hopping_id", "-2", "-1", true},
                          {"scrambling_id", "1024", "1023", true},
                          {"scrambling_id", "-2", "-1", true},
                          {"scrambling_id0", "65536", "65535", true},
                          {"scrambling_id0", "-2", "-1", true},
                          {"n_rnti", "65536", "65535", true},
                          {"initial_cyclic_shift", "12", "11", true},
                          {"rb_set_index", "1", "0", false},
                          {"uci_format", "LIB_NR_UL_UCI_SR_ONLY", "LIB_NR_UL_UCI_SR_ONLY", true},
                          {"sr_configuration", nullptr, "LIB_NR_UL_SR_POSITIVE"},
                          {"sr_configuration", "LIB_NR_UL_SR_NEGATIVE", "LIB_NR_UL_SR_POSITIVE", false},
                          {"carrier[0].ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_1"},
                          {"uci_format_range", nullptr, "LIB_NR_UL_UCI_HARQ_ACK_ONLY,LIB_NR_UL_UCI_SR_ONLY"},
                          {"uci_format", "LIB_NR_UL_UCI_SR_AND_HARQ_ACK", "LIB_NR_UL_UCI_HARQ_ACK_ONLY", true},
                          {"carrier[0].ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_2"},
                          {"uci_format", "LIB_NR_UL_UCI_SR_ONLY", "LIB_NR_UL_UCI_HARQ_ACK_ONLY", false},
                          {"uci_content", "true", "true", true},
                          {"channel_coding", "false", "false", true},
                          {"uci_content", nullptr, "false"},
                          {"uci_content", "true", "true", true},
                          {"csi2_user_bits", "x", "0", false},
                          {"csi2_user_bits", "1,0", "10", true},
                          {"csi2_user_bits", "1 0", "10", false},
                          {"csi2_payload_size", "4294967295", "4294967295", true},
                      },
                      k_pucch);
}

TEST(cfg_nr_ul_pucch, a_pucch_follows_its_bwp)
{
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK",
                            "carrier[0].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE",
                            "carrier[0].numerology[1].enable=true", "add carrier[0].ul_bwp",
                            "carrier[0].ul_bwp[1].numerology=LIB_NR_SCS_60K"});
    const std::string no_bwp = "lib_nr_carrier_configure_manager_t::set_ul_pucch_bwp_id : Error bwp id\n";
    nr_test::run_rows(waveform,
                      {
                          {"bwp_id", "1", "1", true},
                          {"bwp_id", "1", "1", false},
                          {"use_interlace_pucch", "true", "false", false},
                          {"interlace0", "1", "0", false},
                          {"interlace1", "1", "-1", false},
                          {"enable", "true", "true", true},
                          {"carrier[0].ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_3"},
                          {"allocated_slots", "0:3:39", "0,3,6,9,12,15,18,21,24,27,30,33,36,39", true},
                          {"rb_num", "16", "16", true},
                          {"rb_offset", "119", "119", true},
                          {"second_hop_prb", "100", "100", true},
                          {"carrier[0].ul_bwp[1].rb_number=30"},
                          {"rb_offset", nullptr, "29"},
                          {"rb_num", nullptr, "1"},
                          {"second_hop_prb", nullptr, "29"},
                          {"rb_offset", "0", "0", true},
                          {"rb_num", "16", "16", true},
                          {"carrier[0].ul_bwp[1].rb_number=10"},
                          {"rb_num", nullptr, "10"},
                          {"first_symbol", "9", "9", true},
                          {"symbol_num", "5", "5", true},
                          {"carrier[0].ul_bwp[1].cp_type=LIB_NR_EXTEND_CP"},
                          {"first_symbol", nullptr, "8"},
                          {"symbol_num", "9", "6", true}, // of 14
                          {"first_symbol", "0", "0", true},
                          {"symbol_num", "14", "12", true},
                      },
                      k_pucch);
    nr_test::run_rows(waveform, {{"bwp_id", "2", "0", true, no_bwp.c_str()}}, k_pucch);
    nr_test::run_rows(waveform,
                      {
                          {"allocated_slots", nullptr, "0,3,6,9,12,15,18"},
                          {"use_interlace_pucch", "true", "true", true},
                          {"allocated_slots", "19", "19", true},
                          {"carrier[0].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_SINGLE"},
                          {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M"},
                          {"carrier[0].numerology=LIB_NR_SCS_15K"},
                          {"allocated_slots", nullptr, "19"}, // none of them is left
                          {"interlace0", "10", "9", true},
                          {"interlace1", "10", "9", true},
                          {"carrier[0].numerology=LIB_NR_SCS_30K"},
                          {"interlace0", nullptr, "4"},
                          {"interlace1", nullptr, "4"},
                          {"use_interlace_pucch", nullptr, "true"},
                          {"carrier[0].numerology=LIB_NR_SCS_60K"},
                          {"use_interlace_pucch", nullptr, "false"},
                      },
                      k_pucch);

    lib_nr_phy_numerology_configure_manager_t without_uplink;
    without_uplink.set_numerology(LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_1_100M);
    lib_nr_ul_pucch_configure_manager_t pucch(waveform.get_waveform_manager().get_carrier(0).get_ul_bwp(0));
    EXPECT_TRUE(pucch.set_enable(true, LIB_NR_SCS_120K));
    EXPECT_FALSE(pucch.set_enable(false, LIB_NR_SCS_240K));
    pucch.updata_param_when_bwp_change(lib_nr_ul_bwp_configure_manager_t(without_uplink, 0));
    EXPECT_FALSE(pucch.get_enable());
}

TEST(cfg_nr_ul_pucch, the_bits_of_the_slots_are_one_stream_that_repetition_stretches)
{
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK", "carrier[0].ul_pucch[0].allocated_slots=0:7"});
    // x^9 + x^4 + 1 from all ones: nine ones, five zeros, four ones
    nr_test::run_rows(waveform,
                      {
                          {"uci_bits_per_slot", nullptr, "11,11,11,11,10,00,00,11"},
                          {"number_of_slots_for_pucch_repetition", "3", "3", true},
                          {"payload_data", "LIB_NR_USER_CFG", "LIB_NR_USER_CFG", true},
                          {"payload_user_bits", "110", "110", true},
                          {"uci_bits_per_slot", nullptr, "11,01,10,11,01,10,11,01"},
                          {"carrier[0].ul_pucch[0].pucch_format=LIB_NR_UL_PUCCH_FORMAT_1"},
                          {"uci_bits_per_slot", nullptr, "11,01,10,11,01,10,11,01"},
                          {"payload_data", "LIB_NR_USER_CFG", "LIB_NR_USER_CFG", false},
                          {"uci_bits_per_slot", nullptr, "11,11,11,01,01,01,10,10"},
                          {"number_of_slots_for_pucch_repetition", "1", "1", true},
                          {"uci_bits_per_slot", nullptr, "11,11,11,01,01,01,10,10"},
                          {"allocated_slots", "4:6", "4:6", true},
                          {"uci_bits_per_slot", nullptr, "11,01,10"},
                          {"payload_size", "1", "1", true},
                          {"uci_bits_per_slot", nullptr, "1,1,0"},
                      },
                      k_pucch);
    const nr_test::captured_output_t output;
    std::string bits = "bits: ";
    waveform.get_carrier(0)->get_ul_pucch(0)->get_uci_bits_per_slot(bits);
    EXPECT_EQ(bits, "bits: 1,1,0");
    EXPECT_EQ(output.text(), "bits_str = bits: 1,1,0\n");
}

} // namespace
