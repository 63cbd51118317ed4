#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <vector>

namespace vek::common_lib
{

/// Generic steps on vectors: adding with an offset, cyclic shifts, joining, splitting, unpacking of bits.
class lib_common_container_t
{
public:
    /// target[offset + i] += source[i]. What falls behind the target's end is dropped, never wrapped.
    template <typename value_t>
    static void deal_data_addition(const std::vector<value_t>& source, std::vector<value_t>& target, std::size_t offset)
    {
        if (offset >= target.size())
            return;
        const std::size_t count = std::min(source.size(), target.size() - offset);
        for (std::size_t i = 0; i < count; ++i)
            target[offset + i] = static_cast<value_t>(target[offset + i] + source[i]);
    }

    /// A positive shift brings the last elements to the front, a negative one the first elements to the back. An empty
    /// vector, and a shift beyond the vector's size, print a line and change nothing.
    template <typename value_t>
    static void deal_cyclic_shift(int shift, std::vector<value_t>& values)
    {
        if (values.empty()) {
            std::cout << "lib_common_container_t::deal_cyclic_shift Report : Empty Vector!" << std::endl;
            return;
        }
        const std::int64_t size = static_cast<std::int64_t>(values.size());
        const std::int64_t wide_shift = shift;
        if (wide_shift > size || wide_shift < -size) {
            std::cout << "lib_common_container_t::deal_cyclic_shift Report : Shift Offset Out of Range!" << std::endl;
            return;
        }
        if (wide_shift != 0)
            std::rotate(values.begin(), values.begin() + (wide_shift > 0 ? size - wide_shift : -wide_shift),
                        values.end());
    }

    /// The parts, one behind the other.
    template <typename value_t>
    static void combine_vector(const std::vector<std::vector<value_t>>& parts, std::vector<value_t>& combined)
    {
        std::size_t size = 0;
        for (const auto& part : parts)
            size += part.size();
        combined.clear();
        combined.reserve(size);
        for (const auto& part : parts)
            combined.insert(combined.end(), part.begin(), part.end());
    }

    /// Equal parts in order. Where the size is not a multiple of their number: a printed line, no parts, false.
    template <typename value_t>
    static bool split_vector(unsigned int part_count, const std::vector<value_t>& values,
                             std::vector<std::vector<value_t>>& parts)
    {
        parts.clear();
        if (part_count == 0 || values.size() % part_count != 0) {
            std::cout << "lib_common_container_t::split_vector Report : Divide in equal is Impossible!" << std::endl;
            return false;
        }
        const std::ptrdiff_t part_size = static_cast<std::ptrdiff_t>(values.size() / part_count);
        parts.reserve(part_count);
        for (auto begin = values.begin(); parts.size() < part_count; begin += part_size)
            parts.emplace_back(begin, begin + part_size);
        return true;
    }

    /// The lowest `bit_count` bits of a value, most significant first; zeros lead where more than 32 are asked for.
    static void extract_bit_data(unsigned int value, unsigned int bit_count, std::vector<unsigned char>& bits)
    {
        bits.assign(bit_count, 0);
        for (unsigned int i = 0; i < std::min(bit_count, 32U); ++i)
            bits[bit_count - 1 - i] = static_cast<unsigned char>((value >> i) & 1U);
    }
};

} // namespace vek::common_lib
