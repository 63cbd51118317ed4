#pragma once

#include <algorithm>
#include <cstdint>

namespace vek::nr_mod_lib
{

/// The resource blocks that a numerology or a bandwidth part keeps inside, and the fewest that it has of them.
struct lib_nr_rb_limits_t
{
    static constexpr unsigned int k_least = 6;

    unsigned int start;
    unsigned int size;

    /// A first resource block from the limits' own to the last one that leaves room for the fewest.
    unsigned int fit_start(unsigned int value) const
    {
        const std::uint64_t highest = _end() - std::min(k_least, size);
        return static_cast<unsigned int>(std::clamp<std::uint64_t>(value, start, highest));
    }
    /// A number of resource blocks within those from `first` on; the fewest where none are left.
    unsigned int fit_size(unsigned int value, unsigned int first) const
    {
        const std::uint64_t room = std::max(_end(), std::uint64_t{first} + k_least) - first;
        return static_cast<unsigned int>(std::clamp<std::uint64_t>(value, k_least, room));
    }

private:
    std::uint64_t _end() const { return std::uint64_t{start} + size; }
};

} // namespace vek::nr_mod_lib
