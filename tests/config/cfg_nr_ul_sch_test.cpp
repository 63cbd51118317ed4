#include "config/cfg_nr_waveform.h"
#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

// What PDSCH and PUSCH have in common is held at the PDSCH.
TEST(cfg_nr_ul_sch, settings_keep_to_their_limits)
{
    nr_test::waveform_of_t waveform({"carrier[0].carrier_type=LIB_NR_UPLINK"});
    nr_test::run_rows(
        waveform,
        {
            {"carrier[0].ul_pusch[0].rapid", "63", "63", true},
            {"carrier[0].ul_pusch[0].rapid", "64", "-1", true},
            {"carrier[0].ul_pusch[0].n_rs_id", "-7", "-1", false},
            {"carrier[0].ul_pusch[0].n_rs_id", "65536", "65535", true},
            {"carrier[0].ul_pusch[0].n_ptrs_id", "70000", "65535", true},
            {"carrier[0].ul_pusch[0].n_ptrs_group", "LIB_NR_PTRS_GROUP_8", "LIB_NR_PTRS_GROUP_8", true},
            {"carrier[0].ul_pusch[0].n_ptrs_group_sample", "LIB_NR_PTRS_GROUP_SAMPLE_2", "LIB_NR_PTRS_GROUP_SAMPLE_4",
             false},
            {"carrier[0].ul_pusch[0].antenna_port_number", "LIB_NR_ANTENNA_PORT_NUMBER_4",
             "LIB_NR_ANTENNA_PORT_NUMBER_1", false},
            {"carrier[0].ul_pusch[0].enable_codebook", "true", "true", true},
            {"carrier[0].ul_pusch[0].antenna_port_number", "LIB_NR_ANTENNA_PORT_NUMBER_3",
             "LIB_NR_ANTENNA_PORT_NUMBER_1", false},
            {"carrier[0].ul_pusch[0].dmrs_port", "0:5", "0:3", true},
            {"carrier[0].ul_pusch[0].layers_num", nullptr, "4"},
            {"carrier[0].ul_pusch[0].rb_num", "271", "271", true},
            {"carrier[0].ul_pusch[0].enable_transfer_precoding", "true", "true", true},
            {"carrier[0].ul_pusch[0].rb_num", nullptr, "270"},
            {"carrier[0].ul_pusch[0].mcs_table_list", nullptr, "TABLE_6_1_4_1_1,TABLE_5_1_3_1_2,TABLE_6_1_4_1_2"},
            {"carrier[0].ul_pusch[0].first_symbol", "4", "0", false},
            {"carrier[0].ul_pusch[0].mapping_type", "LIB_NR_DMRS_MAPPING_TYPEB", "LIB_NR_DMRS_MAPPING_TYPEB", true},
            {"carrier[0].ul_pusch[0].ra_type", "LIB_NR_SCH_RA_TYPE2", "LIB_NR_SCH_RA_TYPE2", true},
            {"carrier[0].ul_pusch[0].enable_transfer_precoding", nullptr, "false"},
            {"carrier[0].ul_pusch[0].interlace_index", "9,3:2:7", "3", true},
            {"carrier[0].ul_pusch[0].enable", "true", "true", true},
        });
}

} // namespace
