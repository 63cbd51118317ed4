// TS 38.211 Tables 7.4.1.1.2-3 and -4 (PDSCH), 6.4.1.1.3-3, -4 and -6 (PUSCH): a column a string, its cells by rising
// l_d from 1, positions as hexadecimal digits, 0 for l_0, a dot for none.
#include "receiver/tables/dmrs_positions.h"

#include <array>
#include <string_view>

namespace nr_test
{

namespace
{

// Single symbol of type A and B, double symbol of type A and B; additional position 0 to 3, or to 1.
// clang-format off
constexpr std::array<std::array<std::string_view, 4>, 4> k_pdsch = {{
    {". . 0 0 0 0 0 0 0 0 0 0 0 0",
     ". . 0 0 0 0 0 07 07 09 09 09 0b 0b",
     ". . 0 0 0 0 0 07 07 069 069 069 07b 07b",
     ". . 0 0 0 0 0 07 07 069 069 058b 058b 058b"},
    {". 0 0 0 0 0 0 0 0 0 0 0 0 .",
     ". 0 0 0 04 04 04 06 07 07 08 09 09 .",
     ". 0 0 0 04 04 04 036 047 047 048 059 059 .",
     ". 0 0 0 04 04 04 036 047 047 0369 0369 0369 ."},
    {". . . 0 0 0 0 0 0 0 0 0 0 0",
     ". . . 0 0 0 0 0 0 08 08 08 0a 0a"},
    {". . . . 0 0 0 0 0 0 0 0 0 .",
     ". . . . 0 0 0 05 05 07 07 08 08 ."},
}};
constexpr std::array<std::array<std::string_view, 4>, 4> k_pusch = {{
    {". . . 0 0 0 0 0 0 0 0 0 0 0",
     ". . . 0 0 0 0 07 07 09 09 09 0b 0b",
     ". . . 0 0 0 0 07 07 069 069 069 07b 07b",
     ". . . 0 0 0 0 07 07 069 069 058b 058b 058b"},
    {"0 0 0 0 0 0 0 0 0 0 0 0 0 0",
     "0 0 0 0 04 04 04 06 06 08 08 0a 0a 0a",
     "0 0 0 0 04 04 04 036 036 048 048 05a 05a 05a",
     "0 0 0 0 04 04 04 036 036 0369 0369 0369 0369 0369"},
    {". . . 0 0 0 0 0 0 0 0 0 0 0",
     ". . . 0 0 0 0 0 0 08 08 08 0a 0a"},
    {". . . . 0 0 0 0 0 0 0 0 0 0",
     ". . . . 0 0 0 05 05 07 07 09 09 09"},
}};

// Type A with l_0 2, with 3, type B; additional position 0 and 1; first hop and second, whose positions count from its
// start.
constexpr std::array<std::array<std::array<std::string_view, 2>, 2>, 3> k_pusch_hopping = {{
    {{{". . . 2 2 2 2", ". . . 0 0 0 0"},
      {". . . 2 2 2 26", ". . . 0 04 04 04"}}},
    {{{". . . 3 3 3 3", ". . . 0 0 0 0"},
      {". . . 3 3 3 3", ". . . 0 04 04 04"}}},
    {{{"0 0 0 0 0 0 0", "0 0 0 0 0 0 0"},
      {"0 0 0 0 04 04 04", "0 0 0 0 04 04 04"}}},
}};
// clang-format on

std::vector<unsigned int> cell(std::string_view column, unsigned int length, unsigned int l0)
{
    while (length-- > 1)
        column.remove_prefix(column.find(' ') + 1);
    std::vector<unsigned int> positions;
    for (const char digit : column.substr(0, column.find(' ')))
        if (digit != '.')
            positions.push_back(digit == '0' ? l0 : static_cast<unsigned int>(digit - (digit < 'a' ? '0' : 'a' - 10)));
    return positions;
}

} // namespace

std::vector<unsigned int> dmrs_positions(bool is_uplink, bool is_double, bool is_type_b, unsigned int additional,
                                         unsigned int length, unsigned int l0)
{
    const auto& columns = (is_uplink ? k_pusch : k_pdsch)[(is_double ? 2 : 0) + (is_type_b ? 1 : 0)];
    return cell(columns[is_double && additional > 1 ? 0 : additional], length, l0);
}

std::vector<unsigned int> dmrs_positions_of_hop(bool is_type_b, bool is_additional, unsigned int hop,
                                                unsigned int length, unsigned int l0)
{
    return cell(k_pusch_hopping[is_type_b ? 2 : l0 - 2][is_additional ? 1 : 0][hop], length, 0);
}

} // namespace nr_test
