#include "common/lib_prbs_code.h"

#include "common/lib_bit_packing.h"

#include <algorithm>
#include <bit>

namespace vek::common_lib
{

namespace
{

constexpr unsigned int k_longest_register = 32;
constexpr std::uint64_t k_itu_pn9 = (1u << 9) | (1u << 4); // ITU-T O.150, 511 bits
constexpr unsigned int k_all_ones = 0xFFFFFFFFu;

constexpr std::uint64_t low_bits(unsigned int count)
{
    return count < 64 ? (std::uint64_t{1} << count) - 1 : ~std::uint64_t{0};
}

/// A register and its feedback, without the constant term and the highest one.
struct recursion_t
{
    explicit recursion_t(std::uint64_t polynomial) : degree(static_cast<unsigned int>(std::bit_width(polynomial)) - 1)
    {
        for (unsigned int exponent = 1; exponent < degree; ++exponent)
            if ((polynomial >> exponent) & 1u)
                inner_taps.push_back(exponent);
    }

    unsigned int degree;
    std::vector<unsigned int> inner_taps;
};

/// Writes the first bits of the sequence, as many as the words needed hold, but no more than one word for each stage of
/// the register. A step gives as many bits as the state alone decides.
void run_register(const recursion_t& recursion, std::uint64_t state, std::vector<std::uint64_t>& words,
                  std::size_t bits)
{
    const unsigned int degree = recursion.degree;
    const unsigned int step = degree - (recursion.inner_taps.empty() ? 0 : recursion.inner_taps.back());
    words[0] = state;
    for (std::size_t position = degree; position < bits; position += step) {
        std::uint64_t fresh = state;
        for (const unsigned int tap : recursion.inner_taps)
            fresh ^= state >> tap;
        fresh &= low_bits(step);
        state = (state | fresh << degree) >> step;

        const std::size_t word = position / 64;
        const unsigned int shift = position % 64;
        words[word] |= fresh << shift;
        if (shift + step > 64)
            words[word + 1] |= fresh >> (64 - shift);
    }
}

} // namespace

lib_prbs_code_t::lib_prbs_code_t()
    : m_custom_primitive_polynomial_enable(false), m_primitive_polynomial(k_itu_pn9), m_seed(k_all_ones)
{}

void lib_prbs_code_t::set_custom_primitive_polynomial_enable(bool enable)
{
    m_custom_primitive_polynomial_enable = enable;
}

void lib_prbs_code_t::set_prbs_primitive_polynomial(const std::vector<unsigned int>& taps)
{
    std::uint64_t polynomial = 0;
    for (const unsigned int exponent : taps) {
        if (exponent > k_longest_register)
            return;
        polynomial ^= std::uint64_t{1} << exponent;
    }
    polynomial &= ~std::uint64_t{1};
    if (polynomial != 0)
        m_primitive_polynomial = polynomial;
}

void lib_prbs_code_t::set_prbs_seed(unsigned int state) { m_seed = state; }

void lib_prbs_code_t::set_prbs_seed_to_default() { m_seed = k_all_ones; }

unsigned int lib_prbs_code_t::generate_prbs_code(unsigned int n, std::vector<unsigned char>& bits) const
{
    std::vector<std::uint64_t> words;
    const unsigned int state = generate_prbs_words(n, words);
    bits.resize(n);
    unpack_bits(words.data(), n, bits.data());
    return state;
}

unsigned int lib_prbs_code_t::generate_prbs_words(unsigned int n, std::vector<std::uint64_t>& words) const
{
    const recursion_t recursion(m_custom_primitive_polynomial_enable ? m_primitive_polynomial : k_itu_pn9);
    const std::size_t degree = recursion.degree;
    const std::size_t needed = std::size_t{n} + degree; // the state behind the last bit included
    const std::size_t word_count = needed / 64 + 1;

    // A polynomial over two elements has p(x)^64 = p(x^64), so the recursion of the bits is that of whole words as
    // well.
    words.assign(std::max(word_count, degree) + 1, 0);
    run_register(recursion, m_seed & low_bits(recursion.degree), words, std::min(needed, 64 * degree));
    for (std::size_t i = 0; i + degree < word_count; ++i) {
        std::uint64_t word = words[i];
        for (const unsigned int tap : recursion.inner_taps)
            word ^= words[i + tap];
        words[i + degree] = word;
    }
    return static_cast<unsigned int>(read_packed_bits(words.data(), n) & low_bits(recursion.degree));
}

} // namespace vek::common_lib
