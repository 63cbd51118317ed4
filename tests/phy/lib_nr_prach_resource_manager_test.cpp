#include "phy/lib_nr_prach_resource_manager.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

TEST(lib_nr_prach_resource_manager, the_grid_has_a_column_for_each_prach_subcarrier)
{
    lib_nr_prach_resource_manager_t& grid = lib_nr_prach_resource_manager_t::get_inst();
    prach_resource_param_t param;
    param.numerology = LIB_NR_SCS_15K;
    param.bandwidth = LIB_NR_CHANNEL_FR1_20M;
    param.ratio = 12.0;
    param.row_number = 3;
    grid.set_resource_param(param);
    grid.init_payload_mapping();
    ASSERT_EQ(grid.get_prach_payload_mapping().size(), 3U);
    EXPECT_EQ(grid.get_prach_payload_mapping().back().size(), 106U * 12U * 12U);
    grid.get_prach_payload_mapping()[1][5] = 1.0;
    grid.init_payload_mapping();
    EXPECT_EQ(grid.get_prach_payload_mapping()[1][5], 0.0);
}

} // namespace
