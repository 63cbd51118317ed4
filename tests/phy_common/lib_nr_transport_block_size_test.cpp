#include "phy_common/lib_nr_ldpc_code_block_segmentation.h"
#include "phy_common/lib_nr_transport_block_size.h"
#include "receiver/sch_receiver.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace
{

using namespace vek::nr_mod_lib;

// For a whole N_info.
std::uint64_t expected_size(std::uint64_t n_info, bool low_rate)
{
    return nr_test::transport_block_size(n_info * nr_test::k_n_info_unit, low_rate);
}

TEST(lib_nr_transport_block_size, equals_a_search_in_whole_numbers_and_never_falls)
{
    for (const double rate : {0.1, 0.25, 0.2500001, 0.9}) {
        std::uint64_t before = 0;
        for (std::uint64_t n_info = 0; n_info < 3000000; n_info += n_info < 20000 ? 1 : 97) {
            const std::uint64_t size = lib_nr_transport_block_size(static_cast<double>(n_info), rate);
            ASSERT_EQ(size, expected_size(n_info, rate <= 0.25)) << n_info << " at " << rate;
            ASSERT_EQ(size % 8, 0u) << n_info;
            ASSERT_GE(size, before) << n_info << " at " << rate;
            before = size;
        }
    }
    // A size from the middle of each branch, worked by hand.
    EXPECT_EQ(lib_nr_transport_block_size(0, 0.5), 24u);
    EXPECT_EQ(lib_nr_transport_block_size(3824, 0.5), 3824u);
    EXPECT_EQ(lib_nr_transport_block_size(3825, 0.5), 3840u);
    EXPECT_EQ(lib_nr_transport_block_size(3825, 0.25), 3848u);
}

TEST(lib_nr_transport_block_size, the_fraction_counts_only_where_it_was_not_cut_and_bad_numbers_stay_in_range)
{
    // 3824.5 is above the table; the product of the static operation is cut first.
    EXPECT_EQ(lib_nr_transport_block_size(3824.5, 0.5), 3840u);
    const auto size = lib_nr_ldpc_code_block_segmentation_t::get_transport_block_size;
    EXPECT_EQ(size(7649, 1, 1, 0.5), 3824u);
    EXPECT_EQ(size(3276 * 12, 8, 4, 948.0 / 1024), expected_size(1164670, false));
    // The product of the three whole numbers passes 32 bits.
    EXPECT_EQ(size(1u << 20, 1u << 10, 4, 1.0 / 4096), expected_size(1u << 20, true));
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double none : {-1.0, -infinity, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(lib_nr_transport_block_size(none, 0.5), 24u);
    EXPECT_EQ(lib_nr_transport_block_size(infinity, 0.5), lib_nr_transport_block_size(2147483648.0, 0.5));
    EXPECT_EQ(size(~0u, ~0u, ~0u, 1.0), lib_nr_transport_block_size(2147483648.0, 1.0));
}

} // namespace
