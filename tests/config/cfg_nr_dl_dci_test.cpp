#include "config/cfg_nr_waveform.h"
#include "support/settings.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

TEST(cfg_nr_dl_dci, settings_read_back_as_they_were_corrected)
{
    nr_test::waveform_of_t waveform({"carrier[0].dl_bwp[0].coreset_number=2"});
    nr_test::run_rows(
        waveform,
        {

            {"pwr_boosting", "-41", "-40", true},
            {"dmrs_pwr_boosting", "99", "40", true},
            {"scrambling_id", "-7", "-1", false},
            {"scrambling_id", "65536", "65535", true},
            {"rnti", "65536", "65535", true},
            {"crnti", "70000", "65535", true},
            {"allocated_candidate", "1", "0", false}, // of 1
            {"candidates_num", "LIB_NR_DCI_CANDIDATE_8", "LIB_NR_DCI_CANDIDATE_8", true},
            {"allocated_candidate", "9", "7", true},
            {"candidates_num", "LIB_NR_DCI_CANDIDATE_3", "LIB_NR_DCI_CANDIDATE_3", true},
            {"allocated_candidate", nullptr, "2"},
            {"slot_allocation", "3,20,19", "3,19", true},
            {"slot_allocation", "20", "3,19", false},
            {"data_block_size", "0", "1", true},
            {"data_block_size", "1000", "408", true}, // 4 CCEs
            {"aggregation_level", "LIB_NR_DCI_AGGREGATION_LEVEL_8", "LIB_NR_DCI_AGGREGATION_LEVEL_8", true},
            {"data_block_size", "1000", "488", true},
            {"aggregation_level", "LIB_NR_DCI_AGGREGATION_LEVEL_1", "LIB_NR_DCI_AGGREGATION_LEVEL_1", true},
            {"data_block_size", "1000", "84", true},
            {"data_source_custom", "1 0,1", "1 0,1", true},
            {"start_symbol_within_slot", "14", "13", true},
            {"carrier[0].dl_bwp[1].coreset[1].duration", "3", "3", true},
            {"start_symbol_within_slot", nullptr, "11"},
            {"coreset_id", "0", "1", false},
            {"coreset_id", "3", "3", true}, // though it does not count
            {"coreset_id", "4", "1", true},
            {"coreset_id", "3", "3", true},
            {"bwp_id", "9", "0", true, "lib_nr_carrier_configure_manager_t::set_dl_dci_bwp_id : Error bwp id\n"},
            {"coreset_id", nullptr, "0"},
            {"coreset_id", "2", "2", true},
            {"carrier[0].dl_bwp[0].coreset_number", "1", "1", true},
            {"coreset_id", nullptr, "0"},
        },
        "carrier[0].dl_dci[0]");
}

TEST(cfg_nr_dl_dci, levels_and_search_spaces_go_by_the_groups_of_the_coreset)
{
    nr_test::waveform_of_t waveform({"carrier[0].dl_dci[0].bwp_id=0"});
    cfg_nr_dl_dci_t& dci = *waveform.get_carrier(0)->get_dl_dci(0);
    struct row_t
    {
        std::size_t groups;
        unsigned int asked;
        unsigned int stored;
        std::vector<unsigned int> offered_to_one; // and in a common search space, which needs 4 groups
        std::vector<unsigned int> offered_to_all;
    };
    const row_t rows[] = {
        {0, 1, 1, {1}, {}},
        {0, 16, 2, {1}, {}},
        {1, 2, 1, {1}, {}},
        {2, 4, 2, {1, 2}, {}},
        {3, 1, 1, {1, 2}, {}},
        {3, 8, 2, {1, 2}, {}},
        {4, 8, 4, {1, 2, 4}, {4}},
        {7, 2, 2, {1, 2, 4}, {4}},
        {8, 8, 4, {1, 2, 4, 8}, {4, 8}},
        {15, 16, 4, {1, 2, 4, 8}, {4, 8}},
        {16, 16, 16, {1, 2, 4, 8, 16}, {4, 8, 16}},
    };
    const auto offered = [&] {
        const auto levels = dci.get_aggregation_level_list();
        return std::vector<unsigned int>(levels.begin(), levels.end());
    };
    for (const row_t& row : rows) {
        SCOPED_TRACE(row.groups);
        waveform.get_carrier(0)->get_dl_bwp(0)->get_coreset(0)->set_fd_resources(std::string(row.groups, '1'));
        dci.set_aggregation_level(static_cast<lib_nr_dl_dci_aggregation_level_t>(row.asked));
        EXPECT_EQ(dci.get_aggregation_level(), row.stored);
        dci.set_search_space_type(LIB_NR_DCI_USS);
        EXPECT_EQ(offered(), row.offered_to_one);
        EXPECT_EQ(dci.set_search_space_type(LIB_NR_DCI_CSS), !row.offered_to_all.empty());
        EXPECT_EQ(offered(), row.offered_to_all.empty() ? row.offered_to_one : row.offered_to_all);
    }
}

} // namespace
