#include "phy_common/lib_nr_pn_payload.h"

#include "receiver/bits.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::bits_t;

TEST(lib_nr_pn_payload, sequences_run_on_from_call_to_call_and_from_stream_to_stream)
{
    for (unsigned int source = LIB_NR_PN9_ITU; source <= 6; ++source) {
        if (source == LIB_NR_USER_CFG)
            continue;
        const bool is_known = source <= LIB_NR_PN23;
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
        EXPECT_EQ(all, nr_test::data_source_t(is_known ? source : 0).take(all.size())) << source;
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
