// The entries of the channel lists in the form they have before their channels send: what the carrier's cascades and
// the engine's gates rely on.
#include "manager/lib_nr_dl_bwp_configure_manager.h"
#include "manager/lib_nr_dl_csirs_configure_manager.h"
#include "manager/lib_nr_dl_dci_configure_manager.h"
#include "manager/lib_nr_dl_frc_configure_manager.h"
#include "manager/lib_nr_dl_prs_configure_manager.h"
#include "manager/lib_nr_dl_sch_configure_manager.h"
#include "manager/lib_nr_dl_tm_configure_manager.h"
#include "manager/lib_nr_phy_numerology_configure_manager.h"
#include "manager/lib_nr_ul_bwp_configure_manager.h"
#include "manager/lib_nr_ul_frc_configure_manager.h"
#include "manager/lib_nr_ul_prach_configure_manager.h"
#include "manager/lib_nr_ul_pucch_configure_manager.h"
#include "manager/lib_nr_ul_rmc_configure_manager.h"
#include "manager/lib_nr_ul_srs_configure_manager.h"

#include <gtest/gtest.h>

namespace
{

using namespace vek::nr_mod_lib;

lib_nr_phy_numerology_configure_manager_t numerology_of(unsigned int rb_start, unsigned int rb_size)
{
    lib_nr_phy_numerology_configure_manager_t numerology;
    numerology.set_numerology(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_100M);
    numerology.set_rb_start(rb_start);
    numerology.set_rb_size(rb_size);
    return numerology;
}

TEST(channel_entries, antenna_ports_never_leave_all_antennas_silent)
{
    const lib_nr_dl_bwp_configure_manager_t bwp(numerology_of(0, 273), 1, false);
    lib_nr_dl_sch_configure_manager_t sch(bwp);
    using sch_ports_t = std::vector<lib_nr_antenna_port_t>;
    EXPECT_FALSE(sch.set_antenna_port({LIB_NR_ANTENNA_PORT_0}, 1));
    EXPECT_TRUE(sch.set_antenna_port({LIB_NR_ANTENNA_PORT_2, LIB_NR_ANTENNA_PORT_0, LIB_NR_ANTENNA_PORT_0}, 2));
    EXPECT_EQ(sch.get_antenna_port(), (sch_ports_t{LIB_NR_ANTENNA_PORT_NONE, LIB_NR_ANTENNA_PORT_0}));
    EXPECT_TRUE(sch.set_antenna_port({LIB_NR_ANTENNA_PORT_3}, 3));
    EXPECT_EQ(sch.get_antenna_port(),
              (sch_ports_t{LIB_NR_ANTENNA_PORT_0, LIB_NR_ANTENNA_PORT_NONE, LIB_NR_ANTENNA_PORT_NONE}));

    lib_nr_dl_csirs_configure_manager_t csirs(bwp);
    EXPECT_TRUE(csirs.set_antenna_port({CSIRS_ANTENNA_PORT3, CSIRS_ANTENNA_PORT4}, 2));
    EXPECT_EQ(csirs.get_antenna_port(), (std::vector<csirs_antenna_port_t>{CSIRS_ANTENNA_PORT3, CSIRS_ANTENNA_NONE}));
    EXPECT_TRUE(csirs.set_antenna_port({CSIRS_ANTENNA_PORT3}, 0));
    EXPECT_TRUE(csirs.get_antenna_port().empty());
}

TEST(channel_entries, resource_blocks_follow_the_bwp)
{
    lib_nr_dl_bwp_configure_manager_t bwp(numerology_of(0, 273), 1, false);
    lib_nr_dl_sch_configure_manager_t sch(bwp);
    lib_nr_dl_csirs_configure_manager_t csirs(bwp);
    EXPECT_EQ(sch.get_rb_num(), 273U);
    EXPECT_EQ(csirs.get_rb_num(), 272U);
    bwp.set_bwp_rb_size(50, 0, 273);
    sch.update_by_dl_bwp(bwp);
    csirs.update_by_dl_bwp(bwp);
    EXPECT_EQ(sch.get_rb_num(), 50U);
    EXPECT_EQ(csirs.get_rb_num(), 48U);
    bwp.set_bwp_rb_size(22, 0, 273);
    csirs.update_by_dl_bwp(bwp);
    EXPECT_EQ(csirs.get_rb_num(), 22U) << "all RBs of a small BWP";

    lib_nr_dl_prs_configure_manager_t prs(numerology_of(0, 273));
    EXPECT_EQ(prs.get_rb_number(), 272U);
    prs.update_by_numerology(numerology_of(0, 100));
    EXPECT_EQ(prs.get_rb_number(), 100U);
    prs.update_by_numerology(numerology_of(40, 100));
    EXPECT_EQ(prs.get_rb_offset(), 40U);
    prs.update_by_numerology(numerology_of(0, 51));
    EXPECT_EQ(prs.get_rb_offset(), 27U) << "24 RBs below the end";
}

TEST(channel_entries, random_access_follows_bwp_and_bandwidth)
{
    const auto numerology = numerology_of(0, 273);
    lib_nr_ul_bwp_configure_manager_t bwp(numerology, 0);
    bwp.set_rb_offset(10, 0, 273);
    bwp.set_rb_number(40, 0, 273);
    lib_nr_ul_prach_configure_manager_t prach(bwp);
    EXPECT_TRUE(prach.get_enable());
    EXPECT_EQ(prach.get_rb_offset(), 10U);
    EXPECT_EQ(prach.get_rb_num(), 40U);
    lib_nr_phy_numerology_configure_manager_t fr2;
    fr2.set_numerology(LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_100M);
    prach.update_by_bandwidth(fr2, LIB_NR_CHANNEL_FR2_1_100M);
    EXPECT_EQ(prach.get_configuration_table(), FR2_TDD);
    EXPECT_EQ(prach.get_lra(), PRACH_LRA_139);
    EXPECT_EQ(prach.get_prach_scs(), PRACH_SCS_60K);
    prach.update_by_bandwidth(numerology, LIB_NR_CHANNEL_FR1_20M);
    EXPECT_EQ(prach.get_lra(), PRACH_LRA_839);
    lib_nr_phy_numerology_configure_manager_t without_uplink;
    without_uplink.set_numerology(LIB_NR_SCS_240K, LIB_NR_CHANNEL_FR2_1_100M);
    prach.update_by_ul_bwp(lib_nr_ul_bwp_configure_manager_t(without_uplink, 0));
    EXPECT_FALSE(prach.get_enable());

    lib_nr_ul_pucch_configure_manager_t pucch(bwp);
    EXPECT_EQ(pucch.get_name(), "UCI1");
    EXPECT_FALSE(pucch.set_bwp_id(bwp));
    EXPECT_TRUE(pucch.set_bwp_id(lib_nr_ul_bwp_configure_manager_t(numerology, 3)));
    EXPECT_EQ(pucch.get_bwp_id(), 3U);
}

TEST(channel_entries, a_dci_stays_on_a_coreset_of_its_bwp)
{
    lib_nr_dl_bwp_configure_manager_t initial(numerology_of(0, 273), 0, true);
    lib_nr_dl_bwp_configure_manager_t second(numerology_of(0, 273), 1, false);
    lib_nr_dl_dci_configure_manager_t dci(second);
    EXPECT_EQ(dci.get_bwp_id(), 1U);
    EXPECT_EQ(dci.get_coreset_id(), 1U);
    EXPECT_TRUE(dci.set_coreset_id(3));
    EXPECT_TRUE(dci.set_coreset_id(4));
    EXPECT_EQ(dci.get_coreset_id(), 1U);
    dci.update_by_dl_bwp(initial);
    EXPECT_EQ(dci.get_coreset_id(), 0U);
    second.set_coreset_number(3);
    dci.update_by_dl_bwp(second);
    dci.set_coreset_id(3);
    dci.update_by_dl_bwp(second);
    EXPECT_EQ(dci.get_coreset_id(), 3U);
}

template <class preset_t>
void expect_fdd_where_non_terrestrial()
{
    preset_t preset;
    EXPECT_EQ(preset.get_duplex_type(), LIB_NR_DUPLEX_TYPE_TDD);
    EXPECT_TRUE(preset.set_nr_ntn(true));
    EXPECT_FALSE(preset.set_nr_ntn(true));
    preset.init();
    EXPECT_EQ(preset.get_duplex_type(), LIB_NR_DUPLEX_TYPE_FDD);
    EXPECT_TRUE(preset.set_nr_ntn(false));
    EXPECT_EQ(preset.get_duplex_type(), LIB_NR_DUPLEX_TYPE_TDD);
}

TEST(channel_entries, presets_are_fdd_where_non_terrestrial)
{
    expect_fdd_where_non_terrestrial<lib_nr_dl_tm_configure_manager_t>();
    expect_fdd_where_non_terrestrial<lib_nr_dl_frc_configure_manager_t>();
    expect_fdd_where_non_terrestrial<lib_nr_ul_frc_configure_manager_t>();
    expect_fdd_where_non_terrestrial<lib_nr_ul_rmc_configure_manager_t>();
}

} // namespace
