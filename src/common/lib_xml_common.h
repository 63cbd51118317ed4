#pragma once

#include "common/nr_mod_lib_export.h"

#include <pugixml.hpp>

#include <cstdint>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace vek::common_lib
{

/// The radio standards whose settings a host can hold side by side.
enum plib_protocol_type_t : std::uint32_t
{
    PLIB_PROTOCOL_NR = 12,
};

/// What every settings tree shares: protocol names, enumerators by name, lists of enumerators.
class NR_MOD_LIB_EXPORT lib_xml_common_t
{
public:
    /// "NR" for `PLIB_PROTOCOL_NR`; an empty text for a type without a name.
    static std::string get_protocol_name(plib_protocol_type_t type);

    /// The inverse. False, and `type` untouched, for any other text.
    static bool get_protocol_type(const std::string& name, plib_protocol_type_t& type);

    /// The smallest enumerator of that name, case included; the table's first where there is none. An empty table
    /// prints "lib_xml_common_t::get_enum_value Warning : Empty enum string mapping!" and gives the value 0.
    template <class enum_t>
    static enum_t get_enum_value(const std::map<enum_t, std::string>& names, const std::string& text)
    {
        if (names.empty()) {
            std::cout << "lib_xml_common_t::get_enum_value Warning : Empty enum string mapping!" << std::endl;
            return static_cast<enum_t>(0);
        }
        for (const auto& [value, name] : names)
            if (name == text)
                return value;
        return names.begin()->first;
    }

    /// Appends an element with the attribute type="vector" and one child `i` per entry, whose text is the name of the
    /// enumerator. A value without a name raises std::out_of_range and leaves the element part-written.
    template <class enum_t>
    static void save_vector(pugi::xml_node parent, const std::string& element, const std::vector<enum_t>& values,
                            const std::map<enum_t, std::string>* names)
    {
        pugi::xml_node node = parent.append_child(element.c_str());
        node.append_attribute("type").set_value("vector");
        for (const enum_t value : values)
            node.append_child("i").text().set(names->at(value).c_str());
    }

    /// The list of the named child, each child `i` looked up by `get_enum_value`; empty where the element is missing.
    template <class enum_t>
    static std::vector<enum_t> recall_vector(const pugi::xml_node& parent, const std::string& element,
                                             const std::map<enum_t, std::string>* names)
    {
        std::vector<enum_t> values;
        for (const pugi::xml_node& entry : parent.child(element.c_str()).children("i"))
            values.push_back(get_enum_value(*names, entry.text().as_string()));
        return values;
    }
};

} // namespace vek::common_lib
