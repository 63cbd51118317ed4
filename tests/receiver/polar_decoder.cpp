#include "receiver/polar_decoder.h"

#include "phy_common/tables/polar_tables.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace nr_test
{

namespace
{

constexpr double k_certain = 1e30;

bool is_puncturing(const polar_block_t& block) { return static_cast<double>(block.K) / block.E <= 7.0 / 16.0; }

unsigned int mother_code_length(const polar_block_t& block)
{
    const double log2_e = std::ceil(std::log2(block.E));
    const bool lower =
        block.E <= 9.0 / 8.0 * std::exp2(log2_e - 1.0) && static_cast<double>(block.K) / block.E < 9.0 / 16.0;
    const double n1 = lower ? log2_e - 1.0 : log2_e;
    const double n2 = std::ceil(std::log2(block.K * 8.0));
    return 1u << static_cast<unsigned int>(std::max(std::min({n1, n2, static_cast<double>(block.n_max)}), 5.0));
}

// Ones in a row of the n-th Kronecker power of (1 0; 1 1): the product of the weights of the rows that make it up.
unsigned int row_weight(unsigned int row) { return row == 0 ? 1u : (row % 2 == 1 ? 2u : 1u) * row_weight(row / 2); }

// The order in which the coded bits leave the triangular interleaver of clause 5.4.1.3.
std::vector<unsigned int> coded_bit_order(const polar_block_t& block)
{
    unsigned int side = 0;
    while (side * (side + 1) / 2 < block.E)
        ++side;
    std::vector<std::vector<int>> triangle(side, std::vector<int>(side, -1));
    int next = 0;
    for (unsigned int row = 0; row < side; ++row)
        for (unsigned int column = 0; column < side - row && next < static_cast<int>(block.E); ++column)
            triangle[row][column] = next++;
    std::vector<unsigned int> order;
    for (unsigned int column = 0; column < side; ++column)
        for (unsigned int row = 0; row < side; ++row)
            if (triangle[row][column] >= 0)
                order.push_back(static_cast<unsigned int>(triangle[row][column]));
    return order;
}

// Decides u(0) to u(N-1) one after the other; what is decided already makes the rest surer.
class successive_cancellation_t
{
public:
    explicit successive_cancellation_t(const polar_construction_t& code) : m_code(code) {}

    /// Returns the code word that the decisions amount to.
    std::vector<unsigned char> decode(const std::vector<double>& soft)
    {
        const std::size_t half = soft.size() / 2;
        if (half == 0)
            return {decide(soft[0])};
        // A code word is (a + b, b), a from the first half of u, b from the second.
        std::vector<double> combined(half);
        for (std::size_t i = 0; i < half; ++i) {
            const double magnitude = std::min(std::fabs(soft[i]), std::fabs(soft[i + half]));
            combined[i] = (soft[i] < 0) == (soft[i + half] < 0) ? magnitude : -magnitude;
        }
        const std::vector<unsigned char> a = decode(combined);
        for (std::size_t i = 0; i < half; ++i)
            combined[i] = soft[i + half] + (a[i] != 0 ? -soft[i] : soft[i]);
        const std::vector<unsigned char> b = decode(combined);
        std::vector<unsigned char> word(a);
        for (std::size_t i = 0; i < half; ++i)
            word[i] ^= b[i];
        word.insert(word.end(), b.begin(), b.end());
        return word;
    }

    const std::vector<unsigned char>& input_bits() const { return m_input_bits; }

private:
    unsigned char decide(double soft)
    {
        const std::size_t n = m_next++;
        std::rotate(m_register.begin(), m_register.begin() + 1, m_register.end());
        if (m_code.is_frozen[n])
            return 0;
        if (m_code.is_parity[n])
            return m_register[0];
        const unsigned char bit = soft < 0 ? 1 : 0;
        m_register[0] ^= bit;
        m_input_bits.push_back(bit);
        return bit;
    }

    const polar_construction_t& m_code;
    std::size_t m_next = 0;
    std::vector<unsigned char> m_register = std::vector<unsigned char>(5, 0);
    std::vector<unsigned char> m_input_bits;
};

} // namespace

polar_construction_t construct_polar_code(const polar_block_t& block)
{
    const unsigned int N = mother_code_length(block);
    const unsigned int E = block.E;
    std::vector<bool> dropped(N, false);
    if (E < N) {
        const std::vector<unsigned int> J = polar_subblock_interleaver(N);
        if (is_puncturing(block)) {
            for (unsigned int n = 0; n < N - E; ++n)
                dropped[J[n]] = true;
            const double limit = E >= 0.75 * N ? std::ceil(0.75 * N - E / 2.0) : std::ceil(9.0 * N / 16.0 - E / 4.0);
            for (unsigned int n = 0; n < limit; ++n)
                dropped[n] = true;
        }
        else
            for (unsigned int n = E; n < N; ++n)
                dropped[J[n]] = true;
    }

    std::vector<unsigned int> chosen; // ascending reliability
    for (const unsigned int index : vek::nr_mod_lib::polar_reliability_sequence())
        if (index < N && !dropped[index])
            chosen.push_back(index);
    const std::size_t wanted = std::size_t{block.K} + block.n_pc;
    if (chosen.size() < wanted)
        throw std::invalid_argument("more bits than the polar code has places");
    chosen.erase(chosen.begin(), chosen.end() - static_cast<std::ptrdiff_t>(wanted));

    polar_construction_t code{N, std::vector<bool>(N, true), std::vector<bool>(N, false)};
    for (const unsigned int index : chosen)
        code.is_frozen[index] = false;
    for (unsigned int i = 0; i < block.n_pc - block.n_pc_wm; ++i)
        code.is_parity[chosen[i]] = true;
    // Of the K most reliable ones, those of least weight, and of these the most reliable.
    for (unsigned int placed = 0; placed < block.n_pc_wm; ++placed) {
        std::pair<unsigned int, unsigned int> best{~0u, 0};
        for (std::size_t i = wanted; i-- > block.n_pc;)
            if (!code.is_parity[chosen[i]] && row_weight(chosen[i]) < best.first)
                best = {row_weight(chosen[i]), chosen[i]};
        code.is_parity[best.second] = true;
    }
    return code;
}

std::vector<unsigned int> polar_input_interleaver(unsigned int K)
{
    constexpr unsigned int message_length = 140;
    constexpr unsigned int crc_length = 24;
    constexpr unsigned long polynomial = 0x1B2B117; // CRC24C
    // remainder[i]: what message bit i adds to the parity bits, the first parity bit highest.
    std::vector<unsigned long> remainder(message_length);
    unsigned long power = 1;
    for (unsigned int degree = 0; degree < message_length + crc_length; ++degree) {
        if (degree >= crc_length)
            remainder[message_length - 1 - (degree - crc_length)] = power;
        power <<= 1;
        if ((power >> crc_length & 1u) != 0)
            power ^= polynomial;
    }
    std::vector<unsigned int> pattern;
    std::vector<bool> placed(message_length, false);
    for (unsigned int parity = 0; parity < crc_length; ++parity) {
        for (unsigned int i = 0; i < message_length; ++i)
            if (!placed[i] && (remainder[i] >> (crc_length - 1 - parity) & 1u) != 0) {
                placed[i] = true;
                pattern.push_back(i);
            }
        pattern.push_back(message_length + parity);
    }
    // A shorter message lacks the first bits of the longest one.
    const auto longest = static_cast<unsigned int>(pattern.size());
    std::vector<unsigned int> result;
    for (const unsigned int place : pattern)
        if (place + K >= longest)
            result.push_back(place + K - longest);
    return result;
}

std::vector<unsigned int> polar_subblock_interleaver(unsigned int N)
{
    // The middle half is shuffled like two packs of cards; elsewhere two pairs change places.
    std::vector<unsigned int> blocks(32);
    for (unsigned int i = 0; i < 32; ++i)
        blocks[i] = i < 8 || i >= 24 ? i : 8 + (i - 8) / 2 + (i % 2) * 8;
    std::swap(blocks[3], blocks[4]);
    std::swap(blocks[27], blocks[28]);
    std::vector<unsigned int> J(N);
    for (unsigned int n = 0; n < N; ++n)
        J[n] = blocks[32 * n / N] * (N / 32) + n % (N / 32);
    return J;
}

std::vector<double> polar_rate_dematch(const polar_block_t& block, const std::vector<double>& soft_bits)
{
    const unsigned int N = mother_code_length(block);
    std::vector<double> selected(soft_bits);
    if (block.coded_bit_interleaving) {
        const std::vector<unsigned int> order = coded_bit_order(block);
        for (std::size_t k = 0; k < order.size(); ++k)
            selected[order[k]] = soft_bits[k];
    }
    const bool puncturing = is_puncturing(block);
    std::vector<double> interleaved(N, block.E < N && !puncturing ? k_certain : 0.0);
    for (unsigned int k = 0; k < block.E; ++k) {
        if (block.E >= N)
            interleaved[k % N] += selected[k];
        else if (puncturing)
            interleaved[k + N - block.E] = selected[k];
        else
            interleaved[k] = selected[k];
    }
    const std::vector<unsigned int> J = polar_subblock_interleaver(N);
    std::vector<double> word(N);
    for (unsigned int n = 0; n < N; ++n)
        word[J[n]] = interleaved[n];
    return word;
}

std::vector<unsigned char> polar_decode(const polar_block_t& block, const std::vector<double>& soft_bits)
{
    const polar_construction_t code = construct_polar_code(block);
    successive_cancellation_t decoder(code);
    decoder.decode(polar_rate_dematch(block, soft_bits));
    std::vector<unsigned char> bits = decoder.input_bits();
    if (block.input_interleaving) {
        const std::vector<unsigned int> order = polar_input_interleaver(block.K);
        const std::vector<unsigned char> interleaved = bits;
        for (std::size_t k = 0; k < order.size(); ++k)
            bits[order[k]] = interleaved[k];
    }
    return bits;
}

} // namespace nr_test
