#pragma once

#include <cstddef>
#include <vector>

namespace vek::nr_mod_lib
{

// How low-PAPR sequences and their cyclic shifts hop, TS 38.211 clauses 6.3.2.2, 6.4.1.1.1.2 and 6.4.1.4.2. The
// channels differ in the Gold sequence that they draw from and in what they count: symbols of the frame, or its hops.

/// Groups of sequences, u.
constexpr unsigned int k_low_papr_groups = 30;

/// Values of eight bits each, the first bit lowest: c(8 first) and on, `count` values. Cyclic shifts hop so.
std::vector<unsigned int> get_hopping_values(unsigned int c_init, std::size_t first, std::size_t count);
/// f_gh, 0 to 29, by which a group hops.
unsigned int get_group_hop(unsigned int c_init, std::size_t index);
/// v, 0 or 1, the number of a sequence that hops within its group.
unsigned int get_sequence_number(unsigned int c_init, std::size_t index);
/// u of an identity, moved by f_gh.
constexpr unsigned int get_sequence_group(unsigned int n_id, unsigned int group_hop)
{
    return (n_id % k_low_papr_groups + group_hop) % k_low_papr_groups;
}

} // namespace vek::nr_mod_lib
