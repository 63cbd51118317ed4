#include "common/lib_bit_packing.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace
{

// Every vector unit of this machine and the plain version, any bytes, whole words and rests.
TEST(lib_bit_packing, every_vector_unit_packs_and_unpacks_alike)
{
    std::mt19937 random(1);
    for (const auto& packer : vek::common_lib::detail::get_bit_packers())
        for (std::size_t count = 0; count < 300; ++count) {
            std::vector<unsigned char> bytes(count);
            for (unsigned char& byte : bytes)
                byte = static_cast<unsigned char>(random() % 3 == 0 ? 255 : random());
            for (const bool with_fillers : {false, true}) {
                std::vector<std::uint64_t> words((count + 63) / 64, ~std::uint64_t{0});
                (with_fillers ? packer.pack_with_fillers : packer.pack)(bytes.data(), count, words.data());
                std::vector<unsigned char> expected(words.size() * 64);
                for (std::size_t i = 0; i < count; ++i)
                    expected[i] = with_fillers && bytes[i] == 255 ? 0 : bytes[i] & 1u;
                for (std::size_t i = 0; i < expected.size(); ++i)
                    ASSERT_EQ((words[i / 64] >> (i % 64)) & 1u, expected[i]) << count << " " << i;
                std::vector<unsigned char> unpacked(count, 7);
                packer.unpack(words.data(), count, unpacked.data());
                expected.resize(count);
                ASSERT_EQ(unpacked, expected) << count;
            }
        }
}

} // namespace
