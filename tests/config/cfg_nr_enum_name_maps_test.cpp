#include "config/cfg_nr_enum_name_maps.h"

#include "common/lib_xml_common.h"

#include <gtest/gtest.h>

#include <set>

namespace
{

using namespace vek::nr_mod_lib;

// That every enumerator has its own name is checked against the headers by tests/project/enum_names.py.
template <class enum_t>
void expect_names_lead_back(const std::map<enum_t, std::string>& names)
{
    using xml_t = vek::common_lib::lib_xml_common_t;
    ASSERT_FALSE(names.empty());
    std::set<std::string> seen;
    for (const auto& [value, name] : names) {
        EXPECT_TRUE(seen.insert(name).second) << name << " stands for two values";
        EXPECT_EQ(xml_t::get_enum_value(names, name), value) << name;
        EXPECT_EQ(&enum_name_map(value), &names) << name;
    }
    EXPECT_EQ(xml_t::get_enum_value(names, "NO_SUCH_NAME"), names.begin()->first);
}

TEST(cfg_nr_enum_name_maps, names_and_values_are_one_to_one)
{
    expect_names_lead_back(g_lib_nr_dl_dci_reg_bundle_size_t_name_map);
    expect_names_lead_back(g_lib_nr_channel_bw_type_t_name_map);
    expect_names_lead_back(g_prach_scs_type_t_name_map);
    expect_names_lead_back(g_lib_nr_dl_codewords_size_t_name_map);
    expect_names_lead_back(g_lib_nr_transmission_periodicity_t_name_map);
}

TEST(cfg_nr_enum_name_maps, an_unknown_name_falls_back_to_the_least_value)
{
    using xml_t = vek::common_lib::lib_xml_common_t;
    EXPECT_EQ(xml_t::get_enum_value(g_lib_ssb_periodicity_t_name_map, ""), LIB_NR_SSB_5MS_PERIODICITY);
    EXPECT_EQ(xml_t::get_enum_value(g_lib_nr_lmax_t_name_map, "4"), LIB_NR_LMAX_4);
    EXPECT_EQ(xml_t::get_enum_value(g_lib_nr_dl_dci_reg_bundle_size_t_name_map, "x"), LIB_NR_DCI_REG_BUNDLE_SIZE_2);
    EXPECT_EQ(xml_t::get_enum_value(g_prach_lra_type_t_name_map, "x"), PRACH_LRA_139);
}

} // namespace
