#include "manager/lib_nr_dl_coreset_configure_manager.h"

#include "support/captured_output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace
{

using namespace vek::nr_mod_lib;

lib_nr_dl_coreset_configure_manager_t coreset_in(unsigned int bwp_rb_size) { return {bwp_rb_size, 1}; }

std::string text_of(const std::vector<int>& bitmap)
{
    std::string text;
    for (const int bit : bitmap)
        text += bit == 1 ? '1' : '0';
    return text;
}

TEST(lib_nr_dl_coreset_configure_manager, bitmaps_without_interleaving)
{
    struct row_t
    {
        const char* text;
        unsigned int rbs;
        const char* stored;
    };
    const row_t rows[] = {
        {"000", 18, "100"},   {"101", 18, "101"},     {"11", 24, "1100"}, {"110111", 20, "110"},
        {"0,1,1", 18, "011"}, {"nothing", 18, "100"}, {"", 18, ""},       {"111", 5, ""},
    };
    for (const row_t& row : rows) {
        auto coreset = coreset_in(60);
        EXPECT_TRUE(coreset.set_fd_resources(row.text, row.rbs));
        EXPECT_FALSE(coreset.set_fd_resources(row.text, row.rbs)) << row.text;
        EXPECT_EQ(coreset.get_fd_resources(), row.stored) << row.text;
        EXPECT_EQ(text_of(coreset.get_fd_resources_for_lib()), row.stored) << row.text;
    }
    EXPECT_EQ(coreset_in(20).get_fd_resources(), "111");
}

TEST(lib_nr_dl_coreset_configure_manager, an_interleaved_bitmap_fills_whole_rows_of_bundles)
{
    auto coreset = coreset_in(18);
    coreset.set_interleaver_size(LIB_NR_DCI_INTERLEAVER_SIZE_3);
    coreset.set_fd_resources("110", 18);
    coreset.set_cce2reg_mapping_type(LIB_NR_CORSET_INTERLEAVE);
    EXPECT_EQ(coreset.get_fd_resources(), "111")
        << "neither the bitmap nor the one before fits: the shortest that does";
    EXPECT_FALSE(coreset.set_fd_resources("11", 18));
    EXPECT_EQ(coreset.get_fd_resources(), "111") << "the one before comes back";

    auto wide = coreset_in(60);
    wide.set_cce2reg_mapping_type(LIB_NR_CORSET_INTERLEAVE);
    EXPECT_EQ(wide.get_fd_resources(), "1111111111");
    wide.set_fd_resources(std::string(wide.get_fd_resources()), 30);
    EXPECT_EQ(wide.get_fd_resources(), "11000") << "the bitmap of a wider BWP does not come back past the edge";
    wide.set_fd_resources("00011", 30);
    wide.set_fd_resources(std::string(wide.get_fd_resources()), 18);
    EXPECT_EQ(wide.get_fd_resources(), "110") << "nor does one that has lost all its groups";
}

TEST(lib_nr_dl_coreset_configure_manager, a_bundle_of_three_needs_three_symbols)
{
    auto coreset = coreset_in(60);
    using sizes_t = std::vector<lib_nr_dl_dci_reg_bundle_size_t>;
    EXPECT_TRUE(coreset.set_reg_bundle_size(LIB_NR_DCI_REG_BUNDLE_SIZE_3));
    EXPECT_EQ(coreset.get_reg_bundle_size(), LIB_NR_DCI_REG_BUNDLE_SIZE_2);
    EXPECT_EQ(coreset.get_available_reg_bundle_size(),
              (sizes_t{LIB_NR_DCI_REG_BUNDLE_SIZE_2, LIB_NR_DCI_REG_BUNDLE_SIZE_6}));
    EXPECT_TRUE(coreset.set_duration(9));
    EXPECT_EQ(coreset.get_duration(), 3U);
    EXPECT_EQ(coreset.get_reg_bundle_size(), LIB_NR_DCI_REG_BUNDLE_SIZE_2) << "kept, though no longer offered";
    EXPECT_EQ(coreset.get_available_reg_bundle_size(),
              (sizes_t{LIB_NR_DCI_REG_BUNDLE_SIZE_3, LIB_NR_DCI_REG_BUNDLE_SIZE_6}));
    EXPECT_TRUE(coreset.set_reg_bundle_size(LIB_NR_DCI_REG_BUNDLE_SIZE_3));
    EXPECT_EQ(coreset.get_reg_bundle_size(), LIB_NR_DCI_REG_BUNDLE_SIZE_3);
    EXPECT_TRUE(coreset.set_duration(0));
    EXPECT_EQ(coreset.get_duration(), 1U);
    EXPECT_EQ(coreset.get_reg_bundle_size(), LIB_NR_DCI_REG_BUNDLE_SIZE_2);
}

TEST(lib_nr_dl_coreset_configure_manager, unknown_sizes_count_as_two_and_say_so)
{
    auto coreset = coreset_in(18);
    coreset.set_cce2reg_mapping_type(LIB_NR_CORSET_INTERLEAVE);
    nr_test::captured_output_t output;
    coreset.set_reg_bundle_size(static_cast<lib_nr_dl_dci_reg_bundle_size_t>(4));
    EXPECT_EQ(output.text(), "lib_nr_dl_coreset_configure_manager_t::_is_fd_resource_valid : Error reg_bundle_size!\n");
    coreset.set_reg_bundle_size(LIB_NR_DCI_REG_BUNDLE_SIZE_6);
    output.clear();
    coreset.set_interleaver_size(static_cast<lib_nr_dl_dci_interleaver_size_t>(7));
    EXPECT_EQ(output.text(),
              "lib_nr_dl_coreset_configure_manager_t::_is_fd_resource_valid : Error interleaver_size!\n");
}

TEST(lib_nr_dl_coreset_configure_manager, any_sequence_leaves_a_bitmap_that_can_be_mapped)
{
    std::mt19937 generator(2);
    const auto random = [&generator] { return static_cast<unsigned int>(generator()); };
    auto coreset = coreset_in(273);
    unsigned int rbs = 273;
    const lib_nr_dl_dci_reg_bundle_size_t bundles[] = {LIB_NR_DCI_REG_BUNDLE_SIZE_2, LIB_NR_DCI_REG_BUNDLE_SIZE_3,
                                                       LIB_NR_DCI_REG_BUNDLE_SIZE_6};
    const lib_nr_dl_dci_interleaver_size_t interleavers[] = {
        LIB_NR_DCI_INTERLEAVER_SIZE_2, LIB_NR_DCI_INTERLEAVER_SIZE_3, LIB_NR_DCI_INTERLEAVER_SIZE_6};
    for (int step = 0; step < 5000; ++step) {
        switch (random() % 6) {
        case 0:
            coreset.set_duration(random() % 5);
            break;
        case 1:
            coreset.set_cce2reg_mapping_type(random() % 4 == 0 ? LIB_NR_CORSET_NO_INTERLEAVE
                                                               : LIB_NR_CORSET_INTERLEAVE);
            break;
        case 2:
            coreset.set_reg_bundle_size(bundles[random() % 3]);
            break;
        case 3:
            coreset.set_interleaver_size(interleavers[random() % 3]);
            break;
        case 4: // 36 RBs hold the largest row of bundles
            rbs = 36 + random() % 238;
            coreset.set_fd_resources(std::string(coreset.get_fd_resources()), rbs);
            break;
        default:
            std::string text;
            for (unsigned int i = 0; i < 1 + random() % 45; ++i)
                text += random() % 2 == 0 ? '0' : '1';
            coreset.set_fd_resources(text, rbs);
        }
        const std::vector<int>& bitmap = coreset.get_fd_resources_for_lib();
        const auto ones = static_cast<unsigned int>(std::count(bitmap.begin(), bitmap.end(), 1));
        ASSERT_EQ(bitmap.size(), rbs / 6);
        ASSERT_EQ(text_of(bitmap), coreset.get_fd_resources());
        ASSERT_GT(ones, 0U);
        const unsigned int bundle = coreset.get_reg_bundle_size();
        ASSERT_TRUE(bundle != 3 || coreset.get_duration() == 3);
        if (coreset.get_cce2reg_mapping_type() == LIB_NR_CORSET_INTERLEAVE) {
            ASSERT_EQ(6 * ones % (bundle * coreset.get_interleaver_size()), 0U) << coreset.get_fd_resources();
        }
    }
}

} // namespace
