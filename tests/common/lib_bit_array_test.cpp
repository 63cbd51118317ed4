#include "common/lib_bit_array.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using vek::common_lib::lib_bit_array_t;

template <>
struct vek::test_peer_t<lib_bit_array_t>
{
    static unsigned int units() { return lib_bit_array_t::_get_widest_unit() + 1u; }
    static void pack(unsigned int unit, bool with_fillers, const std::vector<unsigned char>& bits, std::uint64_t* words)
    {
        const auto vector_unit = static_cast<lib_bit_array_t::vector_unit_t>(unit);
        if (with_fillers)
            lib_bit_array_t::_pack<true>(vector_unit, bits.data(), bits.size(), words);
        else
            lib_bit_array_t::_pack<false>(vector_unit, bits.data(), bits.size(), words);
    }
    static void unpack(unsigned int unit, const std::uint64_t* words, std::vector<unsigned char>& bits)
    {
        lib_bit_array_t::_unpack(static_cast<lib_bit_array_t::vector_unit_t>(unit), words, bits.size(), bits.data());
    }
};

namespace
{

using peer_t = vek::test_peer_t<lib_bit_array_t>;

// Every vector unit of this machine and the plain version, any bytes, whole words and rests.
TEST(lib_bit_array, every_vector_unit_packs_and_unpacks_alike)
{
    std::mt19937 random(1);
    for (unsigned int unit = 0; unit < peer_t::units(); ++unit)
        for (std::size_t count = 0; count < 300; ++count) {
            std::vector<unsigned char> bytes(count);
            for (unsigned char& byte : bytes)
                byte = static_cast<unsigned char>(random() % 3 == 0 ? 255 : random());
            for (const bool with_fillers : {false, true}) {
                std::vector<std::uint64_t> words((count + 63) / 64, ~std::uint64_t{0});
                peer_t::pack(unit, with_fillers, bytes, words.data());
                std::vector<unsigned char> expected(words.size() * 64);
                for (std::size_t i = 0; i < count; ++i)
                    expected[i] = with_fillers && bytes[i] == 255 ? 0 : bytes[i] & 1u;
                for (std::size_t i = 0; i < expected.size(); ++i)
                    ASSERT_EQ((words[i / 64] >> (i % 64)) & 1u, expected[i]) << unit << " " << count << " " << i;
                std::vector<unsigned char> unpacked(count, 7);
                peer_t::unpack(unit, words.data(), unpacked);
                expected.resize(count);
                ASSERT_EQ(unpacked, expected) << unit << " " << count;
            }
        }
}

} // namespace
