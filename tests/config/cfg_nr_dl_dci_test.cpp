#include "config/cfg_nr_waveform.h"
#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

using nr_test::run_rows;

TEST(dl_dci_facade, settings_read_back_as_they_were_corrected)
{
    nr_test::waveform_of_t waveform({"carrier[0].dl_bwp[0].coreset_number=2"});
    run_rows(waveform,
             {
                 {"carrier[0].dl_dci[0].enable", "true", "true", true},
                 {"carrier[0].dl_dci[0].pwr_boosting", "-41", "-40", true},
                 {"carrier[0].dl_dci[0].dmrs_pwr_boosting", "99", "40", true},
                 {"carrier[0].dl_dci[0].scrambling_id", "-7", "-1", false},
                 {"carrier[0].dl_dci[0].scrambling_id", "65536", "65535", true},
                 {"carrier[0].dl_dci[0].rnti", "65536", "65535", true},
                 {"carrier[0].dl_dci[0].crnti", "70000", "65535", true},
                 {"carrier[0].dl_dci[0].allocated_candidate", "1", "0", false}, // of 1
                 {"carrier[0].dl_dci[0].candidates_num", "LIB_NR_DCI_CANDIDATE_8", "LIB_NR_DCI_CANDIDATE_8", true},
                 {"carrier[0].dl_dci[0].allocated_candidate", "9", "7", true},
                 {"carrier[0].dl_dci[0].candidates_num", "LIB_NR_DCI_CANDIDATE_3", "LIB_NR_DCI_CANDIDATE_3", true},
                 {"carrier[0].dl_dci[0].allocated_candidate", nullptr, "2"},
                 {"carrier[0].dl_dci[0].slot_allocation", "3,20,19", "3,19", true},
                 {"carrier[0].dl_dci[0].slot_allocation", "20", "3,19", false},
                 {"carrier[0].dl_dci[0].data_block_size", "0", "1", true},
                 {"carrier[0].dl_dci[0].data_block_size", "1000", "408", true}, // 4 CCEs
                 {"carrier[0].dl_dci[0].aggregation_level", "LIB_NR_DCI_AGGREGATION_LEVEL_8",
                  "LIB_NR_DCI_AGGREGATION_LEVEL_8", true},
                 {"carrier[0].dl_dci[0].data_block_size", "1000", "488", true},
                 {"carrier[0].dl_dci[0].aggregation_level", "LIB_NR_DCI_AGGREGATION_LEVEL_1",
                  "LIB_NR_DCI_AGGREGATION_LEVEL_1", true},
                 {"carrier[0].dl_dci[0].data_block_size", "1000", "84", true},
                 {"carrier[0].dl_dci[0].data_source_custom", "1 0,1", "1 0,1", true},
                 {"carrier[0].dl_dci[0].start_symbol_within_slot", "14", "13", true},
                 {"carrier[0].dl_bwp[1].coreset[1].duration", "3", "3", true},
                 {"carrier[0].dl_dci[0].start_symbol_within_slot", nullptr, "11"},
                 {"carrier[0].dl_dci[0].coreset_id", "0", "1", false},
                 {"carrier[0].dl_dci[0].coreset_id", "3", "3", true}, // though it does not count
                 {"carrier[0].dl_dci[0].bwp_id", "9", "0", true,
                  "lib_nr_carrier_configure_manager_t::set_dl_dci_bwp_id : Error bwp id\n"},
                 {"carrier[0].dl_dci[0].coreset_id", nullptr, "0"},
                 {"carrier[0].dl_dci[0].coreset_id", "2", "2", true},
                 {"carrier[0].dl_bwp[0].coreset_number", "1", "1", true},
                 {"carrier[0].dl_dci[0].coreset_id", nullptr, "0"},
             });
}

TEST(dl_dci_facade, levels_and_search_spaces_go_by_the_groups_of_the_coreset)
{
    nr_test::waveform_of_t waveform({"carrier[0].dl_dci[0].bwp_id=0"});
    struct row_t
    {
        const char* bitmap;
        const char* asked;
        const char* stored;
        const char* search_space;
        const char* offered;
    };
    const row_t rows[] = {
        {"1111111111111111", "16", "16", "LIB_NR_DCI_CSS", "4,8,16"},
        {"111111111111111", "16", "4", "LIB_NR_DCI_CSS", "4,8"},
        {"11111111", "8", "4", "LIB_NR_DCI_USS", "1,2,4,8"},
        {"1111", "8", "4", "LIB_NR_DCI_CSS", "4"},
        {"1111", "2", "2", "LIB_NR_DCI_USS", "1,2,4"},
        {"111", "4", "2", "LIB_NR_DCI_USS", "1,2"},
        {"11", "1", "1", "LIB_NR_DCI_USS", "1,2"},
        {"1", "2", "1", "LIB_NR_DCI_USS", "1"},
        {"", "1", "1", "LIB_NR_DCI_USS", "1"},
        {"", "16", "2", "LIB_NR_DCI_USS", "1"},
    };
    const std::string prefix = "LIB_NR_DCI_AGGREGATION_LEVEL_";
    for (const row_t& row : rows) {
        SCOPED_TRACE(row.bitmap + std::string(" ") + row.asked);
        nr_test::take(waveform, {std::string("carrier[0].dl_bwp[0].coreset[0].fd_resources=") + row.bitmap,
                                 "carrier[0].dl_dci[0].aggregation_level=" + prefix + row.asked,
                                 std::string("carrier[0].dl_dci[0].search_space_type=") + row.search_space});
        EXPECT_EQ(nr_test::value_of(waveform, "carrier[0].dl_dci[0].aggregation_level"), prefix + row.stored);
        EXPECT_EQ(nr_test::value_of(waveform, "carrier[0].dl_dci[0].search_space_type"), row.search_space);
        std::string offered = nr_test::value_of(waveform, "carrier[0].dl_dci[0].aggregation_level_list");
        for (std::size_t at = offered.find(prefix); at != std::string::npos; at = offered.find(prefix))
            offered.erase(at, prefix.size());
        EXPECT_EQ(offered, row.offered);
    }
    EXPECT_FALSE(waveform.get_carrier(0)->get_dl_dci(0)->set_search_space_type(vek::nr_mod_lib::LIB_NR_DCI_CSS))
        << "needs 4 groups";
}

} // namespace
