#include "config/cfg_nr_carrier.h"

#include "support/pdsch_run.h"
#include "support/preset_choices.h"
#include "support/settings.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;
using nr_test::steps_t;

// TS 38.101-1 annex A.3: QPSK at 15 kHz in FDD, 5 to 50 MHz.
TEST(cfg_nr_dl_frc_deal, qpsk_has_the_published_sizes)
{
    const std::pair<const char*, std::size_t> sizes[] = {{"5M", 1672},  {"10M", 3368},  {"15M", 5120},  {"20M", 6912},
                                                         {"25M", 8712}, {"30M", 10504}, {"40M", 14088}, {"50M", 17424}};
    for (const auto& [bandwidth, size] : sizes) {
        nr_test::waveform_of_t waveform(nr_test::preset_steps(
            "dl_frc", {std::string("bandwidth=LIB_NR_CHANNEL_FR1_") + bandwidth, "numerolgy=LIB_NR_SCS_15K"}));
        EXPECT_EQ(transport_block_size(nr_test::pdsch_channel(waveform.get_waveform_manager().get_carrier(0), 0)), size)
            << bandwidth;
    }
}

// Every channel, in the narrowest band of each spacing: the second frame's blocks are those of PN9, through all that
// stands in their way.
TEST(cfg_nr_dl_frc_deal, every_channel_is_decoded)
{
    std::set<std::string> met;
    for (const bool ntn : {false, true})
        for (const steps_t& steps : nr_test::every_choice(
                 {"dl_frc",
                  {{"fixed_reference_channels", {}}, {"bandwidth", {}}, {"numerolgy", {}}, {"duplex_type", {}}}},
                 ntn))
        {
            if (!met.insert(steps[1] + steps[3] + steps[4]).second)
                continue;
            SCOPED_TRACE(testing::PrintToString(steps));
            nr_test::waveform_of_t waveform(steps);
            waveform.get_carrier(0)->set_baseband_filter(false);
            nr_test::pdsch_run_t run(waveform);
            const nr_test::sch_channel_t channel = run.channel(0);
            const unsigned int slots = 10u << waveform.get_carrier(0)->get_numerology();
            nr_test::data_source_t source(LIB_NR_PN9);
            unsigned int received_slots = 0;
            for (const unsigned int slot : channel.settings.get_slot_allocation_v()) {
                if ((ntn && slot < slots) || received_slots++ > 2)
                    continue;
                const nr_test::sch_slot_t received = run.receive(0, slot % slots, 1);
                ASSERT_LT(received.error, 1e-6) << slot;
                ASSERT_EQ(nr_test::decode_sch({channel}, {received}), source.take(transport_block_size(channel)))
                    << slot;
            }
        }
    EXPECT_EQ(met.size(), 40u);
}

TEST(cfg_nr_dl_frc_deal, slots_block_and_csirs_are_those_of_mode_and_spacing)
{
    struct row_t
    {
        bool ntn;
        steps_t settings;
        const char* pdsch;
        const char* csirs; // slots and symbols
        const char* block; // resource block, k_SSB and period
    };
    const std::string fr2 = "fixed_reference_channels=LIB_NR_DL_FRC_FR2_QPSK";
    const std::string narrow = "bandwidth=LIB_NR_CHANNEL_FR1_5M";
    const std::string three_of_five = "1,2,5:7,10:12,15:17,20:22,25:27,30:32,35:37";
    const std::string more = three_of_five + ",40:42,45:47,50:52,55:57,60:62,65:67,70:72,75:77";
    const row_t rows[] = {
        {false, {}, "3:6,10:16", "1/6 1/10 2/6 2/10 ", "253/0/10"},
        {false, {narrow, "numerolgy=LIB_NR_SCS_15K"}, "2,5,6,7", "0/6 0/10 1/6 1/10 ", "2/6/10"},
        {false, {narrow, "duplex_type=LIB_NR_DUPLEX_TYPE_FDD"}, "3:19", "1/6 1/10 2/6 2/10 ", ""}, // 11 wide
        {false, {"numerolgy=LIB_NR_SCS_60K"}, "4:13,20:33", "2/6 2/10 3/6 3/10 ", ""},
        {false, {fr2, "numerolgy=LIB_NR_SCS_120K"}, more.c_str(), "80/8 80/12 ", "12/0/10"},
        {false, {fr2}, three_of_five.c_str(), "40/8 40/12 ", ""},
        {true, {}, "1:19", "10/6 10/10 11/6 11/10 ", "16/0/20"},
        {true,
         {"fixed_reference_channels=LIB_NR_NTN_FRC_FR2_A_3_2_1_3_3_QPSK"},
         "1:159",
         "80/6 80/10 81/6 81/10 ",
         "112/0/20"},
        {true, // slots 80 and 81 lie past two frames
         {"fixed_reference_channels=LIB_NR_NTN_FRC_FR2_A_3_2_1_2_1_QPSK"},
         more.c_str(),
         "0:4/6 0:4/10 0:4/6 0:4/10 ",
         ""},
    };
    for (const row_t& row : rows) {
        nr_test::waveform_of_t waveform(nr_test::preset_steps("dl_frc", row.settings, row.ntn));
        cfg_nr_carrier_t& carrier = *waveform.get_carrier(0);
        EXPECT_EQ(carrier.get_dl_pdsch(0)->get_slot_allocation(), row.pdsch);
        std::string csirs;
        for (unsigned int i = 0; i < carrier.get_dl_csirs_number(); ++i) {
            cfg_nr_dl_csirs_t& each = *carrier.get_dl_csirs(static_cast<int>(i));
            csirs += each.get_slot_allocation() + '/' + std::to_string(each.get_l0()) + ' ';
        }
        EXPECT_EQ(csirs, row.csirs) << row.pdsch;
        const cfg_nr_dl_ssb_t& ssb = *carrier.get_dl_ssb();
        const std::string block = std::to_string(ssb.get_rb_offset()) + '/' + std::to_string(ssb.get_kssb()) + '/' +
                                  std::to_string(ssb.get_periodicity());
        EXPECT_EQ(ssb.get_enable() ? block : "", row.block) << row.pdsch;
    }
}

} // namespace
