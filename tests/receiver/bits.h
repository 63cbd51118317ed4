#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nr_test
{

using bits_t = std::vector<unsigned char>;

/// The low `count` bits of a number, the highest first.
inline bits_t bits_of(unsigned long value, unsigned int count)
{
    bits_t bits(count);
    for (unsigned int i = 0; i < count; ++i)
        bits[i] = static_cast<unsigned char>(value >> (count - 1 - i) & 1u);
    return bits;
}

/// Remainder of the bits times x^L by long division; `divisor` is the polynomial, highest power first.
inline bits_t long_division(bits_t bits, const bits_t& divisor)
{
    const std::size_t length = divisor.size() - 1;
    const std::size_t message = bits.size();
    bits.resize(message + length, 0);
    for (std::size_t i = 0; i < message; ++i)
        if (bits[i] != 0)
            for (std::size_t j = 0; j <= length; ++j)
                bits[i + j] ^= divisor[j];
    return {bits.end() - static_cast<std::ptrdiff_t>(length), bits.end()};
}

/// Whether bits with their parity bits behind them leave no remainder; the polynomial includes its leading term.
inline bool passes_crc(const bits_t& bits, unsigned long polynomial, unsigned int length)
{
    const bits_t remainder = long_division(bits, bits_of(polynomial, length + 1));
    return std::count(remainder.begin(), remainder.end(), 0) == static_cast<std::ptrdiff_t>(length);
}

/// What a channel sends, as a stream: ITU-T O.150 and O.152 sequences that begin with ones, by their two taps in the
/// order of the settings, or the bits of the user, over and over.
class data_source_t
{
public:
    static constexpr unsigned int k_user = 5;
    explicit data_source_t(unsigned int source, bits_t user_bits = {0})
        : m_source(source), m_bits(source == k_user ? user_bits : bits_t(k_taps[source][0], 1))
    {}
    bits_t take(std::size_t count)
    {
        bits_t taken;
        for (; taken.size() < count; ++m_next) {
            if (m_source != k_user && m_next == m_bits.size())
                m_bits.push_back(m_bits[m_next - k_taps[m_source][0]] ^
                                 m_bits[m_next - k_taps[m_source][0] + k_taps[m_source][1]]);
            taken.push_back(m_bits[m_next % m_bits.size()]);
        }
        return taken;
    }

private:
    static constexpr std::size_t k_taps[5][2] = {{9, 4}, {9, 5}, {11, 2}, {15, 14}, {23, 5}};
    unsigned int m_source;
    bits_t m_bits;
    std::size_t m_next = 0;
};

} // namespace nr_test
