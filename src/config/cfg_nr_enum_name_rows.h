#pragma once

#include <cstddef>
#include <map>
#include <string>

// How a name table is made from its rows. For the tables' sources alone.

namespace vek::nr_mod_lib
{

template <class enum_t>
struct enum_name_t
{
    enum_t value;
    const char* name;
};

template <class enum_t, std::size_t count>
std::map<enum_t, std::string> name_map(const enum_name_t<enum_t> (&rows)[count])
{
    std::map<enum_t, std::string> names;
    for (const enum_name_t<enum_t>& row : rows)
        names.emplace(row.value, row.name);
    return names;
}

} // namespace vek::nr_mod_lib
