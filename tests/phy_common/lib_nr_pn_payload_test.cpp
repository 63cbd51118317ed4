#include "phy_common/lib_nr_pn_payload.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using bits_t = std::vector<unsigned char>;

/// Each bit from the two that the polynomial names, one by one.
bits_t sequence(unsigned int degree, unsigned int tap, std::size_t length)
{
    bits_t bits(degree, 1);
    while (bits.size() < length)
        bits.push_back(bits[bits.size() - degree] ^ bits[bits.size() - degree + tap]);
    bits.resize(length);
    return bits;
}

TEST(lib_nr_pn_payload, sequences_run_on_from_call_to_call_and_from_stream_to_stream)
{
    const std::vector<std::pair<unsigned int, unsigned int>> taps = {{9, 4}, {9, 5}, {11, 2}, {15, 14}, {23, 5}};
    for (unsigned int source = LIB_NR_PN9_ITU; source <= 6; ++source) {
        if (source == LIB_NR_USER_CFG)
            continue;
        const bool is_known = source < taps.size();
        const auto [degree, tap] = taps[is_known ? source : 0];
        bits_t all;
        lib_nr_pn_payload_t first(static_cast<lib_nr_pn_seq_t>(source));
        lib_nr_pn_payload_t second(static_cast<lib_nr_pn_seq_t>(source));
        for (const unsigned int length : {1u, 0u, 700u, 3u, 1300u}) {
            bits_t bits;
            EXPECT_EQ(first.generate(length, bits), is_known);
            all.insert(all.end(), bits.begin(), bits.end());
            second.set_seed(first.get_seed());
            EXPECT_EQ(second.generate_repeated(length, 5, bits), is_known) << "the position is for the user's bits";
            all.insert(all.end(), bits.begin(), bits.end());
            first.set_seed(second.get_seed());
        }
        EXPECT_EQ(all, sequence(degree, tap, all.size())) << source;
    }
}

TEST(lib_nr_pn_payload, user_bits_come_once_or_repeat)
{
    lib_nr_pn_payload_t payload(LIB_NR_USER_CFG, {1, 1, 0});
    bits_t bits;
    EXPECT_TRUE(payload.generate(5, bits));
    EXPECT_EQ(bits, bits_t({1, 1, 0, 0, 0}));
    EXPECT_TRUE(payload.generate(2, bits));
    EXPECT_EQ(bits, bits_t({1, 1})) << "from the first again";
    EXPECT_TRUE(payload.generate_repeated(5, 4, bits));
    EXPECT_EQ(bits, bits_t({1, 0, 1, 1, 0}));
    EXPECT_TRUE(lib_nr_pn_payload_t(LIB_NR_USER_CFG).generate_repeated(2, 1, bits));
    EXPECT_EQ(bits, bits_t({0, 0}));
    EXPECT_EQ(payload.get_seed(), 0xFFFFFFFFu) << "no sequence has run";
}

} // namespace
