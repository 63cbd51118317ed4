#include "config/cfg_nr_waveform.h"
#include "support/settings.h"

#include <gtest/gtest.h>

// PDSCHs, and with them what PDSCH and PUSCH have in common.

namespace
{

TEST(cfg_nr_dl_sch, settings_stay_within_their_limits)
{
    nr_test::waveform_of_t waveform({});
    nr_test::run_rows(waveform,
                      {
                          {"power_boosting", "41", "40", true},
                          {"dmrs_power", "-41", "-40", true},
                          {"ptrs_power", "40.5", "40", true},
                          {"rnti", "65536", "65535", true},
                          {"nid", "-5", "-1", false},
                          {"nid", "1024", "1023", true},
                          {"nid0", "70000", "65535", true},
                          {"nid1", "-2", "-1", false},
                          {"rv", "4", "3", true},
                          {"ptrs_re_offset", "4", "3", true},
                          {"ra_type", "LIB_NR_SCH_RA_TYPE0", "LIB_NR_SCH_RA_TYPE0", true},
                          {"ra_type", "LIB_NR_SCH_RA_TYPE2", "LIB_NR_SCH_RA_TYPE1", true},
                          {"rb_num", "0", "1", true},
                          {"rb_num", "999", "273", true},
                          {"rb_offset", "273", "272", true},
                          {"rb_num", nullptr, "1"},
                          {"slot_allocation", "19,20,3", "19,3", true},
                          {"slot_allocation", "20", "19,3", false},
                          {"nscid", "7", "1", true},
                          {"data_source_custom", "1 0,1", "101", true},
                          {"antenna_port", "LIB_NR_ANTENNA_PORT_1", "LIB_NR_ANTENNA_PORT_0", false},
                          {"mcs", "30", "28", true},
                          {"target_code_rate", nullptr, "0.92578125"}, // 948 / 1024
                          {"mcs_table", "TABLE_5_1_3_1_2", "TABLE_5_1_3_1_2", true},
                          {"mcs", nullptr, "27"},
                          {"modulation", nullptr, "LIB_NR_MODULATION_256QAM"},
                          {"mcs_table", "TABLE_5_1_3_1_4", "TABLE_5_1_3_1_4", true},
                          {"mcs", nullptr, "26"},
                          {"modulation", nullptr, "LIB_NR_MODULATION_1024QAM"},
                          {"mcs_table", "TABLE_6_1_4_1_1", "TABLE_5_1_3_1_1", true},
                          {"mcs", nullptr, "26"},
                      },
                      "carrier[0].dl_pdsch[0]");
}

TEST(cfg_nr_dl_sch, ports_bring_groups_power_and_ptrs_along)
{
    nr_test::waveform_of_t waveform({"carrier[0].dl_pdsch[0].enable_ptrs=true"});
    nr_test::run_rows(
        waveform,
        {
            {"dmrs_port", "3,1", "3", true}, // one layer
            {"cdm_groups_without_data_num", nullptr, "2"},
            {"dmrs_power", nullptr, "3"},
            {"dmrs_power", "1.5", "1.5", true},
            {"dmrs_port", "2", "2", true},
            {"dmrs_power", nullptr, "1.5"}, // the count is the same
            {"dmrs_length", "LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL", "LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL", true},
            {"enable_ptrs", nullptr, "true"},
            {"dmrs_port", "6", "6", true},
            {"enable_ptrs", "true", "false", false},
            {"dmrs_configuration_type", "LIB_NR_DMRS_CFG_TYPE2", "LIB_NR_DMRS_CFG_TYPE2", true},
            {"dmrs_port", "5", "5", true},
            {"cdm_groups_without_data_num", "1", "3", false},
            {"dmrs_power", nullptr, "4.77"},
            {"enable_ptrs", "true", "true", true},
            {"dmrs_port", "11", "11", true},
            {"enable_ptrs", nullptr, "false"},
            {"dmrs_length", "LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL", "LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL", true},
            {"dmrs_port", nullptr, "0"},
            {"dmrs_configuration_type", "LIB_NR_DMRS_CFG_TYPE1", "LIB_NR_DMRS_CFG_TYPE1", true},
            {"cdm_groups_without_data_num", nullptr, "2"},
        },
        "carrier[0].dl_pdsch[0]");
}

TEST(cfg_nr_dl_sch, the_first_dmrs_symbol_follows_the_mib)
{
    nr_test::waveform_of_t waveform(
        {"carrier[0].dl_pdsch[0].dmrs_additional_position=LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_3",
         "carrier[0].dl_pdsch[0].dmrs_type_a_position=LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB", "add carrier[0].dl_pdsch"});
    nr_test::run_rows(waveform,
                      {
                          {"first_symbol", "3", "2", true},
                          {"carrier[0].dl_ssb.dmrs_typea_position", "3", "3", true},
                          {"dmrs_additional_position", nullptr, "LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0"},
                          {"first_symbol", "4", "3", true},
                          {"symbol_num", nullptr, "11"},
                          {"carrier[0].dl_pdsch[1].first_symbol", "3", "2", true}, // not its own
                          {"carrier[0].dl_ssb.dmrs_typea_position", "2", "2", true},
                          {"first_symbol", nullptr, "2"},
                      },
                      "carrier[0].dl_pdsch[0]");
}

TEST(cfg_nr_dl_sch, a_channel_follows_its_bandwidth_part)
{
    nr_test::waveform_of_t waveform({"add carrier[0].dl_bwp", "add carrier[0].dl_bwp",
                                     "carrier[0].dl_bwp[1].bwp_rb_size=100", "carrier[0].dl_bwp[2].bwp_rb_size=200",
                                     "carrier[0].dl_bwp[3].bwp_rb_start=3", "carrier[0].dl_bwp[3].bwp_rb_size=10"});
    nr_test::run_rows(
        waveform,
        {
            {"rb_num", nullptr, "100"},
            {"rbg_size", "LIB_NR_SCH_RBG_SIZE_8", "LIB_NR_SCH_RBG_SIZE_8", true},
            {"rbg_bitmap_number", nullptr, "13"},
            {"rbg_bitmap", "11", "1100000000000", true},
            {"rbg_bitmap", "2", "1100000000000", false},
            {"rbg_size", "LIB_NR_SCH_RBG_SIZE_2", "LIB_NR_SCH_RBG_SIZE_8", false},
            {"bwp_id", "2", "2", true},
            {"rbg_size", nullptr, "LIB_NR_SCH_RBG_SIZE_16"},
            {"rbg_bitmap", nullptr, "1100000000000"},
            {"bwp_id", "3", "3", true},
            {"rb_num", nullptr, "10"},
            {"rbg_size", "LIB_NR_SCH_RBG_SIZE_4", "LIB_NR_SCH_RBG_SIZE_4", true},
            {"rbg_bitmap_number", nullptr, "4"},
            // What it stands in is gone: BWP 0, then what moves down to its number.
            {"remove carrier[0].dl_bwp[3]"},
            {"bwp_id", nullptr, "0"},
            {"rbg_size", nullptr, "LIB_NR_SCH_RBG_SIZE_16"},
            {"bwp_id", "1", "1", true},
            {"rb_num", "150", "100", true},
            {"carrier[0].dl_bwp[2].bwp_rb_size=40"},
            {"remove carrier[0].dl_bwp[1]"},
            {"bwp_id", nullptr, "1"},
            {"rb_num", nullptr, "40"},
            {"bwp_id", "9", "0", true, "lib_nr_carrier_configure_manager_t::set_dl_sch_bwp_id : Error bwp id\n"},
        },
        "carrier[0].dl_pdsch[0]");
}

TEST(cfg_nr_dl_sch, a_channel_follows_spacing_and_prefix)
{
    nr_test::waveform_of_t waveform({"carrier[0].numerology=LIB_NR_SCS_60K"});
    nr_test::run_rows(waveform,
                      {
                          {"slot_allocation", "30:39", "30:39", true},
                          {"mapping_type", "LIB_NR_DMRS_MAPPING_TYPEB", "LIB_NR_DMRS_MAPPING_TYPEB", true},
                          {"first_symbol", "12", "12", true},
                          {"carrier[0].dl_bwp[1].cp_type=LIB_NR_EXTEND_CP"},
                          {"first_symbol", nullptr, "10"},
                          {"symbol_num", nullptr, "2"},
                          {"first_symbol", "3", "3", true},
                          {"symbol_num", "7", "6", true},
                          {"carrier[0].numerology=LIB_NR_SCS_15K"},
                          {"slot_allocation", nullptr, "30:39"}, // none of them is there
                          {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR2_1_400M"},
                          {"enable", "true", "true", true},
                          {"carrier[0].numerology=LIB_NR_SCS_240K"},
                          {"enable", nullptr, "false"},
                          {"enable", "true", "false", false},
                      },
                      "carrier[0].dl_pdsch[0]");
}

TEST(cfg_nr_dl_sch, slots_follow_the_frames)
{
    nr_test::waveform_of_t waveform({"frame_number=3"});
    nr_test::run_rows(waveform,
                      {
                          {"slot_allocation", "59", "0:19", false},
                          {"one_frame_period", "false", "false", true},
                          {"slot_allocation", "59,60,4", "59,4", true},
                          {"frame_number=2"},
                          {"slot_allocation", nullptr, "4"},
                          {"slot_allocation", "20:39", "20:39", true},
                          {"one_frame_period", "true", "true", true},
                          {"slot_allocation", nullptr, "0"},
                      },
                      "carrier[0].dl_pdsch[0]");
}

} // namespace
