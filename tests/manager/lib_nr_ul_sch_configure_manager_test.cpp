#include "manager/lib_nr_ul_sch_configure_manager.h"

#include "manager/lib_nr_ul_bwp_configure_manager.h"
#include "support/numerology.h"

#include <gtest/gtest.h>

// What a PUSCH takes over from BWP and guard bands, and the rules whose result hangs on several settings. The limits of
// single settings are held by rows at the façade.

namespace
{

using namespace vek::nr_mod_lib;
using ports_t = std::vector<lib_nr_antenna_port_number_t>;

struct channel_t
{
    explicit channel_t(lib_nr_numerology_type_t spacing = LIB_NR_SCS_30K, unsigned int size = 273)
        : numerology(nr_test::numerology_of(spacing, 0, size)),
          bwp(numerology, 0),
          sch(bwp, numerology, LIB_NR_CHANNEL_FR1_100M)
    {}
    void follow() { sch.update_by_ul_bwp(bwp, numerology, LIB_NR_CHANNEL_FR1_100M); }
    void set_bwp(unsigned int start, unsigned int size)
    {
        bwp.set_rb_offset(start, 0, 273);
        bwp.set_rb_number(size, 0, 273);
        follow();
    }

    lib_nr_phy_numerology_configure_manager_t numerology;
    lib_nr_ul_bwp_configure_manager_t bwp;
    lib_nr_ul_sch_configure_manager_t sch;
};

bool is_5_smooth(unsigned int number)
{
    for (const unsigned int factor : {2U, 3U, 5U})
        while (number % factor == 0)
            number /= factor;
    return number == 1;
}

TEST(lib_nr_ul_sch_configure_manager, transform_precoded_allocations_round_up_within_the_bwp)
{
    channel_t channel;
    channel.sch.set_enable_transfer_precoding(true);
    EXPECT_EQ(channel.sch.get_rb_num(), 270U);
    for (unsigned int offset = 0; offset < 273; offset += 7)
        for (unsigned int asked = 0; asked < 280; ++asked) {
            const unsigned int room = 273 - offset;
            channel.sch.set_rb_offset(offset, 273);
            channel.sch.set_rb_num(asked, 273);
            unsigned int expected = std::min(std::max(asked, 1U), room);
            while (expected < room && !is_5_smooth(expected))
                ++expected;
            while (!is_5_smooth(expected))
                --expected;
            ASSERT_EQ(channel.sch.get_rb_num(), expected) << asked << " from " << offset;
        }
    // Where nothing asks for fewer RBs they stay, whatever is applied again.
    channel.sch.set_rb_offset(100, 273);
    channel.sch.set_rb_num(162, 273);
    channel.sch.set_enable_transfer_precoding(true);
    EXPECT_EQ(channel.sch.get_rb_num(), 162U);
    channel.set_bwp(0, 200);
    EXPECT_EQ(channel.sch.get_rb_num(), 100U);
}

TEST(lib_nr_ul_sch_configure_manager, interlaces_need_the_whole_channel_at_15_or_30_khz_and_follow_the_rb_sets)
{
    channel_t channel;
    lib_nr_ul_sch_configure_manager_t& sch = channel.sch;
    channel.numerology.get_ul_guard_band().add_guard_band(); // RBs 100 to 104
    channel.numerology.get_ul_guard_band().confirm_configuration();
    channel.follow();
    EXPECT_TRUE(sch.set_enable_transfer_precoding(true));
    EXPECT_TRUE(sch.set_ra_type(LIB_NR_SCH_RA_TYPE2));
    EXPECT_FALSE(sch.get_enable_transfer_precoding());
    sch.set_interlace_index("7,3,4:9");
    EXPECT_EQ(sch.get_interlace_index(), "3,4");
    sch.set_unused_rb(96); // of 100 RBs
    EXPECT_EQ(sch.get_interlace_index(), "0") << "three RBs are left";
    EXPECT_TRUE(sch.set_rb_set_number(7));
    EXPECT_EQ(sch.get_rb_set_number(), 2U);
    EXPECT_EQ(sch.get_unused_rb(), 0U);
    EXPECT_FALSE(sch.set_unused_rb(3)) << "several RB sets use them all";
    EXPECT_TRUE(sch.set_rb_set_start(5));
    EXPECT_EQ(sch.get_rb_set_start(), 1U);
    EXPECT_EQ(sch.get_rb_set_number(), 1U);
    sch.set_unused_rb(1000);
    EXPECT_EQ(sch.get_unused_rb(), 167U);

    channel.set_bwp(0, 272);
    EXPECT_EQ(sch.get_ra_type(), LIB_NR_SCH_RA_TYPE2) << "refused is left alone";
    EXPECT_TRUE(sch.set_ra_type(LIB_NR_SCH_RA_TYPE1));
    EXPECT_FALSE(sch.set_ra_type(LIB_NR_SCH_RA_TYPE2));
    EXPECT_FALSE(channel_t(LIB_NR_SCS_60K, 135).sch.set_ra_type(LIB_NR_SCH_RA_TYPE2));
}

TEST(lib_nr_ul_sch_configure_manager, symbols_and_hops_keep_to_slot_and_bwp)
{
    channel_t channel;
    lib_nr_ul_sch_configure_manager_t& sch = channel.sch;
    const auto normal = LIB_NR_NORMAL_CP;
    sch.set_mapping_type(LIB_NR_DMRS_MAPPING_TYPEB, normal);
    sch.set_dmrs_length(LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL, normal);
    sch.set_first_symbol(13, normal);
    EXPECT_EQ(sch.get_first_symbol(), 9U);
    EXPECT_EQ(sch.get_symbol_num(), 5U) << "the slot's end wins over the least length";
    sch.set_hopping_mode(LIB_NR_SCH_HOPPING_MODE_INTRA, normal);
    EXPECT_EQ(sch.get_dmrs_length(), LIB_NR_SCH_DMRS_LENGTH_SINGLE_SYMBOL);
    EXPECT_TRUE(sch.set_dmrs_additional_position(LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_1, normal));
    sch.set_dmrs_additional_position(LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_2, normal);
    EXPECT_EQ(sch.get_dmrs_additional_position(), LIB_NR_SCH_DMRS_ADDITIONAL_POSITION_0);
    sch.set_mapping_type(LIB_NR_DMRS_MAPPING_TYPEA, LIB_NR_EXTEND_CP);
    sch.set_symbol_num(1, LIB_NR_EXTEND_CP);
    EXPECT_EQ(sch.get_symbol_num(), 8U);
    sch.set_symbol_num(14, LIB_NR_EXTEND_CP);
    EXPECT_EQ(sch.get_symbol_num(), 12U);

    sch.set_rb_offset(173, 273);
    sch.set_rb_num(20, 273);
    for (const auto& [asked, stored] : {std::pair{80U, 80U}, {90U, 80U}, {100U, 100U}, {272U, 272U}, {273U, 80U}}) {
        sch.set_hopping_rb_offset(asked, 273);
        EXPECT_EQ(sch.get_hopping_rb_offset(), stored) << asked;
    }
}

TEST(lib_nr_ul_sch_configure_manager, layers_waveform_and_code_rate_fit_together)
{
    channel_t channel;
    lib_nr_ul_sch_configure_manager_t& sch = channel.sch;
    sch.set_dmrs_port("2,0,5");
    sch.set_ptrs_port("0,1");
    EXPECT_EQ(sch.get_ptrs_port(), "0");
    EXPECT_EQ(sch.get_antenna_port_number_list(), ports_t{LIB_NR_ANTENNA_PORT_NUMBER_2});
    sch.set_enable_codebook(true);
    EXPECT_TRUE(sch.set_antenna_port_number(LIB_NR_ANTENNA_PORT_NUMBER_4));
    EXPECT_TRUE(sch.set_tpmi(21));
    sch.set_tpmi(22);
    EXPECT_EQ(sch.get_tpmi(), 0U);
    sch.set_tpmi(3);
    sch.set_antenna_port_number(LIB_NR_ANTENNA_PORT_NUMBER_2);
    EXPECT_EQ(sch.get_tpmi(), 0U) << "two antennas have three";

    sch.set_ptrs_time_density(LIB_NR_SCH_PTRS_TIME_DENSITYE_4);
    EXPECT_TRUE(sch.set_enable_transfer_precoding(true));
    EXPECT_EQ(sch.get_dmrs_port(), "2") << "the transform has one layer";
    EXPECT_EQ(sch.get_ptrs_port(), "2");
    EXPECT_EQ(sch.get_cdm_groups_without_data_num(), 2U);
    EXPECT_EQ(sch.get_ptrs_time_density(), LIB_NR_SCH_PTRS_TIME_DENSITYE_2);
    EXPECT_EQ(sch.get_mcs_table(), TABLE_6_1_4_1_1);
    EXPECT_EQ(sch.get_target_code_rate(), 120.0 / 1024);
    EXPECT_TRUE(sch.set_modulation(LIB_NR_MODULATION_64QAM));
    EXPECT_EQ(sch.get_modulation(), LIB_NR_MODULATION_HALF_PI_BPSK);
    EXPECT_EQ(sch.get_target_code_rate(), 240.0 / 1024);
    sch.set_mcs(2);
    EXPECT_FALSE(sch.set_modulation(LIB_NR_MODULATION_HALF_PI_BPSK));
    EXPECT_EQ(sch.get_modulation_list(), std::vector{LIB_NR_MODULATION_QPSK});
    sch.set_mcs_table(TABLE_5_1_3_1_2);
    EXPECT_TRUE(sch.set_enable_transfer_precoding(false));
    EXPECT_EQ(sch.get_mcs_table(), TABLE_5_1_3_1_2);
    EXPECT_EQ(sch.get_ptrs_time_density(), LIB_NR_SCH_PTRS_TIME_DENSITYE_2) << "does not come back";
}

} // namespace
