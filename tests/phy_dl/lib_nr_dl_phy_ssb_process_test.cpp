#include "phy_dl/lib_nr_dl_phy_ssb_process.h"

#include "receiver/bits.h"
#include "receiver/ssb_receiver.h"
#include "support/generated.h"
#include "support/settings.h"
#include "support/test_grid.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

using namespace vek::nr_mod_lib;

namespace
{

constexpr const char* k_all = "0:63";
constexpr const char* k_no_step = "phase_compensation=true";

/// A waveform with SS/PBCH blocks, and what a receiver must find in it.
struct ssb_case_t
{
    const char* name;
    char ssb_case;
    lib_nr_channel_bw_type_t bandwidth;
    unsigned long long radio_frequency;
    unsigned int lmax;
    unsigned int cell;
    std::string active;          // indices with commas between
    int first_subcarrier = -120; // of the block, from the carrier's centre
    unsigned int kssb = 0;
    unsigned int frames = 1;
    lib_ssb_periodicity_t periodicity = LIB_NR_SSB_10MS_PERIODICITY;
    unsigned char half_frame = 0; // asked for; 5 ms makes it both
    double pss_power_boosting = 0.0;
    const char* step = k_no_step; // ahead of the block's own
    bool filter = false;          // and windowing, both with their defaults
    int rb_offset = -1;           // the default
};

lib_nr_numerology_type_t spacing_of(const ssb_case_t& c)
{
    constexpr unsigned int k_mu[] = {0, 1, 1, 3, 4, 5, 6}; // cases A to G
    return static_cast<lib_nr_numerology_type_t>(k_mu[c.ssb_case - 'A']);
}

class ssb_waveform_t : public cfg_nr_waveform_t
{
public:
    explicit ssb_waveform_t(const ssb_case_t& c)
    {
        nr_test::take(*this, {c.step});
        const nr_test::captured_output_t silence;
        set_frame_number(c.frames);
        cfg_nr_carrier_t& carrier = *get_carrier(0);
        carrier.set_baseband_filter(c.filter);
        if (!c.filter)
            carrier.set_windowing_beta(0.0);
        carrier.set_channel_bandwidth(c.bandwidth);
        carrier.set_numerology(spacing_of(c));
        carrier.set_ncell_id(c.cell);
        set_radio_frequency(c.radio_frequency);
        ssb().set_enable(true);
        ssb().set_ssb_pattern(static_cast<lib_nr_ssb_case_t>(c.ssb_case - 'A'));
        ssb().set_active_idx(c.active);
        ssb().set_pss_power_boosting(c.pss_power_boosting);
        ssb().set_periodicity(c.periodicity);
        ssb().set_half_frame_idx(c.half_frame);
        if (c.rb_offset >= 0)
            ssb().set_rb_offset(static_cast<unsigned int>(c.rb_offset));
        ssb().set_kssb(c.kssb);
    }

    cfg_nr_dl_ssb_t& ssb() { return *get_carrier(0)->get_dl_ssb(); }
};

bool is_sent(const ssb_case_t& c, unsigned int frame, unsigned int half_frame, unsigned int index)
{
    return frame * 10 % c.periodicity == 0 &&
           (c.periodicity == LIB_NR_SSB_5MS_PERIODICITY || half_frame == c.half_frame) &&
           (c.active == k_all || (',' + c.active + ',').find(',' + std::to_string(index) + ',') != std::string::npos);
}

unsigned int first_symbol(const ssb_case_t& c, unsigned int half_frame, unsigned int index)
{
    return half_frame * 70 * (1u << spacing_of(c)) + nr_test::candidate_symbols(c.ssb_case, c.lmax)[index];
}

std::size_t pss_sample(const nr_test::ofdm_setup_t& setup, unsigned int frame, unsigned int symbol)
{
    return frame * setup.frame_length() + nr_test::useful_start(setup, symbol);
}

using check_t = std::function<void(const nr_test::ssb_content_t&, unsigned int frame)>;

/// Receives every candidate of every half frame.
void receive(const ssb_case_t& c, const nr_test::generated_t& generated, const check_t& check)
{
    const auto& [signal, output, setup] = generated;
    const double limit = c.filter ? 5e-3 : 1e-6;
    std::complex<double> gain;
    unsigned int received = 0;
    for (unsigned int frame = 0; frame < c.frames; ++frame)
        for (unsigned int half = 0; half < 2; ++half)
            for (unsigned int index = 0; index < c.lmax; ++index) {
                SCOPED_TRACE(::testing::Message() << "frame " << frame << ", half " << half << ", index " << index);
                const unsigned int symbol = first_symbol(c, half, index);
                const nr_test::ssb_place_t place{pss_sample(setup, frame, symbol), c.first_subcarrier, c.cell};
                if (!is_sent(c, frame, half, index)) {
                    const auto silent = nr_test::demodulate_at(signal, setup, place.sample);
                    for (const auto& value : silent)
                        ASSERT_LT(std::norm(value), c.filter ? 1e-9 : 1e-20);
                    continue;
                }
                const auto content = nr_test::read_pbch(signal, setup, place, c.lmax);
                ASSERT_TRUE(content.crc_matches);
                EXPECT_EQ(content.half_frame, half);
                EXPECT_EQ(content.block_index, index);
                EXPECT_EQ(content.dmrs_index, c.lmax == 4 ? index + 4 * half : index % 8);
                EXPECT_EQ(content.scrambling_index, setup.standard_rules && c.lmax == 4 ? index : content.dmrs_index);
                EXPECT_EQ(content.frame_number & 15u, frame);
                if (c.lmax != 64) {
                    EXPECT_EQ(content.kssb_high_bit, c.kssb / 16);
                }
                check(content, frame);
                const auto quality = nr_test::measure_ssb(signal, setup, frame * setup.frame_length(), symbol, place,
                                                          content.dmrs_index);
                EXPECT_LT(quality.evm, limit);
                EXPECT_NEAR(20.0 * std::log10(quality.pss_amplitude), c.pss_power_boosting, 100.0 * limit);
                // One gain from block to block: amplitude and phase are steady over the waveform.
                gain = received == 0 ? quality.gain : gain;
                EXPECT_LT(std::abs(quality.gain / gain - 1.0), limit);
                ++received;
            }
    EXPECT_GT(received, 0u);
}

/// Every MIB field as TS 38.331 clause 6.2.2 lays it out.
void expect_mib(const nr_test::ssb_content_t& content, unsigned int frame, unsigned int spacing_common,
                unsigned int subcarrier_offset, unsigned int dmrs_position, unsigned int sib1, bool barred,
                bool reselection)
{
    const auto number = [&](std::size_t first, std::size_t count) {
        unsigned int value = 0;
        for (std::size_t i = first; i < first + count; ++i)
            value = 2 * value + content.mib[i];
        return value;
    };
    EXPECT_EQ(number(0, 1), 0u);
    EXPECT_EQ(content.frame_number, frame);
    EXPECT_EQ(number(7, 1), spacing_common);
    EXPECT_EQ(number(8, 4), subcarrier_offset % 16);
    EXPECT_EQ(number(12, 1), dmrs_position - 2);
    EXPECT_EQ(number(13, 8), sib1);
    EXPECT_EQ(number(21, 1), barred ? 1u : 0u);
    EXPECT_EQ(number(22, 1), reselection ? 1u : 0u);
    EXPECT_EQ(number(23, 1), 0u);
}

const std::vector<ssb_case_t> k_cases = {
    {"case A up to 3 GHz", 'A', LIB_NR_CHANNEL_FR1_5M, 3000000000, 4, 0, k_all, -120},
    {"case A above 3 GHz, moved, last cell, second half frame", 'A', LIB_NR_CHANNEL_FR1_10M, 3000000100, 8, 1007,
     "1,6,7", 3 * 12 + 23 - 312, 23, 1, LIB_NR_SSB_10MS_PERIODICITY, 1, 0.0, k_no_step, false, 3},
    {"case B up to 3 GHz, both half frames of two frames", 'B', LIB_NR_CHANNEL_FR1_20M, 2345678900, 4, 123, k_all, -120,
     0, 2, LIB_NR_SSB_5MS_PERIODICITY},
    {"by the standard's rules", 'B', LIB_NR_CHANNEL_FR1_20M, 2345678900, 4, 124, "1,2", -120, 0, 2,
     LIB_NR_SSB_5MS_PERIODICITY, 0, 0.0, "standard_rules=true"},
    {"case B above 3 GHz, kssb on top of the middle, four frames", 'B', LIB_NR_CHANNEL_FR1_20M, 3456789100, 8, 502,
     "0,5", -120 + 11, 22, 4, LIB_NR_SSB_10MS_PERIODICITY, 0, 3.0},
    {"case C up to 3 GHz, every other frame", 'C', LIB_NR_CHANNEL_FR1_20M, 1000000000, 4, 77, "2", -120, 0, 4,
     LIB_NR_SSB_20MS_PERIODICITY},
    {"case C above 3 GHz, at the upper edge of a wide carrier", 'C', LIB_NR_CHANNEL_FR1_100M, 4900000000, 8, 334, "7",
     (505 * 12 + 6) / 2 - 1638, 6, 1, LIB_NR_SSB_10MS_PERIODICITY, 0, 0.0, k_no_step, false, 505},
    {"case D", 'D', LIB_NR_CHANNEL_FR2_1_50M, 28000100000, 64, 9, k_all, -120, 0, 1, LIB_NR_SSB_10MS_PERIODICITY, 1},
    {"case D, moved, four frames", 'D', LIB_NR_CHANNEL_FR2_1_100M, 39000000000, 64, 600, "0,63",
     (17 * 12 + 10) / 2 - 396, 10, 4, LIB_NR_SSB_10MS_PERIODICITY, 0, 0.0, k_no_step, false, 17},
    {"case E", 'E', LIB_NR_CHANNEL_FR2_1_100M, 28000000000, 64, 700, k_all, -120 + 2, 8},
    {"case E, second half frame, moved", 'E', LIB_NR_CHANNEL_FR2_1_200M, 28000000000, 64, 701, "35,60",
     (41 * 12 + 4) / 4 - 396, 4, 1, LIB_NR_SSB_10MS_PERIODICITY, 1, 0.0, k_no_step, false, 41},
    {"case F", 'F', LIB_NR_CHANNEL_FR2_2_400M, 60000000000, 64, 1000, k_all, -120},
    {"case G, second half frame, moved", 'G', LIB_NR_CHANNEL_FR2_2_400M, 66000000000, 64, 1, "0,17,62",
     16 * 12 / 16 - 198, 0, 1, LIB_NR_SSB_10MS_PERIODICITY, 1, 0.0, k_no_step, false, 16},
    {"a carrier off the centre", 'C', LIB_NR_CHANNEL_FR1_20M, 2000000000, 4, 55, k_all, -120, 0, 1,
     LIB_NR_SSB_10MS_PERIODICITY, 0, 0.0, "carrier[0].frequency_offset=-3210000"},
    {"a carrier far off the centre, across 3 GHz", 'B', LIB_NR_CHANNEL_FR1_20M, 2990000000, 8, 56, k_all, -120, 0, 1,
     LIB_NR_SSB_10MS_PERIODICITY, 0, 0.0, "carrier[0].frequency_offset=20000000"},
    {"non-terrestrial", 'A', LIB_NR_CHANNEL_FR1_30M, 2000000000, 4, 57, k_all, -120, 0, 1, LIB_NR_SSB_10MS_PERIODICITY,
     0, 0.0, "nr_ntn=true"},
    {"no phase compensation", 'B', LIB_NR_CHANNEL_FR1_20M, 2345678900, 4, 58, k_all, -120, 0, 1,
     LIB_NR_SSB_10MS_PERIODICITY, 0, 0.0, "phase_compensation=false"},
    {"filter and windowing on", 'C', LIB_NR_CHANNEL_FR1_10M, 3600000000, 8, 59, "0,3,7", -120, 0, 2,
     LIB_NR_SSB_10MS_PERIODICITY, 1, 0.0, k_no_step, true}};

TEST(lib_nr_dl_phy_ssb_process, receiver_finds_and_reads_every_block)
{
    for (const ssb_case_t& c : k_cases) {
        SCOPED_TRACE(c.name);
        const ssb_waveform_t waveform(c);
        const bool is_wide_common = spacing_of(c) == LIB_NR_SCS_30K || spacing_of(c) == LIB_NR_SCS_120K;
        const bool bit = waveform.get_standard_rules();
        receive(c, nr_test::generate(waveform), [&](const nr_test::ssb_content_t& content, unsigned int frame) {
            expect_mib(content, frame, is_wide_common, c.kssb, 2, 0, bit, bit);
        });
    }
}

TEST(lib_nr_dl_phy_ssb_process, automatic_mib_carries_the_settings)
{
    const ssb_case_t c = {"MIB", 'A', LIB_NR_CHANNEL_FR1_5M, 1000000000, 4, 271, "3", 17 - 150, 17};
    ssb_waveform_t waveform(c);
    nr_test::take(waveform, {"carrier[0].dl_ssb.rb_offset=0", "carrier[0].dl_ssb.kssb=17",
                             "carrier[0].dl_ssb.ssb_subcarrier_offset=26", "carrier[0].dl_ssb.dmrs_typea_position=3",
                             "carrier[0].dl_ssb.pdcch_config_sib1=166"});
    for (const bool barred : {true, false}) {
        waveform.ssb().set_cell_barred(barred);
        waveform.ssb().set_intra_frequency_reselection(!barred);
        receive(c, nr_test::generate(waveform), [&](const auto& content, unsigned int frame) {
            expect_mib(content, frame, 0, 26, 3, 166, barred, !barred);
        });
    }
}

TEST(lib_nr_dl_phy_ssb_process, mib_from_a_data_source_is_sent_last_bit_first)
{
    ssb_case_t c = k_cases[0];
    c.active = "1";
    ssb_waveform_t waveform(c);
    waveform.ssb().set_auto_cofig_mib(false);
    waveform.ssb().set_data_source_custom("1011");
    for (const unsigned int source : {0u, 1u, 2u, 3u, 4u, 5u, 9u}) {
        SCOPED_TRACE(source);
        waveform.ssb().set_data_source(static_cast<lib_nr_pn_seq_t>(source));
        nr_test::bits_t expected = source < 5   ? nr_test::data_source_t(source).take(24)
                                   : source > 5 ? nr_test::bits_t()
                                                : nr_test::bits_t{1, 0, 1, 1};
        expected.resize(24);
        std::reverse(expected.begin(), expected.end());
        const nr_test::generated_t generated = nr_test::generate(waveform);
        receive(c, generated, [&](const auto& content, unsigned int) { EXPECT_EQ(content.mib, expected); });
        EXPECT_EQ(generated.output.find("_nr_dl_mib_data_source_generation : Error PN code!\n") != std::string::npos,
                  source > LIB_NR_USER_CFG);
    }
}

/// The block process on a grid of its own.
class ssb_grid_t : public nr_test::test_grid_t
{
public:
    ssb_grid_t(lib_nr_numerology_type_t numerology, lib_nr_channel_bw_type_t bandwidth, unsigned int rb_size,
               unsigned int rb_start = 0)
        : test_grid_t(numerology, rb_start + rb_size, bandwidth)
    {
        process.set_numerology(numerology, rb_size, rb_start, 0);
        process.set_ssb_numerology(numerology);
        process.set_subcarrier_spacing_common(numerology);
        process.set_channel_bandwidth(bandwidth);
    }
    bool view(unsigned int block_index)
    {
        return process._dl_phy_ssb_remap(block_index, LIB_NR_REMAPP_MODE_UI_VIEW_MAP);
    }
    /// The four symbols of the block.
    std::array<nr_test::signal_t, 4> block(unsigned int symbol, unsigned int first_subcarrier) const
    {
        std::array<nr_test::signal_t, 4> symbols;
        for (unsigned int l = 0; l < 4; ++l)
            symbols[l] = symbols_at(symbol + l, first_subcarrier, 240);
        return symbols;
    }
    std::size_t count_marks() const { return test_grid_t::count_marks(LIB_NR_RESOURCE_MAPPING_SSB); }

    lib_nr_dl_phy_ssb_process_t process;
};

// All identities, frame numbers, half frames, indices, kinds of Lmax and places in frequency, drawn at random.
TEST(lib_nr_dl_phy_ssb_process, any_block_is_read_back_from_the_grid)
{
    std::mt19937 random(7);
    const auto below = [&](unsigned int limit) { return static_cast<unsigned int>(random() % limit); };
    for (int round = 0; round < 300; ++round) {
        const unsigned int lmax = std::array{4u, 8u, 64u}[below(3)];
        const bool is_fr1 = lmax != 64;
        ssb_grid_t grid(is_fr1 ? LIB_NR_SCS_30K : LIB_NR_SCS_120K,
                        is_fr1 ? LIB_NR_CHANNEL_FR1_20M : LIB_NR_CHANNEL_FR2_1_100M, is_fr1 ? 51 : 66);
        lib_nr_dl_phy_ssb_process_t& process = grid.process;
        const unsigned int cell = below(1008);
        const unsigned int frame = below(1024);
        const unsigned int half = below(2);
        const unsigned int index = below(lmax);
        const unsigned int rb_offset = below(60);
        const unsigned int kssb = 2 * below(is_fr1 ? 12 : 6);
        const unsigned int sib1 = below(256);
        process.set_ssb_pattern(is_fr1 ? NR_SSB_CASE_C : NR_SSB_CASE_D);
        process.set_lmax(static_cast<lib_nr_lmax_t>(lmax));
        process.set_center_frequency(lmax == 4 ? 3e9 : 3.1e9);
        process.set_pci(cell);
        process.set_system_frame(frame);
        process.set_half_frame_idx(half);
        process.set_rb_offset(rb_offset);
        process.set_kssb(kssb);
        process.set_ssb_subcarrier_offset(kssb);
        process.set_pdcch_config_sib1(sib1);
        ASSERT_TRUE(process.ssb_encode_process(index));

        const unsigned int symbol =
            half * (is_fr1 ? 140 : 560) + nr_test::candidate_symbols(is_fr1 ? 'C' : 'D', lmax)[index];
        const auto symbols = grid.block(symbol, rb_offset * 6 + kssb / 2);
        SCOPED_TRACE(::testing::Message() << "cell " << cell << ", frame " << frame << ", half " << half << ", Lmax "
                                          << lmax << ", index " << index);
        ASSERT_EQ(nr_test::find_cell(symbols), cell);
        const auto content = nr_test::read_pbch(symbols, cell, lmax);
        ASSERT_TRUE(content.crc_matches);
        EXPECT_EQ(content.block_index, index);
        EXPECT_EQ(content.half_frame, half);
        EXPECT_EQ(content.kssb_high_bit, is_fr1 ? kssb / 16 : 0);
        expect_mib(content, frame, 1, kssb, 2, sib1, false, false);
        EXPECT_EQ(grid.count_symbols(), 127u + 127u + 576u);
    }
}

TEST(lib_nr_dl_phy_ssb_process, without_coding_the_scrambled_payload_is_sent_bare)
{
    ssb_grid_t grid(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51);
    grid.process.set_pci(321);
    grid.process.set_system_frame(6);
    grid.process.set_coding(false);
    grid.process.set_rb_offset(5);
    ASSERT_TRUE(grid.process.ssb_encode_process(2));
    const auto content = nr_test::read_pbch(grid.block(16, 30), 321, 4);
    EXPECT_EQ(std::count(content.coded_bits.begin() + 32, content.coded_bits.end(), 0), 832);
    const auto payload =
        nr_test::payload_in_order({content.coded_bits.begin(), content.coded_bits.begin() + 32}, 321, 4);
    std::vector<unsigned char> expected(32, 0);
    expected[7] = 1;                 // 30 kHz
    expected[25] = expected[26] = 1; // frame 6
    EXPECT_EQ(payload, expected);
}

TEST(lib_nr_dl_phy_ssb_process, powers_are_those_of_the_block_index)
{
    ssb_grid_t grid(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51);
    grid.process.set_pwr_boosting({0.0, -6.0, 3.0});
    grid.process.set_pss_pwr_boosting(4.0);
    grid.process.set_rb_offset(0);
    for (const auto& [index, symbol, power] :
         {std::tuple{1u, 8u, -6.0}, std::tuple{2u, 16u, 3.0}, std::tuple{3u, 20u, 0.0}})
    {
        ASSERT_TRUE(grid.process.ssb_encode_process(index));
        const auto block = grid.block(symbol, 0);
        const auto decibels = [](std::complex<double> value) { return 10.0 * std::log10(std::norm(value)); };
        EXPECT_NEAR(decibels(block[0][56]), power + 4.0, 1e-9);
        EXPECT_NEAR(decibels(block[2][182]), power, 1e-9);
        EXPECT_NEAR(decibels(block[1][0]), power, 1e-9); // DMRS
        EXPECT_NEAR(decibels(block[3][239]), power, 1e-9);
    }
}

// The view holds the block's cells, guards included, and in the symbols of PSS and full PBCH whole resource blocks.
TEST(lib_nr_dl_phy_ssb_process, view_marks_the_blocks_cells_and_fills_up_resource_blocks)
{
    for (const auto& [rb_start, rb_offset, kssb] :
         {std::tuple{0u, 9u, 0u}, std::tuple{0u, 8u, 0u}, std::tuple{0u, 8u, 1u}, std::tuple{3u, 14u, 2u}})
    {
        ssb_grid_t grid(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51 - rb_start, rb_start);
        grid.process.set_rb_offset(rb_offset);
        grid.process.set_kssb(kssb);
        EXPECT_TRUE(grid.view(3));
        const unsigned int first = rb_offset * 6 + kssb / 2 - 12 * rb_start;
        const unsigned int first_whole = first / 12 * 12;
        const unsigned int end_whole = (first + kssb % 2 + 240 + 11) / 12 * 12; // behind a half subcarrier
        for (unsigned int l = 0; l < 280; ++l)
            for (unsigned int k = 0; k < 612; ++k) {
                const bool is_in_symbols = l >= 20 && l < 24;
                const bool is_full = is_in_symbols && l != 22;
                const bool expected =
                    (is_full && k >= first_whole && k < end_whole) || (is_in_symbols && k >= first && k < first + 240);
                ASSERT_EQ(grid.grid().get_owner(l, k) == LIB_NR_RESOURCE_MAPPING_SSB, expected)
                    << "symbol " << l << ", subcarrier " << k;
            }
        EXPECT_FALSE(grid.view(3)); // the cells are taken
    }
}

TEST(lib_nr_dl_phy_ssb_process, default_offset_stands_for_the_middle)
{
    ssb_grid_t grid(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51);
    grid.process.set_rb_offset(31);
    grid.process.set_kssb(4);
    ASSERT_TRUE(grid.process.ssb_encode_process(0));
    EXPECT_EQ(grid.output(), "_cal_rboffset_position, rb_offset 31 is default,irb_offset = 31.0.\n\n");
    const auto block = grid.block(4, (612 - 240) / 2 + 2);
    EXPECT_EQ(nr_test::find_cell(block), 0u);

    ssb_grid_t fr2(LIB_NR_SCS_120K, LIB_NR_CHANNEL_FR2_1_50M, 32);
    fr2.process.set_ssb_pattern(NR_SSB_CASE_D);
    fr2.process.set_lmax(LIB_NR_LMAX_64);
    fr2.process.set_rb_offset(12);
    ASSERT_TRUE(fr2.process.ssb_encode_process(0));
    EXPECT_EQ(fr2.output(), "bw is FR2 type!\n_cal_rboffset_position, rb_offset 12 is default,irb_offset = 12.0.\n\n");
}

// Whatever the settings, nothing lands outside the grid, and what lies inside is the block's own. The view says so.
TEST(lib_nr_dl_phy_ssb_process, parts_outside_the_grid_are_left_out)
{
    struct row_t
    {
        unsigned int rb_size, rb_start, rb_offset, half_frame;
        std::size_t symbols; // that remain
    };
    for (const row_t& row : {
             row_t{51, 0, 62, 0, 127 + 127 + 576},          // the last place inside
             row_t{51, 0, 84, 0, 52 + 52 + 108 + 108 + 48}, // 108 subcarriers inside
             row_t{51, 0, 102, 0, 0},                       // just outside
             row_t{51, 0, 4294967295u, 0, 0},
             row_t{41, 10, 20, 0, 127 + 127 + 576},                 // on the first subcarrier, counted from rb_start
             row_t{41, 10, 16, 0, 127 + 127 + 216 + 216 + 24 + 48}, // 24 subcarriers below the grid
             row_t{12, 0, 0, 0, 88 + 88 + 144 + 144 + 48},          // narrower than the block
             row_t{51, 0, 10, 255, 0},                              // a half frame that doesn't exist
         })
    {
        ssb_grid_t grid(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, row.rb_size, row.rb_start);
        grid.process.set_rb_offset(row.rb_offset);
        grid.process.set_half_frame_idx(row.half_frame);
        EXPECT_TRUE(grid.process.ssb_encode_process(1)) << row.rb_offset;
        const bool is_whole = row.symbols == 127 + 127 + 576 || row.half_frame > 1;
        EXPECT_EQ(grid.view(1), is_whole) << row.rb_offset;
        EXPECT_EQ(grid.count_symbols(), row.symbols) << row.rb_offset << " of " << row.rb_size;
        EXPECT_EQ(grid.count_marks() > 0, row.symbols > 0) << row.rb_offset;
        EXPECT_EQ(grid.output().find("subcarrier index out of range") == std::string::npos, is_whole);
    }
}

TEST(lib_nr_dl_phy_ssb_process, nothing_is_sent_where_there_is_no_block)
{
    ssb_grid_t grid(LIB_NR_SCS_30K, LIB_NR_CHANNEL_FR1_20M, 51);
    EXPECT_TRUE(grid.process.ssb_encode_process(4)); // up to 3 GHz there are four candidates
    EXPECT_TRUE(grid.view(4));
    grid.process.set_ssb_numerology(LIB_NR_SCS_15K); // the pass of another numerology
    EXPECT_TRUE(grid.process.ssb_encode_process(0));
    EXPECT_TRUE(grid.view(0));
    EXPECT_EQ(grid.output(), "");
    grid.process.set_ssb_numerology(LIB_NR_SCS_30K);
    grid.process.set_ssb_pattern(static_cast<lib_nr_ssb_case_t>(7));
    EXPECT_TRUE(grid.process.ssb_encode_process(0));
    EXPECT_EQ(grid.output(), "_init_ssb_symbol: default configuration ! ssb_pattern invalid\n");
    grid.process.set_ssb_pattern(NR_SSB_CASE_B);
    EXPECT_FALSE(grid.process._dl_phy_ssb_remap(0, static_cast<lib_nr_remap_mode_t>(2)));
    EXPECT_TRUE(grid.output().ends_with("lib_nr_dl_phy_ssb_process_t::_dl_phy_ssb_remap : Error RE map mode!\n"));
    EXPECT_TRUE(grid.process._dl_phy_ssb_remap(0, LIB_NR_REMAPP_MODE_ENCODE_MAP)); // nothing generated yet
    EXPECT_EQ(grid.count_symbols() + grid.count_marks(), 0u);
    lib_nr_dl_phy_ssb_process_t fresh;
    EXPECT_TRUE(fresh._dl_phy_ssb_remap(0, LIB_NR_REMAPP_MODE_UI_VIEW_MAP));
    EXPECT_EQ(grid.count_marks(), 3u * 240 + 240);
    fresh.set_half_frame_idx(0xFFFFFFFFu);
    EXPECT_TRUE(fresh.ssb_encode_process(0));
    EXPECT_EQ(grid.count_symbols(), 0u);
}

} // namespace
