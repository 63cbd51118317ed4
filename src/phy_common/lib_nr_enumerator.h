#pragma once

#include <algorithm>

// A host may cast any number into an enumeration. Settings keep what they are given; where a value becomes a number, a
// shift, an index or a divisor, one that no enumerator has counts as the first of them, unless a rule says otherwise.

namespace vek::nr_mod_lib
{

/// The value where it is on offer, otherwise the first one that is.
template <class list_t>
typename list_t::value_type offered_or_first(const typename list_t::value_type& value, const list_t& offered)
{
    return std::find(offered.begin(), offered.end(), value) != offered.end() ? value : *offered.begin();
}

/// The same for an enumeration that counts from 0 to a last enumerator.
template <class enum_t>
constexpr enum_t known_or_first(enum_t value, enum_t last)
{
    return value <= last ? value : enum_t{};
}

} // namespace vek::nr_mod_lib
