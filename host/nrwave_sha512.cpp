#include "host/nrwave_sha512.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace nrwave
{

namespace
{

/// The fractional parts of the cube roots of the first 80 primes (FIPS 180-4 clause 4.2.3).
constexpr std::array<std::uint64_t, 80> k_rounds = {
    0x428a2f98d728ae22, 0x7137449123ef65cd, 0xb5c0fbcfec4d3b2f, 0xe9b5dba58189dbbc, 0x3956c25bf348b538,
    0x59f111f1b605d019, 0x923f82a4af194f9b, 0xab1c5ed5da6d8118, 0xd807aa98a3030242, 0x12835b0145706fbe,
    0x243185be4ee4b28c, 0x550c7dc3d5ffb4e2, 0x72be5d74f27b896f, 0x80deb1fe3b1696b1, 0x9bdc06a725c71235,
    0xc19bf174cf692694, 0xe49b69c19ef14ad2, 0xefbe4786384f25e3, 0x0fc19dc68b8cd5b5, 0x240ca1cc77ac9c65,
    0x2de92c6f592b0275, 0x4a7484aa6ea6e483, 0x5cb0a9dcbd41fbd4, 0x76f988da831153b5, 0x983e5152ee66dfab,
    0xa831c66d2db43210, 0xb00327c898fb213f, 0xbf597fc7beef0ee4, 0xc6e00bf33da88fc2, 0xd5a79147930aa725,
    0x06ca6351e003826f, 0x142929670a0e6e70, 0x27b70a8546d22ffc, 0x2e1b21385c26c926, 0x4d2c6dfc5ac42aed,
    0x53380d139d95b3df, 0x650a73548baf63de, 0x766a0abb3c77b2a8, 0x81c2c92e47edaee6, 0x92722c851482353b,
    0xa2bfe8a14cf10364, 0xa81a664bbc423001, 0xc24b8b70d0f89791, 0xc76c51a30654be30, 0xd192e819d6ef5218,
    0xd69906245565a910, 0xf40e35855771202a, 0x106aa07032bbd1b8, 0x19a4c116b8d2d0c8, 0x1e376c085141ab53,
    0x2748774cdf8eeb99, 0x34b0bcb5e19b48a8, 0x391c0cb3c5c95a63, 0x4ed8aa4ae3418acb, 0x5b9cca4f7763e373,
    0x682e6ff3d6b2b8a3, 0x748f82ee5defb2fc, 0x78a5636f43172f60, 0x84c87814a1f0ab72, 0x8cc702081a6439ec,
    0x90befffa23631e28, 0xa4506cebde82bde9, 0xbef9a3f7b2c67915, 0xc67178f2e372532b, 0xca273eceea26619c,
    0xd186b8c721c0c207, 0xeada7dd6cde0eb1e, 0xf57d4f7fee6ed178, 0x06f067aa72176fba, 0x0a637dc5a2c898a6,
    0x113f9804bef90dae, 0x1b710b35131c471b, 0x28db77f523047d84, 0x32caab7b40c72493, 0x3c9ebe0a15c9bebc,
    0x431d67c49c100d4c, 0x4cc5d4becb3e42b6, 0x597f299cfc657e2a, 0x5fcb6fab3ad6faec, 0x6c44198c4a475817};

std::uint64_t big_endian(const unsigned char* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    static_assert(std::endian::native == std::endian::little);
    return __builtin_bswap64(word);
}

std::uint64_t mixed(std::uint64_t x, int a, int b, int c)
{
    return std::rotr(x, a) ^ std::rotr(x, b) ^ std::rotr(x, c);
}

} // namespace

void sha512_t::add(std::string_view bytes)
{
    const auto* next = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t left = bytes.size();
    const std::size_t held = m_bytes % k_block;
    m_bytes += left;
    if (held != 0) {
        const std::size_t taken = std::min(left, k_block - held);
        std::copy_n(next, taken, m_rest.begin() + static_cast<std::ptrdiff_t>(held));
        next += taken;
        left -= taken;
        if (held + taken < k_block)
            return;
        _take_block(m_rest.data());
    }
    for (; left >= k_block; left -= k_block, next += k_block)
        _take_block(next);
    std::copy_n(next, left, m_rest.begin());
}

std::string sha512_t::digest()
{
    constexpr std::size_t k_length = 16; // bytes of the length at the end
    const std::uint64_t bits = m_bytes * 8;
    std::string end(k_block - (m_bytes + k_length) % k_block + k_length, '\0');
    end.front() = '\x80';
    for (std::size_t i = 0; i < sizeof bits; ++i)
        end[end.size() - 1 - i] = static_cast<char>(bits >> (8 * i) & 0xff);
    add(end);
    constexpr const char* k_digits = "0123456789abcdef";
    std::string text;
    for (const std::uint64_t word : m_state)
        for (int shift = 60; shift >= 0; shift -= 4)
            text += k_digits[word >> shift & 15];
    return text;
}

/// FIPS 180-4 clause 6.4.2, the message schedule kept to its last 16 words; the eight variables stay where they are
/// while their names go round.
void sha512_t::_take_block(const unsigned char* block)
{
    std::array<std::uint64_t, 16> w;
    for (std::size_t t = 0; t < w.size(); ++t)
        w[t] = big_endian(block + 8 * t);
    std::array<std::uint64_t, 8> v = m_state;
    for (std::size_t begin = 0; begin < k_rounds.size(); begin += w.size()) {
#pragma GCC unroll 16
        for (std::size_t t = 0; t < w.size(); ++t) {
            const auto at = [t](std::size_t variable) { return (variable + 16 - t) % 8; };
            if (begin > 0) {
                const std::uint64_t w15 = w[(t + 1) % 16];
                const std::uint64_t w2 = w[(t + 14) % 16];
                w[t] += (std::rotr(w15, 1) ^ std::rotr(w15, 8) ^ w15 >> 7) + w[(t + 9) % 16] +
                        (std::rotr(w2, 19) ^ std::rotr(w2, 61) ^ w2 >> 6);
            }
            const std::uint64_t a = v[at(0)], b = v[at(1)], c = v[at(2)];
            const std::uint64_t e = v[at(4)], f = v[at(5)], g = v[at(6)];
            const std::uint64_t t1 = v[at(7)] + mixed(e, 14, 18, 41) + (g ^ (e & (f ^ g))) + k_rounds[begin + t] + w[t];
            v[at(3)] += t1;
            v[at(7)] = t1 + mixed(a, 28, 34, 39) + ((a & b) | (c & (a | b)));
        }
    }
    for (std::size_t i = 0; i < v.size(); ++i)
        m_state[i] += v[i];
}

} // namespace nrwave
