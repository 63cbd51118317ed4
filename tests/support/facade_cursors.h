#pragma once

#include "common/lib_test_peer.h"

#include <utility>

namespace nr_test
{

/// Where a façade stands: carrier and entry.
using cursor_t = std::pair<unsigned int, unsigned int>;

} // namespace nr_test

namespace vek
{

/// The peer of every façade; a class of another kind has a specialisation of its own.
template <class facade_t>
struct test_peer_t
{
    static nr_test::cursor_t cursor(const facade_t& facade) { return {facade.m_carrier_index, facade.m_index}; }
    static const auto& target(const facade_t& facade) { return facade._target(); }
};

} // namespace vek

namespace nr_test
{

template <class facade_t>
cursor_t cursor_of(const facade_t* facade)
{
    return vek::test_peer_t<facade_t>::cursor(*facade);
}

/// What the façade stands on.
template <class facade_t>
const auto& target_of(const facade_t& facade)
{
    return vek::test_peer_t<facade_t>::target(facade);
}

} // namespace nr_test
