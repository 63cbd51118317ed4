#pragma once

#include "config/cfg_nr_enum_name_maps.h"

#include <cstddef>

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
enum_names_t<enum_t> name_map(const enum_name_t<enum_t> (&rows)[count])
{
    enum_names_t<enum_t> names;
    for (const enum_name_t<enum_t>& row : rows)
        names.emplace(row.value, row.name);
    return names;
}

} // namespace vek::nr_mod_lib
