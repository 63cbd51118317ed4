#include "manager/lib_nr_dl_sch_configure_manager.h"

#include "manager/lib_nr_dl_bwp_configure_manager.h"
#include "manager/lib_nr_dl_csirs_configure_manager.h"
#include "support/captured_output.h"
#include "support/numerology.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace
{

using namespace vek::nr_mod_lib;

lib_nr_dl_bwp_configure_manager_t bwp_of(lib_nr_numerology_type_t numerology)
{
    return {nr_test::numerology_of(numerology), 1, false};
}

/// TS 38.214 Table 5.1.2.1-1, and as much room as the DMRS of two symbols needs.
bool is_valid(lib_nr_dl_sch_configure_manager_t& sch, bool extended, unsigned int s, unsigned int l)
{
    const bool is_double = sch.get_dmrs_length() == LIB_NR_SCH_DMRS_LENGTH_DOUBLE_SYMBOL;
    if (s + l > (extended ? 12U : 14U))
        return false;
    if (sch.get_mapping_type() == LIB_NR_DMRS_MAPPING_TYPEA)
        return s <= sch.get_l0() && l >= sch.get_l0() + 1;
    if (extended)
        return is_double ? l == 6 : l == 2 || l == 4 || l == 6;
    return l <= 13 && l >= (is_double ? 5U : 2U);
}

TEST(lib_nr_dl_sch_configure_manager, every_valid_allocation_is_taken_and_no_other_is_kept)
{
    lib_nr_dl_sch_configure_manager_t sch(bwp_of(LIB_NR_SCS_60K));
    for (unsigned int setting = 0; setting < 16; ++setting) {
        const auto cp_type = static_cast<lib_nr_cyclic_prefix_type_t>(setting & 1U);
        sch.set_mapping_type(static_cast<lib_nr_sch_dmrs_mapping_type_t>(setting >> 1U & 1U), cp_type);
        sch.set_dmrs_length(static_cast<lib_nr_sch_dmrs_length_t>(setting >> 2U & 1U), cp_type);
        sch.set_dmrs_type_a_position(static_cast<lib_nr_sch_dmrs_type_a_position_t>(2 + (setting >> 3U)), 0, cp_type);
        unsigned int valid = 0;
        for (unsigned int s = 0; s < 16; ++s)
            for (unsigned int l = 0; l < 16; ++l) {
                sch.set_first_symbol(s, cp_type);
                sch.set_symbol_num(l, cp_type);
                const bool is_taken = sch.get_first_symbol() == s && sch.get_symbol_num() == l;
                EXPECT_EQ(is_taken, is_valid(sch, setting & 1U, s, l)) << setting << ": " << s << ' ' << l;
                EXPECT_TRUE(is_valid(sch, setting & 1U, sch.get_first_symbol(), sch.get_symbol_num())) << s << ' ' << l;
                valid += is_taken ? 1 : 0;
            }
        EXPECT_GT(valid, 6U) << setting;
    }
}

// The CDM groups of TS 38.211 Tables 7.4.1.1.2-1 and 7.4.1.1.2-2, port by port.
TEST(lib_nr_dl_sch_configure_manager, a_port_is_of_its_type_and_blocks_its_group)
{
    constexpr std::array<std::array<unsigned int, 13>, 2> k_groups = {
        {{0, 0, 1, 1, 0, 0, 1, 1}, {0, 0, 1, 1, 2, 2, 0, 0, 1, 1, 2, 2}}};
    for (unsigned int setting = 0; setting < 4; ++setting) {
        const unsigned int type = 1 + (setting & 1U);
        lib_nr_dl_sch_configure_manager_t sch(bwp_of(LIB_NR_SCS_30K));
        sch.set_dmrs_configuration_type(static_cast<lib_nr_sch_dmrs_configuration_type_t>(type));
        sch.set_dmrs_length(static_cast<lib_nr_sch_dmrs_length_t>(setting >> 1U), LIB_NR_NORMAL_CP);
        const unsigned int single_ports = 2 + 2 * type;
        for (unsigned int port = 0; port <= 12; ++port) {
            sch.set_dmrs_port(std::to_string(port));
            const bool is_there = port < single_ports * (1 + (setting >> 1U));
            EXPECT_EQ(sch.get_dmrs_port_v(), (std::vector{is_there ? port : 0}));
            sch.set_cdm_groups_without_data_num(0);
            EXPECT_EQ(sch.get_cdm_groups_without_data_num(), is_there ? k_groups[type - 1][port] + 1 : 1) << port;
            sch.set_cdm_groups_without_data_num(9);
            EXPECT_EQ(sch.get_cdm_groups_without_data_num(), 1 + type);
            sch.set_enable_ptrs(true);
            EXPECT_EQ(sch.get_enable_ptrs(), !is_there || port < single_ports) << port;
        }
    }
}

// TS 38.214 clause 5.1.2.2.1: the first group ends at a multiple of its size, counted from common resource block 0.
TEST(lib_nr_dl_sch_configure_manager, groups_of_resource_blocks_lie_on_multiples_of_their_size)
{
    lib_nr_dl_sch_configure_manager_t sch(bwp_of(LIB_NR_SCS_30K));
    unsigned int offered = 0;
    for (unsigned int size = 1; size <= 275; ++size)
        for (const lib_nr_sch_rbg_size_t rbg : sch.get_rbg_size_list(size)) {
            const unsigned int p = 2U << rbg;
            ++offered;
            EXPECT_LE((size + p - 1) / p, 18U) << "within the bits of a DCI";
            for (unsigned int start = 0; start < 32; ++start) {
                unsigned int groups = 1;
                for (unsigned int rb = start + 1; rb < start + size; ++rb)
                    groups += rb % p == 0 ? 1 : 0;
                sch.set_rbg_size(rbg, size, start);
                EXPECT_EQ(sch.get_rbg_bitmap_v().size(), groups) << size << ' ' << start << ' ' << p;
            }
        }
    EXPECT_EQ(offered, 2 * 144 + 131);
    EXPECT_EQ(sch.get_rbg_size_list(0), std::vector{LIB_NR_SCH_RBG_SIZE_2});
    EXPECT_EQ(sch.get_rbg_size_list(276), std::vector{LIB_NR_SCH_RBG_SIZE_2});
}

TEST(lib_nr_dl_sch_configure_manager, antenna_ports_never_leave_all_antennas_silent)
{
    using sch_ports_t = std::vector<lib_nr_antenna_port_t>;
    constexpr auto none = LIB_NR_ANTENNA_PORT_NONE;
    lib_nr_dl_sch_configure_manager_t sch(bwp_of(LIB_NR_SCS_30K));
    EXPECT_FALSE(sch.set_antenna_port({LIB_NR_ANTENNA_PORT_0}, 1));
    EXPECT_TRUE(sch.set_antenna_port({LIB_NR_ANTENNA_PORT_2, LIB_NR_ANTENNA_PORT_0, LIB_NR_ANTENNA_PORT_0}, 2));
    EXPECT_EQ(sch.get_antenna_port(), (sch_ports_t{none, LIB_NR_ANTENNA_PORT_0}));
    EXPECT_TRUE(sch.set_antenna_port({LIB_NR_ANTENNA_PORT_3}, 3));
    EXPECT_EQ(sch.get_antenna_port(), (sch_ports_t{LIB_NR_ANTENNA_PORT_0, none, none}));

    lib_nr_dl_csirs_configure_manager_t csirs(bwp_of(LIB_NR_SCS_30K));
    EXPECT_TRUE(csirs.set_antenna_port({CSIRS_ANTENNA_PORT3, CSIRS_ANTENNA_PORT4}, 2));
    EXPECT_EQ(csirs.get_antenna_port(), (std::vector<csirs_antenna_port_t>{CSIRS_ANTENNA_PORT3, CSIRS_ANTENNA_NONE}));
    EXPECT_TRUE(csirs.set_antenna_port({CSIRS_ANTENNA_PORT3}, 0));
    EXPECT_TRUE(csirs.get_antenna_port().empty());
}

TEST(lib_nr_dl_sch_configure_manager, a_dmrs_position_that_is_none_is_told)
{
    const std::string told = "lib_nr_sch_configure_manager_t::set_dmrs_type_a_position : Error DMRS Type A l0 position";
    lib_nr_dl_sch_configure_manager_t sch(bwp_of(LIB_NR_SCS_30K));
    nr_test::captured_output_t output;
    sch.set_dmrs_type_a_position(LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB, 3, LIB_NR_NORMAL_CP);
    EXPECT_EQ(sch.get_l0(), 3U);
    EXPECT_EQ(output.text(), "");
    sch.set_dmrs_type_a_position(LIB_NR_SCH_DMRS_TYPEA_POSITION_MIB, 4, LIB_NR_NORMAL_CP);
    EXPECT_EQ(sch.get_l0(), 2U);
    sch.set_dmrs_type_a_position(static_cast<lib_nr_sch_dmrs_type_a_position_t>(5), 3, LIB_NR_NORMAL_CP);
    EXPECT_EQ(sch.get_dmrs_type_a_position(), LIB_NR_SCH_DMRS_TYPEA_POSITION_2);
    EXPECT_EQ(output.text(), told + " from MIB!\n" + told + "!\n");
}

} // namespace
