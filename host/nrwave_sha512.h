#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace nrwave
{

/// The hash SHA-512 of FIPS 180-4 of bytes that come piece by piece.
class sha512_t
{
public:
    void add(std::string_view bytes);
    /// In 128 small hexadecimal digits; nothing may be added behind it.
    std::string digest();

private:
    static constexpr std::size_t k_block = 128;

    void _take_block(const unsigned char* block);

    std::array<std::uint64_t, 8> m_state = {0x6a09e667f3bcc908, 0xbb67ae8584caa73b, 0x3c6ef372fe94f82b,
                                            0xa54ff53a5f1d36f1, 0x510e527fade682d1, 0x9b05688c2b3e6c1f,
                                            0x1f83d9abfb41bd6b, 0x5be0cd19137e2179};
    std::array<unsigned char, k_block> m_rest = {}; ///< that fills no block yet
    std::uint64_t m_bytes = 0;
};

} // namespace nrwave
