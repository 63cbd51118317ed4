#include "common/lib_xml_common.h"

#include "support/captured_output.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

using namespace vek::common_lib;

namespace
{

enum color_t : std::uint32_t
{
    RED = 3,
    GREEN = 5,
    BLUE = 9,
};

const std::map<color_t, std::string> k_names = {{BLUE, "same"}, {RED, "RED"}, {GREEN, "same"}};

} // namespace

TEST(lib_xml_common, protocol_names)
{
    EXPECT_EQ(static_cast<unsigned int>(PLIB_PROTOCOL_NR), 12u);
    EXPECT_EQ(lib_xml_common_t::get_protocol_name(PLIB_PROTOCOL_NR), "NR");
    EXPECT_EQ(lib_xml_common_t::get_protocol_name(static_cast<plib_protocol_type_t>(11)), "");
    const auto other = static_cast<plib_protocol_type_t>(7);
    plib_protocol_type_t type = other;
    for (const char* name : {"", "nr", "NR ", "12"})
        EXPECT_FALSE(lib_xml_common_t::get_protocol_type(name, type)) << name;
    EXPECT_EQ(type, other);
    EXPECT_TRUE(lib_xml_common_t::get_protocol_type("NR", type));
    EXPECT_EQ(type, PLIB_PROTOCOL_NR);
}

TEST(lib_xml_common, enumerators_by_name)
{
    const nr_test::captured_output_t output;
    EXPECT_EQ(lib_xml_common_t::get_enum_value(k_names, "same"), GREEN) << "the smaller of two";
    EXPECT_EQ(lib_xml_common_t::get_enum_value(k_names, "red"), RED) << "unknown: the first";
    EXPECT_EQ(output.text(), "");
    EXPECT_EQ(lib_xml_common_t::get_enum_value(std::map<color_t, std::string>(), "RED"), static_cast<color_t>(0));
    EXPECT_EQ(output.text(), "lib_xml_common_t::get_enum_value Warning : Empty enum string mapping!\n");
}

TEST(lib_xml_common, lists_of_enumerators)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("root");
    lib_xml_common_t::save_vector(root, "antenna_port", std::vector<color_t>{GREEN, RED, RED}, &k_names);
    lib_xml_common_t::save_vector(root, "none", std::vector<color_t>(), &k_names);
    std::ostringstream text;
    root.print(text, "", pugi::format_raw);
    EXPECT_EQ(text.str(), "<root><antenna_port type=\"vector\"><i>same</i><i>RED</i><i>RED</i></antenna_port>"
                          "<none type=\"vector\"/></root>");

    EXPECT_EQ(lib_xml_common_t::recall_vector(root, "antenna_port", &k_names), (std::vector<color_t>{GREEN, RED, RED}));
    EXPECT_TRUE(lib_xml_common_t::recall_vector(root, "none", &k_names).empty());
    EXPECT_TRUE(lib_xml_common_t::recall_vector(root, "missing", &k_names).empty());
    EXPECT_THROW(lib_xml_common_t::save_vector(root, "bad", std::vector<color_t>{static_cast<color_t>(4)}, &k_names),
                 std::out_of_range);
}
