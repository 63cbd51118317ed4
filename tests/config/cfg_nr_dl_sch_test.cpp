#include "config/cfg_nr_waveform.h"
#include "support/settings.h"

#include <gtest/gtest.h>

// PDSCHs, and with them what PDSCH and PUSCH have in common.

namespace
{

TEST(dl_sch_facade, settings_stay_within_their_limits)
{
    nr_test::waveform_of_t waveform({});
    nr_test::run_rows(
        waveform, {
                      {"carrier[0].dl_pdsch[0].power_boosting", "41", "40", true},
                      {"carrier[0].dl_pdsch[0].dmrs_power", "-41", "-40", true},
                      {"carrier[0].dl_pdsch[0].ptrs_power", "40.5", "40", true},
                      {"carrier[0].dl_pdsch[0].rnti", "65536", "65535", true},
                      {"carrier[0].dl_pdsch[0].nid", "-5", "-1", false},
                      {"carrier[0].dl_pdsch[0].nid", "1024", "1023", true},
                      {"carrier[0].dl_pdsch[0].nid0", "70000", "65535", true},
                      {"carrier[0].dl_pdsch[0].nid1", "-2", "-1", false},
                      {"carrier[0].dl_pdsch[0].rv", "4", "3", true},
                      {"carrier[0].dl_pdsch[0].ptrs_re_offset", "4", "3", true},
                      {"carrier[0].dl_pdsch[0].ra_type", "LIB_NR_SCH_RA_TYPE0", "LIB_NR_SCH_RA_TYPE0", true},
                      {"carrier[0].dl_pdsch[0].ra_type", "LIB_NR_SCH_RA_TYPE2", "LIB_NR_SCH_RA_TYPE1", true},
                      {"carrier[0].dl_pdsch[0].rb_num", "0", "1", true},
                      {"carrier[0].dl_pdsch[0].rb_num", "999", "273", true},
                      {"carrier[0].dl_pdsch[0].rb_offset", "273", "272", true},
                      {"carrier[0].dl_pdsch[0].rb_num", nullptr, "1"},
                      {"carrier[0].dl_pdsch[0].slot_allocation", "19,20,3", "19,3", true},
                      {"carrier[0].dl_pdsch[0].slot_allocation", "20", "19,3", false},
                      {"carrier[0].dl_pdsch[0].nscid", "7", "1", true},
                      {"carrier[0].dl_pdsch[0].data_source_custom", "1 0,1", "101", true},
                      {"carrier[0].dl_pdsch[0].antenna_port", "LIB_NR_ANTENNA_PORT_1", "LIB_NR_ANTENNA_PORT_0", false},
                      {"carrier[0].dl_pdsch[0].mcs", "30", "28", true},
                      {"carrier[0].dl_pdsch[0].target_code_rate", nullptr, "0.92578125"}, // 948 / 1024
                      {"carrier[0].dl_pdsch[0].mcs_table", "TABLE_5_1_3_1_2", "TABLE_5_1_3_1_2", true},
                      {"carrier[0].dl_pdsch[0].mcs", nullptr, "27"},
                      {"carrier[0].dl_pdsch[0].modulation", nullptr, "LIB_NR_MODULATION_256QAM"},
                      {"carrier[0].dl_pdsch[0].mcs_table", "TABLE_5_1_3_1_4", "TABLE_5_1_3_1_4", true},
                      {"carrier[0].dl_pdsch[0].mcs", nullptr, "26"},
                      {"carrier[0].dl_pdsch[0].modulation", nullptr, "LIB_NR_MODULATION_1024QAM"},
                      {"carrier[0].dl_pdsch[0].mcs_table", "TABLE_6_1_4_1_1", "TABLE_5_1_3_1_1", true},
                      {"carrier[0].dl_pdsch[0].mcs", nullptr, "26"},
                  });
}

TEST(dl_sch_facade, ports_bring_groups_power_and_ptrs_along)
{
    nr_test::waveform_of_t waveform({"carrier[0].dl_pdsch[0].enable_ptrs=true"});
    nr_test::run_rows(
        waveform,
        {
            {"carrier[0].dl_pdsch[0].dmrs_port", "3,1", "3", true}, // one layer
            {"carrier[0].dl_pdsch[0].cdm_groups_without_data_num", nullptr, "2"},
            {"carrier[0].dl_pdsch[0].dmrs_power", nullptr, "3"},
            {"carrier[0].dl_pdsch[0].dmrs_power", "1.5", "1.5", true},
            {"carrier[0].dl_pdsch[0].dmrs_port", "2", "2", true},
            {"carrier[0].dl_pdsch[0].dmrs_power", nullptr, "1.5"}, // the count is the same
            {"carrier[0].dl_pdsch[0].dmrs_length", "LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL",
             "LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL", true},
            {"carrier[0].dl_pdsch[0].enable_ptrs", nullptr, "true"},
            {"carrier[0].dl_pdsch[0].dmrs_port", "6", "6", true},
            {"carrier[0].dl_pdsch[0].enable_ptrs", "true", "false", false},
            {"carrier[0].dl_pdsch[0].dmrs_configuration_type", "LIB_NR_DMRS_CFG_TYPE2", "LIB_NR_DMRS_CFG_TYPE2", true},
            {"carrier[0].dl_pdsch[0].dmrs_port", "5", "5", true},
            {"carrier[0].dl_pdsch[0].cdm_groups_without_data_num", "1", "3", false},
            {"carrier[0].dl_pdsch[0].dmrs_power", nullptr, "4.77"},
            {"carrier[0].dl_pdsch[0].enable_ptrs", "true", "true", true},
            {"carrier[0].dl_pdsch[0].dmrs_port", "11", "11", true},
            {"carrier[0].dl_pdsch[0].enable_ptrs", nullptr, "false"},
            {"carrier[0].dl_pdsch[0].dmrs_length", "LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL",
             "LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL", true},
            {"carrier[0].dl_pdsch[0].dmrs_port", nullptr, "0"},
            {"carrier[0].dl_pdsch[0].dmrs_configuration_type", "LIB_NR_DMRS_CFG_TYPE1", "LIB_NR_DMRS_CFG_TYPE1", true},
            {"carrier[0].dl_pdsch[0].cdm_groups_without_data_num", nullptr, "2"},
        });
}

TEST(dl_sch_facade, the_first_dmrs_symbol_follows_the_mib)
{
    nr_test::waveform_of_t waveform(
        {"carrier[0].dl_pdsch[0].dmrs_additional_position=LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_3",
         "carrier[0].dl_pdsch[0].dmrs_type_a_position=LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB", "add carrier[0].dl_pdsch"});
    nr_test::run_rows(waveform, {
                                    {"carrier[0].dl_pdsch[0].first_symbol", "3", "2", true},
                                    {"carrier[0].dl_ssb.dmrs_typea_position", "3", "3", true},
                                    {"carrier[0].dl_pdsch[0].dmrs_additional_position", nullptr,
                                     "LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0"},
                                    {"carrier[0].dl_pdsch[0].first_symbol", "4", "3", true},
                                    {"carrier[0].dl_pdsch[0].symbol_num", nullptr, "11"},
                                    {"carrier[0].dl_pdsch[1].first_symbol", "3", "2", true}, // not its own
                                    {"carrier[0].dl_ssb.dmrs_typea_position", "2", "2", true},
                                    {"carrier[0].dl_pdsch[0].first_symbol", nullptr, "2"},
                                });
}

TEST(dl_sch_facade, a_channel_follows_its_bandwidth_part)
{
    nr_test::waveform_of_t waveform({"add carrier[0].dl_bwp", "add carrier[0].dl_bwp",
                                     "carrier[0].dl_bwp[1].bwp_rb_size=100", "carrier[0].dl_bwp[2].bwp_rb_size=200",
                                     "carrier[0].dl_bwp[3].bwp_rb_start=3", "carrier[0].dl_bwp[3].bwp_rb_size=10"});
    nr_test::run_rows(waveform,
                      {
                          {"carrier[0].dl_pdsch[0].rb_num", nullptr, "100"},
                          {"carrier[0].dl_pdsch[0].rbg_size", "LIB_NR_SCH_RBG_SIZE_8", "LIB_NR_SCH_RBG_SIZE_8", true},
                          {"carrier[0].dl_pdsch[0].rbg_bitmap_number", nullptr, "13"},
                          {"carrier[0].dl_pdsch[0].rbg_bitmap", "11", "1100000000000", true},
                          {"carrier[0].dl_pdsch[0].rbg_bitmap", "2", "1100000000000", false},
                          {"carrier[0].dl_pdsch[0].rbg_size", "LIB_NR_SCH_RBG_SIZE_2", "LIB_NR_SCH_RBG_SIZE_8", false},
                          {"carrier[0].dl_pdsch[0].bwp_id", "2", "2", true},
                          {"carrier[0].dl_pdsch[0].rbg_size", nullptr, "LIB_NR_SCH_RBG_SIZE_16"},
                          {"carrier[0].dl_pdsch[0].rbg_bitmap", nullptr, "1100000000000"},
                          {"carrier[0].dl_pdsch[0].bwp_id", "3", "3", true},
                          {"carrier[0].dl_pdsch[0].rb_num", nullptr, "10"},
                          {"carrier[0].dl_pdsch[0].rbg_size", "LIB_NR_SCH_RBG_SIZE_4", "LIB_NR_SCH_RBG_SIZE_4", true},
                          {"carrier[0].dl_pdsch[0].rbg_bitmap_number", nullptr, "4"},
                          // What it stands in is gone: BWP 0, then what moves down to its number.
                          {"remove carrier[0].dl_bwp[3]"},
                          {"carrier[0].dl_pdsch[0].bwp_id", nullptr, "0"},
                          {"carrier[0].dl_pdsch[0].rbg_size", nullptr, "LIB_NR_SCH_RBG_SIZE_16"},
                          {"carrier[0].dl_pdsch[0].bwp_id", "1", "1", true},
                          {"carrier[0].dl_pdsch[0].rb_num", "150", "100", true},
                          {"carrier[0].dl_bwp[2].bwp_rb_size=40"},
                          {"remove carrier[0].dl_bwp[1]"},
                          {"carrier[0].dl_pdsch[0].bwp_id", nullptr, "1"},
                          {"carrier[0].dl_pdsch[0].rb_num", nullptr, "40"},
                          {"carrier[0].dl_pdsch[0].bwp_id", "9", "0", true,
                           "lib_nr_carrier_configure_manager_t::set_dl_sch_bwp_id : Error bwp id\n"},
                      });
}

TEST(dl_sch_facade, a_channel_follows_spacing_and_prefix)
{
    nr_test::waveform_of_t waveform({"carrier[0].numerology=LIB_NR_SCS_60K"});
    nr_test::run_rows(
        waveform,
        {
            {"carrier[0].dl_pdsch[0].slot_allocation", "30:39", "30:39", true},
            {"carrier[0].dl_pdsch[0].mapping_type", "LIB_NR_DMRS_MAPPING_TYPEB", "LIB_NR_DMRS_MAPPING_TYPEB", true},
            {"carrier[0].dl_pdsch[0].first_symbol", "12", "12", true},
            {"carrier[0].dl_bwp[1].cp_type=LIB_NR_EXTEND_CP"},
            {"carrier[0].dl_pdsch[0].first_symbol", nullptr, "10"},
            {"carrier[0].dl_pdsch[0].symbol_num", nullptr, "2"},
            {"carrier[0].dl_pdsch[0].first_symbol", "3", "3", true},
            {"carrier[0].dl_pdsch[0].symbol_num", "7", "6", true},
            {"carrier[0].numerology=LIB_NR_SCS_15K"},
            {"carrier[0].dl_pdsch[0].slot_allocation", nullptr, "30:39"}, // none of them is there
            {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR2_1_400M"},
            {"carrier[0].dl_pdsch[0].enable", "true", "true", true},
            {"carrier[0].numerology=LIB_NR_SCS_240K"},
            {"carrier[0].dl_pdsch[0].enable", nullptr, "false"},
            {"carrier[0].dl_pdsch[0].enable", "true", "false", false},
        });
}

TEST(dl_sch_facade, slots_follow_the_frames)
{
    nr_test::waveform_of_t waveform({"frame_number=3"});
    nr_test::run_rows(waveform, {
                                    {"carrier[0].dl_pdsch[0].slot_allocation", "59", "0:19", false},
                                    {"carrier[0].dl_pdsch[0].one_frame_period", "false", "false", true},
                                    {"carrier[0].dl_pdsch[0].slot_allocation", "59,60,4", "59,4", true},
                                    {"frame_number", "2", "2", true},
                                    {"carrier[0].dl_pdsch[0].slot_allocation", nullptr, "4"},
                                    {"carrier[0].dl_pdsch[0].slot_allocation", "20:39", "20:39", true},
                                    {"carrier[0].dl_pdsch[0].one_frame_period", "true", "true", true},
                                    {"carrier[0].dl_pdsch[0].slot_allocation", nullptr, "0"},
                                });
}

} // namespace
