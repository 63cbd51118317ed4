#pragma once

namespace vek
{

/// The one door by which a test reaches the private steps of a class: the class befriends its own specialisation, and
/// only the tests define specialisations.
template <class tested_t>
struct test_peer_t;

} // namespace vek
