#include "phy_common/lib_nr_sequence_hopping.h"

#include "phy_common/lib_nr_sequence_generator.h"

#include <cstdint>

namespace vek::nr_mod_lib
{

std::vector<unsigned int> get_hopping_values(unsigned int c_init, std::size_t first, std::size_t count)
{
    constexpr std::size_t k_values_per_word = 8;
    std::vector<std::uint64_t> words((first + count + k_values_per_word - 1) / k_values_per_word);
    lib_nr_sequence_generator_t::generate_pseudo_random_words(c_init, words.size(), words.data());
    std::vector<unsigned int> values(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t index = first + i;
        const std::uint64_t word = words[index / k_values_per_word];
        values[i] = static_cast<unsigned int>(word >> index % k_values_per_word * 8 & 0xFFu);
    }
    return values;
}

unsigned int get_group_hop(unsigned int c_init, std::size_t index)
{
    return get_hopping_values(c_init, index, 1).front() % k_low_papr_groups;
}

unsigned int get_sequence_number(unsigned int c_init, std::size_t index)
{
    return get_hopping_values(c_init, index / 8, 1).front() >> index % 8 & 1u;
}

} // namespace vek::nr_mod_lib
