#include "manager/lib_nr_dl_bwp_configure_manager.h"

#include "support/numerology.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::numerology_of;

TEST(lib_nr_dl_bwp_configure_manager, start_wins_against_size)
{
    lib_nr_dl_bwp_configure_manager_t bwp(numerology_of(LIB_NR_SCS_30K, 0, 273), 1, false);
    struct row_t
    {
        bool start;
        unsigned int value;
        bool result;
        unsigned int stored_start;
        unsigned int stored_size;
    };
    // Within the RBs 10 to 59.
    const row_t rows[] = {
        {true, 0, true, 10, 50},    // raised to the limit, the size cut to it
        {true, 30, true, 30, 30},   //
        {true, 30, false, 30, 30},  //
        {false, 100, true, 30, 30}, // cut
        {false, 12, true, 30, 12},  //
        {true, 999, true, 54, 6},   // 6 RBs are left
        {false, 5, false, 54, 6},   //
        {true, 20, true, 20, 6},    // a size does not grow back
    };
    for (const row_t& row : rows) {
        const bool result =
            row.start ? bwp.set_bwp_rb_start(row.value, 10, 50) : bwp.set_bwp_rb_size(row.value, 10, 50);
        EXPECT_EQ(result, row.result) << row.start << " " << row.value;
        EXPECT_EQ(bwp.get_bwp_rb_start(), row.stored_start) << row.start << " " << row.value;
        EXPECT_EQ(bwp.get_bwp_rb_size(), row.stored_size) << row.start << " " << row.value;
    }
    EXPECT_FALSE(bwp.set_bwp_rb_size(3, 0, 273)) << "below 6 the limits are not taken";
    bwp.set_bwp_resource_block_number_limit(8);
    EXPECT_EQ(bwp.get_bwp_rb_start(), 12U);
    bwp.set_bwp_resource_block_start_limit(40);
    EXPECT_EQ(bwp.get_bwp_rb_start(), 40U);
}

TEST(lib_nr_dl_bwp_configure_manager, coresets_are_named_by_their_ids)
{
    const auto numerology = numerology_of(LIB_NR_SCS_30K, 0, 273);
    for (const bool initial : {true, false}) {
        lib_nr_dl_bwp_configure_manager_t bwp(numerology, 4, initial);
        const unsigned int first = initial ? 0 : 1;
        EXPECT_EQ(bwp.get_first_coreset_index(), first);
        for (unsigned int i = 0; i < 3; ++i)
            EXPECT_EQ(bwp.get_coreset(first + i).get_current_coreset_id(), first + i);
        EXPECT_EQ(bwp.get_coreset(7).get_current_coreset_id(), first + 2);
        EXPECT_TRUE(bwp.get_coreset(first).set_current_coreset_id(12));
        EXPECT_EQ(bwp.get_coreset(first).get_current_coreset_id(), 11U);
        EXPECT_EQ(bwp.get_coreset(first - 1).get_current_coreset_id(), first + 2);

        EXPECT_FALSE(bwp.set_coreset_number(0)) << "1 already";
        EXPECT_TRUE(bwp.check_coreset_index_valid(first));
        EXPECT_FALSE(bwp.check_coreset_index_valid(first + 1));
        EXPECT_TRUE(bwp.set_coreset_number(9));
        EXPECT_EQ(bwp.get_coreset_number(), 3U);
        EXPECT_TRUE(bwp.check_coreset_index_valid(first + 2));
        EXPECT_FALSE(bwp.check_coreset_index_valid(first + 3));
        EXPECT_FALSE(bwp.check_coreset_index_valid(first - 1));
    }
}

} // namespace
