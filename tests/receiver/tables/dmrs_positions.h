#pragma once

#include <vector>

namespace nr_test
{

/// DMRS positions of a shared channel of length l_d, 1 to 14; of double symbols the first ones. Type B counts from the
/// start of the allocation, with l_0 0.
std::vector<unsigned int> dmrs_positions(bool is_uplink, bool is_double, bool is_type_b, unsigned int additional,
                                         unsigned int length, unsigned int l0);
/// The same of a hop of 1 to 7 symbols; those of the second one, 1, count from its start.
std::vector<unsigned int> dmrs_positions_of_hop(bool is_type_b, bool is_additional, unsigned int hop,
                                                unsigned int length, unsigned int l0);

} // namespace nr_test
