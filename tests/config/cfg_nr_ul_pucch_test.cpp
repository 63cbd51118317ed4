#include "config/cfg_nr_ul_pucch.h"

#include "support/captured_output.h"
#include "support/settings.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::waveform_of_t;

/// Rows of the first PUCCH, each "name asked > stored;", with a * where the setter returns true; "name > stored;" only
/// reads. What tells no value is a step, of the PUCCH unless it names a carrier.
void run_pucch_rows(cfg_nr_waveform_t& waveform, const std::string& rows)
{
    const std::string pucch = "carrier[0].ul_pucch[0].";
    std::istringstream text(rows);
    for (std::string row; std::getline(text >> std::ws, row, ';');) {
        const std::size_t middle = row.find(" > ");
        if (middle == std::string::npos) {
            nr_test::take(waveform, {(row.find("carrier[") == std::string::npos ? pucch : "") + row});
            continue;
        }
        const bool changed = row.back() == '*';
        const std::string stored = row.substr(middle + 3, row.size() - middle - (changed ? 5 : 3));
        const std::string path = pucch + row.substr(0, row.find(' '));
        const std::string asked = row.substr(row.find(' ') + 1, middle - std::min(middle, row.find(' ') + 1));
        const bool reads = row.find(' ') == middle;
        nr_test::run_rows(waveform, {{path.c_str(), reads ? nullptr : asked.c_str(), stored.c_str(), changed}});
    }
}

TEST(cfg_nr_ul_pucch, a_format_limits_symbols_resource_blocks_and_payload)
{
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK", "carrier[0].ul_bwp[0].rb_number=20"});
    run_pucch_rows(
        waveform,
        "symbol_num 2 > 1; " // 14 - 13
        "first_symbol 14 > 13; first_symbol 12 > 12 *; symbol_num 5 > 2 *; "
        "intra_slot_frequency_hopping true > true *; symbol_num 0 > 1 *; intra_slot_frequency_hopping > false; "
        "payload_size 5 > 2; payload_size 0 > 1 *; rb_num 16 > 1; "
        "pucch_format LIB_NR_UL_PUCCH_FORMAT_1 > LIB_NR_UL_PUCCH_FORMAT_1 *; "
        "pucch_format LIB_NR_UL_PUCCH_FORMAT_1 > LIB_NR_UL_PUCCH_FORMAT_1; first_symbol > 10; symbol_num > 4; "
        "first_symbol 0 > 0 *; symbol_num 20 > 14 *; first_symbol 14 > 10 *; symbol_num > 4; symbol_num 3 > 4; "
        "pucch_format LIB_NR_UL_PUCCH_FORMAT_3 > LIB_NR_UL_PUCCH_FORMAT_3 *; payload_size > 3; "
        "payload_size 9999 > 2026 *; rb_num 17 > 16 *; second_hop_prb 17 > 4 *; rb_offset 7 > 7 *; rb_num > 13; "
        "second_hop_prb 99 > 7 *; rb_offset 99 > 19 *; rb_num > 1; rb_num 0 > 1; second_hop_prb 99 > 19 *; "
        "rb_offset 0 > 0 *; rb_num 16 > 16 *; second_hop_prb > 4; "
        "pucch_format LIB_NR_UL_PUCCH_FORMAT_4 > LIB_NR_UL_PUCCH_FORMAT_4 *; rb_num > 1; "
        "pucch_format LIB_NR_UL_PUCCH_FORMAT_2 > LIB_NR_UL_PUCCH_FORMAT_2 *; symbol_num > 2; rb_num 16 > 16 *; "
        "payload_size 2 > 3 *; pucch_format LIB_NR_UL_PUCCH_FORMAT_0 > LIB_NR_UL_PUCCH_FORMAT_0 *; "
        "payload_size > 2;");
}

TEST(cfg_nr_ul_pucch, hoppings_interlaces_and_orthogonal_sequences_limit_each_other)
{
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK"});
    run_pucch_rows(
        waveform,
        "inter_slot_frequency_hopping true > false; pucch_format=LIB_NR_UL_PUCCH_FORMAT_1; first_symbol=0; "
        "symbol_num 14 > 14 *; inter_slot_frequency_hopping true > false; "
        "allocated_slots 0,1,2,19:20,1 > 0:2,19 *; allocated_slots 0:1,2,19 > 0:2,19; "
        "allocated_slots 20 > 0:2,19; allocated_slots_vct > 0,1,2,19; inter_slot_frequency_hopping > false; "
        "inter_slot_frequency_hopping true > true *; number_of_slots_for_pucch_repetition 9 > 4 *; "
        "number_of_slots_for_pucch_repetition 0 > 1 *; occ_index 9 > 6 *; "
        "intra_slot_frequency_hopping true > true *; inter_slot_frequency_hopping > false; occ_index 5 > 2 *; "
        "inter_slot_frequency_hopping true > true *; intra_slot_frequency_hopping > false; interlace0 5 > 4 *; "
        "interlace1 7 > 4 *; interlace1 -7 > -1 *; use_interlace_pucch true > true *; "
        "inter_slot_frequency_hopping > false; inter_slot_frequency_hopping true > true *; "
        "pucch_format LIB_NR_UL_PUCCH_FORMAT_4 > LIB_NR_UL_PUCCH_FORMAT_4 *; "
        "inter_slot_frequency_hopping > false; use_interlace_pucch true > false; "
        "occ_length > LIB_NR_UL_PUCCH_OCC_LENGTH_2; occ_index 3 > 1 *; "
        "occ_length LIB_NR_UL_PUCCH_OCC_LENGTH_4 > LIB_NR_UL_PUCCH_OCC_LENGTH_4 *; occ_index 4 > 3 *; "
        "occ_length LIB_NR_UL_PUCCH_OCC_LENGTH_1 > LIB_NR_UL_PUCCH_OCC_LENGTH_2 *; occ_index > 1; "
        "pucch_format LIB_NR_UL_PUCCH_FORMAT_3 > LIB_NR_UL_PUCCH_FORMAT_3 *; "
        "occ_length LIB_NR_UL_PUCCH_OCC_LENGTH_1 > LIB_NR_UL_PUCCH_OCC_LENGTH_1 *; occ_index > 0;");
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
    run_pucch_rows(
        waveform,
        "power -41 > -40 *; power -39.9999999999999 > -40; " // a step below 1e-12 is none
        "dmrs_power 1e300 > 40 *; hopping_id 1024 > 1023 *; hopping_id -2 > -1 *; scrambling_id 1024 > 1023 *; "
        "scrambling_id -2 > -1 *; scrambling_id0 65536 > 65535 *; scrambling_id0 -2 > -1 *; "
        "n_rnti 65536 > 65535 *; initial_cyclic_shift 12 > 11 *; rb_set_index 1 > 0; "
        "uci_format LIB_NR_UL_UCI_SR_ONLY > LIB_NR_UL_UCI_SR_ONLY *; sr_configuration > LIB_NR_UL_SR_POSITIVE; "
        "sr_configuration LIB_NR_UL_SR_NEGATIVE > LIB_NR_UL_SR_POSITIVE; pucch_format=LIB_NR_UL_PUCCH_FORMAT_1; "
        "uci_format_range > LIB_NR_UL_UCI_HARQ_ACK_ONLY,LIB_NR_UL_UCI_SR_ONLY; "
        "uci_format LIB_NR_UL_UCI_SR_AND_HARQ_ACK > LIB_NR_UL_UCI_HARQ_ACK_ONLY *; "
        "pucch_format=LIB_NR_UL_PUCCH_FORMAT_2; uci_format LIB_NR_UL_UCI_SR_ONLY > LIB_NR_UL_UCI_HARQ_ACK_ONLY; "
        "uci_content true > true *; channel_coding false > false *; uci_content > false; "
        "uci_content true > true *; csi2_user_bits x > 0; csi2_user_bits 1,0 > 10 *; csi2_user_bits 1 0 > 10; "
        "csi2_payload_size 4294967295 > 4294967295 *;");
}

TEST(cfg_nr_ul_pucch, a_pucch_follows_its_bwp)
{
    waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK",
                            "carrier[0].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_MULTIPLE",
                            "carrier[0].numerology[1].enable=true", "add carrier[0].ul_bwp",
                            "carrier[0].ul_bwp[1].numerology=LIB_NR_SCS_60K"});
    const std::string no_bwp = "lib_nr_carrier_configure_manager_t::set_ul_pucch_bwp_id : Error bwp id\n";
    run_pucch_rows(
        waveform,
        "bwp_id 1 > 1 *; bwp_id 1 > 1; use_interlace_pucch true > false; interlace0 1 > 0; interlace1 1 > -1; "
        "enable true > true *; pucch_format=LIB_NR_UL_PUCCH_FORMAT_3; "
        "allocated_slots 0:3:39 > 0,3,6,9,12,15,18,21,24,27,30,33,36,39 *; rb_num 16 > 16 *; "
        "rb_offset 119 > 119 *; second_hop_prb 100 > 100 *; carrier[0].ul_bwp[1].rb_number=30; rb_offset > 29; "
        "rb_num > 1; second_hop_prb > 29; rb_offset 0 > 0 *; rb_num 16 > 16 *; "
        "carrier[0].ul_bwp[1].rb_number=10; rb_num > 10; first_symbol 9 > 9 *; symbol_num 5 > 5 *; "
        "carrier[0].ul_bwp[1].cp_type=LIB_NR_EXTEND_CP; first_symbol > 8; symbol_num 9 > 6 *; " // of 14
        "first_symbol 0 > 0 *; symbol_num 14 > 12 *;");
    nr_test::run_rows(waveform, {{"carrier[0].ul_pucch[0].bwp_id", "2", "0", true, no_bwp.c_str()}});
    run_pucch_rows(waveform,
                   "allocated_slots > 0,3,6,9,12,15,18; use_interlace_pucch true > true *; allocated_slots 19 > 19 *; "
                   "carrier[0].numerology_mode=LIB_NR_NUMBEROLOGY_MODE_SINGLE; "
                   "carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M; carrier[0].numerology=LIB_NR_SCS_15K; "
                   "allocated_slots > 19; " // none of them is left
                   "interlace0 10 > 9 *; interlace1 10 > 9 *; carrier[0].numerology=LIB_NR_SCS_30K; interlace0 > 4; "
                   "interlace1 > 4; use_interlace_pucch > true; carrier[0].numerology=LIB_NR_SCS_60K; "
                   "use_interlace_pucch > false;");

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
    run_pucch_rows(
        waveform,
        "uci_bits_per_slot > 11,11,11,11,10,00,00,11; number_of_slots_for_pucch_repetition 3 > 3 *; "
        "payload_data LIB_NR_USER_CFG > LIB_NR_USER_CFG *; payload_user_bits 110 > 110 *; "
        "uci_bits_per_slot > 11,01,10,11,01,10,11,01; pucch_format=LIB_NR_UL_PUCCH_FORMAT_1; "
        "uci_bits_per_slot > 11,01,10,11,01,10,11,01; payload_data LIB_NR_USER_CFG > LIB_NR_USER_CFG; "
        "uci_bits_per_slot > 11,11,11,01,01,01,10,10; number_of_slots_for_pucch_repetition 1 > 1 *; "
        "uci_bits_per_slot > 11,11,11,01,01,01,10,10; allocated_slots 4:6 > 4:6 *; uci_bits_per_slot > 11,01,10; "
        "payload_size 1 > 1 *; uci_bits_per_slot > 1,1,0;");
    const nr_test::captured_output_t output;
    std::string bits = "bits: ";
    waveform.get_carrier(0)->get_ul_pucch(0)->get_uci_bits_per_slot(bits);
    EXPECT_EQ(bits, "bits: 1,1,0");
    EXPECT_EQ(output.text(), "bits_str = bits: 1,1,0\n");
}

} // namespace
