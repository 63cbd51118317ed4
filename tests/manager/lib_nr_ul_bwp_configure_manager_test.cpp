#include "manager/lib_nr_ul_bwp_configure_manager.h"

#include "support/numerology.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::numerology_of;

TEST(lib_nr_ul_bwp_configure_manager, takes_name_and_range_from_id_and_numerology)
{
    const lib_nr_ul_bwp_configure_manager_t bwp(numerology_of(LIB_NR_SCS_60K, 10, 100), 2);
    EXPECT_EQ(bwp.get_bwp_id(), 2U);
    EXPECT_EQ(bwp.get_bwp_name(), "BWP3");
    EXPECT_EQ(bwp.get_numerology(), LIB_NR_SCS_60K);
    EXPECT_EQ(bwp.get_cp_type(), LIB_NR_NORMAL_CP);
    EXPECT_EQ(bwp.get_rb_offset(), 10U);
    EXPECT_EQ(bwp.get_rb_number(), 100U);
}

TEST(lib_nr_ul_bwp_configure_manager, offset_and_number_stay_in_the_range)
{
    lib_nr_ul_bwp_configure_manager_t bwp(numerology_of(LIB_NR_SCS_30K, 0, 273), 0);
    struct row_t
    {
        bool offset;
        unsigned int value;
        unsigned int rb_start;
        unsigned int rb_size;
        bool result;
        unsigned int stored_offset;
        unsigned int stored_number;
    };
    const row_t rows[] = {
        {false, 3, 0, 273, true, 0, 6},  //
        {false, 0, 0, 273, false, 0, 6}, //
        {false, 4000000000, 0, 51, true, 0, 51},
        {true, 100, 0, 51, true, 45, 6},  //
        {true, 45, 0, 51, false, 45, 6},  //
        {true, 20, 0, 51, true, 20, 6},   // a number does not grow back
        {false, 40, 0, 51, true, 20, 31}, //
        {true, 5, 30, 60, true, 30, 31},  // raised to the range's start
        {true, 4294967295, 30, 60, true, 84, 6},
        {false, 100, 0, 50, false, 84, 6}, // the offset lies behind the range: 6 all the same
    };
    for (const row_t& row : rows) {
        const bool result = row.offset ? bwp.set_rb_offset(row.value, row.rb_start, row.rb_size)
                                       : bwp.set_rb_number(row.value, row.rb_start, row.rb_size);
        EXPECT_EQ(result, row.result) << row.value;
        EXPECT_EQ(bwp.get_rb_offset(), row.stored_offset) << row.value;
        EXPECT_EQ(bwp.get_rb_number(), row.stored_number) << row.value;
    }
    EXPECT_TRUE(bwp.set_numerology(numerology_of(LIB_NR_SCS_30K, 0, 24)));
    EXPECT_EQ(bwp.get_rb_offset(), 18U);
    EXPECT_EQ(bwp.get_rb_number(), 6U);
}

} // namespace
