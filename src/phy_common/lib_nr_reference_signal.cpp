#include "phy_common/lib_nr_reference_signal.h"

#include "phy_common/lib_nr_sequence_generator.h"

#include <array>
#include <cstdint>

namespace vek::nr_mod_lib
{

namespace
{

// The sum is taken modulo 2^32, of which 2^31 is a divisor.
constexpr unsigned int k_initial_value_mask = 0x7FFFFFFFu;

constexpr double k_amplitude = 1.0 / 1.4142135623730951;
// By c(2m) + 2 c(2m + 1).
constexpr std::array<std::complex<double>, 4> k_points = {{
    {k_amplitude, k_amplitude},
    {-k_amplitude, k_amplitude},
    {k_amplitude, -k_amplitude},
    {-k_amplitude, -k_amplitude},
}};

} // namespace

unsigned int lib_nr_dmrs_initial_value(unsigned int symbol_in_frame, unsigned int n_id, unsigned int n_scid,
                                       unsigned int group_term)
{
    const std::uint32_t high = (symbol_in_frame + 1) * (2 * n_id + 1) + group_term;
    return ((high << 17) + 2 * n_id + n_scid) & k_initial_value_mask;
}

unsigned int lib_nr_csirs_initial_value(unsigned int symbol_in_frame, unsigned int n_id)
{
    const std::uint32_t high = (symbol_in_frame + 1) * (2 * n_id + 1);
    return ((high << 10) + n_id) & k_initial_value_mask;
}

unsigned int lib_nr_prs_initial_value(unsigned int symbol_in_frame, unsigned int n_id)
{
    return ((n_id / 1024 << 22) + lib_nr_csirs_initial_value(symbol_in_frame, n_id % 1024)) & k_initial_value_mask;
}

void lib_nr_append_reference_signal(unsigned int c_init, std::size_t count, std::vector<std::complex<double>>& symbols)
{
    constexpr std::size_t k_symbols_per_word = 32;
    std::vector<std::uint64_t> words((count + k_symbols_per_word - 1) / k_symbols_per_word);
    lib_nr_sequence_generator_t::generate_pseudo_random_words(c_init, words.size(), words.data());
    const std::size_t first = symbols.size();
    symbols.resize(first + count);
    for (std::size_t m = 0; m < count; ++m)
        symbols[first + m] = k_points[words[m / k_symbols_per_word] >> (2 * (m % k_symbols_per_word)) & 3u];
}

} // namespace vek::nr_mod_lib
