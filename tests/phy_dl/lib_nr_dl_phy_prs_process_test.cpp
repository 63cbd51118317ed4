#include "phy_dl/lib_nr_dl_phy_prs_process.h"

#include "receiver/gold_sequence.h"
#include "support/generated.h"
#include "support/settings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace
{

using namespace vek::nr_mod_lib;

constexpr unsigned int k_frames = 2;

struct prs_case_t
{
    struct place_t
    {
        unsigned int comb, symbols, n_id, re_offset, first_symbol, rb_offset;
    } place;
    std::vector<std::string> timing;
    std::function<bool(unsigned int)> sent_in_slot; ///< of the frame by the own rules, else of the waveform
    bool standard_rules = false;
};

/// TS 38.211 clause 7.4.1.7 evaluated cell by cell; by the own rules the sequence's initial value is without the slot.
nr_test::rows_t expected_rows(const prs_case_t& c, const nr_test::ofdm_setup_t& setup, unsigned int subcarriers)
{
    const std::vector<unsigned int> offsets = c.place.comb == 2   ? std::vector<unsigned int>{0, 1}
                                              : c.place.comb == 4 ? std::vector<unsigned int>{0, 2, 1, 3}
                                              : c.place.comb == 6
                                                  ? std::vector<unsigned int>{0, 3, 1, 4, 2, 5}
                                                  : std::vector<unsigned int>{0, 6, 3, 9, 1, 7, 4, 10, 2, 8, 5, 11};
    const unsigned int slots = 10u << setup.mu;
    const unsigned int slot_symbols = setup.symbols_in_frame() / slots;
    nr_test::rows_t rows(k_frames * setup.symbols_in_frame(), nr_test::signal_t(subcarriers));
    for (unsigned int slot = 0; slot < k_frames * slots; ++slot)
        for (unsigned int i = 0; i < c.place.symbols && c.sent_in_slot(c.standard_rules ? slot : slot % slots); ++i) {
            const unsigned int l = c.place.first_symbol + i;
            const unsigned int counted = l + (c.standard_rules ? slot % slots * slot_symbols : 0);
            const auto c_init = static_cast<std::uint32_t>(((std::uint64_t{c.place.n_id / 1024} << 22) +
                                                            1024ull * (counted + 1) * (2 * (c.place.n_id % 1024) + 1) +
                                                            c.place.n_id % 1024) %
                                                           (1ull << 31));
            const auto bits = nr_test::gold_sequence(c_init, 0, 2 * subcarriers);
            for (unsigned int k = 12 * c.place.rb_offset; k < 12 * (c.place.rb_offset + 24); ++k)
                if (k % c.place.comb == (c.place.re_offset + offsets[i % offsets.size()]) % c.place.comb)
                    rows[slot_symbols * slot + l][k] = std::complex<double>(1 - 2 * bits[2 * (k / c.place.comb)],
                                                                            1 - 2 * bits[2 * (k / c.place.comb) + 1]) *
                                                       std::sqrt(0.5);
        }
    return rows;
}

// Every comb with every number of symbols that it has, and each kind of timing and muting.
TEST(lib_nr_dl_phy_prs_process, every_comb_repetition_and_muting_arrives_where_the_standard_puts_it)
{
    const auto every_tenth = [](unsigned int slot) { return slot % 10 == 0; };
    const std::vector<prs_case_t> cases = {
        {{2, 2, 0, 1, 12, 0}, {}, every_tenth},
        {{2, 4, 4095, 0, 3, 27}, {"slot_offset=3"}, [](unsigned int slot) { return slot % 10 == 3; }},
        {{2, 6, 1023, 1, 0, 5}, {}, every_tenth},
        {{2, 12, 1024, 0, 2, 0}, {}, every_tenth},
        {{4, 4, 77, 3, 1, 9}, {"set_slot_offset=2", "slot_offset=4"}, [](unsigned int slot) { return slot % 10 == 6; }},
        {{4, 12, 2050, 2, 0, 1}, {"periodicity=20"}, [](unsigned int slot) { return slot == 0; }},
        // Two slots apart, four times: all slots between them too.
        {{6, 6, 300, 5, 4, 2},
         {"periodicity=20", "reptition_factor=LIB_NR_PRS_REPTITION_FACTOR_4", "time_gap=LIB_NR_PRS_TIME_GAP_2"},
         [](unsigned int slot) { return slot <= 6; }},
        {{6, 12, 301, 1, 1, 3},
         {"muting_option_1=01", "reptition_factor=LIB_NR_PRS_REPTITION_FACTOR_2"},
         [](unsigned int slot) { return slot % 10 == 1; }},
        {{12, 12, 511, 7, 2, 20},
         {"periodicity=8", "muting_option_1=1001"},
         [](unsigned int slot) { return slot % 8 == 0; }},
        {{12, 12, 512, 11, 0, 0},
         {"reptition_factor=LIB_NR_PRS_REPTITION_FACTOR_4", "muting_option_2=1011"},
         [](unsigned int slot) { return slot % 10 < 4 && slot % 10 != 1; }},
        // A bit of the second option is for a repetition and the slots up to the next one.
        {{2, 2, 513, 0, 0, 0},
         {"periodicity=20", "reptition_factor=LIB_NR_PRS_REPTITION_FACTOR_4", "time_gap=LIB_NR_PRS_TIME_GAP_2",
          "muting_option_2=1011"},
         [](unsigned int slot) { return slot <= 6 && slot / 2 != 1; }},
        // By the standard's rules: slots of the waveform, repetitions alone, periods ahead of the offset, both options.
        {{4, 4, 2051, 1, 6, 5},
         {"periodicity=32", "slot_offset=5", "reptition_factor=LIB_NR_PRS_REPTITION_FACTOR_8",
          "time_gap=LIB_NR_PRS_TIME_GAP_4", "muting_option_2=11010110"},
         [](unsigned int slot) { return slot % 4 == 1 && std::string("11010110")[(slot + 27) % 32 / 4] == '1'; },
         true},
        {{6, 6, 700, 2, 3, 4},
         {"periodicity=32", "set_slot_offset=20", "slot_offset=11", "reptition_factor=LIB_NR_PRS_REPTITION_FACTOR_2",
          "muting_option_1=01", "muting_option_2=01"},
         [](unsigned int slot) { return slot == 0; },
         true},
        {{2, 2, 33, 1, 9, 0},
         {"carrier[0].numerology=LIB_NR_SCS_60K", "carrier[0].dl_bwp[0].cp_type=LIB_NR_EXTEND_CP",
          "cp_type=LIB_NR_EXTEND_CP", "enable=true", "periodicity=16", "muting_factor=LIB_NR_PRS_MUTING_FACTOR_2",
          "muting_option_1=10"},
         [](unsigned int slot) { return slot == 0 || slot == 16 || slot == 64; },
         true},
    };
    for (const prs_case_t& c : cases) {
        const std::string prs = "carrier[0].dl_prs[0].";
        nr_test::waveform_of_t waveform(
            {"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M", "frame_number=2",
             std::string("standard_rules=") + (c.standard_rules ? "1" : "0"), "carrier[0].baseband_filter=false",
             prs + "n_id=" + std::to_string(c.place.n_id), prs + "rb_offset=" + std::to_string(c.place.rb_offset),
             prs + "rb_number=24", prs + "comb_size=LIB_NR_PRS_COMB_SIZE_" + std::to_string(c.place.comb),
             prs + "symbol_number=LIB_NR_PRS_SYMBOL_NUMBER_" + std::to_string(c.place.symbols),
             prs + "symbol_offset=" + std::to_string(c.place.first_symbol),
             prs + "re_offset=" + std::to_string(c.place.re_offset), prs + "enable=true"});
        for (const std::string& step : c.timing)
            nr_test::take(waveform, {(step.rfind("carrier", 0) == 0 ? "" : prs) + step});
        const nr_test::generated_t generated = nr_test::generate(waveform);
        const unsigned int subcarriers = lib_nr_channel_resource_manager_t::get_inst().get_mapped_subcarrier_number();
        nr_test::rows_t received;
        for (unsigned int frame = 0; frame < k_frames; ++frame)
            for (const auto& row :
                 nr_test::demodulate_frame(generated.samples, generated.setup, subcarriers, 0.0, frame))
                received.push_back(row);
        const nr_test::rows_t expected = expected_rows(c, generated.setup, subcarriers);
        const std::complex<double> gain = nr_test::fitted_gain(received, expected);
        for (std::size_t l = 0; l < expected.size(); ++l)
            for (std::size_t k = 0; k < subcarriers; ++k)
                ASSERT_LT(std::abs(received[l][k] - gain * expected[l][k]), 1e-9)
                    << "comb " << c.place.comb << ", " << c.place.symbols << " symbols, symbol " << l << ", subcarrier "
                    << k;
    }
}

TEST(lib_nr_dl_phy_prs_process, steps_round_symbols_of_ssb_and_marks_whole_resource_blocks)
{
    const nr_test::captured_output_t silence;
    nr_test::waveform_of_t waveform({"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M",
                                     "carrier[0].dl_ssb.enable=true", "carrier[0].dl_ssb.active_idx=0",
                                     "carrier[0].dl_prs[0].symbol_number=LIB_NR_PRS_SYMBOL_NUMBER_12",
                                     "carrier[0].dl_prs[0].rb_number=30", "carrier[0].dl_prs[0].enable=true"});
    lib_nr_phy_t engine;
    engine.waveform_config(waveform.get_waveform_manager());
    ASSERT_TRUE(engine.deal_resource_mapping(0, 0, 0, waveform.get_waveform_manager()));
    const auto& grid = lib_nr_channel_resource_manager_t::get_inst();
    for (unsigned int l = 0; l < 12; ++l) // the block of case B, index 0, fills symbols 4 to 7
        EXPECT_EQ(grid.get_owner(l, 3) == LIB_NR_RESOURCE_MAPPING_PRS, l < 4 || l > 7) << l;
    EXPECT_EQ(grid.get_owner(0, 30 * 12 - 1), LIB_NR_RESOURCE_MAPPING_PRS);
    EXPECT_EQ(grid.get_owner(0, 30 * 12), LIB_NR_RESOURCE_MAPPING_EMPTY);
}

TEST(lib_nr_dl_phy_prs_process, a_comb_that_is_none_is_told_and_sent_as_comb_2)
{
    nr_test::waveform_of_t waveform({"carrier[0].channel_bandwidth=LIB_NR_CHANNEL_FR1_20M",
                                     "carrier[0].dl_prs[0].rb_number=24", "carrier[0].dl_prs[0].enable=true"});
    waveform.get_carrier(0)->get_dl_prs(0)->set_comb_size(static_cast<lib_nr_prs_comb_size_t>(200));
    const std::string printed = nr_test::generate(waveform).output;
    EXPECT_NE(
        printed.find("lib_nr_dl_phy_prs_process_t::lib_nr_dl_prs_configure_manager_t::_get_comb_size : Error comb "
                     "size!\n"),
        std::string::npos);
    const auto& rows = lib_nr_channel_resource_manager_t::get_inst().get_payload_mapping();
    for (unsigned int k = 0; k < 24 * 12; ++k)
        EXPECT_TRUE((rows[0][k] != 0.0) == (k % 2 == 0) && (rows[1][k] != 0.0) == (k % 2 == 1)) << k;
}

TEST(lib_nr_dl_phy_prs_process, settings_keep_to_their_limits)
{
    nr_test::waveform_of_t waveform({});
    nr_test::run_rows(waveform,
                      {{"rb_number", "10", "10", true},
                       {"enable", "true", "false", false},
                       {"rb_number", "400", "273", true},
                       {"rb_offset", "400", "249", true},
                       {"rb_number", nullptr, "24"},
                       {"enable", "true", "true", true},
                       {"comb_size", "LIB_NR_PRS_COMB_SIZE_12", "LIB_NR_PRS_COMB_SIZE_12", true},
                       {"symbol_number", nullptr, "LIB_NR_PRS_SYMBOL_NUMBER_4"},
                       {"symbol_number", "LIB_NR_PRS_SYMBOL_NUMBER_6", "LIB_NR_PRS_SYMBOL_NUMBER_12", true},
                       {"symbol_offset", "9", "2", true},
                       {"periodicity", "11", "8", true},
                       {"set_slot_offset", "9", "7", true},
                       {"slot_offset", "1", "0", false},
                       {"muting_option_1", "101", "1010", true},
                       {"muting_option_2", "101", "1", true},
                       {"reptition_factor", "LIB_NR_PRS_REPTITION_FACTOR_2", "LIB_NR_PRS_REPTITION_FACTOR_2", true},
                       {"muting_option_2", nullptr, "10"},
                       {"numerology", "LIB_NR_SCS_240K", "LIB_NR_SCS_240K", true},
                       {"enable", nullptr, "false"}},
                      "carrier[0].dl_prs[0]");
    nr_test::waveform_of_t narrowed({"carrier[0].numerology[0].rb_size=100"});
    nr_test::run_rows(narrowed,
                      {{"rb_number", nullptr, "100"},
                       {"carrier[0].numerology[0].rb_start=40"},
                       {"rb_offset", nullptr, "40"},
                       {"carrier[0].numerology[0].rb_start=0"},
                       {"carrier[0].numerology[0].rb_size=51"},
                       {"rb_offset", nullptr, "27"}}, // 24 RBs below the end
                      "carrier[0].dl_prs[0]");
}

} // namespace
